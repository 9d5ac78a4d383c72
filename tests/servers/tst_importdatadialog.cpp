#include "logtail.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "servers/importdatadialog.h"

#include <QHeaderView>
#include <QIcon>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeView>
#include <QtTest>

namespace {

QJsonObject point(const QString &name, const QString &addr)
{
    return {{"name", name}, {"addr", addr}, {"dataType", "int16"}, {"length", "1"}};
}

// As the collector hands it to the dialog: with a member that the table leaves out.
QJsonObject collected(const QString &name, const QString &addr)
{
    QJsonObject object = point(name, addr);
    object.insert("permissions", "rw");
    return object;
}

QStandardItem *append(QStandardItem *parent, const QString &text, const QString &protocol = QString())
{
    QStandardItem *item = ProjectTree::appendDefinition(parent, text, QString());
    if (!protocol.isEmpty()) {
        item->setData(protocol, standardProtocolRole);
    }
    return item;
}

// The texts below an index, a line each, two blanks deeper a level.
QStringList linesOf(const QAbstractItemModel &model, const QModelIndex &parent = QModelIndex(),
                    const QString &indent = QString())
{
    QStringList lines;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        lines.append(indent + index.data().toString());
        lines += linesOf(model, index, indent + "  ");
    }
    return lines;
}

// The column headers, then the cells of each row, between bars.
QStringList shown(const QAbstractItemModel &model)
{
    QStringList lines;
    for (int row = -1; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column) {
            cells.append(row < 0 ? model.headerData(column, Qt::Horizontal).toString()
                                 : model.index(row, column).data().toString());
        }
        lines.append(cells.join(QLatin1Char('|')));
    }
    return lines;
}

const QStringList pumps{"Riverside", "Standard", "pumps"};
const QStringList valves{"Riverside", "Standard", "valves"};
const QString headers = "Name|Address|DataType|Length";

} // namespace

// The window in which points are picked, with a project of two Modbus Standards, by mouse and keys.
class TestImportDataDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void looksAsDesigned();
    void columnsAreWideEnoughToRead();
    void slotsAndSignalAreFoundByName_data();
    void slotsAndSignalAreFoundByName();
    void treeHoldsWhatCanDeclarePoints();
    void treeKeepsIconsAndValues();
    void firstProjectOfANameIsShown();
    void unknownProjectLeavesTheTreeEmpty();
    void projectWithoutStandards();
    void treeStaysAsItWas();
    void clickedDefinitionFillsTheTable();
    void arrowKeysLeadToPointsToo();
    void projectAndFolderEmptyTheTable();
    void longNamesAreReadable();
    void definitionWithoutPoints();
    void unknownMeterItemHasEmptyCells();
    void selectionIsHandedOverInItsOrder();
    void rowClickedTwiceIsNotHandedOver();
    void otherDefinitionForgetsTheSelection();
    void sameDefinitionClickedAgainForgetsTheSelection();
    void sameDefinitionMadeCurrentKeepsTheSelection();
    void sameRowsAreHandedOverTwice();
    void nothingSelectedIsHandedOverToo();
    void enterHandsNothingOver();
    void cancelCloses();
    void receiverMayCloseTheDialog();
    void logsItsLife();

private:
    void clickNode(const QStringList &path);
    void clickRow(int row);
    QModelIndex node(const QStringList &path) const;
    QPushButton *button(const char *name) const;
    // What "OK" hands over, and under which name.
    QPair<QList<QJsonObject>, QString> pressOk();

    QScopedPointer<QStandardItemModel> m_projects;
    QPointer<ImportDataDialog> m_dialog;
    QTreeView *m_tree = nullptr;
    QTableView *m_table = nullptr;
};

using Handed = QPair<QList<QJsonObject>, QString>;

void TestImportDataDialog::init()
{
    m_projects.reset(new QStandardItemModel);
    QStandardItem *project = ProjectTree::makeProject("Riverside", "/x", "by the river");
    ProjectTree::appendMissingFolders(project);
    m_projects->appendRow(project);
    QStandardItem *standards = ProjectTree::childNamed(project, ProjectTree::standardFolder);
    append(standards, "pumps", "Modbus");
    append(standards, "valves", "Modbus");
    append(ProjectTree::childNamed(project, ProjectTree::boxFolder), "gate");

    m_dialog = new ImportDataDialog;
    m_dialog->addPoints("pumps", {collected("p0", "0"), collected("p1", "1"), collected("p2", "2")});
    m_dialog->addPoints("valves", {collected("v0", "9")});
    m_dialog->buildTree(*m_projects, "Riverside");
    m_tree = m_dialog->findChild<QTreeView *>();
    m_table = m_dialog->findChild<QTableView *>();
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog));
}

void TestImportDataDialog::cleanup()
{
    delete m_dialog;
    m_projects.reset();
}

QModelIndex TestImportDataDialog::node(const QStringList &path) const
{
    QModelIndex index;
    for (const QString &text : path) {
        const QModelIndexList found = m_tree->model()->match(m_tree->model()->index(0, 0, index),
                                                             Qt::DisplayRole, text, 1, Qt::MatchExactly);
        if (found.isEmpty()) {
            qFatal("no node %s", qPrintable(text));
        }
        index = found.first();
    }
    return index;
}

void TestImportDataDialog::clickNode(const QStringList &path)
{
    m_tree->expandAll();
    QTest::mouseClick(m_tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                      m_tree->visualRect(node(path)).center());
}

void TestImportDataDialog::clickRow(int row)
{
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      m_table->visualRect(m_table->model()->index(row, 1)).center());
}

QPushButton *TestImportDataDialog::button(const char *name) const
{
    return m_dialog->findChild<QPushButton *>(QLatin1String(name));
}

Handed TestImportDataDialog::pressOk()
{
    QSignalSpy spy(m_dialog.data(), &ImportDataDialog::dataSelected);
    QTest::mouseClick(button("okButton"), Qt::LeftButton);
    if (spy.count() != 1) {
        return {{}, QString("emitted %1 times").arg(spy.count())};
    }
    return {spy.at(0).at(0).value<QList<QJsonObject>>(), spy.at(0).at(1).toString()};
}

void TestImportDataDialog::looksAsDesigned()
{
    QCOMPARE(m_dialog->windowTitle(), QString());
    QCOMPARE(m_dialog->size(), QSize(800, 500));
    QVERIFY(!m_dialog->isModal());
    const auto *splitter = m_dialog->findChild<QSplitter *>();
    QCOMPARE(splitter->orientation(), Qt::Horizontal);
    QCOMPARE(splitter->widget(0), m_tree);
    QCOMPARE(splitter->widget(1), m_table);
    QCOMPARE(m_tree->sizePolicy().horizontalStretch(), 1);
    QCOMPARE(m_table->sizePolicy().horizontalStretch(), 3);
    QVERIFY2(m_table->width() > 2 * m_tree->width(), qPrintable(QString::number(m_tree->width())));
    QVERIFY(m_tree->isHeaderHidden());
    QCOMPARE(m_table->selectionMode(), QAbstractItemView::MultiSelection);
    QCOMPARE(m_table->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(m_table->editTriggers(), QAbstractItemView::EditTriggers(QAbstractItemView::NoEditTriggers));
    QCOMPARE(m_table->model()->parent(), m_dialog.data());
    QCOMPARE(button("okButton")->text(), "OK");
    QCOMPARE(button("cancelButton")->text(), "Cancel");
    QVERIFY(button("okButton")->x() > 400);
    QVERIFY(button("okButton")->x() < button("cancelButton")->x());
    QVERIFY(button("okButton")->y() > splitter->geometry().bottom());
}

void TestImportDataDialog::columnsAreWideEnoughToRead()
{
    clickNode(valves);
    QCOMPARE(m_table->model()->columnCount(), 4);
    for (int column = 0; column < 4; ++column) {
        QVERIFY2(m_table->columnWidth(column) >= 100, qPrintable(QString::number(column)));
    }
}

void TestImportDataDialog::slotsAndSignalAreFoundByName_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<int>("type");
    for (const char *name : {"onTreeViewClicked(QModelIndex)", "onOkButtonClicked()"}) {
        QTest::newRow(name) << QByteArray(name) << int(QMetaMethod::Slot);
    }
    const char *dataSelected = "dataSelected(QList<QJsonObject>,QString)";
    QTest::newRow(dataSelected) << QByteArray(dataSelected) << int(QMetaMethod::Signal);
}

void TestImportDataDialog::slotsAndSignalAreFoundByName()
{
    QFETCH(QByteArray, signature);
    QFETCH(int, type);
    const QMetaObject &dialog = ImportDataDialog::staticMetaObject;
    const QMetaMethod method = dialog.method(dialog.indexOfMethod(signature));
    QCOMPARE(int(method.methodType()), type);
    QCOMPARE(method.access(), QMetaMethod::Public);
}

void TestImportDataDialog::treeHoldsWhatCanDeclarePoints()
{
    QStandardItem *project = m_projects->item(0);
    QStandardItem *standards = ProjectTree::childNamed(project, ProjectTree::standardFolder);
    for (const char *protocol : {"DLT645", "DIDO", "CustomPoll", "OpcUA", "unheard of"}) {
        append(standards, "a " + QLatin1String(protocol), QLatin1String(protocol));
    }
    append(standards, "no protocol");
    append(append(standards, "deep", "Modbus"), "deeper");
    append(append(project, "PLC"), "press");
    append(append(project, "Server"), "north");
    m_dialog->buildTree(*m_projects, "Riverside");
    QCOMPARE(linesOf(*m_tree->model()),
             QStringList({"Riverside", "  Standard", "    pumps", "    valves", "    a DLT645", "    a DIDO",
                          "    a OpcUA", "    deep", "  PLC", "    press"}));
    QVERIFY(!m_tree->isExpanded(node({"Riverside"})));
    QCOMPARE(m_tree->model()->parent(), m_dialog.data());
}

void TestImportDataDialog::treeKeepsIconsAndValues()
{
    const QModelIndex project = node({"Riverside"});
    QCOMPARE(project.data(projectDescriptionRole).toString(), "by the river");
    QCOMPARE(project.data(Qt::DecorationRole).value<QIcon>().pixmap(24).toImage(),
             m_projects->item(0)->icon().pixmap(24).toImage());
    QVERIFY(!m_projects->item(0)->icon().isNull());
    QCOMPARE(node(pumps).data(standardProtocolRole).toString(), "Modbus");
    // Names are what the lists are found by.
    QCOMPARE(m_tree->editTriggers(), QAbstractItemView::EditTriggers(QAbstractItemView::NoEditTriggers));
}

void TestImportDataDialog::firstProjectOfANameIsShown()
{
    QStandardItem *twin = ProjectTree::makeProject("Riverside", QString(), QString());
    append(append(twin, "PLC"), "of the twin");
    m_projects->appendRow(twin);
    m_dialog->buildTree(*m_projects, "Riverside");
    QCOMPARE(linesOf(*m_tree->model()).last(), "    valves");
}

void TestImportDataDialog::unknownProjectLeavesTheTreeEmpty()
{
    m_dialog->buildTree(*m_projects, "riverside");
    QVERIFY(m_tree->model());
    QCOMPARE(m_tree->model()->rowCount(), 0);
    QVERIFY(m_tree->isHeaderHidden());
    QCOMPARE(pressOk(), Handed({}, QString()));
}

void TestImportDataDialog::projectWithoutStandards()
{
    QStandardItem *bare = ProjectTree::makeProject("Hillside", QString(), QString());
    ProjectTree::appendMissingFolders(bare);
    m_projects->appendRow(bare);
    ImportDataDialog dialog;
    dialog.buildTree(*m_projects, "Hillside");
    QCOMPARE(linesOf(*dialog.findChild<QTreeView *>()->model()), QStringList({"Hillside", "  Standard"}));
    QCOMPARE(shown(*dialog.findChild<QTableView *>()->model()), QStringList(QString()));
}

void TestImportDataDialog::treeStaysAsItWas()
{
    const QStringList before = linesOf(*m_tree->model());
    m_projects->item(0)->setText("renamed");
    QCOMPARE(linesOf(*m_tree->model()), before);
    m_projects->clear();
    QCOMPARE(linesOf(*m_tree->model()), before);
    clickNode(valves);
    QCOMPARE(shown(*m_table->model()), QStringList({headers, "v0|9|int16|1"}));
}

void TestImportDataDialog::clickedDefinitionFillsTheTable()
{
    QCOMPARE(shown(*m_table->model()), QStringList(QString()));
    clickNode(pumps);
    QCOMPARE(shown(*m_table->model()),
             QStringList({headers, "p0|0|int16|1", "p1|1|int16|1", "p2|2|int16|1"}));
    QCOMPARE(m_table->horizontalHeader()->length(), m_table->viewport()->width());
    clickNode(valves);
    QCOMPARE(shown(*m_table->model()), QStringList({headers, "v0|9|int16|1"}));
}

void TestImportDataDialog::arrowKeysLeadToPointsToo()
{
    clickNode(pumps);
    QTest::keyClick(m_tree, Qt::Key_Down);
    QCOMPARE(shown(*m_table->model()), QStringList({headers, "v0|9|int16|1"}));
    clickRow(0);
    QCOMPARE(pressOk(), Handed({point("v0", "9")}, "valves"));
}

void TestImportDataDialog::projectAndFolderEmptyTheTable()
{
    for (const int depth : {1, 2}) {
        clickNode(pumps);
        QCOMPARE(m_table->model()->rowCount(), 3);
        clickNode(pumps.mid(0, depth));
        QCOMPARE(shown(*m_table->model()), QStringList(QString()));
    }
}

void TestImportDataDialog::longNamesAreReadable()
{
    const QString name = "Combined active total electrical energy of tariff 1";
    m_dialog->addPoints("valves", {collected(name, "0")});
    clickNode(valves);
    QVERIFY(m_table->columnWidth(0) > m_table->fontMetrics().horizontalAdvance(name));
}

void TestImportDataDialog::definitionWithoutPoints()
{
    m_dialog->addPoints("valves", {}); // in place of the earlier list
    clickNode(valves);
    QCOMPARE(shown(*m_table->model()), QStringList(headers));
}

void TestImportDataDialog::unknownMeterItemHasEmptyCells()
{
    m_dialog->addPoints("valves", {{{"name", "Ua"}}});
    clickNode(valves);
    QCOMPARE(shown(*m_table->model()), QStringList({headers, "Ua|||"}));
    clickRow(0);
    QCOMPARE(pressOk(),
             Handed({{{"name", "Ua"}, {"addr", QString()}, {"dataType", QString()}, {"length", QString()}}},
                    "valves"));
}

void TestImportDataDialog::selectionIsHandedOverInItsOrder()
{
    const LogTail log("ImportDataDialo:");
    clickNode(pumps);
    clickRow(2);
    clickRow(0);
    QCOMPARE(log.events(), QStringList());
    QCOMPARE(pressOk(), Handed({point("p2", "2"), point("p0", "0")}, "pumps"));
    QVERIFY(!m_table->selectionModel()->hasSelection());
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(m_table->model()->rowCount(), 3);
    QCOMPARE(log.events(), QStringList("ImportDataDialo: Onboard data"));
}

void TestImportDataDialog::rowClickedTwiceIsNotHandedOver()
{
    clickNode(pumps);
    clickRow(0);
    clickRow(1);
    clickRow(0);
    QCOMPARE(pressOk(), Handed({point("p1", "1")}, "pumps"));
}

void TestImportDataDialog::otherDefinitionForgetsTheSelection()
{
    clickNode(pumps);
    clickRow(0);
    clickRow(1);
    clickNode(valves);
    clickRow(0);
    QCOMPARE(pressOk(), Handed({point("v0", "9")}, "valves"));
}

void TestImportDataDialog::sameDefinitionClickedAgainForgetsTheSelection()
{
    clickNode(pumps);
    clickRow(0);
    clickNode(pumps);
    QCOMPARE(pressOk(), Handed({}, "pumps"));
}

// A click need not have made its node the current one, as one that a program makes.
void TestImportDataDialog::sameDefinitionMadeCurrentKeepsTheSelection()
{
    QVERIFY(QMetaObject::invokeMethod(m_dialog, "onTreeViewClicked", Q_ARG(QModelIndex, node(pumps))));
    clickRow(2);
    clickRow(0);
    m_tree->setCurrentIndex(node(pumps));
    QCOMPARE(pressOk(), Handed({point("p2", "2"), point("p0", "0")}, "pumps"));
    m_tree->setCurrentIndex(node(valves));
    clickRow(0);
    QCOMPARE(pressOk(), Handed({point("v0", "9")}, "valves"));
}

// Whether a point may come twice is for the form to say.
void TestImportDataDialog::sameRowsAreHandedOverTwice()
{
    clickNode(pumps);
    const Handed expected({point("p1", "1")}, "pumps");
    for (int round = 0; round < 2; ++round) {
        clickRow(1);
        QCOMPARE(pressOk(), expected);
    }
}

void TestImportDataDialog::nothingSelectedIsHandedOverToo()
{
    clickNode(pumps);
    QCOMPARE(pressOk(), Handed({}, "pumps"));
}

void TestImportDataDialog::enterHandsNothingOver()
{
    clickNode(pumps);
    clickRow(1);
    QSignalSpy spy(m_dialog.data(), &ImportDataDialog::dataSelected);
    QTest::keyClick(m_tree, Qt::Key_Return);
    QTest::keyClick(m_table, Qt::Key_Enter);
    QCOMPARE(spy.count(), 0);
    QVERIFY(m_dialog->isVisible());
}

void TestImportDataDialog::cancelCloses()
{
    QSignalSpy selected(m_dialog.data(), &ImportDataDialog::dataSelected);
    QSignalSpy rejected(m_dialog.data(), &QDialog::rejected);
    clickNode(pumps);
    clickRow(1);
    QTest::mouseClick(button("cancelButton"), Qt::LeftButton);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(rejected.count(), 1);
    QCOMPARE(selected.count(), 0);
}

void TestImportDataDialog::receiverMayCloseTheDialog()
{
    const LogTail log("ImportDataDialo:");
    connect(m_dialog.data(), &ImportDataDialog::dataSelected, this, [this] { delete m_dialog; });
    m_dialog->onOkButtonClicked();
    QVERIFY(!m_dialog);
    QCOMPARE(log.events(), QStringList());
}

void TestImportDataDialog::logsItsLife()
{
    const LogTail log("ImportDataDialog");
    delete new ImportDataDialog;
    QCOMPARE(log.events(), QStringList({"ImportDataDialog：new-nuilt", "ImportDataDialog：destroyed"}));
}

QTEST_MAIN(TestImportDataDialog)
#include "tst_importdatadialog.moc"

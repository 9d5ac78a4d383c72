#include "mainwindow/pointimport.h"

#include "servers/importdatadialog.h"
#include "servers/serverhj212editdialog.h"
#include "windowundertest.h"
#include "workspacefake.h"

#include <QJsonObject>
#include <QPointer>
#include <QTableView>

namespace {

using Dialog = QPointer<ImportDataDialog>;

// What the slot opens, called by its name; null if it opens no dialog.
Dialog open(CMainWindow *window)
{
    const auto before = window->findChildren<ImportDataDialog *>();
    if (!QMetaObject::invokeMethod(window, "openImportDataDialog")) {
        return {};
    }
    const auto after = window->findChildren<ImportDataDialog *>();
    return after.size() == before.size() + 1 ? after.last() : nullptr;
}

void setPoints(QStandardItem *standard, const RowList &rows)
{
    standard->setData(QVariant::fromValue(GroupMap{{"Modbus-1", rows}}), standardDatasRole);
}

QStringList firstColumn(const QAbstractItemModel &model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row) {
        texts.append(model.index(row, 0).data().toString());
    }
    return texts;
}

// The names of the points that the dialog shows for a Standard.
QStringList pointsOf(ImportDataDialog *dialog, const QString &standard)
{
    const QAbstractItemModel &tree = *dialog->findChild<QTreeView *>()->model();
    const QModelIndexList found =
        tree.match(tree.index(0, 0), Qt::DisplayRole, standard, 1, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty()) {
        return {"not in the tree"};
    }
    dialog->onTreeViewClicked(found.first());
    return firstColumn(*dialog->findChild<QTableView *>()->model());
}

const RowList onePump{{"", "1", "ABCD", "false", "false"}, {"0", "speed", "int16", "1", "r"}};
const QString editServer = "Edit Server";

// A project with the Standard "pumps", which has the point "speed", and a folder for Servers.
QStandardItem *addPlant(WindowUnderTest *window)
{
    QStandardItem *project = window->addProject("Riverside");
    setPoints(window->addStandard(project, "pumps", "Modbus"), onePump);
    return ProjectTree::appendDefinition(project, ProjectTree::serverFolder, QString());
}

// The form of a Server, opened as the slot does that no menu leads to.
QDialog *openForm(WindowUnderTest *window, const QStandardItem *server)
{
    window->select(server);
    QMetaObject::invokeMethod(window, "slotServerEditFile");
    return window->form(editServer);
}

QStandardItem *addServer(QStandardItem *folder, const QString &name, const QString &protocol)
{
    QStandardItem *server = ProjectTree::appendDefinition(folder, name, QString());
    server->setData(protocol, serverProtocolRole);
    return server;
}

// Picks the one point of "pumps" and presses "OK".
void pickSpeed(ImportDataDialog *dialog)
{
    auto *tree = dialog->findChild<QTreeView *>();
    const QModelIndexList pumps = tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole, "pumps",
                                                       1, Qt::MatchExactly | Qt::MatchRecursive);
    tree->setCurrentIndex(pumps.value(0));
    dialog->findChild<QTableView *>()->selectRow(0);
    WindowUnderTest::press(dialog, "okButton");
}

// The cells of each table of a form, a text a row, behind the table's name.
QStringList tableRows(const QWidget *form)
{
    QStringList rows;
    const auto tables = form->findChildren<QTableView *>();
    for (const QTableView *table : tables) {
        const QAbstractItemModel &model = *table->model();
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells{table->objectName()};
            for (int column = 0; column < model.columnCount(); ++column) {
                cells.append(model.index(row, column).data().toString());
            }
            rows.append(cells.join(QLatin1Char('|')));
        }
    }
    return rows;
}

// The form's inputs and the rows of its tables.
QStringList contents(const QWidget *form)
{
    QStringList texts = tableRows(form);
    const auto edits = form->findChildren<QLineEdit *>();
    for (const QLineEdit *edit : edits) {
        texts.append(edit->objectName() + QLatin1Char('=') + edit->text());
    }
    return texts;
}

// The forms with tables, and the row that "speed" becomes there.
void addFormsWithTables()
{
    QTest::addColumn<QString>("row");
    QTest::newRow("ModbusTCP(Slave)") << "holdingRegisters|pumps|speed|int16|0|1";
    QTest::newRow("HJ212") << "points|pumps|speed|";
    QTest::newRow("SL651") << "points|pumps|speed|";
}

} // namespace

// The point import as the forms of Servers reach it: by the main window's slot, for the current project.
class TestImportData : public QObject
{
    Q_OBJECT
private slots:
    void dialogWithoutACurrentItemStaysHidden();
    void opensForTheProjectOfTheCurrentItem_data();
    void opensForTheProjectOfTheCurrentItem();
    void showsTheProjectAsItWasThen();
    void eachCommandOpensADialogOfItsOwn();
    void closedDialogIsFreed_data();
    void closedDialogIsFreed();
    void dialogDiesWithTheWindow();
    void dialogHandsItsPointsToTheWindow();
    void pickedPointsReachTheTableThatIsShown_data();
    void pickedPointsReachTheTableThatIsShown();
    void pointsForNoFormAreDropped();
    void formWithoutATableTakesNothing_data();
    void formWithoutATableTakesNothing();
    void pointsGoToTheFormThatIsCurrentByThen();
    void closedFormIsNotTouched_data() { addFormsWithTables(); }
    void closedFormIsNotTouched();
    void reboundFormStaysTheCurrentOne_data();
    void reboundFormStaysTheCurrentOne();
    void receiverMayDie();
    void importNeedsNoMainWindow();
};

void TestImportData::dialogWithoutACurrentItemStaysHidden()
{
    Dialog dialog;
    {
        WindowUnderTest window;
        window.addProject("Riverside");
        window.projectTree()->setCurrentIndex(QModelIndex());
        QTest::ignoreMessage(QtDebugMsg, "No project selected.");
        dialog = open(&window);
        window.settle();
        QVERIFY(dialog);
        QCOMPARE(dialog->parent(), &window);
        QVERIFY(!dialog->isVisible());
    }
    QVERIFY(!dialog);
}

void TestImportData::opensForTheProjectOfTheCurrentItem_data()
{
    QTest::addColumn<QStringList>("path");
    QTest::newRow("project") << QStringList();
    QTest::newRow("folder") << QStringList{"Box"};
    QTest::newRow("definition") << QStringList{"Standard", "pumps"};
}

void TestImportData::opensForTheProjectOfTheCurrentItem()
{
    QFETCH(QStringList, path);
    WindowUnderTest window;
    setPoints(window.addStandard(window.addProject("Hillside"), "pumps", "Modbus"), {});
    QStandardItem *current = window.addProject("Riverside");
    setPoints(window.addStandard(current, "pumps", "Modbus"), onePump);
    for (const QString &text : path) {
        current = ProjectTree::childNamed(current, text);
    }
    window.select(current);

    const Dialog dialog = open(&window);
    QVERIFY(dialog);
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->isModal());
    QCOMPARE(dialog->parent(), &window);
    QCOMPARE(dialog->projectName(), "Riverside");
    QCOMPARE(dialog->projectDescription(), "about Riverside");
    QCOMPARE(firstColumn(*dialog->findChild<QTreeView *>()->model()), QStringList("Riverside"));
    QCOMPARE(pointsOf(dialog, "pumps"), QStringList("speed"));
}

void TestImportData::showsTheProjectAsItWasThen()
{
    WindowUnderTest window;
    QStandardItem *project = window.addProject("Riverside");
    QStandardItem *pumps = window.addStandard(project, "pumps", "Modbus");
    setPoints(pumps, onePump);
    window.select(project);
    const Dialog dialog = open(&window);
    setPoints(pumps, {});
    QCOMPARE(pointsOf(dialog, "pumps"), QStringList("speed"));
    window.projectModel()->removeRow(0);
    QCOMPARE(pointsOf(dialog, "pumps"), QStringList("speed"));
}

void TestImportData::eachCommandOpensADialogOfItsOwn()
{
    WindowUnderTest window;
    window.select(window.addProject("Riverside"));
    const Dialog first = open(&window);
    const Dialog second = open(&window);
    QVERIFY(first && second && first != second);
    QVERIFY(first->isVisible() && second->isVisible());
}

void TestImportData::closedDialogIsFreed_data()
{
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("by Cancel") << true;
    QTest::newRow("by its frame") << false;
}

void TestImportData::closedDialogIsFreed()
{
    QFETCH(bool, cancelled);
    WindowUnderTest window;
    window.select(window.addProject("Riverside"));
    const Dialog dialog = open(&window);
    QVERIFY(dialog);
    if (cancelled) {
        window.press(dialog, "cancelButton");
    } else {
        dialog->close();
    }
    window.settle();
    QVERIFY(!dialog);
}

void TestImportData::dialogDiesWithTheWindow()
{
    Dialog dialog;
    {
        WindowUnderTest window;
        window.select(window.addProject("Riverside"));
        dialog = open(&window);
        QVERIFY(dialog);
    }
    QVERIFY(!dialog);
}

void TestImportData::dialogHandsItsPointsToTheWindow()
{
    WindowUnderTest window;
    window.select(window.addProject("Riverside"));
    const Dialog dialog = open(&window);
    QVERIFY(disconnect(dialog.data(), &ImportDataDialog::dataSelected, &window,
                       &CMainWindow::handleImportedData));
    QVERIFY(!disconnect(dialog.data(), &ImportDataDialog::dataSelected, nullptr, nullptr));
}

void TestImportData::pickedPointsReachTheTableThatIsShown_data()
{
    addFormsWithTables();
    QTest::newRow("ModbusTCP(Slave), second map") << "inputRegisters|pumps|speed|int16|0|1";
}

void TestImportData::pickedPointsReachTheTableThatIsShown()
{
    QFETCH(QString, row);
    WindowUnderTest window;
    const QStringList tag = QString::fromLatin1(QTest::currentDataTag()).split(", ");
    QDialog *form = openForm(&window, addServer(addPlant(&window), "north", tag.first()));
    QVERIFY(form);
    if (tag.size() > 1) {
        form->findChild<QTabWidget *>()->setCurrentIndex(1);
    }
    QVERIFY(QMetaObject::invokeMethod(form, "importDataPoints"));
    const Dialog dialog = window.findChild<ImportDataDialog *>();
    QVERIFY(dialog);
    QCOMPARE(tableRows(form), QStringList());
    pickSpeed(dialog);
    QCOMPARE(tableRows(form), QStringList(row));
    pickSpeed(dialog); // that a point comes once is the form's doing
    QCOMPARE(tableRows(form), QStringList(row));
}

void TestImportData::pointsForNoFormAreDropped()
{
    WindowUnderTest window;
    const QList<QJsonObject> points{{{"name", "speed"}}};
    QVERIFY(QMetaObject::invokeMethod(&window, "handleImportedData", Q_ARG(QList<QJsonObject>, points),
                                      Q_ARG(QString, "pumps")));
    QCOMPARE(window.messages(), QStringList());
}

void TestImportData::formWithoutATableTakesNothing_data()
{
    QTest::addColumn<QString>("protocol");
    for (const char *protocol : {"MQTT", "AliMQTT", "OneNetMQTT", "HuaWeiMQTT", "OpcUaServer"}) {
        QTest::newRow(protocol) << QString::fromLatin1(protocol);
    }
}

void TestImportData::formWithoutATableTakesNothing()
{
    QFETCH(QString, protocol);
    WindowUnderTest window;
    QStandardItem *folder = addPlant(&window);
    // With a table before it, whose tab the other form takes.
    QVERIFY(openForm(&window, addServer(folder, "north", "HJ212")));
    const QDialog *form = openForm(&window, addServer(folder, "south", protocol));
    window.settle();
    QVERIFY(form);
    const QStringList before = contents(form);
    const Dialog dialog = open(&window);
    QVERIFY(dialog);
    pickSpeed(dialog);
    QCOMPARE(contents(form), before);
    QCOMPARE(window.messages(), QStringList());
}

void TestImportData::pointsGoToTheFormThatIsCurrentByThen()
{
    WindowUnderTest window;
    QStandardItem *folder = addPlant(&window);
    QStandardItem *first = addServer(folder, "north", "HJ212");
    openForm(&window, first);
    const Dialog dialog = open(&window);
    QVERIFY(dialog);
    const QDialog *form = openForm(&window, addServer(folder, "south", "SL651"));
    window.settle();
    pickSpeed(dialog);
    QCOMPARE(tableRows(form), QStringList("points|pumps|speed|"));
    form = openForm(&window, first);
    QCOMPARE(tableRows(form), QStringList());
}

void TestImportData::closedFormIsNotTouched()
{
    WindowUnderTest window;
    const QString protocol = QString::fromLatin1(QTest::currentDataTag());
    const QStandardItem *server = addServer(addPlant(&window), "north", protocol);
    const QPointer<QDialog> form = openForm(&window, server);
    QVERIFY(form);
    const Dialog dialog = open(&window);
    QVERIFY(dialog);
    window.press(form, "cancelButton");
    window.settle();
    QVERIFY(!form);
    QVERIFY(!window.currentServerForm());
    pickSpeed(dialog);
    QVERIFY(dialog->isVisible());
    QCOMPARE(window.messages(), QStringList());
    QCOMPARE(tableRows(openForm(&window, server)), QStringList());
}

void TestImportData::reboundFormStaysTheCurrentOne_data()
{
    addFormsWithTables();
    QTest::newRow("OpcUaServer") << QString();
}

void TestImportData::reboundFormStaysTheCurrentOne()
{
    QFETCH(QString, row);
    WindowUnderTest window;
    QStandardItem *folder = addPlant(&window);
    const QString protocol = QString::fromLatin1(QTest::currentDataTag());
    QStandardItem *first = addServer(folder, "north", protocol);
    QDialog *form = openForm(&window, first);
    QVERIFY(form);
    QCOMPARE(window.currentServerForm(), form);
    const QStandardItem *second = addServer(folder, "south", protocol);
    QCOMPARE(openForm(&window, second), form);
    QCOMPARE(window.currentServerForm(), form);
    const Dialog dialog = open(&window);
    QVERIFY(dialog);
    pickSpeed(dialog);
    QCOMPARE(tableRows(form), row.isEmpty() ? QStringList() : QStringList(row));
    // Saved, the point is the second Server's.
    window.press(form, "saveButton");
    QCOMPARE(openForm(&window, first), form);
    QCOMPARE(tableRows(form), QStringList());
    openForm(&window, second);
    QCOMPARE(tableRows(form).size(), row.isEmpty() ? 0 : 1);
}

void TestImportData::receiverMayDie()
{
    QWidget window;
    PointImport points(nullptr, &window);
    {
        WorkspaceFake workspace;
        QStandardItem item;
        ServerHJ212EditDialog form(&item, &workspace);
        points.considerForm(&form);
        QCOMPARE(points.receiver(), &form);
        points.deliver({{{"name", "speed"}}}, "pumps");
        QCOMPARE(tableRows(&form).size(), 1);
    }
    QVERIFY(!points.receiver());
    points.deliver({{{"name", "speed"}}}, "pumps");
}

void TestImportData::importNeedsNoMainWindow()
{
    QWidget window;
    QStandardItemModel model;
    QTreeView tree;
    tree.setModel(&model);
    model.appendRow(ProjectTree::makeProject("plant", QString(), QString()));
    PointImport points(&tree, &window);
    QTest::ignoreMessage(QtDebugMsg, "No project selected.");
    QVERIFY(!points.open());
    QCOMPARE(window.findChildren<ImportDataDialog *>().size(), 1);
    QVERIFY(!window.findChild<ImportDataDialog *>()->isVisible());
    tree.setCurrentIndex(model.index(0, 0));
    const ImportDataDialog *dialog = points.open();
    QVERIFY(dialog && dialog->isVisible());
    QCOMPARE(dialog->parentWidget(), &window);
}

QTEST_MAIN(TestImportData)
#include "tst_importdata.moc"

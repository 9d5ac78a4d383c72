#include "servers/importdatadialog.h"
#include "windowundertest.h"

#include <QJsonObject>
#include <QPointer>
#include <QTableView>

// The point import as the forms of Servers reach it: by the main window's slot, for the current project.
class TestImportData : public QObject
{
    Q_OBJECT
private slots:
    void nothingOpensWithoutACurrentItem();
    void opensForTheProjectOfTheCurrentItem_data();
    void opensForTheProjectOfTheCurrentItem();
    void showsTheProjectAsItWasThen();
    void eachCommandOpensADialogOfItsOwn();
    void closedDialogIsFreed_data();
    void closedDialogIsFreed();
    void dialogDiesWithTheWindow();
    void dialogHandsItsPointsToTheWindow();
    void pointsForNoFormAreDropped();
    void currentServerFormMayDie();
};

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
    standard->setData(QVariant::fromValue(GroupMap{{QStringLiteral("Modbus-1"), rows}}), standardDatasRole);
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
        return {QStringLiteral("not in the tree")};
    }
    dialog->onTreeViewClicked(found.first());
    return firstColumn(*dialog->findChild<QTableView *>()->model());
}

const RowList onePump{{"", "1", "ABCD", "false", "false"}, {"0", "speed", "int16", "1", "r"}};

} // namespace

void TestImportData::nothingOpensWithoutACurrentItem()
{
    WindowUnderTest window;
    window.addProject(QStringLiteral("Riverside"));
    window.projectTree()->setCurrentIndex(QModelIndex());
    QTest::ignoreMessage(QtDebugMsg, "No project selected.");
    const Dialog dialog = open(&window);
    QVERIFY(!dialog || !dialog->isVisible());
    window.settle();
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
    setPoints(window.addStandard(window.addProject(QStringLiteral("Hillside")), QStringLiteral("pumps"),
                                 QStringLiteral("Modbus")),
              {});
    QStandardItem *current = window.addProject(QStringLiteral("Riverside"));
    setPoints(window.addStandard(current, QStringLiteral("pumps"), QStringLiteral("Modbus")), onePump);
    for (const QString &text : path) {
        current = ProjectTree::childNamed(current, text);
    }
    window.select(current);

    const Dialog dialog = open(&window);
    QVERIFY(dialog);
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->isModal());
    QCOMPARE(dialog->parent(), &window);
    QCOMPARE(dialog->projectName(), QStringLiteral("Riverside"));
    QCOMPARE(dialog->projectDescription(), QStringLiteral("about Riverside"));
    QCOMPARE(firstColumn(*dialog->findChild<QTreeView *>()->model()),
             QStringList(QStringLiteral("Riverside")));
    QCOMPARE(pointsOf(dialog, QStringLiteral("pumps")), QStringList(QStringLiteral("speed")));
}

void TestImportData::showsTheProjectAsItWasThen()
{
    WindowUnderTest window;
    QStandardItem *project = window.addProject(QStringLiteral("Riverside"));
    QStandardItem *pumps = window.addStandard(project, QStringLiteral("pumps"), QStringLiteral("Modbus"));
    setPoints(pumps, onePump);
    window.select(project);
    const Dialog dialog = open(&window);
    setPoints(pumps, {});
    QCOMPARE(pointsOf(dialog, QStringLiteral("pumps")), QStringList(QStringLiteral("speed")));
    window.projectModel()->removeRow(0);
    QCOMPARE(pointsOf(dialog, QStringLiteral("pumps")), QStringList(QStringLiteral("speed")));
}

void TestImportData::eachCommandOpensADialogOfItsOwn()
{
    WindowUnderTest window;
    window.select(window.addProject(QStringLiteral("Riverside")));
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
    window.select(window.addProject(QStringLiteral("Riverside")));
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
        window.select(window.addProject(QStringLiteral("Riverside")));
        dialog = open(&window);
        QVERIFY(dialog);
    }
    QVERIFY(!dialog);
}

void TestImportData::dialogHandsItsPointsToTheWindow()
{
    WindowUnderTest window;
    window.select(window.addProject(QStringLiteral("Riverside")));
    const Dialog dialog = open(&window);
    QVERIFY(disconnect(dialog.data(), &ImportDataDialog::dataSelected, &window,
                       &CMainWindow::handleImportedData));
    QVERIFY(!disconnect(dialog.data(), &ImportDataDialog::dataSelected, nullptr, nullptr));
}

void TestImportData::pointsForNoFormAreDropped()
{
    WindowUnderTest window;
    const QList<QJsonObject> points{{{QStringLiteral("name"), QStringLiteral("speed")}}};
    QDialog other;
    for (QDialog *form : {static_cast<QDialog *>(nullptr), &other}) {
        window.setCurrentServerForm(form);
        QVERIFY(QMetaObject::invokeMethod(&window, "handleImportedData", Q_ARG(QList<QJsonObject>, points),
                                          Q_ARG(QString, QStringLiteral("pumps"))));
        QCOMPARE(window.messages(), QStringList());
    }
}

void TestImportData::currentServerFormMayDie()
{
    WindowUnderTest window;
    QVERIFY(!window.currentServerForm());
    {
        QDialog form;
        window.setCurrentServerForm(&form);
        QCOMPARE(window.currentServerForm(), &form);
    }
    QVERIFY(!window.currentServerForm());
    window.handleImportedData({}, QString());
}

QTEST_MAIN(TestImportData)
#include "tst_importdata.moc"

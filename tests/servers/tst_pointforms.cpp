#include "logtail.h"
#include "messages.h"
#include "pointformtest.h"
#include "servers/serverhj212editdialog.h"
#include "servers/servermodbustcpeditdialog.h"
#include "servers/serversl651editdialog.h"
#include "workspacefake.h"

#include <QSignalSpy>
#include <QStandardItemModel>

using namespace PointFormTest;

// What the three forms with points have in common: menu, import, delete, and the ends of a form.
class TestPointForms : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void titleOfTheTab_data();
    void titleOfTheTab();
    void menuImportsAndDeletes_data() { forms(); }
    void menuImportsAndDeletes();
    void menuOfAnEmptyTableDeletesNothing_data() { forms(); }
    void menuOfAnEmptyTableDeletesNothing();
    void onlyTheSelectedRowIsDeleted_data() { forms(); }
    void onlyTheSelectedRowIsDeleted();
    void rowSelectedFirstIsDeletedFirst_data() { forms(); }
    void rowSelectedFirstIsDeletedFirst();
    void importWithoutAMainWindowWarns_data() { forms(); }
    void importWithoutAMainWindowWarns();
    void slotsAreCalledByName_data() { forms(); }
    void slotsAreCalledByName();
    void importCanBeQueued_data() { forms(); }
    void importCanBeQueued();
    void emptyImportChangesNothing_data() { forms(); }
    void emptyImportChangesNothing();
    void linesOfTheActivityLog_data();
    void linesOfTheActivityLog();
    void importIsLoggedWhenItHasRun_data() { forms(); }
    void importIsLoggedWhenItHasRun();
    void warningIsLoggedWhenItHasGone_data() { forms(); }
    void warningIsLoggedWhenItHasGone();
    void deleteIsLoggedWhenTheRowHasGone_data() { forms(); }
    void deleteIsLoggedWhenTheRowHasGone();
    void cancelLeavesTheItemAlone_data() { forms(); }
    void cancelLeavesTheItemAlone();
    void formOutlivesItsNode_data() { forms(); }
    void formOutlivesItsNode();
    void formMayCloseUnderItsMenu_data() { forms(); }
    void formMayCloseUnderItsMenu();
    void formMayCloseUnderTheWarning_data() { forms(); }
    void formMayCloseUnderTheWarning();
    void rolesOfTheWrongTypeDoNoHarm_data() { forms(); }
    void rolesOfTheWrongTypeDoNoHarm();
    void unknownProtocol_data();
    void unknownProtocol();
    void columnsFillTheTable_data() { forms(); }
    void columnsFillTheTable();

private:
    static void forms();
    PointForm *make(QStandardItem *item, Workspace *workspace) const;
    PointForm *shown() const;

    QStandardItem *m_item = nullptr;
    WorkspaceFake *m_workspace = nullptr;
    Messages *m_messages = nullptr;
};

namespace {

const QString source = "Meter A";

QTableView *table(const PointForm *form)
{
    const auto views = form->findChildren<QTableView *>();
    for (QTableView *view : views) {
        if (view->contextMenuPolicy() == Qt::CustomContextMenu && view->isVisibleTo(form)) {
            return view;
        }
    }
    return nullptr;
}

QStringList names(const PointForm *form)
{
    QStringList texts;
    for (int row = 0; row < table(form)->model()->rowCount(); ++row) {
        texts.append(table(form)->model()->index(row, 1).data().toString());
    }
    return texts;
}

QList<QJsonObject> points(const QStringList &names)
{
    QList<QJsonObject> list;
    for (const QString &name : names) {
        list.append(point(name));
    }
    return list;
}

// Looks at what is in the log while the import runs.
class ImportWatch : public WorkspaceFake
{
public:
    explicit ImportWatch(const LogTail *log)
        : m_log(log)
    {
    }
    void openImportDataDialog() override { events = m_log->events(); }

    QStringList events{"no import"};

private:
    const LogTail *m_log;
};

const QStringList abc = {"a", "b", "c"};

} // namespace

void TestPointForms::forms()
{
    QTest::addColumn<QString>("className");
    for (const char *name : {"ServerModbusTCPEditDialog", "ServerHJ212EditDialog", "ServerSL651EditDialog"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

PointForm *TestPointForms::make(QStandardItem *item, Workspace *workspace) const
{
    const QByteArray name = QTest::currentDataTag();
    if (name.startsWith("ServerModbusTCP")) {
        return new ServerModbusTCPEditDialog(item, workspace);
    }
    if (name.startsWith("ServerHJ212")) {
        return new ServerHJ212EditDialog(item, workspace);
    }
    return new ServerSL651EditDialog(item, workspace);
}

PointForm *TestPointForms::shown() const
{
    PointForm *form = make(m_item, m_workspace);
    form->resize(800, 700);
    form->show();
    return form;
}

void TestPointForms::init()
{
    m_item = new QStandardItem("Upstream");
    m_workspace = new WorkspaceFake;
    m_messages = new Messages;
}

void TestPointForms::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    delete m_messages;
    delete m_workspace;
    delete m_item;
}

void TestPointForms::titleOfTheTab_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("ServerModbusTCPEditDialog") << "Edit Server";
    QTest::newRow("ServerHJ212EditDialog") << "Edit Standard";
    QTest::newRow("ServerSL651EditDialog") << "Edit Standard";
}

void TestPointForms::titleOfTheTab()
{
    QFETCH(QString, title);
    const QScopedPointer<PointForm> form(shown());
    QCOMPARE(form->windowTitle(), title);
    for (const char *button : {"saveButton", "cancelButton"}) {
        QVERIFY(!form->findChild<QPushButton *>(QLatin1String(button))->icon().isNull());
    }
}

void TestPointForms::menuImportsAndDeletes()
{
    const QScopedPointer<PointForm> form(shown());
    const QStringList menu = {"Context menu", "Import Data Points", "Delete"};
    QCOMPARE(chooseInMenu(table(form.data()), QModelIndex(), menu.at(1)), menu);
    QCOMPARE(m_workspace->imports, 1);
    form->handleImportedData(points(abc), source);
    const QAbstractItemModel *model = table(form.data())->model();
    QCOMPARE(chooseInMenu(table(form.data()), model->index(1, 1), menu.at(2)), menu);
    QCOMPARE(names(form.data()), (QStringList{"a", "c"}));
    QCOMPARE(m_workspace->imports, 1);
}

void TestPointForms::menuOfAnEmptyTableDeletesNothing()
{
    const QScopedPointer<PointForm> form(shown());
    chooseInMenu(table(form.data()), QModelIndex(), "Delete");
    QCOMPARE(names(form.data()), QStringList());
    form->handleImportedData(points(abc), source);
    table(form.data())->clearSelection();
    form->deleteSelectedItem();
    QCOMPARE(names(form.data()), abc);
}

void TestPointForms::onlyTheSelectedRowIsDeleted()
{
    const QScopedPointer<PointForm> form(shown());
    form->handleImportedData(points(abc), source);
    table(form.data())->selectRow(2);
    form->deleteSelectedItem();
    QCOMPARE(names(form.data()), abc.mid(0, 2));
}

void TestPointForms::rowSelectedFirstIsDeletedFirst()
{
    const QScopedPointer<PointForm> form(shown());
    form->handleImportedData(points(abc), source);
    QTableView *view = table(form.data());
    const auto click = [view](int row, Qt::KeyboardModifiers keys) {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, keys,
                          view->visualRect(view->model()->index(row, 1)).center());
    };
    click(2, Qt::NoModifier);
    click(0, Qt::ControlModifier);
    QCOMPARE(view->selectionModel()->selectedRows().size(), 2);
    form->deleteSelectedItem();
    QCOMPARE(names(form.data()), abc.mid(0, 2));
    form->deleteSelectedItem();
    QCOMPARE(names(form.data()), abc.mid(1, 1));
    form->deleteSelectedItem(); // nothing is selected any more
    QCOMPARE(names(form.data()), abc.mid(1, 1));
}

void TestPointForms::importWithoutAMainWindowWarns()
{
    QFETCH(QString, className);
    const QScopedPointer<PointForm> form(make(m_item, nullptr));
    const LogTail log(className);
    m_messages->expect();
    QVERIFY(QMetaObject::invokeMethod(form.data(), "importDataPoints"));
    QCOMPARE(m_messages->told(), QStringList("Warning|Main window pointer is not set."));
    QCOMPARE(log.events(), QStringList(className + ": Import Data Points"));
    form->handleImportedData(points({"a", "a"}), source);
    QCOMPARE(names(form.data()), abc.mid(0, 1));
}

void TestPointForms::slotsAreCalledByName()
{
    const QScopedPointer<PointForm> form(shown());
    QVERIFY(QMetaObject::invokeMethod(form.data(), "handleImportedData",
                                      Q_ARG(QList<QJsonObject>, points(abc)), Q_ARG(QString, source)));
    QCOMPARE(names(form.data()), abc);
    table(form.data())->selectRow(0);
    QVERIFY(QMetaObject::invokeMethod(form.data(), "deleteSelectedItem"));
    QCOMPARE(names(form.data()), abc.mid(1));
    QVERIFY(QMetaObject::invokeMethod(form.data(), "saveChanges"));
    QCOMPARE(m_workspace->messages.size(), 1);
    QVERIFY(QMetaObject::invokeMethod(form.data(), "clearData"));
    QCOMPARE(names(form.data()), QStringList());
    ModalDialogs menus;
    menus.expect([](QWidget *menu) { menu->close(); });
    QVERIFY(QMetaObject::invokeMethod(form.data(), "showContextMenu", Q_ARG(QPoint, QPoint(5, 5))));
    QCOMPARE(menus.pending(), 0);
}

void TestPointForms::importCanBeQueued()
{
    const QScopedPointer<PointForm> form(shown());
    QVERIFY(QMetaObject::invokeMethod(form.data(), "handleImportedData", Qt::QueuedConnection,
                                      Q_ARG(QList<QJsonObject>, points(abc)), Q_ARG(QString, source)));
    QCOMPARE(names(form.data()), QStringList());
    QTRY_COMPARE(names(form.data()), abc);
}

void TestPointForms::emptyImportChangesNothing()
{
    const QScopedPointer<PointForm> form(shown());
    form->handleImportedData({}, source);
    QCOMPARE(names(form.data()), QStringList());
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestPointForms::linesOfTheActivityLog_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("ServerModbusTCPEditDialog") << QStringList{
        "ServerModbusTCPEditDialog: new-nuilt", "ServerModbusTCPEditDialog: Import Data Points",
        "ServerModbusTCPEditDialog: delete",    "ServerModbusTCPEditDialog: save",
        "ServerModbusTCPEditDialog: replace",   "ServerModbusTCPEditDialog: destroyed"};
    QTest::newRow("ServerHJ212EditDialog") << QStringList{"ServerHJ212EditDialog: loadParameters",
                                                          "ServerHJ212EditDialog: new-nuilt",
                                                          "ServerHJ212EditDialog: Import Data Points",
                                                          "ServerHJ212EditDialog: Delete",
                                                          "ServerHJ212EditDialog: save",
                                                          "ServerHJ212EditDialog: loadParameters",
                                                          "ServerHJ212EditDialog: replace",
                                                          "ServerHJ212EditDialog: destroyed"};
    // A deleted point has the HJ212 form's line.
    QTest::newRow("ServerSL651EditDialog")
        << QStringList{"ServerSL651EditDialog: new-nuilt", "ServerSL651EditDialog: Import Data Points",
                       "ServerHJ212EditDialog: Delete",    "ServerSL651EditDialog: save",
                       "ServerSL651EditDialog: replace",   "ServerSL651EditDialog: destroyed"};
}

void TestPointForms::linesOfTheActivityLog()
{
    QFETCH(QStringList, lines);
    const LogTail log("Server");
    PointForm *form = shown();
    form->importDataPoints();
    form->deleteSelectedItem(); // nothing is selected: no line
    form->handleImportedData(points(abc), source);
    table(form)->selectRow(0);
    form->deleteSelectedItem();
    press(*form, "saveButton");
    form->replaceItem(m_item);
    delete form;
    QCOMPARE(log.events(), lines);
}

void TestPointForms::importIsLoggedWhenItHasRun()
{
    QFETCH(QString, className);
    const QStringList line(className + ": Import Data Points");
    const LogTail log(className);
    ImportWatch watch(&log);
    const QScopedPointer<PointForm> form(make(m_item, &watch));
    const QStringList opened = log.events();
    form->importDataPoints();
    QCOMPARE(watch.events, opened);
    QCOMPARE(log.events(), opened + line);
}

void TestPointForms::warningIsLoggedWhenItHasGone()
{
    QFETCH(QString, className);
    const QScopedPointer<PointForm> form(make(m_item, nullptr));
    const LogTail log(className);
    QStringList besideTheBox{"no box"};
    m_messages->expect();
    QTimer::singleShot(0, this, [&] { besideTheBox = log.events(); });
    form->importDataPoints();
    QCOMPARE(besideTheBox, QStringList());
    QCOMPARE(log.events(), QStringList(className + ": Import Data Points"));
}

void TestPointForms::deleteIsLoggedWhenTheRowHasGone()
{
    const QScopedPointer<PointForm> form(shown());
    form->handleImportedData(points(abc), source);
    table(form.data())->selectRow(0);
    const LogTail log("Server");
    QStringList before;
    const auto look = [&] { before.append(log.events()); };
    const QAbstractItemModel *model = table(form.data())->model();
    connect(model, &QAbstractItemModel::rowsRemoved, this, look);
    connect(model, &QAbstractItemModel::dataChanged, this, look); // as of the addresses that close up
    form->deleteSelectedItem();
    QCOMPARE(names(form.data()), abc.mid(1));
    QCOMPARE(before, QStringList());
    QCOMPARE(log.events().size(), 1);
    QVERIFY(log.events().first().endsWith("elete"));
}

void TestPointForms::cancelLeavesTheItemAlone()
{
    const QScopedPointer<PointForm> form(shown());
    const auto before = rolesOf(*m_item);
    QSignalSpy rejected(form.data(), &QDialog::rejected);
    edit(*form, "port")->setText("15");
    form->handleImportedData(points(abc), source);
    press(*form, "cancelButton");
    QCOMPARE(rejected.size(), 1);
    QCOMPARE(rolesOf(*m_item), before);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestPointForms::formOutlivesItsNode()
{
    QStandardItemModel tree;
    auto *node = new QStandardItem("Gone");
    tree.appendRow(node);
    const QScopedPointer<PointForm> form(make(node, m_workspace));
    tree.removeRow(0);
    form->handleImportedData(points(abc), source);
    press(*form, "saveButton");
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestPointForms::formMayCloseUnderItsMenu()
{
    QPointer<PointForm> form(shown());
    ModalDialogs menus;
    menus.expect([&](QWidget *menu) {
        delete form;
        menu->close();
    });
    form->showContextMenu(QPoint(5, 5));
    QVERIFY(!form);
}

void TestPointForms::formMayCloseUnderTheWarning()
{
    QFETCH(QString, className);
    QPointer<PointForm> form(make(m_item, nullptr));
    const LogTail log(className);
    QTimer::singleShot(0, this, [&] { delete form; });
    form->importDataPoints();
    QVERIFY(!form);
    QCOMPARE(log.events(), QStringList(className + ": destroyed"));
}

void TestPointForms::rolesOfTheWrongTypeDoNoHarm()
{
    for (int role = serverDescriptionRole; role <= serverInputRegistersRole; ++role) {
        m_item->setData(QVariantList{1, "x"}, role);
    }
    const QScopedPointer<PointForm> form(shown());
    QCOMPARE(names(form.data()), QStringList());
    press(*form, "saveButton");
    m_item->setData(QVariant::fromValue(RowList{{}, {1}, {1, 2, 3, 4, 5, 6, 7}}), serverPointsRole);
    m_item->setData(m_item->data(serverPointsRole), serverHoldingRegistersRole);
    form->replaceItem(m_item);
    QCOMPARE(names(form.data()), (QStringList{QString(), QString(), "2"}));
}

void TestPointForms::unknownProtocol_data()
{
    QTest::addColumn<QString>("shownProtocol");
    QTest::newRow("ServerModbusTCPEditDialog") << QString();
    QTest::newRow("ServerHJ212EditDialog") << "HJ212";
    QTest::newRow("ServerSL651EditDialog") << "SL651";
}

void TestPointForms::unknownProtocol()
{
    QFETCH(QString, shownProtocol);
    const QScopedPointer<PointForm> form(shown());
    const QComboBox *protocol = list(*form, "protocol");
    QCOMPARE(protocol->currentText(), shownProtocol);
    for (const char *stored : {"ModbusTCP(Slave)", "HJ212", "SL651", "MQTT"}) {
        m_item->setData(QString::fromLatin1(stored), serverProtocolRole);
        const QScopedPointer<PointForm> opened(make(m_item, m_workspace));
        form->replaceItem(m_item);
        const QString expected =
            protocol->itemText(0) == QLatin1String(stored) ? protocol->itemText(0) : shownProtocol;
        QCOMPARE(protocol->currentText(), expected);
        QCOMPARE(list(*opened, "protocol")->currentText(), expected);
    }
    form->clearData();
    QCOMPARE(protocol->currentIndex(), 0);
}

void TestPointForms::columnsFillTheTable()
{
    const QScopedPointer<PointForm> form(shown());
    QVERIFY(QTest::qWaitForWindowExposed(form.data()));
    const QTableView *view = table(form.data());
    int width = 0;
    for (int column = 0; column < view->model()->columnCount(); ++column) {
        QVERIFY(view->columnWidth(column) >= 100);
        width += view->columnWidth(column);
    }
    QCOMPARE(width, view->viewport()->width());
    QVERIFY(view->height() >= 200);
}

QTEST_MAIN(TestPointForms)
#include "tst_pointforms.moc"

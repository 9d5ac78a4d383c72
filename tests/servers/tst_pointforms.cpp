#include "logtail.h"
#include "pointformtest.h"
#include "servers/serverhj212editdialog.h"
#include "servers/servermodbustcpeditdialog.h"
#include "servers/serversl651editdialog.h"

#include <QComboBox>

// What the three forms with points have in common: menu, import, delete, and the ends of a form.
class TestPointForms : public PointFormTest
{
    Q_OBJECT
public:
    TestPointForms()
        : PointFormTest("Upstream", QString())
    {
    }
private slots:
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
    void pointThatIsThereIsSkipped_data();
    void pointThatIsThereIsSkipped();
    void linesOfTheActivityLog_data();
    void linesOfTheActivityLog();
    void importIsLoggedWhenItHasRun_data() { forms(); }
    void importIsLoggedWhenItHasRun();
    void warningIsLoggedWhenItHasGone_data() { forms(); }
    void warningIsLoggedWhenItHasGone();
    void deleteIsLoggedWhenTheRowHasGone_data() { forms(); }
    void deleteIsLoggedWhenTheRowHasGone();
    void importOutlivesTheNode_data() { forms(); }
    void importOutlivesTheNode();
    void formMayCloseUnderItsMenu_data() { forms(); }
    void formMayCloseUnderItsMenu();
    void formMayCloseUnderTheWarning_data() { forms(); }
    void formMayCloseUnderTheWarning();
    void rowsOfTheWrongShapeAreShownAsFarAsTheyGo_data() { forms(); }
    void rowsOfTheWrongShapeAreShownAsFarAsTheyGo();
    void unknownProtocol_data();
    void unknownProtocol();
    void columnsFillTheTable_data() { forms(); }
    void columnsFillTheTable();

private:
    using Form = std::unique_ptr<PointForm>;

    static void forms();
    Form make(QStandardItem *item, Workspace *workspace) const;
    // On the item, and large enough for its menu.
    Form shown() const;
    static QList<QJsonObject> points(const QStringList &names);
};

namespace {

const QString source = "Meter A";

QTableView *table(const PointForm &form)
{
    const auto views = form.findChildren<QTableView *>();
    for (QTableView *view : views) {
        if (view->contextMenuPolicy() == Qt::CustomContextMenu && view->isVisibleTo(&form)) {
            return view;
        }
    }
    return nullptr;
}

QStringList names(const PointForm &form)
{
    QStringList texts;
    for (int row = 0; row < table(form)->model()->rowCount(); ++row) {
        texts.append(table(form)->model()->index(row, 1).data().toString());
    }
    return texts;
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

std::unique_ptr<PointForm> TestPointForms::make(QStandardItem *item, Workspace *workspace) const
{
    const QByteArray name = QTest::currentDataTag();
    if (name.startsWith("ServerModbusTCP")) {
        return std::make_unique<ServerModbusTCPEditDialog>(item, workspace);
    }
    if (name.startsWith("ServerHJ212")) {
        return std::make_unique<ServerHJ212EditDialog>(item, workspace);
    }
    return std::make_unique<ServerSL651EditDialog>(item, workspace);
}

std::unique_ptr<PointForm> TestPointForms::shown() const
{
    Form form = make(m_item, m_workspace);
    form->resize(800, 700);
    form->show();
    return form;
}

QList<QJsonObject> TestPointForms::points(const QStringList &names)
{
    QList<QJsonObject> list;
    for (const QString &name : names) {
        list.append(point(name));
    }
    return list;
}

void TestPointForms::menuImportsAndDeletes()
{
    const auto form = shown();
    const QStringList menu = {"Context menu", "Import Data Points", "Delete"};
    QCOMPARE(chooseInMenu(table(*form), QModelIndex(), menu.at(1)), menu);
    QCOMPARE(m_workspace->imports, 1);
    form->handleImportedData(points(abc), source);
    const QAbstractItemModel *model = table(*form)->model();
    QCOMPARE(chooseInMenu(table(*form), model->index(1, 1), menu.at(2)), menu);
    QCOMPARE(names(*form), (QStringList{"a", "c"}));
    QCOMPARE(m_workspace->imports, 1);
}

void TestPointForms::menuOfAnEmptyTableDeletesNothing()
{
    const auto form = shown();
    chooseInMenu(table(*form), QModelIndex(), "Delete");
    QCOMPARE(names(*form), QStringList());
    form->handleImportedData(points(abc), source);
    table(*form)->clearSelection();
    form->deleteSelectedItem();
    QCOMPARE(names(*form), abc);
}

void TestPointForms::onlyTheSelectedRowIsDeleted()
{
    const auto form = shown();
    form->handleImportedData(points(abc), source);
    table(*form)->selectRow(2);
    form->deleteSelectedItem();
    QCOMPARE(names(*form), abc.mid(0, 2));
}

void TestPointForms::rowSelectedFirstIsDeletedFirst()
{
    const auto form = shown();
    form->handleImportedData(points(abc), source);
    QTableView *view = table(*form);
    const auto click = [view](int row, Qt::KeyboardModifiers keys) {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, keys,
                          view->visualRect(view->model()->index(row, 1)).center());
    };
    click(2, Qt::NoModifier);
    click(0, Qt::ControlModifier);
    QCOMPARE(view->selectionModel()->selectedRows().size(), 2);
    form->deleteSelectedItem();
    QCOMPARE(names(*form), abc.mid(0, 2));
    form->deleteSelectedItem();
    QCOMPARE(names(*form), abc.mid(1, 1));
    form->deleteSelectedItem(); // nothing is selected any more
    QCOMPARE(names(*form), abc.mid(1, 1));
}

void TestPointForms::importWithoutAMainWindowWarns()
{
    QFETCH(QString, className);
    const auto form = make(m_item, nullptr);
    const LogTail log(className);
    m_messages->expect();
    QVERIFY(QMetaObject::invokeMethod(form.get(), "importDataPoints"));
    QCOMPARE(m_messages->told(), QStringList("Warning|Main window pointer is not set."));
    QCOMPARE(log.events(), QStringList(className + ": Import Data Points"));
    form->handleImportedData(points({"a", "a"}), source);
    QCOMPARE(names(*form), abc.mid(0, 1));
}

void TestPointForms::slotsAreCalledByName()
{
    const auto form = shown();
    QVERIFY(QMetaObject::invokeMethod(form.get(), "handleImportedData",
                                      Q_ARG(QList<QJsonObject>, points(abc)), Q_ARG(QString, source)));
    QCOMPARE(names(*form), abc);
    table(*form)->selectRow(0);
    QVERIFY(QMetaObject::invokeMethod(form.get(), "deleteSelectedItem"));
    QCOMPARE(names(*form), abc.mid(1));
    QVERIFY(QMetaObject::invokeMethod(form.get(), "saveChanges"));
    QCOMPARE(m_workspace->messages.size(), 1);
    QVERIFY(QMetaObject::invokeMethod(form.get(), "clearData"));
    QCOMPARE(names(*form), QStringList());
    m_dialogs->expect([](QWidget *menu) { menu->close(); });
    QVERIFY(QMetaObject::invokeMethod(form.get(), "showContextMenu", Q_ARG(QPoint, QPoint(5, 5))));
    QCOMPARE(m_dialogs->pending(), 0);
}

void TestPointForms::importCanBeQueued()
{
    const auto form = shown();
    QVERIFY(QMetaObject::invokeMethod(form.get(), "handleImportedData", Qt::QueuedConnection,
                                      Q_ARG(QList<QJsonObject>, points(abc)), Q_ARG(QString, source)));
    QCOMPARE(names(*form), QStringList());
    QTRY_COMPARE(names(*form), abc);
}

void TestPointForms::emptyImportChangesNothing()
{
    const auto form = shown();
    form->handleImportedData({}, source);
    QCOMPARE(names(*form), QStringList());
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestPointForms::pointThatIsThereIsSkipped_data()
{
    QTest::addColumn<QString>("plc");
    QTest::addColumn<QJsonObject>("again");
    QTest::addColumn<bool>("skipped");
    QTest::addColumn<bool>("told");
    for (const char *name : {"ServerModbusTCPEditDialog", "ServerHJ212EditDialog", "ServerSL651EditDialog"}) {
        const QByteArray form(name);
        const bool typeCounts = form.startsWith("ServerModbusTCP");
        const bool tells = !form.startsWith("ServerSL651");
        QTest::newRow(form + ", the same") << source << point("flow", "int16") << true << tells;
        QTest::newRow(form + ", other type")
            << source << point("flow", "float") << !typeCounts << (tells && !typeCounts);
        QTest::newRow(form + ", other name") << source << point("Flow", "int16") << false << false;
        QTest::newRow(form + ", other source") << "Meter B" << point("flow", "int16") << false << false;
    }
}

void TestPointForms::pointThatIsThereIsSkipped()
{
    QFETCH(QString, plc);
    QFETCH(QJsonObject, again);
    QFETCH(bool, skipped);
    QFETCH(bool, told);
    const auto form = shown();
    form->handleImportedData({point("flow", "int16")}, source);
    form->handleImportedData({again, point("next")}, plc);
    const QStringList added =
        skipped ? QStringList() : QStringList(again.value(QLatin1String("name")).toString());
    QCOMPARE(names(*form), QStringList("flow") + added + QStringList("next"));
    QCOMPARE(m_workspace->messages,
             told ? QStringList("The data with device name '% 2' and variable name '% 1' already exists.")
                  : QStringList());
}

void TestPointForms::linesOfTheActivityLog_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("deleted");
    const auto add = [](const char *name, const QString &deleted) {
        QTest::newRow(name) << QString::fromLatin1(name) << deleted;
    };
    add("ServerModbusTCPEditDialog", "ServerModbusTCPEditDialog: delete");
    add("ServerHJ212EditDialog", "ServerHJ212EditDialog: Delete");
    add("ServerSL651EditDialog", "ServerHJ212EditDialog: Delete"); // the line of the other form
}

void TestPointForms::linesOfTheActivityLog()
{
    QFETCH(QString, className);
    QFETCH(QString, deleted);
    const auto form = shown();
    const LogTail log("Server");
    form->importDataPoints();
    form->deleteSelectedItem(); // nothing is selected: no line
    form->handleImportedData(points(abc), source);
    table(*form)->selectRow(0);
    form->deleteSelectedItem();
    QCOMPARE(log.events(), QStringList({className + ": Import Data Points", deleted}));
}

void TestPointForms::importIsLoggedWhenItHasRun()
{
    QFETCH(QString, className);
    const QStringList line(className + ": Import Data Points");
    const LogTail log(className);
    ImportWatch watch(&log);
    const auto form = make(m_item, &watch);
    const QStringList opened = log.events();
    form->importDataPoints();
    QCOMPARE(watch.events, opened);
    QCOMPARE(log.events(), opened + line);
}

void TestPointForms::warningIsLoggedWhenItHasGone()
{
    QFETCH(QString, className);
    const auto form = make(m_item, nullptr);
    const LogTail log(className);
    QStringList besideTheMessage{"no message"};
    m_messages->expect();
    QTimer::singleShot(0, this, [&] { besideTheMessage = log.events(); });
    form->importDataPoints();
    QCOMPARE(besideTheMessage, QStringList());
    QCOMPARE(log.events(), QStringList(className + ": Import Data Points"));
}

void TestPointForms::deleteIsLoggedWhenTheRowHasGone()
{
    const auto form = shown();
    form->handleImportedData(points(abc), source);
    table(*form)->selectRow(0);
    const LogTail log("Server");
    QStringList before;
    const auto look = [&] { before.append(log.events()); };
    const QAbstractItemModel *model = table(*form)->model();
    connect(model, &QAbstractItemModel::rowsRemoved, this, look);
    connect(model, &QAbstractItemModel::dataChanged, this, look); // as of the addresses that close up
    form->deleteSelectedItem();
    QCOMPARE(names(*form), abc.mid(1));
    QCOMPARE(before, QStringList());
    QCOMPARE(log.events().size(), 1);
    QVERIFY(log.events().first().endsWith("elete"));
}

void TestPointForms::importOutlivesTheNode()
{
    const auto form = shown();
    removeItems();
    form->handleImportedData(points(abc), source);
    click(*form, "saveButton");
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestPointForms::formMayCloseUnderItsMenu()
{
    QPointer<PointForm> form(shown().release());
    m_dialogs->expect([&](QWidget *menu) {
        delete form;
        menu->close();
    });
    form->showContextMenu(QPoint(5, 5));
    QVERIFY(!form);
}

void TestPointForms::formMayCloseUnderTheWarning()
{
    QFETCH(QString, className);
    QPointer<PointForm> form(make(m_item, nullptr).release());
    const LogTail log(className);
    QTimer::singleShot(0, this, [&] { delete form; });
    form->importDataPoints();
    QVERIFY(!form);
    QCOMPARE(log.events(), QStringList(className + ": destroyed"));
}

void TestPointForms::rowsOfTheWrongShapeAreShownAsFarAsTheyGo()
{
    const RowList rows{{}, {1}, {1, 2, 3, 4, 5, 6, 7}};
    setPoints(m_item, rows);
    setRows(m_item, serverHoldingRegistersRole, rows);
    const auto form = shown();
    QCOMPARE(names(*form), QStringList({QString(), QString(), "2"}));
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
    const auto form = shown();
    const QComboBox *protocol = list(*form, "protocol");
    QCOMPARE(protocol->currentText(), shownProtocol);
    for (const char *stored : {"ModbusTCP(Slave)", "HJ212", "SL651", "MQTT"}) {
        m_item->setData(QString::fromLatin1(stored), serverProtocolRole);
        const auto opened = make(m_item, m_workspace);
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
    const auto form = shown();
    RUN(show(*form));
    const QTableView *view = table(*form);
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

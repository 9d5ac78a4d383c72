#include "serverformtest.h"

#include "logtail.h"
#include "projectdump.h"
#include "workspacefake.h"

#include <QScrollArea>

using namespace ServerFormTest;

namespace {

// A field of a form: its row as a user sees it, and the role in which it is kept.
struct Row {
    const char *text;
    const char *name;
    int role;
};

struct Form {
    const char *protocol;
    const char *className;
    const char *saved; // message
    QVector<Row> rows;
};

const Row nameRow{"Server Name: name: line read-only", "name", Qt::DisplayRole};
const Row descriptionRow{"Description: description: line", "description", serverDescriptionRole};
const Row domainRow{"Domain Name: domainName: line host", "domainName", serverDomainNameRole};
const Row portRow{"Port: port: line -1..65535", "port", serverPortRole};
const Row productRow{"Product Key: productKey: line no CJK", "productKey", serverProductKeyRole};
const Row deviceRow{"Device Name: deviceName: line no CJK", "deviceName", serverDeviceNameRole};
const Row secretRow{"Device Secret: deviceSecret: line hidden no CJK", "deviceSecret",
                    serverDeviceSecretRole};
const Row clientRow{"Client ID: clientId: line no CJK", "clientId", serverClientIdRole};
const Row userRow{"User Name: username: line no CJK", "username", serverUsernameRole};
const Row passwordRow{"Password: password: line hidden no CJK", "password", serverPasswordRole};
const Row qosRow{"qos: qos: list 0|1|2", "qos", serverQosRole};

const QVector<Form> &forms()
{
    static const QVector<Form> all = {
        {"MQTT",
         "ServerEditDialog",
         "The Server MQTT 'up' is saved successfully.",
         {nameRow,
          descriptionRow,
          {"Protocol: protocol: list MQTT disabled", "protocol", serverProtocolRole},
          {"IP Address: ip: line host", "ip", serverIpRole},
          portRow,
          clientRow,
          userRow,
          {"Password: password: line no CJK", "password", serverPasswordRole},
          qosRow,
          {"Payload Format: payloadFormat: radio Tarnwick MQTT|Custom formatting", "payloadFormat",
           serverPayloadFormatRole},
          {"Report Topic: reportTopic: line no CJK", "reportTopic", serverReportTopicRole},
          {"Report JS: reportJS: script", "reportJS", serverReportJsRole},
          {"Write Topic: writeTopic: line no CJK", "writeTopic", serverWriteTopicRole},
          {"Write JS: writeJS: script", "writeJS", serverWriteJsRole}}},
        {"AliMQTT",
         "ServerAliMQTTEditDialog",
         "The Server AliMQTT 'up' is saved successfully.",
         {nameRow,
          descriptionRow,
          {"Protocol: protocol: list AliMQTT disabled", "protocolKey", serverProtocolRole},
          domainRow,
          portRow,
          productRow,
          deviceRow,
          secretRow,
          qosRow}},
        {"OneNetMQTT",
         "ServerOneNetMQTTEditDialog",
         "The Server OneNetMQTT 'up' is saved successfully.",
         {nameRow,
          descriptionRow,
          {"Protocol: protocol: list OneNetMQTT disabled", "protocolKey", serverProtocolRole},
          domainRow,
          portRow,
          productRow,
          deviceRow,
          secretRow,
          {"qos: qos: list 0|1", "qos", serverQosRole}}},
        {"HuaWeiMQTT",
         "ServerHuaWeiMQTTEditDialog",
         "The Server HuaWeiMQTT 'up' is saved successfully.",
         {nameRow,
          descriptionRow,
          {"Protocol: protocol: list HuaWeiMQTT disabled", "protocolKey", serverProtocolRole},
          domainRow,
          portRow,
          clientRow,
          userRow,
          passwordRow,
          {"Service ID: serviceId: line no CJK", "serviceId", serverServiceIdRole},
          qosRow}},
        {"OpcUaServer",
         "ServerOPCUAEditDialog",
         "The Server OpcUa 'up' is saved successfully.",
         {nameRow,
          descriptionRow,
          {"Protocol: protocol: list OpcUaServer disabled", "protocol", serverProtocolRole},
          portRow,
          {"Anonymous: anonymous: list true|false", "anonymous", serverAnonymousRole},
          userRow,
          passwordRow}},
    };
    return all;
}

// What the test stores in a role, other than what any form starts with.
QString stored(const Row &row, const QString &protocol)
{
    switch (row.role) {
    case Qt::DisplayRole:
        return "up";
    case serverProtocolRole:
        return protocol;
    case serverQosRole:
        return "0";
    case serverPayloadFormatRole:
        return "2";
    case serverAnonymousRole:
        return "true";
    default:
        return "of " + QLatin1String(row.name);
    }
}

// The list behind a cloud form's protocol stands in no row; the provider's name does.
QString shownName(const Row &row)
{
    return row.role == serverProtocolRole ? QString("protocol") : QLatin1String(row.name);
}

void fill(QStandardItem *item, const Form &form)
{
    for (const Row &row : form.rows) {
        item->setData(stored(row, QLatin1String(form.protocol)), row.role);
    }
}

} // namespace

// The rules that the forms of MQTT and of OPC UA have in common, on each of them.
class TestServerForms : public QObject
{
    Q_OBJECT
private slots:
    void showsItsFieldsInOrder_data() { addForms(); }
    void showsItsFieldsInOrder();
    void standsInAFramelessScrollArea_data() { addForms(); }
    void standsInAFramelessScrollArea();
    void newServerShowsItsDefaults_data() { addForms(); }
    void newServerShowsItsDefaults();
    void openingLeavesTheItemAlone_data() { addForms(); }
    void openingLeavesTheItemAlone();
    void showsEachStoredValue_data() { addForms(); }
    void showsEachStoredValue();
    void replaceItemShowsTheOtherServer_data() { addForms(); }
    void replaceItemShowsTheOtherServer();
    void saveWritesEachFieldInOrder_data() { addForms(); }
    void saveWritesEachFieldInOrder();
    void saveTellsAndKeepsTheFormOpen_data() { addForms(); }
    void saveTellsAndKeepsTheFormOpen();
    void saveChecksNothing_data() { addForms(); }
    void saveChecksNothing();
    void saveWithoutItsNodeDoesNothing_data() { addForms(); }
    void saveWithoutItsNodeDoesNothing();
    void cancelRejectsAndLeavesTheItem_data() { addForms(); }
    void cancelRejectsAndLeavesTheItem();
    void clearDataEmptiesTextsAndQos_data() { addForms(); }
    void clearDataEmptiesTextsAndQos();
    void slotsAreFoundByName_data() { addForms(); }
    void slotsAreFoundByName();
    void writesItsLifeToTheLog_data() { addForms(); }
    void writesItsLifeToTheLog();

private:
    static void addForms()
    {
        QTest::addColumn<int>("index");
        for (int index = 0; index < forms().size(); ++index) {
            QTest::newRow(forms().at(index).protocol) << index;
        }
    }
};

#define FETCH_FORM                                                                                           \
    QFETCH(int, index);                                                                                      \
    const Form &form = forms().at(index);                                                                    \
    const QString protocol = QLatin1String(form.protocol);                                                   \
    QStandardItemModel model;                                                                                \
    QStandardItem *item = addServer(&model, "up", protocol);                                                 \
    WorkspaceFake workspace

void TestServerForms::showsItsFieldsInOrder()
{
    FETCH_FORM;
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    QStringList rows;
    for (const Row &row : form.rows) {
        rows.append(QLatin1String(row.text));
    }
    QCOMPARE(rowsOf(*dialog), rows);
    QCOMPARE(dialog->windowTitle(), "Edit Server");
    QCOMPARE(QString::fromLatin1(dialog->metaObject()->className()), QLatin1String(form.className));
}

void TestServerForms::standsInAFramelessScrollArea()
{
    FETCH_FORM;
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    const auto *area = dialog->findChild<QScrollArea *>();
    QVERIFY(area);
    QCOMPARE(area->styleSheet(), "QScrollArea { border: none; }");
    QVERIFY(area->isAncestorOf(input<QLineEdit>(*dialog, "name")));
    const struct {
        const char *name;
        QString text;
        QString icon;
    } buttons[] = {
        {"saveButton", "Save", ":/adsdemo/images/ok.svg"},
        {"cancelButton", "Cancel", ":/adsdemo/images/cancel.svg"},
    };
    for (const auto &button : buttons) {
        const auto *found = input<QPushButton>(*dialog, button.name);
        QCOMPARE(found->text(), button.text);
        QCOMPARE(ProjectDump::iconBytes(found->icon()), ProjectDump::iconBytes(button.icon));
        QVERIFY(!area->isAncestorOf(found));
    }
}

void TestServerForms::newServerShowsItsDefaults()
{
    FETCH_FORM;
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    QStringList values = valuesOf(*dialog);
    QStringList expected;
    for (const Row &row : form.rows) {
        const QString name = shownName(row);
        const QHash<QString, QString> defaults = {
            {"name", "up"},          {"protocol", protocol}, {"qos", "1"},
            {"payloadFormat", "10"}, {"anonymous", "false"},
        };
        expected.append(name + QLatin1Char('=') + defaults.value(name));
    }
    QCOMPARE(values, expected);
}

void TestServerForms::openingLeavesTheItemAlone()
{
    FETCH_FORM;
    const QStringList before = ProjectDump::roles(item);
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    QCOMPARE(ProjectDump::roles(item), before);
    QCOMPARE(workspace.messages, QStringList());
}

namespace {

QStringList storedValues(const Form &form)
{
    const QString protocol = QLatin1String(form.protocol);
    QStringList values;
    for (const Row &row : form.rows) {
        const QString name = shownName(row);
        // The second of two buttons is checked.
        values.append(name + QLatin1Char('=')
                      + (row.role == serverPayloadFormatRole ? QString("01") : stored(row, protocol)));
    }
    return values;
}

} // namespace

void TestServerForms::showsEachStoredValue()
{
    FETCH_FORM;
    fill(item, form);
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    QCOMPARE(valuesOf(*dialog), storedValues(form));
}

void TestServerForms::replaceItemShowsTheOtherServer()
{
    FETCH_FORM;
    QStandardItem *other = addServer(&model, "other", protocol);
    const QScopedPointer<ServerForm> dialog(make(protocol, other, &workspace));
    input<QLineEdit>(*dialog, "port")->setText("typed");
    fill(item, form);
    dialog->replaceItem(item);
    QCOMPARE(valuesOf(*dialog), storedValues(form));
    // From now on it saves into that one.
    const QStringList before = ProjectDump::roles(other);
    input<QLineEdit>(*dialog, "port")->setText("77");
    dialog->saveChanges();
    QCOMPARE(item->data(serverPortRole).toString(), "77");
    QCOMPARE(ProjectDump::roles(other), before);
    QCOMPARE(workspace.messages, QStringList(QLatin1String(form.saved)));
}

void TestServerForms::saveWritesEachFieldInOrder()
{
    FETCH_FORM;
    fill(item, form);
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    // All that is written is new to the item, so that the model tells of each role.
    item->setText("old");
    for (int role = serverDescriptionRole; role <= serverInputRegistersRole; ++role) {
        item->setData(QVariant(), role);
    }
    QVector<int> written;
    connect(&model, &QStandardItemModel::dataChanged, this,
            [&](const QModelIndex &, const QModelIndex &, const QVector<int> &roles) { written += roles; });
    press(*dialog, "saveButton");
    model.disconnect(this);
    QVector<int> expected;
    QStringList roles;
    for (const Row &row : form.rows) {
        // The text of an item is of both of these roles.
        expected += row.role == Qt::DisplayRole ? QVector<int>{Qt::DisplayRole, Qt::EditRole}
                                                : QVector<int>{row.role};
        const QVariant value = item->data(row.role);
        const bool isNumber = row.role == serverPayloadFormatRole;
        QCOMPARE(value.type(), isNumber ? QVariant::Int : QVariant::String);
        QCOMPARE(value.toString(), stored(row, protocol));
    }
    QCOMPARE(written, expected);
    QCOMPARE(ProjectDump::roles(item).size(), form.rows.size() - 1);
}

void TestServerForms::saveTellsAndKeepsTheFormOpen()
{
    FETCH_FORM;
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    QSignalSpy accepted(dialog.data(), &QDialog::accepted);
    QSignalSpy rejected(dialog.data(), &QDialog::rejected);
    dialog->show();
    press(*dialog, "saveButton");
    press(*dialog, "saveButton");
    QCOMPARE(workspace.messages, QStringList({QLatin1String(form.saved), QLatin1String(form.saved)}));
    QVERIFY(dialog->isVisible());
    QCOMPARE(accepted.size() + rejected.size(), 0);
}

void TestServerForms::saveChecksNothing()
{
    FETCH_FORM;
    const QScopedPointer<ServerForm> dialog(make(protocol, item, nullptr));
    input<QLineEdit>(*dialog, "port")->clear();
    QTest::keyClicks(input<QLineEdit>(*dialog, "port"), "-1");
    dialog->saveChanges();
    QCOMPARE(item->data(serverPortRole).toString(), "-1");
    input<QLineEdit>(*dialog, "port")->clear();
    dialog->saveChanges();
    QCOMPARE(item->data(serverPortRole), QVariant(QString()));
}

void TestServerForms::saveWithoutItsNodeDoesNothing()
{
    FETCH_FORM;
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    model.removeRow(0);
    dialog->saveChanges();
    QCOMPARE(workspace.messages, QStringList());
}

void TestServerForms::cancelRejectsAndLeavesTheItem()
{
    FETCH_FORM;
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    QSignalSpy rejected(dialog.data(), &QDialog::rejected);
    const QStringList before = ProjectDump::roles(item);
    input<QLineEdit>(*dialog, "port")->setText("typed");
    press(*dialog, "cancelButton");
    QCOMPARE(rejected.size(), 1);
    QCOMPARE(ProjectDump::roles(item), before);
}

void TestServerForms::clearDataEmptiesTextsAndQos()
{
    FETCH_FORM;
    fill(item, form);
    item->setData("1", serverQosRole);
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    QVERIFY(QMetaObject::invokeMethod(dialog.data(), "clearData"));
    QStringList expected;
    for (const QString &value : storedValues(form)) {
        const QString name = value.section(QLatin1Char('='), 0, 0);
        if (name == QLatin1String("qos")) {
            expected.append("qos=0");
        } else if (input<QLineEdit>(*dialog, name.toLatin1().constData())
                   || name == QLatin1String("anonymous")) {
            expected.append(name + QLatin1Char('='));
        } else {
            expected.append(value);
        }
    }
    QCOMPARE(valuesOf(*dialog), expected);
    QCOMPARE(item->data(serverPortRole).toString(), "of port");
}

void TestServerForms::slotsAreFoundByName()
{
    FETCH_FORM;
    const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
    for (const char *signature : {"saveChanges()", "clearData()"}) {
        QVERIFY2(dialog->metaObject()->indexOfSlot(signature) >= 0, signature);
    }
    QVERIFY(QMetaObject::invokeMethod(dialog.data(), "saveChanges"));
    QCOMPARE(workspace.messages.size(), 1);
}

void TestServerForms::writesItsLifeToTheLog()
{
    FETCH_FORM;
    const QString prefix = QLatin1String(form.className) + ": ";
    const LogTail log(prefix);
    {
        const QScopedPointer<ServerForm> dialog(make(protocol, item, &workspace));
        dialog->saveChanges();
        dialog->replaceItem(item);
        dialog->clearData();
    }
    QCOMPARE(log.events(),
             QStringList({prefix + "new-nuilt", prefix + "save", prefix + "replace", prefix + "destroyed"}));
}

QTEST_MAIN(TestServerForms)
#include "tst_serverforms.moc"

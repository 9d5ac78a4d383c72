#include "serverformtest.h"

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
class TestServerForms : public FormTest
{
    Q_OBJECT
public:
    TestServerForms()
        : FormTest("up", serverProtocolRole, QString())
    {
    }
private slots:
    void showsItsFieldsInOrder_data() { addForms(); }
    void showsItsFieldsInOrder();
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
    void saveChecksNothing_data() { addForms(); }
    void saveChecksNothing();
    void clearDataEmptiesTextsAndQos_data() { addForms(); }
    void clearDataEmptiesTextsAndQos();

private:
    static void addForms()
    {
        QTest::addColumn<int>("index");
        for (int index = 0; index < forms().size(); ++index) {
            QTest::newRow(forms().at(index).protocol) << index;
        }
    }
    std::unique_ptr<ServerForm> open(const QString &protocol)
    {
        return std::unique_ptr<ServerForm>(make(protocol, m_item, m_workspace));
    }
};

#define FETCH_FORM                                                                                           \
    QFETCH(int, index);                                                                                      \
    const Form &form = forms().at(index);                                                                    \
    const QString protocol = QLatin1String(form.protocol);                                                   \
    m_item->setData(protocol, serverProtocolRole)

void TestServerForms::showsItsFieldsInOrder()
{
    FETCH_FORM;
    const auto dialog = open(protocol);
    QStringList rows;
    for (const Row &row : form.rows) {
        rows.append(QLatin1String(row.text));
    }
    QCOMPARE(fieldsOf(*dialog), rows);
}

void TestServerForms::newServerShowsItsDefaults()
{
    FETCH_FORM;
    const auto dialog = open(protocol);
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
    const auto before = rolesOf(*m_item);
    const auto dialog = open(protocol);
    QCOMPARE(rolesOf(*m_item), before);
    QCOMPARE(m_workspace->messages, QStringList());
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
    fill(m_item, form);
    const auto dialog = open(protocol);
    QCOMPARE(valuesOf(*dialog), storedValues(form));
}

void TestServerForms::replaceItemShowsTheOtherServer()
{
    FETCH_FORM;
    QStandardItem *other = addItem("other");
    const std::unique_ptr<ServerForm> dialog(make(protocol, other, m_workspace));
    edit(*dialog, "port")->setText("typed");
    fill(m_item, form);
    dialog->replaceItem(m_item);
    QCOMPARE(valuesOf(*dialog), storedValues(form));
    // From now on it saves into that one.
    const auto before = rolesOf(*other);
    edit(*dialog, "port")->setText("77");
    dialog->saveChanges();
    QCOMPARE(m_item->data(serverPortRole).toString(), "77");
    QCOMPARE(rolesOf(*other), before);
}

void TestServerForms::saveWritesEachFieldInOrder()
{
    FETCH_FORM;
    fill(m_item, form);
    const auto dialog = open(protocol);
    // All that is written is new to the item, so that the model tells of each role.
    m_item->setText("old");
    const QList<int> defaults = rolesOf(*m_item).keys();
    for (int role : defaults) {
        m_item->setData(QVariant(), role);
    }
    QVector<int> written;
    connect(m_item->model(), &QStandardItemModel::dataChanged, this,
            [&](const QModelIndex &, const QModelIndex &, const QVector<int> &roles) { written += roles; });
    click(*dialog, "saveButton");
    m_item->model()->disconnect(this);
    QVector<int> expected;
    for (const Row &row : form.rows) {
        // The text of an item is of both of these roles.
        expected += row.role == Qt::DisplayRole ? QVector<int>{Qt::DisplayRole, Qt::EditRole}
                                                : QVector<int>{row.role};
        const QVariant value = m_item->data(row.role);
        const bool isNumber = row.role == serverPayloadFormatRole;
        QCOMPARE(value.type(), isNumber ? QVariant::Int : QVariant::String);
        QCOMPARE(value.toString(), stored(row, protocol));
    }
    QCOMPARE(written, expected);
    QCOMPARE(rolesOf(*m_item).size(), form.rows.size() - 1);
}

void TestServerForms::saveChecksNothing()
{
    FETCH_FORM;
    const auto dialog = open(protocol);
    typeInto(edit(*dialog, "port"), "-1");
    dialog->saveChanges();
    QCOMPARE(m_item->data(serverPortRole).toString(), "-1");
    edit(*dialog, "port")->clear();
    dialog->saveChanges();
    QCOMPARE(m_item->data(serverPortRole), QVariant(QString()));
}

void TestServerForms::clearDataEmptiesTextsAndQos()
{
    FETCH_FORM;
    fill(m_item, form);
    m_item->setData("1", serverQosRole);
    const auto dialog = open(protocol);
    QVERIFY(QMetaObject::invokeMethod(dialog.get(), "clearData"));
    QStringList expected;
    for (const QString &value : storedValues(form)) {
        const QString name = value.section(QLatin1Char('='), 0, 0);
        if (name == QLatin1String("qos")) {
            expected.append("qos=0");
        } else if (edit(*dialog, name.toLatin1()) || name == QLatin1String("anonymous")) {
            expected.append(name + QLatin1Char('='));
        } else {
            expected.append(value);
        }
    }
    QCOMPARE(valuesOf(*dialog), expected);
    QCOMPARE(m_item->data(serverPortRole).toString(), "of port");
}

QTEST_MAIN(TestServerForms)
#include "tst_serverforms.moc"

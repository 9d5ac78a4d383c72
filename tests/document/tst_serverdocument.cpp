#include "document/definitionobject.h"
#include "document/projectreader.h"

#include "readertest.h"

namespace {

QJsonObject serverObject(const QStandardItem &server)
{
    return DefinitionObject::write(Definitions::Kind::Server, server, DocumentKeys::Texts());
}

constexpr int firstRole = serverDescriptionRole;
constexpr int lastRole = serverInputRegistersRole;

// Every text role holds "v" and its offset; station type and system code are numbers.
void fill(QStandardItem *item, const QString &protocol)
{
    for (int role = firstRole; role <= lastRole; ++role) {
        item->setData(QString("v%1").arg(role - Qt::UserRole), role);
    }
    item->setData(protocol, serverProtocolRole);
    item->setData(1, serverPayloadFormatRole);
    item->setData(22, serverSystemCodeRole);
    item->setData(75, serverRemoteStationTypeRole);
    item->setData(QVariant::fromValue(rows({{"p", "n", "c"}})), serverPointsRole);
    const RowList holding = rows({{"p", "h", "bool", "0", "1"}});
    const RowList input = rows({{"p", "i", "float", "1", "2"}});
    item->setData(QVariant::fromValue(holding), serverHoldingRegistersRole);
    item->setData(QVariant::fromValue(input), serverInputRegistersRole);
}

struct Example {
    const char *protocol;
    const char *json; // of an item filled as above
};

const Example examples[] = {
    {"MQTT", R"({"name": "S", "description": "v3", "protocol": "MQTT", "ip": "v5", "port": "v6",
        "payloadFormat": "1", "reportTopic": "v8", "reportJS": "v10", "writeTopic": "v9", "writeJS": "v11",
        "clientId": "v12", "username": "v13", "password": "v14", "qos": "v15"})"},
    {"ModbusTCP(Slave)", R"json({"name": "S", "protocol": "ModbusTCP(Slave)", "type": "v28", "port": "v6",
        "datas": [{"plcname": "p", "name": "h", "dataType": "bool", "addr": "0", "length": "1",
                   "register": "4"},
                  {"plcname": "p", "name": "i", "dataType": "float", "addr": "1", "length": "2",
                   "register": "3"}]})json"},
    {"AliMQTT", R"({"name": "S", "description": "v3", "protocol": "AliMQTT", "domainName": "v16",
        "port": "v6", "productKey": "v17", "deviceName": "v18", "deviceSecret": "v19", "qos": "v15"})"},
    {"OneNetMQTT", R"({"name": "S", "description": "v3", "protocol": "OneNetMQTT", "domainName": "v16",
        "port": "v6", "productKey": "v17", "deviceName": "v18", "deviceSecret": "v19", "qos": "v15"})"},
    {"HuaWeiMQTT", R"({"name": "S", "description": "v3", "protocol": "HuaWeiMQTT", "domainName": "v16",
        "port": "v6", "clientId": "v12", "username": "v13", "password": "v14", "serviceId": "v20",
        "qos": "v15"})"},
    {"HJ212", R"({"name": "S", "protocol": "HJ212", "ip": "v5", "port": "v6", "MN": "v12", "PW": "v14",
        "ST": "22", "Flag": "4", "CN": "2011",
        "datas": [{"plcname": "p", "name": "n", "factorCode": "c"}]})"},
    {"SL651", R"({"name": "S", "protocol": "SL651", "ip": "v5", "port": "v6",
        "centralStationAddress": "v24", "remoteStationAddress": "v25", "passwd": "v14",
        "remoteStationType": "4B", "datas": [{"plcname": "p", "name": "n", "code": "c"}]})"},
    {"OpcUaServer", R"({"name": "S", "description": "v3", "protocol": "OpcUaServer", "port": "v6",
        "anonymous": "v27", "username": "v13", "password": "v14"})"},
    {"mqtt", R"({"name": "S"})"},
    {"", R"({"name": "S"})"},
};

void addExamples()
{
    QTest::addColumn<QByteArray>("json");
    for (const Example &example : examples) {
        QTest::newRow(example.protocol) << QByteArray(example.json);
    }
}

QByteArray bytesOf(const QStandardItem &item)
{
    return QJsonDocument(serverObject(item)).toJson();
}

} // namespace

// A Server as an object of the document: the object that is written, and the roles that are read from one.
class TestServerDocument : public QObject
{
    Q_OBJECT
private slots:
    void writesTheKeysOfTheProtocol_data() { addExamples(); }
    void writesTheKeysOfTheProtocol();
    void unsetRolesAreWrittenAsEmptyTexts_data() { addExamples(); }
    void unsetRolesAreWrittenAsEmptyTexts();
    void stationTypeIsWrittenInHexadecimal_data();
    void stationTypeIsWrittenInHexadecimal();
    void commandCodeIsWrittenAsAConstant();
    void writesRows_data();
    void writesRows();
    void readsTheKeysOfTheProtocol_data() { addExamples(); }
    void readsTheKeysOfTheProtocol();
    void missingKeysEmptyTheirRoles_data() { addExamples(); }
    void missingKeysEmptyTheirRoles();
    void stationTypeIsReadFromHexadecimal_data();
    void stationTypeIsReadFromHexadecimal();
    void readsRows_data();
    void readsRows();
    void writtenServerIsReadBack_data() { addExamples(); }
    void writtenServerIsReadBack();
    void serversNeverReachTheFile();
};

void TestServerDocument::writesTheKeysOfTheProtocol()
{
    QFETCH(QByteArray, json);
    QStandardItem item("S");
    fill(&item, QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(bytesOf(item), onDisk(json.constData()));
}

void TestServerDocument::unsetRolesAreWrittenAsEmptyTexts()
{
    QFETCH(QByteArray, json);
    QJsonObject expected = parse(json.constData());
    const QString protocol = QString::fromLatin1(QTest::currentDataTag());
    for (const QString &key : expected.keys()) {
        expected.insert(key,
                        expected.value(key).isArray() ? QJsonValue(QJsonArray()) : QJsonValue(QString()));
    }
    const QJsonObject fixed{
        {"name", "S"}, {"protocol", protocol}, {"Flag", "4"}, {"CN", "2011"}, {"remoteStationType", "0"}};
    for (auto it = fixed.begin(); it != fixed.end(); ++it) {
        if (expected.contains(it.key())) {
            expected.insert(it.key(), it.value());
        }
    }
    QStandardItem item("S");
    item.setData(protocol, serverProtocolRole);
    QCOMPARE(bytesOf(item), QJsonDocument(expected).toJson());
}

void TestServerDocument::stationTypeIsWrittenInHexadecimal_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("written");
    QTest::newRow("80") << QVariant(80) << "50";
    QTest::newRow("72") << QVariant(72) << "48";
    QTest::newRow("75") << QVariant(75) << "4B";
    QTest::newRow("90") << QVariant(90) << "5A";
    QTest::newRow("68") << QVariant(68) << "44";
    QTest::newRow("84") << QVariant(84) << "54";
    QTest::newRow("77") << QVariant(77) << "4D";
    QTest::newRow("71") << QVariant(71) << "47";
    QTest::newRow("81") << QVariant(81) << "51";
    QTest::newRow("73") << QVariant(73) << "49";
    QTest::newRow("79") << QVariant(79) << "4F";
    QTest::newRow("text") << QVariant("79") << "4F";
    QTest::newRow("no number") << QVariant("4F") << "0";
    QTest::newRow("unset") << QVariant() << "0";
}

void TestServerDocument::stationTypeIsWrittenInHexadecimal()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, written);
    QStandardItem item("S");
    item.setData("SL651", serverProtocolRole);
    item.setData(stored, serverRemoteStationTypeRole);
    QCOMPARE(serverObject(item).value("remoteStationType"), QJsonValue(written));
}

void TestServerDocument::commandCodeIsWrittenAsAConstant()
{
    QStandardItem item("S");
    item.setData("HJ212", serverProtocolRole);
    for (const char *code : {"", "2011", "2051"}) {
        item.setData(QLatin1String(code), serverCommandCodeRole);
        QCOMPARE(serverObject(item).value("CN"), QJsonValue("2011"));
        QCOMPARE(serverObject(item).value("Flag"), QJsonValue("4"));
    }
}

void TestServerDocument::writesRows_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QByteArray>("datas");
    const QVariant two = QVariant::fromValue(RowList{{"a", "b", "c", "d", "e", "f"}, {1}});
    const auto holding = int(serverHoldingRegistersRole);
    const auto input = int(serverInputRegistersRole);
    const auto points = int(serverPointsRole);
    QTest::newRow("ModbusTCP(Slave)") << holding << two << QByteArray(R"([
        {"plcname": "a", "name": "b", "dataType": "c", "addr": "d", "length": "e", "register": "4"},
        {"plcname": "1", "name": "", "dataType": "", "addr": "", "length": "", "register": "4"}])");
    QTest::newRow("ModbusTCP(Slave) input") << input << two << QByteArray(R"([
        {"plcname": "a", "name": "b", "dataType": "c", "addr": "d", "length": "e", "register": "3"},
        {"plcname": "1", "name": "", "dataType": "", "addr": "", "length": "", "register": "3"}])");
    QTest::newRow("HJ212") << points << two << QByteArray(R"([
        {"plcname": "a", "name": "b", "factorCode": "c"}, {"plcname": "1", "name": "", "factorCode": ""}])");
    QTest::newRow("SL651") << points << two << QByteArray(R"([
        {"plcname": "a", "name": "b", "code": "c"}, {"plcname": "1", "name": "", "code": ""}])");
    QTest::newRow("SL651 of the wrong type") << points << QVariant("rows") << QByteArray("[]");
    QTest::newRow("HJ212 without rows") << points << QVariant() << QByteArray("[]");
}

void TestServerDocument::writesRows()
{
    QFETCH(int, role);
    QFETCH(QVariant, stored);
    QFETCH(QByteArray, datas);
    QStandardItem item("S");
    item.setData(QString::fromLatin1(QTest::currentDataTag()).section(QLatin1Char(' '), 0, 0),
                 serverProtocolRole);
    item.setData(stored, role);
    QCOMPARE(QJsonDocument(serverObject(item).value("datas").toArray()).toJson(),
             QJsonDocument::fromJson(datas).toJson());
}

namespace {

// The roles that are read of the examples, other than protocol and description.
QStringList readRoles(const QString &protocol)
{
    const QString points = "+23 rows [QString p, QString n, QString c]";
    const QStringList cloud{line(6, "v6"),   line(15, "v15"), line(16, "v16"),
                            line(17, "v17"), line(18, "v18"), line(19, "v19")};
    const QMap<QString, QStringList> roles{
        {"MQTT",
         QStringList{line(5, "v5"), line(6, "v6"), line(7, "1"), line(8, "v8"), line(9, "v9"),
                     line(10, "v10"), line(11, "v11"), line(12, "v12"), line(13, "v13"), line(14, "v14"),
                     line(15, "v15")}},
        {"ModbusTCP(Slave)",
         {line(6, "v6"), line(28, "v28"),
          "+29 rows [QString p, QString h, QString bool, QString 0, QString 1]",
          "+30 rows [QString p, QString i, QString float, QString 1, QString 2]"}},
        {"AliMQTT", cloud},
        {"OneNetMQTT", cloud},
        {"HuaWeiMQTT",
         {line(6, "v6"), line(12, "v12"), line(13, "v13"), line(14, "v14"), line(15, "v15"), line(16, "v16"),
          line(20, "v20")}},
        {"HJ212", {line(5, "v5"), line(6, "v6"), line(12, "v12"), line(14, "v14"), line(21, "22"), points}},
        {"SL651", {line(5, "v5"), line(6, "v6"), points, line(24, "v24"), line(25, "v25"), line(26, "75")}},
        {"OpcUaServer", {line(6, "v6"), line(13, "v13"), line(14, "v14"), line(27, "v27")}}};
    return roles.value(protocol);
}

bool isDescribed(const QString &protocol)
{
    return protocol.contains("MQTT") || protocol == "OpcUaServer";
}

} // namespace

// The example with members of all the others, so that what is read shows whose it is.
void TestServerDocument::readsTheKeysOfTheProtocol()
{
    QFETCH(QByteArray, json);
    const QString protocol = QString::fromLatin1(QTest::currentDataTag());
    QJsonObject object;
    for (const Example &example : examples) {
        const QJsonObject other = parse(example.json);
        for (auto it = other.begin(); it != other.end(); ++it) {
            object.insert(it.key(), it.value());
        }
    }
    const QJsonObject own = parse(json.constData());
    for (auto it = own.begin(); it != own.end(); ++it) {
        object.insert(it.key(), it.value());
    }
    object.insert("protocol", protocol);
    QCOMPARE(rolesAfter(transmitServerData, object),
             QStringList({line(3, "v3"), "+4 QString " + protocol}) + readRoles(protocol));
}

// Over an item on which each role holds something: those of the protocol are emptied, the others stay.
void TestServerDocument::missingKeysEmptyTheirRoles()
{
    const QString protocol = QString::fromLatin1(QTest::currentDataTag());
    QStringList expected = lines(firstRole - Qt::UserRole, lastRole - Qt::UserRole, "old");
    const auto put = [&expected](const QString &roleLine) {
        expected[roleLine.section(QLatin1Char(' '), 0, 0).toInt() - 3] = roleLine;
    };
    for (const QString &read : readRoles(protocol)) {
        const QString offset = read.section(QLatin1Char(' '), 0, 0);
        put(offset + (read.contains(" rows ") ? QString(" rows ") : " QString "));
    }
    put("+3 QString ");
    put("+4 QString " + protocol);
    if (protocol == "SL651") {
        put("+26 QString 0");
    }
    QCOMPARE(rolesOver(transmitServerData, {{"protocol", protocol}}, firstRole, lastRole), expected);
}

void TestServerDocument::stationTypeIsReadFromHexadecimal_data()
{
    QTest::addColumn<QJsonValue>("written");
    QTest::addColumn<QString>("stored");
    QTest::newRow("4B") << QJsonValue("4B") << "75";
    QTest::newRow("lower case") << QJsonValue("4b") << "75";
    QTest::newRow("digits") << QJsonValue("50") << "80";
    QTest::newRow("no number") << QJsonValue("XY") << "0";
    QTest::newRow("empty") << QJsonValue(QString()) << "0";
    QTest::newRow("JSON number") << QJsonValue(75) << "0";
}

void TestServerDocument::stationTypeIsReadFromHexadecimal()
{
    QFETCH(QJsonValue, written);
    QFETCH(QString, stored);
    QStandardItem item;
    transmitServerData({{"protocol", "SL651"}, {"remoteStationType", written}}, &item);
    QCOMPARE(item.data(serverRemoteStationTypeRole), QVariant(stored));
}

void TestServerDocument::readsRows_data()
{
    QTest::addColumn<QByteArray>("datas");
    QTest::addColumn<QStringList>("lists");
    const QString none = "+29 rows ";
    QTest::newRow("registers apart") << QByteArray(R"([{"name": "a", "register": "3"},
        {"name": "b", "register": "4"}, {"name": "c", "register": "3"}])")
                                     << QStringList(
                                            {"+29 rows [QString , QString b, QString , QString , QString ]",
                                             "+30 rows [QString , QString a, QString , QString , QString ] "
                                             "[QString , QString c, QString , QString , QString ]"});
    QTest::newRow("other registers are dropped")
        << QByteArray(R"([{"name": "a", "register": "1"}, {"name": "b"}, {"name": "c", "register": 4},
                          {"name": "d", "register": ""}, 7, "text"])")
        << QStringList({"+29 rows ", "+30 rows "});
    QTest::newRow("empty") << QByteArray("[]") << QStringList({none, "+30 rows "});
}

void TestServerDocument::readsRows()
{
    QFETCH(QByteArray, datas);
    QFETCH(QStringList, lists);
    const QJsonObject object{{"protocol", "ModbusTCP(Slave)"},
                             {"datas", QJsonDocument::fromJson(datas).array()}};
    const QStringList roles = rolesAfter(transmitServerData, object);
    QCOMPARE(roles.mid(roles.size() - 2), lists);
}

void TestServerDocument::writtenServerIsReadBack()
{
    const QString protocol = QString::fromLatin1(QTest::currentDataTag());
    QStandardItem item("S");
    fill(&item, protocol);
    const QJsonObject written = serverObject(item);
    // An unknown protocol is not in its object, and reads as none.
    const bool isKnown = written.contains("protocol");
    QCOMPARE(rolesAfter(transmitServerData, written),
             QStringList({line(3, isDescribed(protocol) ? QString("v3") : QString()),
                          "+4 QString " + (isKnown ? protocol : QString())})
                 + readRoles(protocol));
}

void TestServerDocument::serversNeverReachTheFile()
{
    QStandardItem project("P");
    project.appendRow(new QStandardItem("Box"));
    const QByteArray before = projectDocument(&project);
    auto *folder = new QStandardItem("Server");
    for (const Example &example : examples) {
        auto *server = new QStandardItem("S");
        fill(server, QString::fromLatin1(example.protocol));
        folder->appendRow(server);
    }
    project.appendRow(folder);
    QCOMPARE(projectDocument(&project), before);
}

QTEST_GUILESS_MAIN(TestServerDocument)
#include "tst_serverdocument.moc"

#include "document/projectcheck.h"
#include "document/projectreader.h"
#include "documenttest.h"
#include "files.h"

using namespace ProjectCheck;

namespace {

// A project without fault: two Modbus Standards, two of DLT645 on one serial port, a Service and a Box.
const char goodProject[] = R"({
"name": "P", "description": "D",
"standards": [
 {"name": "net", "protocol": "Modbus", "modbus": "ModbusTCP",
  "parameter": {"ip": "192.168.1.60", "port": "502", "collectionInterval": "2000"},
  "datas": [
   {"series": "standard", "stationNum": "1", "byteOrder": "ABCD", "startAddress0": "1", "charReversed": "0",
    "datas": [{"addr": "0", "name": "U", "dataType": "float", "length": "1", "permissions": "r"},
              {"addr": "2", "name": "I", "dataType": "int16", "length": "1", "permissions": "rw"}]},
   {"series": "standard", "stationNum": "2", "byteOrder": "DCBA", "startAddress0": "1", "charReversed": "0",
    "datas": [{"addr": "0", "name": "P", "dataType": "string", "length": "8", "permissions": "r"}]}]},
 {"name": "bus", "protocol": "Modbus", "modbus": "ModbusRTU",
  "parameter": {"serialport": "COM2", "baudRate": "9600", "dataBit": "8", "stopBit": "1",
                "parityBit": "NONE", "rtsEnable": "0"},
  "datas": [
   {"series": "standard", "stationNum": "1", "byteOrder": "ABCD", "datas": []}]},
 {"name": "meters", "protocol": "DLT645",
  "parameter": {"serialport": "COM1", "baudRate": "2400", "dataBit": "8", "stopBit": "1",
                "parityBit": "EVEN", "rtsEnable": "0"},
  "datas": [
   {"slaveAddress": "000000000017", "protocolVersion": 1,
    "datas": [{"select": "true", "name": "E", "addr": "00010000", "dataType": "XXXXXX.XX"},
              {"select": "false", "name": "", "addr": "00020000", "dataType": "XXXXXX.XX"},
              {"select": "false"}]}]},
 {"name": "more", "protocol": "DLT645",
  "parameter": {"serialport": "COM1", "baudRate": "2400", "dataBit": "8", "stopBit": "1",
                "parityBit": "EVEN", "rtsEnable": "0"},
  "datas": [{"slaveAddress": "18", "protocolVersion": 2, "datas": []}]}
],
"services": [
 {"name": "IEC61850", "protocol": "IEC61850", "port": "102", "enableGoosePublishing": "true",
  "enableSSL": "false", "isVerifyClientCert": "false",
  "extendedParameters": {"authentication": "1", "password": "secret"}}
],
"boxs": [{"name": "B", "ip": "192.168.1.70", "wanDhcp": "Enable", "wifiDhcp": "", "wifiMode": "station"}]
})";

// Puts a value where the path leads: keys and numbers of entries, with slashes in between. An undefined one
// takes the key away.
QJsonValue changed(const QJsonValue &whole, const QString &path, const QJsonValue &value)
{
    if (path.isEmpty()) {
        return value;
    }
    const QString key = path.section('/', 0, 0);
    const QString rest = path.section('/', 1);
    if (whole.isArray()) {
        QJsonArray array = whole.toArray();
        const int at = key.toInt();
        if (at < array.size()) {
            array[at] = changed(array.at(at), rest, value);
        } else {
            array.append(changed(QJsonValue(), rest, value));
        }
        return array;
    }
    QJsonObject object = whole.toObject();
    object[key] = changed(object.value(key), rest, value);
    return object;
}

QJsonValue parsed(const char *json)
{
    QJsonParseError error;
    const QJsonArray array = QJsonDocument::fromJson('[' + QByteArray(json) + ']', &error).array();
    if (error.error != QJsonParseError::NoError) {
        qFatal("no JSON: %s", json);
    }
    return array.at(0);
}

QDateTime noon()
{
    return QDateTime(QDate(2026, 11, 22), QTime(12, 0), Qt::UTC);
}

QStringList lines(const QJsonObject &project)
{
    QStringList lines;
    for (const Remark &remark : remarksOn(project, noon())) {
        lines.append(remark.line());
    }
    return lines;
}

} // namespace

class TestProjectCheck : public QObject
{
    Q_OBJECT
private slots:
    void goodProjectHasNone();
    void samplesHaveNoRemarks_data();
    void samplesHaveNoRemarks();
    void oneFaultIsOneRemark_data();
    void oneFaultIsOneRemark();
    void manyFaultsOfOneKindAreOneRemark();
    void eachWrongValueIsARemark();
    void anyShapeIsBorne_data();
    void anyShapeIsBorne();
    void remarkLeadsToItsItem();
    void remarkOnAnItemThatWentLeadsNowhere();
};

void TestProjectCheck::goodProjectHasNone()
{
    QCOMPARE(lines(parsed(goodProject).toObject()), QStringList());
}

void TestProjectCheck::samplesHaveNoRemarks_data()
{
    QTest::addColumn<QString>("file");
    for (const char *sample : {"empty", "one-slave", "riverside-substation"}) {
        QTest::newRow(sample) << QString(TEST_DATA_DIR "/%1.json").arg(QString::fromLatin1(sample));
    }
}

void TestProjectCheck::samplesHaveNoRemarks()
{
    QFETCH(QString, file);
    QCOMPARE(lines(QJsonDocument::fromJson(Files::contents(file)).object()), QStringList());
}

static void row(const char *path, const char *json, const char *expected)
{
    QTest::addRow("%s: %s", path, json)
        << QString::fromLatin1(path) << parsed(json) << QString::fromLatin1(expected);
}

static void addNetworkRows()
{
    row("name", R"("")", "Error: : The name is empty.");
    row("name", "5", "Error: : The name is not a text.");
    row("standards", "{}", "Error: P: 'standards' is not a list of objects.");

    row("standards/0/name", R"(" ")", "Error: Standard/: The name is empty.");
    row("standards/0/protocol", R"("")", "Error: Standard/net: The protocol is empty.");
    row("standards/0/protocol", R"("modbus")",
        "Error: Standard/net: The protocol is 'modbus', which no list has.");
    row("standards/0/modbus", R"("ModbusASCII")",
        "Error: Standard/net: The Modbus mode is 'ModbusASCII', which no list has.");
    row("standards/0/parameter/ip", R"("")", "Error: Standard/net: The IP address is empty.");
    row("standards/0/parameter/port", R"("")", "Error: Standard/net: The port is empty.");
    row("standards/0/parameter/port", "502", "Error: Standard/net: The port is not a text.");
    row("standards/0/datas", R"("none")", "Error: Standard/net: 'datas' is not a list of objects.");
    row("standards/0/datas/0/datas", "{}",
        "Error: Standard/net: Tab 1 (1): 'datas' is not a list of objects.");
    row("standards/0/datas/0/stationNum", R"("")",
        "Error: Standard/net: Tab 1: The station number is empty.");
    row("standards/0/datas/1/stationNum", R"("01")",
        "Warning: Standard/net: Tab 2 (01): the same device as tab 1 of 'net', on the same line.");
    row("standards/0/datas/0/byteOrder", R"("ACBD")",
        "Error: Standard/net: Tab 1 (1): The byte order is 'ACBD', which no list has.");
    row("standards/0/datas/0/series", R"("")", "Error: Standard/net: Tab 1 (1): The series is empty.");
    row("standards/0/datas/0/datas/1/addr", R"("")",
        "Error: Standard/net: Tab 1 (1): row 2: The address is empty.");
    row("standards/0/datas/0/datas/1/addr", "40001",
        "Error: Standard/net: Tab 1 (1): row 2: The address is empty.");
    row("standards/0/datas/0/datas/0/name", R"("")",
        "Warning: Standard/net: Tab 1 (1): row 1: The name is empty.");
    row("standards/0/datas/0/datas/0/dataType", R"("real")",
        "Error: Standard/net: Tab 1 (1): row 1: The type is 'real', which no list has.");
    row("standards/0/datas/0/datas/0/dataType", R"(" int16\n")",
        "Error: Standard/net: Tab 1 (1): row 1: The type is ' int16 ', which no list has.");
    row("standards/0/datas/0/datas/0/permissions", R"("")",
        "Error: Standard/net: Tab 1 (1): row 1: The permission is empty.");
    row("standards/0/datas/1/datas/0/name", R"("U")",
        "Warning: Standard/net: Points of one name share a row of the Box's reports: 'U' (tab 1 row 1, tab 2 "
        "row 1).");
    row("standards/4", R"({"name": "second", "protocol": "Modbus", "modbus": "ModbusTCP",
                           "parameter": {"ip": "192.168.1.60", "port": "0502"}, "datas": []})",
        "Warning: Standard/second: 'net' has the same IP address and port, 192.168.1.60:502.");
}

static void addSerialRows()
{
    row("standards/1/parameter/serialport", R"("")", "Error: Standard/bus: The serial port is empty.");
    row("standards/1/parameter/serialport", R"("COM3")",
        "Error: Standard/bus: The serial port is 'COM3', which no list has.");
    row("standards/1/parameter/baudRate", R"("14400")",
        "Error: Standard/bus: The baud rate is '14400', which no list has.");
    row("standards/1/parameter/dataBit", R"("9")",
        "Error: Standard/bus: The number of data bits is '9', which no list has.");
    row("standards/1/parameter/stopBit", R"("1.5")",
        "Error: Standard/bus: The number of stop bits is '1.5', which no list has.");
    row("standards/1/parameter/parityBit", R"("MARK")",
        "Error: Standard/bus: The parity is 'MARK', which no list has.");
    row("standards/3/parameter/baudRate", R"("9600")",
        "Error: Standard/more: 'meters' uses COM1 with other settings (The baud rate: 2400, not 9600).");
    row("standards/3/parameter/rtsEnable", R"("1")",
        "Error: Standard/more: 'meters' uses COM1 with other settings (The RTS setting: 0, not 1).");
    row("standards/3/datas/0/slaveAddress", R"("17")",
        "Warning: Standard/more: Tab 1 (17): the same device as tab 1 of 'meters', on the same line.");
    row("standards/3/datas/0/slaveAddress", R"("")",
        "Error: Standard/more: Tab 1: The slave address is empty.");
    row("standards/3/datas/0/protocolVersion", "3",
        "Error: Standard/more: Tab 1 (18): The protocol version is '3', which no list has.");
    row("standards/3/datas/0/protocolVersion", R"("1")",
        "Error: Standard/more: Tab 1 (18): The protocol version is '1', which no list has.");
    row("standards/2/datas/0/datas/0/addr", R"("")",
        "Error: Standard/meters: Tab 1 (000000000017): row 1: The item is not one of this protocol "
        "version.");
    row("standards/2/datas/0/datas/0/name", R"("")",
        "Warning: Standard/meters: Tab 1 (000000000017): row 1: The name is empty.");
    row("standards/2/datas/0/datas/3", R"({"select": "true", "name": "E", "addr": "00020000"})",
        "Warning: Standard/meters: Points of one name share a row of the Box's reports: "
        "'E' (tab 1 row 1, tab 1 row 4).");
}

static void addOtherRows()
{
    row("services/0/name", R"("")", "Error: Service/: The name is empty.");
    row("services/0/protocol", R"("IEC104")",
        "Error: Service/IEC61850: The protocol is 'IEC104', which no list has.");
    row("services/0/port", R"("")", "Warning: Service/IEC61850: The port is empty.");
    row("services/0/enableSSL", R"("yes")",
        "Error: Service/IEC61850: The SSL setting is 'yes', which no list has.");
    row("services/0/extendedParameters/authentication", R"("2")",
        "Error: Service/IEC61850: The authentication is '2', which no list has.");
    row("services/0/extendedParameters/password", R"("")",
        "Error: Service/IEC61850: Clients have to give a password, and it is empty.");

    row("boxs/0/name", R"("")", "Warning: Box/: The name is empty.");
    row("boxs/0/ip", R"("")", "Warning: Box/B: The IP address is empty.");
    row("boxs/0/wanDhcp", R"("maybe")",
        "Warning: Box/B: The DHCP setting of the WAN page is 'maybe', which no list has.");
    row("boxs/0/lanIp", "[1]", "Warning: Box/B: lanIp is not a text.");
}

void TestProjectCheck::oneFaultIsOneRemark_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("expected");
    addNetworkRows();
    addSerialRows();
    addOtherRows();
}

void TestProjectCheck::oneFaultIsOneRemark()
{
    QFETCH(QString, path);
    QFETCH(QJsonValue, value);
    QFETCH(QString, expected);
    QJsonObject project = changed(parsed(goodProject), path, value).toObject();
    QCOMPARE(lines(project), QStringList(expected));
}

void TestProjectCheck::manyFaultsOfOneKindAreOneRemark()
{
    QJsonArray points;
    for (int i = 0; i < 7; ++i) {
        points.append(QJsonObject{
            {"addr", ""}, {"name", QString::number(i / 2)}, {"dataType", "int8"}, {"permissions", "r"}});
    }
    const QJsonObject project = changed(parsed(goodProject), "standards/0/datas/0/datas", points).toObject();
    QCOMPARE(
        lines(project),
        (QStringList{"Error: Standard/net: Tab 1 (1): rows 1, 2, 3, 4, 5 and 2 more: The address is empty.",
                     "Warning: Standard/net: Points of one name share a row of the Box's reports: "
                     "'0' (tab 1 row 1, tab 1 row 2), '1' (tab 1 row 3, tab 1 row 4), "
                     "'2' (tab 1 row 5, tab 1 row 6)."}));
}

void TestProjectCheck::eachWrongValueIsARemark()
{
    QJsonArray points;
    for (const char *type : {"foo", "", "bar", "foo", "int8"}) {
        points.append(QJsonObject{{"addr", "0"},
                                  {"name", QString::number(points.size())},
                                  {"dataType", type},
                                  {"permissions", "r"}});
    }
    const QJsonObject project = changed(parsed(goodProject), "standards/0/datas/0/datas", points).toObject();
    QCOMPARE(
        lines(project),
        (QStringList{"Error: Standard/net: Tab 1 (1): row 2: The type is empty.",
                     "Error: Standard/net: Tab 1 (1): row 3: The type is 'bar', which no list has.",
                     "Error: Standard/net: Tab 1 (1): rows 1, 4: The type is 'foo', which no list has."}));
}

void TestProjectCheck::anyShapeIsBorne_data()
{
    QTest::addColumn<QJsonValue>("strange");
    for (const char *json : {"null", "true", "1e308", "[]", "{}", "[[[]]]", R"({"datas": [[]]})", R"("x")"}) {
        QTest::newRow(json) << parsed(json);
    }
}

// In place of each value of the project in turn.
static void putEverywhere(const QJsonValue &whole, const QString &path, const QJsonValue &strange,
                          const QJsonValue &project)
{
    const QJsonObject made = changed(project, path, strange).toObject();
    for (const Remark &remark : remarksOn(made, noon())) {
        QVERIFY2(!remark.text.isEmpty() && remark.text.size() < 500, qPrintable(path));
    }
    const QString prefix = path.isEmpty() ? path : path + '/';
    if (whole.isArray()) {
        const QJsonArray array = whole.toArray();
        for (int i = 0; i < array.size(); ++i) {
            putEverywhere(array.at(i), prefix + QString::number(i), strange, project);
        }
    }
    const QJsonObject object = whole.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        putEverywhere(member.value(), prefix + member.key(), strange, project);
    }
}

void TestProjectCheck::anyShapeIsBorne()
{
    QFETCH(QJsonValue, strange);
    const QJsonValue project = changed(parsed(goodProject), "services/0/enableSSL", QJsonValue("true"));
    putEverywhere(project, QString(), strange, project);
}

void TestProjectCheck::remarkLeadsToItsItem()
{
    const QJsonObject document =
        changed(changed(changed(parsed(goodProject), "standards/2/parameter/baudRate", "1"), "boxs/0/ip", ""),
                "services/0/port", "")
            .toObject();
    QStandardItemModel model;
    QStandardItem *project = loadProject(model, document, "/nowhere");
    QStringList found;
    for (const Remark &remark : remarksOn(buildProjectJson(project), noon())) {
        const QStandardItem *item = itemOf(remark, project);
        found.append(item->parent()->text() + '/' + item->text());
    }
    QCOMPARE(found, (QStringList{"Standard/meters", "Standard/more", "Service/IEC61850", "Box/B"}));
}

void TestProjectCheck::remarkOnAnItemThatWentLeadsNowhere()
{
    QStandardItemModel model;
    QStandardItem *project = loadProject(model, parsed(goodProject).toObject(), "/nowhere");
    const Remark remark{Severity::Error, "Standard", 1, "bus", "text"};
    QCOMPARE(itemOf(remark, project)->text(), "bus");
    project->child(ProjectTree::StandardRow)->removeRow(0);
    QCOMPARE(itemOf(remark, project), nullptr);
    QCOMPARE(itemOf({Severity::Error, "Standard", 9, "bus", "text"}, project), nullptr);
    QCOMPARE(itemOf({Severity::Error, "", -1, "P", "text"}, project), project);
    QCOMPARE(itemOf(remark, nullptr), nullptr);
}

QTEST_GUILESS_MAIN(TestProjectCheck)
#include "tst_projectcheck.moc"

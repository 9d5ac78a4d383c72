#include "documenttest.h"
#include "language.h"
#include "tablerow.h"

class TestStandardWriter : public QObject
{
    Q_OBJECT
private slots:
    void parameterFollowsTheKind_data();
    void parameterFollowsTheKind();
    void rtsEnableIsOneOnlyForTrue_data();
    void rtsEnableIsOneOnlyForTrue();
    void modbusStandard();
    void modbusFlagsAreBooleansOrTexts();
    void groupsComeInTheOrderOfTheirKeysAsText();
    void groupWithoutPointsHasAnEmptyArray_data();
    void groupWithoutPointsHasAnEmptyArray();
    void datasOfTheWrongTypeAreEmpty_data();
    void datasOfTheWrongTypeAreEmpty();
    void dormantKindsWriteFlatPoints_data();
    void dormantKindsWriteFlatPoints();
    void opcUaStandard();
    void opcUaAuthenticationIsComparedInTheLanguageInForce_data();
    void opcUaAuthenticationIsComparedInTheLanguageInForce();
    void unknownStandardHasItsNameOnly_data();
    void unknownStandardHasItsNameOnly();
    void rolesOfAnEarlierProtocolStayOutAndComeBack();
};

void TestStandardWriter::parameterFollowsTheKind_data()
{
    QTest::addColumn<QByteArray>("protocol");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QByteArray>("parameter");
    const QByteArray serial = R"("serialport": "v147", "baudRate": "v148", "dataBit": "v149",
        "stopBit": "v150", "parityBit": "v151", "rtsEnable": "0", "communicationGap": "v154",
        "collectionInterval": "v146")";
    const QByteArray serialAndTimeout = "{" + serial + R"(, "communicationTimeout": "v153"})";
    QTest::newRow("ModbusTCP") << QByteArray("Modbus") << "ModbusTCP" << QByteArray(R"({"ip": "v166",
        "port": "v167", "connectionTimeout": "v168", "communicationTimeout": "v153", "keepAlive": "v169",
        "collectionInterval": "v146"})");
    QTest::newRow("ModbusRTU") << QByteArray("Modbus") << "ModbusRTU"
                               << QByteArray("{" + serial + R"(, "communicationTimeout": "v170"})");
    QTest::newRow("Modbus of another mode") << QByteArray("Modbus") << "ModbusASCII" << QByteArray("{}");
    QTest::newRow("Modbus without a mode") << QByteArray("Modbus") << QString() << QByteArray("{}");
    QTest::newRow("DLT645") << QByteArray("DLT645") << "ModbusTCP" << serialAndTimeout;
    QTest::newRow("CustomPoll") << QByteArray("CustomPoll") << QString() << serialAndTimeout;
    QTest::newRow("DIDO") << QByteArray("DIDO") << QString()
                          << QByteArray(R"({"collectionInterval": "v146"})");
    QTest::newRow("OpcUA") << QByteArray("OpcUA") << QString()
                           << QByteArray(R"({"collectionInterval": "v146", "url": "v155"})");
}

void TestStandardWriter::parameterFollowsTheKind()
{
    QFETCH(QByteArray, protocol);
    QFETCH(QString, mode);
    QFETCH(QByteArray, parameter);
    Standard standard(protocol.constData());
    standard.set(standardModbusModeRole, mode);
    QCOMPARE(standard.part("parameter"), onDisk(parameter.constData()));
}

void TestStandardWriter::rtsEnableIsOneOnlyForTrue_data()
{
    QTest::addColumn<QVariant>("flag");
    QTest::addColumn<QString>("written");
    QTest::newRow("true") << QVariant("true") << "1";
    QTest::newRow("boolean true") << QVariant(true) << "1";
    QTest::newRow("false") << QVariant("false") << "0";
    QTest::newRow("unset") << QVariant() << "0";
    QTest::newRow("one") << QVariant("1") << "0";
    QTest::newRow("other case") << QVariant("TRUE") << "0";
}

void TestStandardWriter::rtsEnableIsOneOnlyForTrue()
{
    QFETCH(QVariant, flag);
    QFETCH(QString, written);
    for (const char *protocol : {"Modbus", "DLT645", "CustomPoll"}) {
        Standard standard(protocol);
        standard.set(standardModbusModeRole, "ModbusRTU");
        standard.set(standardRtsEnableRole, flag);
        const QJsonObject parameter = standard.object("standards").value("parameter").toObject();
        QCOMPARE(parameter.value("rtsEnable"), QJsonValue(written));
    }
}

void TestStandardWriter::modbusStandard()
{
    Standard standard("Modbus");
    standard.set(standardModbusModeRole, "ModbusTCP");
    standard.setGroups({{"Modbus-1",
                         rows({{"standard", "1", "ABCD", "true", "false"},
                               {"0", "a", "int16", "1", "r"},
                               {"40", "b", "string", "8", "rw", "more"},
                               {"7"}})},
                        {"Modbus-2", rows({{"s", "2", "CDAB", "false", "true"}})}});
    QCOMPARE(standard.bytes(), onDisk(R"({"name": "M", "protocol": "Modbus", "modbus": "ModbusTCP",
        "parameter": {"ip": "v166", "port": "v167", "connectionTimeout": "v168",
                      "communicationTimeout": "v153", "keepAlive": "v169", "collectionInterval": "v146"},
        "datas": [
            {"series": "standard", "stationNum": "1", "byteOrder": "ABCD", "startAddress0": "1",
             "charReversed": "0", "datas": [
                {"addr": "0", "name": "a", "dataType": "int16", "length": "1", "permissions": "r"},
                {"addr": "40", "name": "b", "dataType": "string", "length": "8", "permissions": "rw"},
                {"addr": "7", "name": "", "dataType": "", "length": "", "permissions": ""}]},
            {"series": "s", "stationNum": "2", "byteOrder": "CDAB", "startAddress0": "0",
             "charReversed": "1", "datas": []}]})"));
}

void TestStandardWriter::modbusFlagsAreBooleansOrTexts()
{
    Standard standard("Modbus");
    const auto flags = [&standard](const QVariant &start, const QVariant &reversed) {
        standard.setGroups({{"Modbus-1", {{"standard", "1", "ABCD", start, reversed}}}});
        const QJsonObject group = standard.datas().at(0).toObject();
        return group.value("startAddress0").toString() + group.value("charReversed").toString();
    };
    QCOMPARE(flags(true, false), "10");
    QCOMPARE(flags(false, true), "01");
    QCOMPARE(flags("true", "1"), "10");
    QCOMPARE(flags(QVariant(), "true"), "01");
}

void TestStandardWriter::groupsComeInTheOrderOfTheirKeysAsText()
{
    Standard standard("Modbus");
    GroupMap groups;
    for (int number = 1; number <= 12; ++number) {
        groups.insert(QString("Modbus-%1").arg(number), rows({{"s", QString::number(number)}}));
    }
    standard.setGroups(groups);
    QStringList stations;
    const QJsonArray datas = standard.datas();
    for (const QJsonValue &group : datas) {
        stations.append(group.toObject().value("stationNum").toString());
    }
    QCOMPARE(stations.join(QLatin1Char(' ')), "1 10 11 12 2 3 4 5 6 7 8 9");
}

void TestStandardWriter::groupWithoutPointsHasAnEmptyArray_data()
{
    QTest::addColumn<QByteArray>("protocol");
    QTest::addColumn<RowList>("list");
    QTest::addColumn<QByteArray>("group");
    QTest::newRow("Modbus") << QByteArray("Modbus") << rows({{"standard", "1", "ABCD", "true", "true"}})
                            << QByteArray(R"({"series": "standard", "stationNum": "1", "byteOrder": "ABCD",
                                   "startAddress0": "1", "charReversed": "1", "datas": []})");
    QTest::newRow("Modbus, no row") << QByteArray("Modbus") << RowList()
                                    << QByteArray(R"({"series": "", "stationNum": "", "byteOrder": "",
                                           "startAddress0": "0", "charReversed": "0", "datas": []})");
    QTest::newRow("Modbus, empty row") << QByteArray("Modbus") << RowList{QVariantList()}
                                       << QByteArray(R"({"series": "", "stationNum": "", "byteOrder": "",
                                              "startAddress0": "0", "charReversed": "0", "datas": []})");
    QTest::newRow("DLT645") << QByteArray("DLT645") << rows({{"AA", "DLT645_2007"}})
                            << QByteArray(R"({"slaveAddress": "AA", "protocolVersion": 1, "datas": []})");
    QTest::newRow("DLT645, no row") << QByteArray(
        "DLT645") << RowList() << QByteArray(R"({"slaveAddress": "", "protocolVersion": 2, "datas": []})");
    QTest::newRow("DLT645, empty row")
        << QByteArray("DLT645") << RowList{QVariantList()}
        << QByteArray(R"({"slaveAddress": "", "protocolVersion": 2, "datas": []})");
}

void TestStandardWriter::groupWithoutPointsHasAnEmptyArray()
{
    QFETCH(QByteArray, protocol);
    QFETCH(RowList, list);
    QFETCH(QByteArray, group);
    Standard standard(protocol.constData());
    standard.setGroups({{"X-1", list}});
    QCOMPARE(standard.datas().size(), 1);
    QCOMPARE(QJsonDocument(standard.datas().at(0).toObject()).toJson(), onDisk(group.constData()));
}

void TestStandardWriter::datasOfTheWrongTypeAreEmpty_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("unset") << QVariant();
    QTest::newRow("text") << QVariant("x");
    QTest::newRow("flat list") << QVariant(QVariantList{1, 2});
    QTest::newRow("map of texts") << QVariant(QVariantMap{{"a", "b"}});
}

void TestStandardWriter::datasOfTheWrongTypeAreEmpty()
{
    QFETCH(QVariant, value);
    for (const char *protocol : {"Modbus", "DLT645", "DIDO", "CustomPoll", "OpcUA"}) {
        Standard standard(protocol);
        standard.set(standardDatasRole, value);
        QCOMPARE(standard.object("standards").value("datas"), QJsonValue(QJsonArray()));
    }
    Standard listed("Modbus");
    listed.setRows(rows({{"a"}}));
    QCOMPARE(listed.datas(), QJsonArray());
    Standard grouped("DIDO");
    grouped.setGroups({{"X-1", rows({{"a"}})}});
    QCOMPARE(grouped.datas(), QJsonArray());
}

void TestStandardWriter::dormantKindsWriteFlatPoints_data()
{
    QTest::addColumn<QByteArray>("protocol");
    QTest::addColumn<QByteArray>("points");
    QTest::newRow("DIDO") << QByteArray("DIDO") << QByteArray(R"({"datas": [
        {"addr": "c0", "name": "c1", "permissions": "c2", "reportingMethod": "c3"},
        {"addr": "short", "name": "", "permissions": "", "reportingMethod": ""}]})");
    QTest::newRow("CustomPoll") << QByteArray("CustomPoll") << QByteArray(R"({"datas": [
        {"name": "c0", "hex": "c1", "dataContent": "c2", "crc": "c3", "permissions": "c4",
         "reportingMethod": "c5"},
        {"name": "short", "hex": "", "dataContent": "", "crc": "", "permissions": "",
         "reportingMethod": ""}]})");
    QTest::newRow("OpcUA") << QByteArray("OpcUA") << QByteArray(R"({"datas": [
        {"addr": "c0", "name": "c1", "index": "c2", "nodeType": "c3", "permissions": "c4",
         "reportingMethod": "c5", "changeAmplitude": "c6", "collectionFormula": "c7",
         "writeFormula": "c8", "dataType": "c9"},
        {"addr": "short", "name": "", "index": "", "nodeType": "", "permissions": "",
         "reportingMethod": "", "changeAmplitude": "", "collectionFormula": "", "writeFormula": "",
         "dataType": ""}]})");
}

void TestStandardWriter::dormantKindsWriteFlatPoints()
{
    QFETCH(QByteArray, protocol);
    QFETCH(QByteArray, points);
    Standard standard(protocol.constData());
    QStringList cells;
    for (int cell = 0; cell < 12; ++cell) {
        cells.append(QString("c%1").arg(cell));
    }
    standard.setRows(rows({cells, {"short"}}));
    QCOMPARE(QJsonDocument(QJsonObject{{"datas", standard.datas()}}).toJson(), onDisk(points.constData()));
    QStringList keys{"datas", "name", "parameter", "protocol"};
    if (protocol == "OpcUA") {
        keys.insert(1, "extendedParameters");
    }
    QCOMPARE(standard.object("standards").keys(), keys);
}

void TestStandardWriter::opcUaStandard()
{
    Standard standard("OpcUA");
    standard.set(standardAuthenticationRole, "anonymous");
    QCOMPARE(standard.bytes(), onDisk(R"({"name": "M", "protocol": "OpcUA",
        "parameter": {"collectionInterval": "v146", "url": "v155"},
        "extendedParameters": {"securityPolicy": "v156", "messageSecurityMode": "v157",
            "authentication": "0", "username": "v159", "password": "v160", "certificate": "v161",
            "certificatePath": "v163", "privateKey": "v162", "privateKeyPath": "v164"},
        "datas": []})"));
}

void TestStandardWriter::opcUaAuthenticationIsComparedInTheLanguageInForce_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("chinese");
    tableRow("anonymous", "anonymous", "0", "absent");
    tableRow("password", "Username and password verification", "1", "absent");
    tableRow("anonymous in Chinese", "匿名", "absent", "0");
    tableRow("password in Chinese", "用户名、密码验证", "absent", "1");
    tableRow("neither", "Anonymous", "absent", "absent");
    tableRow("unset", QString(), "absent", "absent");
}

void TestStandardWriter::opcUaAuthenticationIsComparedInTheLanguageInForce()
{
    QFETCH(QString, stored);
    QFETCH(QString, english);
    QFETCH(QString, chinese);
    Standard standard("OpcUA");
    standard.set(standardAuthenticationRole, stored);
    const auto written = [&standard]() {
        const QJsonObject object = standard.object("standards");
        const QJsonObject extended = object.value("extendedParameters").toObject();
        return extended.value("authentication").toString("absent");
    };
    QCOMPARE(written(), english);
    const Language language(
        QString(), {{"anonymous", "匿名"}, {"Username and password verification", "用户名、密码验证"}});
    QCOMPARE(written(), chinese);
}

void TestStandardWriter::unknownStandardHasItsNameOnly_data()
{
    QTest::addColumn<QByteArray>("protocol");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("unknown") << QByteArray("Profibus");
    QTest::newRow("other case") << QByteArray("modbus");
    QTest::newRow("a mode") << QByteArray("ModbusTCP");
}

void TestStandardWriter::unknownStandardHasItsNameOnly()
{
    QFETCH(QByteArray, protocol);
    Standard standard(protocol.constData());
    standard.setGroups({{"Modbus-1", rows({{"standard"}})}});
    QCOMPARE(standard.bytes(), onDisk(R"({"name": "M"})"));
}

void TestStandardWriter::rolesOfAnEarlierProtocolStayOutAndComeBack()
{
    Standard standard("Modbus");
    standard.set(standardModbusModeRole, "ModbusTCP");
    const QByteArray before = standard.bytes();
    standard.setProtocol("DLT645");
    const QJsonObject changed = standard.object("standards");
    QVERIFY(!changed.contains("modbus"));
    QVERIFY(!changed.value("parameter").toObject().contains("ip"));
    standard.setProtocol("Modbus");
    QCOMPARE(standard.bytes(), before);
}

QTEST_GUILESS_MAIN(TestStandardWriter)
#include "tst_standardwriter.moc"

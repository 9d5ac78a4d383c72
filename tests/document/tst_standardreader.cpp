#include "definitions/dlt645items.h"
#include "language.h"
#include "readertest.h"

namespace {

// The map that a Standard item has after this object, as text.
QString groupsAfter(const QJsonObject &object)
{
    QStandardItem item;
    transmitStandardData(object, &item);
    return ProjectDump::valueText(item.data(standardDatasRole));
}

} // namespace

class TestStandardReader : public QObject
{
    Q_OBJECT
private slots:
    void standardReadsEveryMemberForEveryKind_data();
    void standardReadsEveryMemberForEveryKind();
    void standardEmptiesWhatIsMissing();
    void timeoutGoesToTheRoleOfTheKind_data();
    void timeoutGoesToTheRoleOfTheKind();
    void standardAuthenticationIsTranslated_data();
    void standardAuthenticationIsTranslated();
    void flagIsTrueOnlyForOne_data();
    void flagIsTrueOnlyForOne();
    void dormantKindsKeepTheirDatas_data();
    void dormantKindsKeepTheirDatas();
    void modbusGroups();
    void dlt645Groups();
    void dlt645VersionIsTwoUnlessItIsTheNumberOne_data();
    void dlt645VersionIsTwoUnlessItIsTheNumberOne();
    void dlt645LabelsAreInTheLanguageInForce();
    void everyDlt645IdentifierGivesItsLabelInEitherVersion();
    void groupsAreNumberedInArrayOrder();
    void datasWithoutGroupsGiveAnEmptyMap_data();
    void datasWithoutGroupsGiveAnEmptyMap();
};

void TestStandardReader::standardReadsEveryMemberForEveryKind_data()
{
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("mode");
    for (const char *protocol : {"Modbus", "DLT645", "DIDO", "CustomPoll", "OpcUA", "Profibus", ""}) {
        QTest::newRow(protocol) << S(protocol) << S("ModbusTCP");
    }
}

void TestStandardReader::standardReadsEveryMemberForEveryKind()
{
    QFETCH(QString, protocol);
    QFETCH(QString, mode);
    QStringList expected{"+144 QString " + protocol};
    const char *texts[] = {"collectionInterval",
                           "serialport",
                           "baudRate",
                           "dataBit",
                           "stopBit",
                           "parityBit",
                           "true",
                           "communicationTimeout",
                           "communicationGap",
                           "url",
                           "securityPolicy",
                           "messageSecurityMode",
                           "Username and password verification",
                           "username",
                           "password",
                           "certificate",
                           "privateKey",
                           "certificatePath",
                           "privateKeyPath",
                           "ModbusTCP",
                           "ip",
                           "port",
                           "connectionTimeout",
                           "keepAlive"};
    int offset = 146;
    for (const char *text : texts) {
        expected.append(line(offset++, text));
    }
    QStringList found = rolesAfter(transmitStandardData, standardWith(protocol, mode));
    if (protocol == S("Modbus") || protocol == S("DLT645")) {
        QVERIFY(found.takeAt(1).startsWith(S("+145 groups {")));
    }
    QCOMPARE(found, expected);
}

void TestStandardReader::standardEmptiesWhatIsMissing()
{
    const QStringList expected = lines(144, 144, "") + lines(145, 145, "old") + lines(146, 151, "")
        + lines(152, 152, "false") + lines(153, 157, "") + lines(158, 158, "old") + lines(159, 169, "")
        + lines(170, 170, "old");
    QCOMPARE(rolesOver(transmitStandardData, QJsonObject(), standardProtocolRole,
                       standardRtuCommunicationTimeoutRole),
             expected);
}

void TestStandardReader::timeoutGoesToTheRoleOfTheKind_data()
{
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("timeout");
    QTest::addColumn<QString>("rtuTimeout");
    const QString read = S("communicationTimeout");
    const QString old = S("old");
    QTest::newRow("ModbusTCP") << S("Modbus") << S("ModbusTCP") << read << old;
    QTest::newRow("ModbusRTU") << S("Modbus") << S("ModbusRTU") << old << read;
    QTest::newRow("Modbus of another mode") << S("Modbus") << S("ModbusASCII") << old << old;
    QTest::newRow("Modbus without a mode") << S("Modbus") << S() << old << old;
    QTest::newRow("DLT645") << S("DLT645") << S() << read << old;
    QTest::newRow("DLT645 with a mode") << S("DLT645") << S("ModbusRTU") << read << old;
    QTest::newRow("CustomPoll") << S("CustomPoll") << S() << read << old;
    QTest::newRow("DIDO") << S("DIDO") << S() << read << old;
    QTest::newRow("OpcUA") << S("OpcUA") << S() << read << old;
    QTest::newRow("unknown") << S("Profibus") << S("ModbusRTU") << read << old;
}

void TestStandardReader::timeoutGoesToTheRoleOfTheKind()
{
    QFETCH(QString, protocol);
    QFETCH(QString, mode);
    QStandardItem item;
    item.setData(S("old"), standardCommunicationTimeoutRole);
    item.setData(S("old"), standardRtuCommunicationTimeoutRole);
    transmitStandardData(standardWith(protocol, mode), &item);
    QTEST(item.data(standardCommunicationTimeoutRole).toString(), "timeout");
    QTEST(item.data(standardRtuCommunicationTimeoutRole).toString(), "rtuTimeout");
}

void TestStandardReader::standardAuthenticationIsTranslated_data()
{
    addAuthenticationRows("anonymous", "Username and password verification");
}

void TestStandardReader::standardAuthenticationIsTranslated()
{
    QFETCH(QJsonValue, code);
    QFETCH(QString, text);
    QCOMPARE(authenticationAfter(transmitStandardData, code, standardAuthenticationRole), text);
    const Language language(S("zh "));
    QCOMPARE(authenticationAfter(transmitStandardData, code, standardAuthenticationRole),
             text == S("old") ? text : S("zh ") + text);
}

void TestStandardReader::flagIsTrueOnlyForOne_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("flag");
    QTest::newRow("1") << QJsonValue(S("1")) << S("true");
    QTest::newRow("0") << QJsonValue(S("0")) << S("false");
    QTest::newRow("true") << QJsonValue(S("true")) << S("false");
    QTest::newRow("number") << QJsonValue(1) << S("false");
    QTest::newRow("boolean") << QJsonValue(true) << S("false");
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << S("false");
}

void TestStandardReader::flagIsTrueOnlyForOne()
{
    QFETCH(QJsonValue, value);
    QFETCH(QString, flag);
    QJsonObject parameter;
    parameter.insert(S("rtsEnable"), value);
    QJsonObject group;
    group.insert(S("startAddress0"), value);
    group.insert(S("charReversed"), value);
    QStandardItem item;
    transmitStandardData(
        {{S("protocol"), S("Modbus")}, {S("parameter"), parameter}, {S("datas"), QJsonArray{group}}}, &item);
    QCOMPARE(item.data(standardRtsEnableRole), QVariant(flag));
    QCOMPARE(item.data(standardDatasRole).value<GroupMap>().value(S("Modbus-1")),
             RowList({row({S(""), S(""), S(""), flag, flag})}));
}

void TestStandardReader::dormantKindsKeepTheirDatas_data()
{
    QTest::addColumn<QString>("protocol");
    for (const char *protocol : {"DIDO", "CustomPoll", "OpcUA", "Profibus", "modbus", ""}) {
        QTest::newRow(protocol) << S(protocol);
    }
}

void TestStandardReader::dormantKindsKeepTheirDatas()
{
    QFETCH(QString, protocol);
    QStandardItem fresh;
    transmitStandardData(standardWith(protocol, S()), &fresh);
    QVERIFY(!fresh.data(standardDatasRole).isValid());

    QStandardItem filled;
    const RowList kept = rows({{S("a"), S("b")}});
    filled.setData(QVariant::fromValue(kept), standardDatasRole);
    transmitStandardData(standardWith(protocol, S()), &filled);
    QCOMPARE(filled.data(standardDatasRole).value<RowList>(), kept);
}

void TestStandardReader::modbusGroups()
{
    QCOMPARE(groupsAfter(groupsOf("Modbus", R"(
        {"series": "standard", "stationNum": "1", "byteOrder": "ABCD", "startAddress0": "1",
         "charReversed": "0", "datas": [
            {"addr": "0", "name": "a", "dataType": "int16", "length": "1", "permissions": "r"},
            {"addr": "7"}]},
        {"stationNum": "2", "charReversed": "1"})")),
             S("groups {Modbus-1: [QString standard, QString 1, QString ABCD, QString true, QString false] "
               "[QString 0, QString a, QString int16, QString 1, QString r] "
               "[QString 7, QString , QString , QString , QString ]; "
               "Modbus-2: [QString , QString 2, QString , QString false, QString true]}"));
}

void TestStandardReader::dlt645Groups()
{
    QCOMPARE(groupsAfter(groupsOf("DLT645", R"(
        {"slaveAddress": "AAAAAAAAAAAA", "protocolVersion": 1, "datas": [
            {"select": "true", "name": "Ua", "addr": "02010100", "dataType": "unread"},
            {"select": "false", "name": "Ub", "addr": "B612"},
            {"select": "true", "name": "n", "addr": "unknown"},
            {"select": "true"}]},
        {"slaveAddress": "000012345678", "protocolVersion": 2, "datas": [
            {"select": "true", "name": "Uc", "addr": "02010300"}]})")),
             S("groups {DLT645-1: [QString AAAAAAAAAAAA, QString DLT645_2007] "
               "[QString true, QString A-phase voltage, QString Ua] "
               "[QString false, QString B-phase voltage, QString Ub] "
               "[QString true, QString , QString n] "
               "[QString true, QString , QString ]; "
               "DLT645-2: [QString 000012345678, QString DLT645_1997] "
               "[QString true, QString C-phase voltage, QString Uc]}"));
}

void TestStandardReader::dlt645VersionIsTwoUnlessItIsTheNumberOne_data()
{
    QTest::addColumn<QJsonValue>("version");
    QTest::addColumn<QString>("text");
    QTest::newRow("1") << QJsonValue(1) << S("DLT645_2007");
    QTest::newRow("1.0") << QJsonValue(1.0) << S("DLT645_2007");
    QTest::newRow("2") << QJsonValue(2) << S("DLT645_1997");
    QTest::newRow("0") << QJsonValue(0) << S("DLT645_1997");
    QTest::newRow("1.5") << QJsonValue(1.5) << S("DLT645_1997");
    QTest::newRow("huge") << QJsonValue(1e300) << S("DLT645_1997");
    QTest::newRow("text") << QJsonValue(S("1")) << S("DLT645_1997");
    QTest::newRow("boolean") << QJsonValue(true) << S("DLT645_1997");
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << S("DLT645_1997");
}

void TestStandardReader::dlt645VersionIsTwoUnlessItIsTheNumberOne()
{
    QFETCH(QJsonValue, version);
    QFETCH(QString, text);
    QJsonObject group;
    group.insert(S("protocolVersion"), version);
    QCOMPARE(groupsAfter({{S("protocol"), S("DLT645")}, {S("datas"), QJsonArray{group}}}),
             QString("groups {DLT645-1: [QString , QString %1]}").arg(text));
}

void TestStandardReader::dlt645LabelsAreInTheLanguageInForce()
{
    const QJsonObject standard = groupsOf("DLT645", R"({"datas": [{"addr": "B611"}]})");
    const QString english = S("groups {DLT645-1: [QString , QString DLT645_1997] "
                              "[QString , QString A-phase voltage, QString ]}");
    QCOMPARE(groupsAfter(standard), english);
    {
        const Language chinese(S("zh "));
        QCOMPARE(groupsAfter(standard), QString(english).replace(S("A-phase"), S("zh A-phase")));
    }
    QCOMPARE(groupsAfter(standard), english);
}

void TestStandardReader::everyDlt645IdentifierGivesItsLabelInEitherVersion()
{
    for (const int version : {1, 2}) {
        QJsonArray points;
        QStringList expected;
        for (const Dlt645::Item &item : Dlt645::items()) {
            for (const char *address : {item.code2007.address, item.code1997.address}) {
                if (address) {
                    points.append(QJsonObject{{S("addr"), S(address)}});
                    expected.append(S(item.label));
                }
            }
        }
        const QJsonObject group{{S("protocolVersion"), version}, {S("datas"), points}};
        QStandardItem item;
        transmitStandardData({{S("protocol"), S("DLT645")}, {S("datas"), QJsonArray{group}}}, &item);
        QStringList labels;
        const RowList found = item.data(standardDatasRole).value<GroupMap>().value(S("DLT645-1")).mid(1);
        for (const QVariantList &point : found) {
            labels.append(point.value(1).toString());
        }
        QCOMPARE(labels, expected);
    }
}

void TestStandardReader::groupsAreNumberedInArrayOrder()
{
    QJsonArray groups;
    for (int number = 1; number <= 11; ++number) {
        groups.append(QJsonObject{{S("stationNum"), QString::number(number)}});
    }
    QStandardItem item;
    transmitStandardData({{S("protocol"), S("Modbus")}, {S("datas"), groups}}, &item);
    const auto map = item.data(standardDatasRole).value<GroupMap>();
    const QStringList keys = map.keys();
    QCOMPARE(keys.mid(0, 4), QStringList({S("Modbus-1"), S("Modbus-10"), S("Modbus-11"), S("Modbus-2")}));
    QCOMPARE(map.size(), 11);
    for (int number = 1; number <= 11; ++number) {
        const QString key = QString("Modbus-%1").arg(number);
        QCOMPARE(map.value(key).value(0).value(1).toString(), QString::number(number));
    }
}

void TestStandardReader::datasWithoutGroupsGiveAnEmptyMap_data()
{
    QTest::addColumn<QJsonValue>("datas");
    QTest::newRow("empty") << QJsonValue(QJsonArray());
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined);
    QTest::newRow("object") << QJsonValue(QJsonObject{{S("0"), S("x")}});
    QTest::newRow("text") << QJsonValue(S("x"));
}

void TestStandardReader::datasWithoutGroupsGiveAnEmptyMap()
{
    QFETCH(QJsonValue, datas);
    for (const char *protocol : {"Modbus", "DLT645"}) {
        QJsonObject standard{{S("protocol"), S(protocol)}};
        standard.insert(S("datas"), datas);
        QCOMPARE(groupsAfter(standard), S("groups {}"));
    }
}

QTEST_GUILESS_MAIN(TestStandardReader)
#include "tst_standardreader.moc"

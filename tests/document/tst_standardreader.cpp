#include "definitions/dlt645items.h"
#include "language.h"
#include "readertest.h"
#include "tablerow.h"

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
        QTest::newRow(protocol) << QString::fromLatin1(protocol) << "ModbusTCP";
    }
}

void TestStandardReader::standardReadsEveryMemberForEveryKind()
{
    QFETCH(QString, protocol);
    QFETCH(QString, mode);
    QStringList expected{"+144 QString " + protocol};
    const QStringList texts =
        QString("collectionInterval|serialport|baudRate|dataBit|stopBit|parityBit|true|communicationTimeout|"
                "communicationGap|url|securityPolicy|messageSecurityMode|Username and password verification|"
                "username|password|certificate|privateKey|certificatePath|privateKeyPath|ModbusTCP|ip|port|"
                "connectionTimeout|keepAlive")
            .split(QLatin1Char('|'));
    int offset = 146;
    for (const QString &text : texts) {
        expected.append(line(offset++, text));
    }
    QStringList found = rolesAfter(transmitStandardData, standardWith(protocol, mode));
    if (protocol == "Modbus" || protocol == "DLT645") {
        QVERIFY(found.takeAt(1).startsWith("+145 groups {"));
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
    const QString read = "communicationTimeout";
    const QString old = "old";
    tableRow("ModbusTCP", "Modbus", "ModbusTCP", read, old);
    tableRow("ModbusRTU", "Modbus", "ModbusRTU", old, read);
    tableRow("Modbus of another mode", "Modbus", "ModbusASCII", old, old);
    tableRow("Modbus without a mode", "Modbus", QString(), old, old);
    tableRow("DLT645", "DLT645", QString(), read, old);
    tableRow("DLT645 with a mode", "DLT645", "ModbusRTU", read, old);
    tableRow("CustomPoll", "CustomPoll", QString(), read, old);
    tableRow("DIDO", "DIDO", QString(), read, old);
    tableRow("OpcUA", "OpcUA", QString(), read, old);
    tableRow("unknown", "Profibus", "ModbusRTU", read, old);
}

void TestStandardReader::timeoutGoesToTheRoleOfTheKind()
{
    QFETCH(QString, protocol);
    QFETCH(QString, mode);
    QStandardItem item;
    item.setData("old", standardCommunicationTimeoutRole);
    item.setData("old", standardRtuCommunicationTimeoutRole);
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
    const Language language("zh ");
    QCOMPARE(authenticationAfter(transmitStandardData, code, standardAuthenticationRole),
             text == "old" ? text : "zh " + text);
}

void TestStandardReader::flagIsTrueOnlyForOne_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("flag");
    QTest::newRow("1") << QJsonValue("1") << "true";
    QTest::newRow("0") << QJsonValue("0") << "false";
    QTest::newRow("true") << QJsonValue("true") << "false";
    QTest::newRow("number") << QJsonValue(1) << "false";
    QTest::newRow("boolean") << QJsonValue(true) << "false";
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << "false";
}

void TestStandardReader::flagIsTrueOnlyForOne()
{
    QFETCH(QJsonValue, value);
    QFETCH(QString, flag);
    QJsonObject parameter;
    parameter.insert("rtsEnable", value);
    QJsonObject group;
    group.insert("startAddress0", value);
    group.insert("charReversed", value);
    QStandardItem item;
    transmitStandardData({{"protocol", "Modbus"}, {"parameter", parameter}, {"datas", QJsonArray{group}}},
                         &item);
    QCOMPARE(item.data(standardRtsEnableRole), QVariant(flag));
    QCOMPARE(item.data(standardDatasRole).value<GroupMap>().value("Modbus-1"),
             RowList({row({"", "", "", flag, flag})}));
}

void TestStandardReader::dormantKindsKeepTheirDatas_data()
{
    QTest::addColumn<QString>("protocol");
    for (const char *protocol : {"DIDO", "CustomPoll", "OpcUA", "Profibus", "modbus", ""}) {
        QTest::newRow(protocol) << QString::fromLatin1(protocol);
    }
}

void TestStandardReader::dormantKindsKeepTheirDatas()
{
    QFETCH(QString, protocol);
    QStandardItem fresh;
    transmitStandardData(standardWith(protocol, QString()), &fresh);
    QVERIFY(!fresh.data(standardDatasRole).isValid());

    QStandardItem filled;
    const RowList kept = rows({{"a", "b"}});
    filled.setData(QVariant::fromValue(kept), standardDatasRole);
    transmitStandardData(standardWith(protocol, QString()), &filled);
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
             "groups {Modbus-1: [QString standard, QString 1, QString ABCD, QString true, QString false] "
             "[QString 0, QString a, QString int16, QString 1, QString r] "
             "[QString 7, QString , QString , QString , QString ]; "
             "Modbus-2: [QString , QString 2, QString , QString false, QString true]}");
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
             "groups {DLT645-1: [QString AAAAAAAAAAAA, QString DLT645_2007] "
             "[QString true, QString A-phase voltage, QString Ua] "
             "[QString false, QString B-phase voltage, QString Ub] "
             "[QString true, QString , QString n] "
             "[QString true, QString , QString ]; "
             "DLT645-2: [QString 000012345678, QString DLT645_1997] "
             "[QString true, QString C-phase voltage, QString Uc]}");
}

void TestStandardReader::dlt645VersionIsTwoUnlessItIsTheNumberOne_data()
{
    QTest::addColumn<QJsonValue>("version");
    QTest::addColumn<QString>("text");
    QTest::newRow("1") << QJsonValue(1) << "DLT645_2007";
    QTest::newRow("1.0") << QJsonValue(1.0) << "DLT645_2007";
    QTest::newRow("2") << QJsonValue(2) << "DLT645_1997";
    QTest::newRow("0") << QJsonValue(0) << "DLT645_1997";
    QTest::newRow("1.5") << QJsonValue(1.5) << "DLT645_1997";
    QTest::newRow("huge") << QJsonValue(1e300) << "DLT645_1997";
    QTest::newRow("text") << QJsonValue("1") << "DLT645_1997";
    QTest::newRow("boolean") << QJsonValue(true) << "DLT645_1997";
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << "DLT645_1997";
}

void TestStandardReader::dlt645VersionIsTwoUnlessItIsTheNumberOne()
{
    QFETCH(QJsonValue, version);
    QFETCH(QString, text);
    QJsonObject group;
    group.insert("protocolVersion", version);
    QCOMPARE(groupsAfter({{"protocol", "DLT645"}, {"datas", QJsonArray{group}}}),
             QString("groups {DLT645-1: [QString , QString %1]}").arg(text));
}

void TestStandardReader::dlt645LabelsAreInTheLanguageInForce()
{
    const QJsonObject standard = groupsOf("DLT645", R"({"datas": [{"addr": "B611"}]})");
    const QString english = "groups {DLT645-1: [QString , QString DLT645_1997] "
                            "[QString , QString A-phase voltage, QString ]}";
    QCOMPARE(groupsAfter(standard), english);
    {
        const Language chinese("zh ");
        QCOMPARE(groupsAfter(standard), QString(english).replace("A-phase", "zh A-phase"));
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
                    points.append(QJsonObject{{"addr", QLatin1String(address)}});
                    expected.append(QLatin1String(item.label));
                }
            }
        }
        const QJsonObject group{{"protocolVersion", version}, {"datas", points}};
        QStandardItem item;
        transmitStandardData({{"protocol", "DLT645"}, {"datas", QJsonArray{group}}}, &item);
        QStringList labels;
        const RowList found = item.data(standardDatasRole).value<GroupMap>().value("DLT645-1").mid(1);
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
        groups.append(QJsonObject{{"stationNum", QString::number(number)}});
    }
    QStandardItem item;
    transmitStandardData({{"protocol", "Modbus"}, {"datas", groups}}, &item);
    const auto map = item.data(standardDatasRole).value<GroupMap>();
    const QStringList keys = map.keys();
    QCOMPARE(keys.mid(0, 4), QStringList({"Modbus-1", "Modbus-10", "Modbus-11", "Modbus-2"}));
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
    QTest::newRow("object") << QJsonValue(QJsonObject{{"0", "x"}});
    QTest::newRow("text") << QJsonValue("x");
}

void TestStandardReader::datasWithoutGroupsGiveAnEmptyMap()
{
    QFETCH(QJsonValue, datas);
    for (const char *protocol : {"Modbus", "DLT645"}) {
        QJsonObject standard{{"protocol", QLatin1String(protocol)}};
        standard.insert("datas", datas);
        QCOMPARE(groupsAfter(standard), "groups {}");
    }
}

QTEST_GUILESS_MAIN(TestStandardReader)
#include "tst_standardreader.moc"

#include "document/definitionobject.h"
#include "document/projectreader.h"

#include "readertest.h"
#include "tablerow.h"

namespace {

QJsonObject plcObject(const QStandardItem &plc)
{
    return DefinitionObject::write(Definitions::Kind::Plc, plc, DocumentKeys::Texts());
}

// One key of an object: under which it is written and read, and its role; a flag is "1" or "0".
struct Key {
    QString written;
    int role;
    bool isFlag = false;
    QString read = QString(); // null if it is the same
};

struct Pair {
    QString manufacturer;
    QString protocol;
    QVector<Key> keys; // of "extendedParameters"
};

QVector<Key> modbusKeys(int series)
{
    return {{"series", series},
            {"stationNum", series + 1},
            {"byteOrder", series + 2},
            {"startAddress0", series + 3, true},
            {"charReversed", series + 4, true}};
}

// clang-format off
const QVector<Key> hostLink{{"stationNum", plcHostLinkStationNumRole}, {"deviceIDNum", plcHostLinkDeviceIdNumRole},
    {"PLCUnit", plcHostLinkPlcUnitRole}, {"hostcomputerUnit", plcHostLinkHostcomputerUnitRole},
    {"byteOrder", plcHostLinkByteOrderRole}, {"charReversed", plcHostLinkCharReversedRole, true}};
const QVector<Key> allenBradley{{"model", plcAbModelRole}, {"Slot", plcAbSlotRole, false, "slot"},
    {"router", plcAbRouterRole}};

const QVector<Pair> pairs{
    {"Siemens", "S7", {{"model", plcModelRole}, {"connectionType", plcS7ConnectionTypeRole},
        {"rack", plcS7RackRole}, {"Slot", plcS7SlotRole, false, "slot"}, {"localTSAP", plcS7LocalTsapRole},
        {"destTSA", plcS7DestTsapRole}}},
    {"Siemens", "PPI", {{"stationNum", plcPpiStationNumRole}}},
    {"Siemens", "PPI On TCP", {{"stationNum", plcPpiStationNumRole}}},
    {"Mitsubishi", "EtherNet/IP", {{"Slot", plcMitsubishiEipSlotRole, false, "slot"}}},
    {"Mitsubishi", "MC-3C", {{"stationNum", plcMc3cStationNumRole}, {"format", plcMc3cFormatRole},
        {"sumCheck", plcMc3cSumCheckRole, true}, {"writebitByword", plcMc3cWriteBitByWordRole, true}}},
    {"Mitsubishi", "MC-1E", {{"stationNum", plcMc1eStationNumRole}, {"binary", plcMc1eBinaryRole, true}}},
    {"Mitsubishi", "MC-3E", {{"mode", plcMc3eModeRole}, {"stationNum", plcMc3eStationNumRole},
        {"netNum", plcMc3eNetNumRole}, {"binary", plcMc3eBinaryRole, true},
        {"writeBitByWord", plcMc3eWriteBitByWordRole, true, "writebitByword"},
        {"charReversed", plcMc3eCharReversedRole, true}}},
    {"Mitsubishi", "FxLinks", {{"stationNum", plcFxLinksStationNumRole}, {"sumCheck", plcFxLinksSumCheckRole, true},
        {"messageWaitingTime", plcFxLinksMessageWaitingTimeRole}, {"format", plcFxLinksFormatRole}}},
    {"Mitsubishi", "FxSerial", {{"newAgreement", plcFxSerialNewAgreementRole, true}}},
    {"Omron", "Fins", {{"mode", plcFinsModeRole}, {"unitNumber", plcFinsUnitNumberRole},
        {"byteOrder", plcFinsByteOrderRole}, {"charReversed", plcFinsCharReversedRole, true}}},
    {"Omron", "EtherNet/IP", {{"model", plcOmronEipModelRole}, {"Slot", plcOmronEipSlotRole, false, "slot"}}},
    {"Omron", "HostLink", hostLink},
    {"Omron", "HostLink On TCP", hostLink},
    {"AllenBradley", "EtherNet/IP", allenBradley},
    {"AllenBradley", "MicroCIP", allenBradley},
    {"AllenBradley", "DF1", {{"stationNum", plcDf1StationNumRole}, {"targetNode", plcDf1TargetNodeRole},
        {"sourceNode", plcDf1SourceNodeRole}}},
    {"Beckhoff", "Ads", {{"autoNetld", plcAdsAutoNetIdRole, true}, {"targetNetId", plcAdsTargetNetIdRole},
        {"senderNetId", plcAdsSenderNetIdRole}, {"tagCache", plcAdsTagCacheRole, true}}},
    {"XinJE", "Modbus TCP", modbusKeys(plcXinjeSeriesRole)},
    {"XinJE", "Modbus RTU On TCP", modbusKeys(plcXinjeSeriesRole)},
    {"XinJE", "Modbus RTU", modbusKeys(plcXinjeSeriesRole)},
    {"Inovance", "Modbus TCP", modbusKeys(plcInovanceSeriesRole)},
    {"Inovance", "Modbus RTU On TCP", modbusKeys(plcInovanceSeriesRole)},
    {"Inovance", "Modbus RTU", modbusKeys(plcInovanceSeriesRole)},
    {"Modbus", "Modbus TCP", modbusKeys(plcModbusSeriesRole)},
    {"Modbus", "Modbus RTU On TCP", modbusKeys(plcModbusSeriesRole)},
    {"Modbus", "Modbus RTU", modbusKeys(plcModbusSeriesRole)},
    {"Delta", "Modbus TCP", modbusKeys(plcDeltaSeriesRole)},
    {"Delta", "Modbus RTU On TCP", modbusKeys(plcDeltaSeriesRole)},
    {"Delta", "Modbus RTU", modbusKeys(plcDeltaSeriesRole)},
    // These have nothing of their own.
    {"Siemens", "Fins", {}},
    {"Omron", "S7", {}},
    {"Beckhoff", "ads", {}},
    {"Panasonic", "Modbus TCP", {}},
    {"Panasonic", "Mewtocol", {}},
    {"", "", {}},
};

const QVector<Key> tcpKeys{{"ip", plcIpRole}, {"port", plcPortRole},
    {"connectionTimeout", plcConnectionTimeoutRole}, {"communicationTimeout", plcTcpCommunicationTimeoutRole},
    {"keepAlive", plcKeepAliveRole}, {"collectionInterval", plcCollectionIntervalRole}};
const QVector<Key> serialKeys{{"serialport", plcSerialPortRole}, {"baudRate", plcBaudRateRole},
    {"dataBit", plcDataBitRole}, {"stopBit", plcStopBitRole}, {"parityBit", plcParityBitRole},
    {"rtsEnable", plcRtsEnableRole, true}, {"communicationTimeout", plcSerialCommunicationTimeoutRole},
    {"communicationGap", plcCommunicationGapRole}, {"collectionInterval", plcCollectionIntervalRole}};
const QVector<Key> unknownKeys{{"collectionInterval", plcCollectionIntervalRole}};

const QStringList tcpProtocols{"S7", "PPI On TCP", "EtherNet/IP", "MC-1E", "MC-3E", "Fins", "MicroCIP",
    "Ads", "Modbus TCP", "Modbus RTU On TCP"};
const QStringList serialProtocols{"PPI", "MC-3C", "FxLinks", "FxSerial", "HostLink", "HostLink On TCP",
    "DF1", "Modbus RTU"};
// clang-format on

QVector<Key> parameterKeys(const QString &protocol)
{
    return tcpProtocols.contains(protocol)   ? tcpKeys
        : serialProtocols.contains(protocol) ? serialKeys
                                             : unknownKeys;
}

// A PLC whose roles hold "v<offset>", flags "true"; its table has one row of nine cells.
void fillRoles(QStandardItem *item, const Pair &pair)
{
    item->setText("press 1");
    for (int role = plcManufacturerRole; role < plcParametersRole; ++role) {
        item->setData(QString("v%1").arg(role - Qt::UserRole), role);
    }
    item->setData(pair.manufacturer, plcManufacturerRole);
    item->setData(pair.protocol, plcProtocolRole);
    for (const Key &key : pair.keys + parameterKeys(pair.protocol)) {
        if (key.isFlag) {
            item->setData("true", key.role);
        }
    }
    item->setData(QVariant::fromValue(rows({{"a", "b", "c", "d", "e", "f", "g", "h", "i"}})),
                  plcParametersRole);
}

QJsonObject keysOf(const QVector<Key> &keys)
{
    QJsonObject object;
    for (const Key &key : keys) {
        object.insert(key.written, key.isFlag ? QString("1") : QString("v%1").arg(key.role - Qt::UserRole));
    }
    return object;
}

QJsonObject objectOf(const Pair &pair)
{
    QJsonObject object{
        {"name", "press 1"},
        {"manufacturer", pair.manufacturer},
        {"protocol", pair.protocol},
        {"extendedParameters", keysOf(pair.keys)},
        {"parameter", keysOf(parameterKeys(pair.protocol))},
        {"datas",
         parse(R"({"datas": [{"addr": "a", "name": "b", "dataType": "c", "length": "d",
            "permissions": "e", "reportingMethod": "f", "changeAmplitude": "g", "collectionFormula": "h",
            "writeFormula": "i"}]})")
             .value("datas")},
    };
    if (pair.protocol == "S7" && pair.manufacturer == "Siemens") {
        object.insert("model", "v38");
    }
    return object;
}

QByteArray bytes(const QJsonObject &object)
{
    return QJsonDocument(object).toJson();
}

QString roleLine(int role, const QString &text)
{
    return QString("+%1 QString ").arg(role - Qt::UserRole) + text;
}

// Lines in the order of their roles.
QStringList inOrder(const QMap<int, QString> &texts)
{
    QStringList found;
    for (auto it = texts.cbegin(); it != texts.cend(); ++it) {
        found.append(roleLine(it.key(), it.value()));
    }
    return found;
}

void addPairRows()
{
    QTest::addColumn<int>("place");
    for (int place = 0; place < pairs.size(); ++place) {
        QTest::addRow("%s %s", qPrintable(pairs.at(place).manufacturer), qPrintable(pairs.at(place).protocol))
            << place;
    }
}

} // namespace

class TestPlcDocument : public QObject
{
    Q_OBJECT
private slots:
    void pairIsWritten_data() { addPairRows(); }
    void pairIsWritten();
    void emptyItemIsWritten_data() { addPairRows(); }
    void emptyItemIsWritten();
    void pairIsRead_data() { addPairRows(); }
    void pairIsRead();
    void missingKeysEmptyTheirRoles_data() { addPairRows(); }
    void missingKeysEmptyTheirRoles();
    void writtenAndReadAgain_data() { addPairRows(); }
    void writtenAndReadAgain();
    void flagIsOneForTrueOnly_data();
    void flagIsOneForTrueOnly();
    void flagIsTrueForOneOnly_data();
    void flagIsTrueForOneOnly();
    void autoNetIdIsReadIntoTheOtherRoleUnlessOn_data();
    void autoNetIdIsReadIntoTheOtherRoleUnlessOn();
    void modelIsReadFromExtendedParametersOnly();
    void rowsAreWrittenByCells_data();
    void rowsAreWrittenByCells();
    void rowsAreRead();
    void folderNamedPlcLeavesTheDocumentAlone();
};

void TestPlcDocument::pairIsWritten()
{
    QFETCH(int, place);
    QStandardItem item;
    fillRoles(&item, pairs.at(place));
    QCOMPARE(bytes(plcObject(item)), bytes(objectOf(pairs.at(place))));
}

void TestPlcDocument::emptyItemIsWritten()
{
    QFETCH(int, place);
    const Pair &pair = pairs.at(place);
    QStandardItem item("n");
    item.setData(pair.manufacturer, plcManufacturerRole);
    item.setData(pair.protocol, plcProtocolRole);
    const auto empty = [](const QVector<Key> &keys) {
        QJsonObject object;
        for (const Key &key : keys) {
            object.insert(key.written, key.isFlag ? QString("0") : QString());
        }
        return object;
    };
    QJsonObject expected{{"name", "n"},
                         {"manufacturer", pair.manufacturer},
                         {"protocol", pair.protocol},
                         {"extendedParameters", empty(pair.keys)},
                         {"parameter", empty(parameterKeys(pair.protocol))},
                         {"datas", QJsonArray()}};
    if (place == 0) {
        expected.insert("model", QString());
    }
    QCOMPARE(bytes(plcObject(item)), bytes(expected));
}

// Every key under the spelling of the reader, its text being the key.
void TestPlcDocument::pairIsRead()
{
    QFETCH(int, place);
    const Pair &pair = pairs.at(place);
    QMap<int, QString> expected{{plcManufacturerRole, pair.manufacturer}, {plcProtocolRole, pair.protocol}};
    QJsonObject object{{"manufacturer", pair.manufacturer}, {"protocol", pair.protocol}};
    const auto add = [&](const QString &name, const QVector<Key> &keys) {
        QJsonObject inner;
        for (const Key &key : keys) {
            const QString text = key.read.isNull() ? key.written : key.read;
            inner.insert(text, key.isFlag ? QString("1") : text);
            expected.insert(key.role, key.isFlag ? QString("true") : text);
        }
        object.insert(name, inner);
    };
    add("extendedParameters", pair.keys);
    add("parameter", parameterKeys(pair.protocol));
    QStandardItem item("x");
    transmitPlcData(object, &item);
    QCOMPARE(ProjectDump::roles(&item), inOrder(expected) + QStringList("+114 rows "));
    QCOMPARE(item.text(), "x");
}

void TestPlcDocument::missingKeysEmptyTheirRoles()
{
    QFETCH(int, place);
    const Pair &pair = pairs.at(place);
    const QJsonObject object{{"manufacturer", pair.manufacturer}, {"protocol", pair.protocol}};
    QMap<int, QString> expected;
    for (int role = plcManufacturerRole; role < plcParametersRole; ++role) {
        expected.insert(role, "old");
    }
    for (const Key &key : pair.keys + parameterKeys(pair.protocol)) {
        const int role = key.role == plcAdsAutoNetIdRole ? int(plcXinjeCharReversedRole) : key.role;
        expected.insert(role, key.isFlag ? QString("false") : QString());
    }
    expected.insert(plcManufacturerRole, pair.manufacturer);
    expected.insert(plcProtocolRole, pair.protocol);
    QCOMPARE(rolesOver(transmitPlcData, object, plcManufacturerRole, plcParametersRole),
             inOrder(expected) + QStringList("+114 rows "));
}

// What does not come back is a slot, and the word flag of MC-3E.
void TestPlcDocument::writtenAndReadAgain()
{
    QFETCH(int, place);
    const Pair &pair = pairs.at(place);
    QStandardItem written;
    fillRoles(&written, pair);
    QMap<int, QString> expected{{plcManufacturerRole, pair.manufacturer}, {plcProtocolRole, pair.protocol}};
    for (const Key &key : pair.keys + parameterKeys(pair.protocol)) {
        const QString lost = key.isFlag ? QString("false") : QString();
        expected.insert(key.role, !key.read.isNull() ? lost : written.data(key.role).toString());
    }
    QStandardItem read;
    transmitPlcData(plcObject(written), &read);
    QCOMPARE(ProjectDump::roles(&read),
             inOrder(expected)
                 + QStringList("+114 " + ProjectDump::valueText(written.data(plcParametersRole))));
}

void TestPlcDocument::flagIsOneForTrueOnly_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("written");
    QTest::newRow("text true") << QVariant("true") << "1";
    QTest::newRow("boolean true") << QVariant(true) << "1";
    QTest::newRow("text false") << QVariant("false") << "0";
    QTest::newRow("boolean false") << QVariant(false) << "0";
    QTest::newRow("text 1") << QVariant("1") << "0";
    QTest::newRow("nothing") << QVariant() << "0";
}

void TestPlcDocument::flagIsOneForTrueOnly()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, written);
    QStandardItem item;
    item.setData("Mitsubishi", plcManufacturerRole);
    item.setData("FxSerial", plcProtocolRole);
    item.setData(stored, plcFxSerialNewAgreementRole);
    item.setData(stored, plcRtsEnableRole);
    const QJsonObject object = plcObject(item);
    QCOMPARE(object.value("extendedParameters").toObject().value("newAgreement"), QJsonValue(written));
    QCOMPARE(object.value("parameter").toObject().value("rtsEnable"), QJsonValue(written));
}

void TestPlcDocument::flagIsTrueForOneOnly_data()
{
    QTest::addColumn<QJsonValue>("written");
    QTest::addColumn<QString>("read");
    QTest::newRow("1") << QJsonValue("1") << "true";
    QTest::newRow("0") << QJsonValue("0") << "false";
    QTest::newRow("true") << QJsonValue("true") << "false";
    QTest::newRow("empty") << QJsonValue(QString()) << "false";
    QTest::newRow("number") << QJsonValue(1) << "false";
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << "false";
}

void TestPlcDocument::flagIsTrueForOneOnly()
{
    QFETCH(QJsonValue, written);
    QFETCH(QString, read);
    QJsonObject extended;
    extended.insert("binary", written);
    QStandardItem item;
    transmitPlcData({{"manufacturer", "Mitsubishi"}, {"protocol", "MC-1E"}, {"extendedParameters", extended}},
                    &item);
    QCOMPARE(item.data(plcMc1eBinaryRole), QVariant(read));
}

void TestPlcDocument::autoNetIdIsReadIntoTheOtherRoleUnlessOn_data()
{
    QTest::addColumn<QJsonValue>("written");
    QTest::addColumn<QString>("autoNetId");
    QTest::addColumn<QString>("charReversed");
    tableRow("1", QJsonValue("1"), "true", "old");
    tableRow("0", QJsonValue("0"), "old", "false");
    tableRow("missing", QJsonValue(QJsonValue::Undefined), "old", "false");
}

void TestPlcDocument::autoNetIdIsReadIntoTheOtherRoleUnlessOn()
{
    QFETCH(QJsonValue, written);
    QFETCH(QString, autoNetId);
    QFETCH(QString, charReversed);
    QJsonObject extended;
    extended.insert("autoNetld", written);
    QStandardItem item;
    item.setData("old", plcAdsAutoNetIdRole);
    item.setData("old", plcXinjeCharReversedRole);
    transmitPlcData({{"manufacturer", "Beckhoff"}, {"protocol", "Ads"}, {"extendedParameters", extended}},
                    &item);
    QCOMPARE(item.data(plcAdsAutoNetIdRole).toString(), autoNetId);
    QCOMPARE(item.data(plcXinjeCharReversedRole).toString(), charReversed);
}

void TestPlcDocument::modelIsReadFromExtendedParametersOnly()
{
    QStandardItem item;
    transmitPlcData(parse(R"({"manufacturer": "Siemens", "protocol": "S7", "model": "S300",
                              "extendedParameters": {"model": "S400"}})"),
                    &item);
    QCOMPARE(item.data(plcModelRole).toString(), "S400");
    transmitPlcData(parse(R"({"manufacturer": "Siemens", "protocol": "S7", "model": "S300"})"), &item);
    QCOMPARE(item.data(plcModelRole), QVariant(QString()));
}

void TestPlcDocument::rowsAreWrittenByCells_data()
{
    QTest::addColumn<QStringList>("cells");
    QTest::addColumn<QString>("written");
    const QStringList nine{"a", "b", "c", "d", "e", "f", "g", "h", "i"};
    QTest::newRow("nine") << nine << "a b c d e f g h i";
    QTest::newRow("with the tenth of a file") << QStringList(nine + QStringList("j")) << "a b c d e f g h i";
    QTest::newRow("two") << QStringList(nine.mid(0, 2)) << "a b       ";
    QTest::newRow("none") << QStringList() << "        ";
}

void TestPlcDocument::rowsAreWrittenByCells()
{
    QFETCH(QStringList, cells);
    QFETCH(QString, written);
    QStandardItem item;
    item.setData(QVariant::fromValue(rows({cells})), plcParametersRole);
    const QJsonArray datas = plcObject(item).value("datas").toArray();
    QCOMPARE(datas.size(), 1);
    const QJsonObject point = datas.first().toObject();
    QCOMPARE(point.size(), 9);
    QStringList found;
    for (const char *key : {"addr", "name", "dataType", "length", "permissions", "reportingMethod",
                            "changeAmplitude", "collectionFormula", "writeFormula"}) {
        found.append(point.value(QLatin1String(key)).toString());
    }
    QCOMPARE(found.join(QLatin1Char(' ')), written);
}

void TestPlcDocument::rowsAreRead()
{
    QStandardItem item;
    item.setData("old", plcParametersRole);
    transmitPlcData(
        parse(R"({"datas": [{"addr": "M0", "writeFormula": "X", "length": 4, "extra": "e"}, 7]})"), &item);
    const QStringList first{"M0",      QString(), QString(), QString(), QString(),
                            QString(), QString(), QString(), "X"};
    const QStringList second{QString(), QString(), QString(), QString(), QString(),
                             QString(), QString(), QString(), QString()};
    QCOMPARE(ProjectDump::valueText(item.data(plcParametersRole)),
             ProjectDump::valueText(QVariant::fromValue(rows({first, second}))));
}

void TestPlcDocument::folderNamedPlcLeavesTheDocumentAlone()
{
    QStandardItem project("P");
    auto *folder = new QStandardItem("PLC");
    project.appendRow(folder);
    for (const Pair &pair : pairs) {
        auto *plc = new QStandardItem;
        fillRoles(plc, pair);
        folder->appendRow(plc);
    }
    QCOMPARE(projectDocument(&project), onDisk(R"({"name": "P", "description": "", "boxs": [],
        "services": [], "standards": []})"));
}

QTEST_GUILESS_MAIN(TestPlcDocument)
#include "tst_plcdocument.moc"

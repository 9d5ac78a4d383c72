#include "document/plcdocument.h"

#include "readertest.h"

namespace {

// One key of an object: under which it is written and read, and its role; a flag is "1" or "0".
struct Key {
    const char *written;
    int role;
    bool isFlag = false;
    const char *read = nullptr; // null if it is the same
};

struct Pair {
    const char *manufacturer;
    const char *protocol;
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

const char *const tcpProtocols[] = {"S7", "PPI On TCP", "EtherNet/IP", "MC-1E", "MC-3E", "Fins", "MicroCIP",
    "Ads", "Modbus TCP", "Modbus RTU On TCP"};
const char *const serialProtocols[] = {"PPI", "MC-3C", "FxLinks", "FxSerial", "HostLink", "HostLink On TCP",
    "DF1", "Modbus RTU"};
// clang-format on

QVector<Key> parameterKeys(const QString &protocol)
{
    const auto isOneOf = [&](const auto &names) {
        return std::any_of(std::begin(names), std::end(names),
                           [&](const char *name) { return protocol == S(name); });
    };
    return isOneOf(tcpProtocols) ? tcpKeys : isOneOf(serialProtocols) ? serialKeys : unknownKeys;
}

// A PLC whose roles hold "v<offset>", flags "true"; its table has one row of nine cells.
void fillRoles(QStandardItem *item, const Pair &pair)
{
    item->setText(S("press 1"));
    for (int role = plcManufacturerRole; role < plcParametersRole; ++role) {
        item->setData(QString("v%1").arg(role - Qt::UserRole), role);
    }
    item->setData(S(pair.manufacturer), plcManufacturerRole);
    item->setData(S(pair.protocol), plcProtocolRole);
    for (const Key &key : pair.keys + parameterKeys(S(pair.protocol))) {
        if (key.isFlag) {
            item->setData(S("true"), key.role);
        }
    }
    item->setData(
        QVariant::fromValue(rows({{S("a"), S("b"), S("c"), S("d"), S("e"), S("f"), S("g"), S("h"), S("i")}})),
        plcParametersRole);
}

QJsonObject keysOf(const QVector<Key> &keys)
{
    QJsonObject object;
    for (const Key &key : keys) {
        object.insert(S(key.written), key.isFlag ? S("1") : QString("v%1").arg(key.role - Qt::UserRole));
    }
    return object;
}

QJsonObject objectOf(const Pair &pair)
{
    QJsonObject object{
        {S("name"), S("press 1")},
        {S("manufacturer"), S(pair.manufacturer)},
        {S("protocol"), S(pair.protocol)},
        {S("extendedParameters"), keysOf(pair.keys)},
        {S("parameter"), keysOf(parameterKeys(S(pair.protocol)))},
        {S("datas"),
         parse(R"({"datas": [{"addr": "a", "name": "b", "dataType": "c", "length": "d",
            "permissions": "e", "reportingMethod": "f", "changeAmplitude": "g", "collectionFormula": "h",
            "writeFormula": "i"}]})")
             .value(S("datas"))},
    };
    if (S(pair.protocol) == S("S7") && S(pair.manufacturer) == S("Siemens")) {
        object.insert(S("model"), S("v38"));
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
        QTest::addRow("%s %s", pairs.at(place).manufacturer, pairs.at(place).protocol) << place;
    }
}

} // namespace

class TestPlcDocument : public QObject
{
    Q_OBJECT
private slots:
    void pairIsWritten_data();
    void pairIsWritten();
    void emptyItemIsWritten_data();
    void emptyItemIsWritten();
    void pairIsRead_data();
    void pairIsRead();
    void missingKeysEmptyTheirRoles_data();
    void missingKeysEmptyTheirRoles();
    void writtenAndReadAgain_data();
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

void TestPlcDocument::pairIsWritten_data()
{
    addPairRows();
}

void TestPlcDocument::pairIsWritten()
{
    QFETCH(int, place);
    QStandardItem item;
    fillRoles(&item, pairs.at(place));
    QCOMPARE(bytes(plcObject(item)), bytes(objectOf(pairs.at(place))));
}

void TestPlcDocument::emptyItemIsWritten_data()
{
    addPairRows();
}

void TestPlcDocument::emptyItemIsWritten()
{
    QFETCH(int, place);
    const Pair &pair = pairs.at(place);
    QStandardItem item(S("n"));
    item.setData(S(pair.manufacturer), plcManufacturerRole);
    item.setData(S(pair.protocol), plcProtocolRole);
    const auto empty = [](const QVector<Key> &keys) {
        QJsonObject object;
        for (const Key &key : keys) {
            object.insert(S(key.written), key.isFlag ? S("0") : S());
        }
        return object;
    };
    QJsonObject expected{{S("name"), S("n")},
                         {S("manufacturer"), S(pair.manufacturer)},
                         {S("protocol"), S(pair.protocol)},
                         {S("extendedParameters"), empty(pair.keys)},
                         {S("parameter"), empty(parameterKeys(S(pair.protocol)))},
                         {S("datas"), QJsonArray()}};
    if (place == 0) {
        expected.insert(S("model"), S());
    }
    QCOMPARE(bytes(plcObject(item)), bytes(expected));
}

void TestPlcDocument::pairIsRead_data()
{
    addPairRows();
}

// Every key under the spelling of the reader, its text being the key.
void TestPlcDocument::pairIsRead()
{
    QFETCH(int, place);
    const Pair &pair = pairs.at(place);
    QMap<int, QString> expected{{plcManufacturerRole, S(pair.manufacturer)},
                                {plcProtocolRole, S(pair.protocol)}};
    QJsonObject object{{S("manufacturer"), S(pair.manufacturer)}, {S("protocol"), S(pair.protocol)}};
    const auto add = [&](const char *name, const QVector<Key> &keys) {
        QJsonObject inner;
        for (const Key &key : keys) {
            const QString text = S(key.read ? key.read : key.written);
            inner.insert(text, key.isFlag ? S("1") : text);
            expected.insert(key.role, key.isFlag ? S("true") : text);
        }
        object.insert(S(name), inner);
    };
    add("extendedParameters", pair.keys);
    add("parameter", parameterKeys(S(pair.protocol)));
    QStandardItem item(S("x"));
    transmitPlcData(object, &item);
    QCOMPARE(ProjectDump::roles(&item), inOrder(expected) + QStringList("+114 rows "));
    QCOMPARE(item.text(), S("x"));
}

void TestPlcDocument::missingKeysEmptyTheirRoles_data()
{
    addPairRows();
}

void TestPlcDocument::missingKeysEmptyTheirRoles()
{
    QFETCH(int, place);
    const Pair &pair = pairs.at(place);
    const QJsonObject object{{S("manufacturer"), S(pair.manufacturer)}, {S("protocol"), S(pair.protocol)}};
    QMap<int, QString> expected;
    for (int role = plcManufacturerRole; role < plcParametersRole; ++role) {
        expected.insert(role, S("old"));
    }
    for (const Key &key : pair.keys + parameterKeys(S(pair.protocol))) {
        const int role = key.role == plcAdsAutoNetIdRole ? int(plcXinjeCharReversedRole) : key.role;
        expected.insert(role, key.isFlag ? S("false") : S());
    }
    expected.insert(plcManufacturerRole, S(pair.manufacturer));
    expected.insert(plcProtocolRole, S(pair.protocol));
    QCOMPARE(rolesOver(transmitPlcData, object, plcManufacturerRole, plcParametersRole),
             inOrder(expected) + QStringList("+114 rows "));
}

void TestPlcDocument::writtenAndReadAgain_data()
{
    addPairRows();
}

// What does not come back is a slot, and the word flag of MC-3E.
void TestPlcDocument::writtenAndReadAgain()
{
    QFETCH(int, place);
    const Pair &pair = pairs.at(place);
    QStandardItem written;
    fillRoles(&written, pair);
    QMap<int, QString> expected{{plcManufacturerRole, S(pair.manufacturer)},
                                {plcProtocolRole, S(pair.protocol)}};
    for (const Key &key : pair.keys + parameterKeys(S(pair.protocol))) {
        const QString lost = key.isFlag ? S("false") : S();
        expected.insert(key.role, key.read ? lost : written.data(key.role).toString());
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
    QTest::newRow("text true") << QVariant(S("true")) << S("1");
    QTest::newRow("boolean true") << QVariant(true) << S("1");
    QTest::newRow("text false") << QVariant(S("false")) << S("0");
    QTest::newRow("boolean false") << QVariant(false) << S("0");
    QTest::newRow("text 1") << QVariant(S("1")) << S("0");
    QTest::newRow("nothing") << QVariant() << S("0");
}

void TestPlcDocument::flagIsOneForTrueOnly()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, written);
    QStandardItem item;
    item.setData(S("Mitsubishi"), plcManufacturerRole);
    item.setData(S("FxSerial"), plcProtocolRole);
    item.setData(stored, plcFxSerialNewAgreementRole);
    item.setData(stored, plcRtsEnableRole);
    const QJsonObject object = plcObject(item);
    QCOMPARE(object.value(S("extendedParameters")).toObject().value(S("newAgreement")), QJsonValue(written));
    QCOMPARE(object.value(S("parameter")).toObject().value(S("rtsEnable")), QJsonValue(written));
}

void TestPlcDocument::flagIsTrueForOneOnly_data()
{
    QTest::addColumn<QJsonValue>("written");
    QTest::addColumn<QString>("read");
    QTest::newRow("1") << QJsonValue(S("1")) << S("true");
    QTest::newRow("0") << QJsonValue(S("0")) << S("false");
    QTest::newRow("true") << QJsonValue(S("true")) << S("false");
    QTest::newRow("empty") << QJsonValue(S()) << S("false");
    QTest::newRow("number") << QJsonValue(1) << S("false");
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << S("false");
}

void TestPlcDocument::flagIsTrueForOneOnly()
{
    QFETCH(QJsonValue, written);
    QFETCH(QString, read);
    QJsonObject extended;
    extended.insert(S("binary"), written);
    QStandardItem item;
    transmitPlcData({{S("manufacturer"), S("Mitsubishi")},
                     {S("protocol"), S("MC-1E")},
                     {S("extendedParameters"), extended}},
                    &item);
    QCOMPARE(item.data(plcMc1eBinaryRole), QVariant(read));
}

void TestPlcDocument::autoNetIdIsReadIntoTheOtherRoleUnlessOn_data()
{
    QTest::addColumn<QJsonValue>("written");
    QTest::addColumn<QString>("autoNetId");
    QTest::addColumn<QString>("charReversed");
    QTest::newRow("1") << QJsonValue(S("1")) << S("true") << S("old");
    QTest::newRow("0") << QJsonValue(S("0")) << S("old") << S("false");
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << S("old") << S("false");
}

void TestPlcDocument::autoNetIdIsReadIntoTheOtherRoleUnlessOn()
{
    QFETCH(QJsonValue, written);
    QFETCH(QString, autoNetId);
    QFETCH(QString, charReversed);
    QJsonObject extended;
    extended.insert(S("autoNetld"), written);
    QStandardItem item;
    item.setData(S("old"), plcAdsAutoNetIdRole);
    item.setData(S("old"), plcXinjeCharReversedRole);
    transmitPlcData(
        {{S("manufacturer"), S("Beckhoff")}, {S("protocol"), S("Ads")}, {S("extendedParameters"), extended}},
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
    QCOMPARE(item.data(plcModelRole).toString(), S("S400"));
    transmitPlcData(parse(R"({"manufacturer": "Siemens", "protocol": "S7", "model": "S300"})"), &item);
    QCOMPARE(item.data(plcModelRole), QVariant(QString()));
}

void TestPlcDocument::rowsAreWrittenByCells_data()
{
    QTest::addColumn<QStringList>("cells");
    QTest::addColumn<QString>("written");
    const QStringList nine{S("a"), S("b"), S("c"), S("d"), S("e"), S("f"), S("g"), S("h"), S("i")};
    QTest::newRow("nine") << nine << S("a b c d e f g h i");
    QTest::newRow("with the tenth of a file")
        << QStringList(nine + QStringList(S("j"))) << S("a b c d e f g h i");
    QTest::newRow("two") << QStringList(nine.mid(0, 2)) << S("a b       ");
    QTest::newRow("none") << QStringList() << S("        ");
}

void TestPlcDocument::rowsAreWrittenByCells()
{
    QFETCH(QStringList, cells);
    QFETCH(QString, written);
    QStandardItem item;
    item.setData(QVariant::fromValue(rows({cells})), plcParametersRole);
    const QJsonArray datas = plcObject(item).value(S("datas")).toArray();
    QCOMPARE(datas.size(), 1);
    const QJsonObject point = datas.first().toObject();
    QCOMPARE(point.size(), 9);
    QStringList found;
    for (const char *key : {"addr", "name", "dataType", "length", "permissions", "reportingMethod",
                            "changeAmplitude", "collectionFormula", "writeFormula"}) {
        found.append(point.value(S(key)).toString());
    }
    QCOMPARE(found.join(QLatin1Char(' ')), written);
}

void TestPlcDocument::rowsAreRead()
{
    QStandardItem item;
    item.setData(S("old"), plcParametersRole);
    transmitPlcData(
        parse(R"({"datas": [{"addr": "M0", "writeFormula": "X", "length": 4, "extra": "e"}, 7]})"), &item);
    const QStringList first{S("M0"), S(), S(), S(), S(), S(), S(), S(), S("X")};
    const QStringList second{S(), S(), S(), S(), S(), S(), S(), S(), S()};
    QCOMPARE(ProjectDump::valueText(item.data(plcParametersRole)),
             ProjectDump::valueText(QVariant::fromValue(rows({first, second}))));
}

void TestPlcDocument::folderNamedPlcLeavesTheDocumentAlone()
{
    QStandardItem project(S("P"));
    auto *folder = new QStandardItem(S("PLC"));
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

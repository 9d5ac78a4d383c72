#include "document/plcdocument.h"

#include "document/documentrows.h"
#include "model/projecttree.h"

#include <QJsonArray>
#include <QStandardItem>
#include <QStringList>
#include <QVector>

using namespace DocumentKeys;

namespace {

// One key of "extendedParameters" or "parameter", for the writer and the reader.
struct Key {
    const char *written;
    int role;
    Coding coding = Coding::Text;
    const char *read = nullptr; // where the reader's spelling differs; null if it is the same
    int roleIfNotOne = 0; // a flag's role that takes the "false" in place of the flag's own; 0 for its own
};

// The extended parameters of some protocols of a manufacturer.
struct Extended {
    QLatin1String manufacturer;
    QStringList protocols;
    QVector<Key> keys;
};

// The members of "parameter" for some protocols; for all of them if there are none.
struct Link {
    QStringList protocols;
    QVector<Key> keys;
};

const QLatin1String manufacturerKey("manufacturer");
const QLatin1String modelKey("model");

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char('|'));
}

// On purpose written as "Slot" and read as "slot", as such objects always were: a slot does not come back.
Key slotKey(int role)
{
    return {"Slot", role, Coding::Text, "slot"};
}

Key charReversed(int role)
{
    return {"charReversed", role, Coding::Flag};
}

Extended modbusMaker(const char *manufacturer, int series, int stationNum, int byteOrder, int startAddress0,
                     int reversed)
{
    return {QLatin1String(manufacturer),
            words("Modbus TCP|Modbus RTU On TCP|Modbus RTU"),
            {{"series", series},
             {"stationNum", stationNum},
             {"byteOrder", byteOrder},
             {"startAddress0", startAddress0, Coding::Flag},
             charReversed(reversed)}};
}

QVector<Extended> siemensProtocols()
{
    const QLatin1String siemens("Siemens");
    return {
        {siemens,
         words("S7"),
         {{"model", plcModelRole},
          {"connectionType", plcS7ConnectionTypeRole},
          {"rack", plcS7RackRole},
          slotKey(plcS7SlotRole),
          {"localTSAP", plcS7LocalTsapRole},
          {"destTSA", plcS7DestTsapRole}}},
        {siemens, words("PPI|PPI On TCP"), {{"stationNum", plcPpiStationNumRole}}},
    };
}

QVector<Extended> mitsubishiProtocols()
{
    const QLatin1String mitsubishi("Mitsubishi");
    return {
        {mitsubishi, words("EtherNet/IP"), {slotKey(plcMitsubishiEipSlotRole)}},
        {mitsubishi,
         words("MC-3C"),
         {{"stationNum", plcMc3cStationNumRole},
          {"format", plcMc3cFormatRole},
          {"sumCheck", plcMc3cSumCheckRole, Coding::Flag},
          {"writebitByword", plcMc3cWriteBitByWordRole, Coding::Flag}}},
        {mitsubishi,
         words("MC-1E"),
         {{"stationNum", plcMc1eStationNumRole}, {"binary", plcMc1eBinaryRole, Coding::Flag}}},
        {mitsubishi,
         words("MC-3E"),
         {{"mode", plcMc3eModeRole},
          {"stationNum", plcMc3eStationNumRole},
          {"netNum", plcMc3eNetNumRole},
          {"binary", plcMc3eBinaryRole, Coding::Flag},
          // Written unlike MC-3C's and read as MC-3C's, on purpose: after a save and a load it is off.
          {"writeBitByWord", plcMc3eWriteBitByWordRole, Coding::Flag, "writebitByword"},
          charReversed(plcMc3eCharReversedRole)}},
        {mitsubishi,
         words("FxLinks"),
         {{"stationNum", plcFxLinksStationNumRole},
          {"sumCheck", plcFxLinksSumCheckRole, Coding::Flag},
          {"messageWaitingTime", plcFxLinksMessageWaitingTimeRole},
          {"format", plcFxLinksFormatRole}}},
        {mitsubishi, words("FxSerial"), {{"newAgreement", plcFxSerialNewAgreementRole, Coding::Flag}}},
    };
}

QVector<Extended> omronProtocols()
{
    const QLatin1String omron("Omron");
    return {
        {omron,
         words("Fins"),
         {{"mode", plcFinsModeRole},
          {"unitNumber", plcFinsUnitNumberRole},
          {"byteOrder", plcFinsByteOrderRole},
          charReversed(plcFinsCharReversedRole)}},
        {omron, words("EtherNet/IP"), {{"model", plcOmronEipModelRole}, slotKey(plcOmronEipSlotRole)}},
        {omron,
         words("HostLink|HostLink On TCP"),
         {{"stationNum", plcHostLinkStationNumRole},
          {"deviceIDNum", plcHostLinkDeviceIdNumRole},
          {"PLCUnit", plcHostLinkPlcUnitRole},
          {"hostcomputerUnit", plcHostLinkHostcomputerUnitRole},
          {"byteOrder", plcHostLinkByteOrderRole},
          charReversed(plcHostLinkCharReversedRole)}},
    };
}

QVector<Extended> otherProtocols()
{
    const QLatin1String allenBradley("AllenBradley");
    return {
        {allenBradley,
         words("EtherNet/IP|MicroCIP"),
         {{"model", plcAbModelRole}, slotKey(plcAbSlotRole), {"router", plcAbRouterRole}}},
        {allenBradley,
         words("DF1"),
         {{"stationNum", plcDf1StationNumRole},
          {"targetNode", plcDf1TargetNodeRole},
          {"sourceNode", plcDf1SourceNodeRole}}},
        {QLatin1String("Beckhoff"),
         words("Ads"),
         // On purpose anything but "1" turns off another maker's flag and leaves this one alone, as such
         // objects always were read.
         {{"autoNetld", plcAdsAutoNetIdRole, Coding::Flag, nullptr, plcXinjeCharReversedRole},
          {"targetNetId", plcAdsTargetNetIdRole},
          {"senderNetId", plcAdsSenderNetIdRole},
          {"tagCache", plcAdsTagCacheRole, Coding::Flag}}},
        modbusMaker("XinJE", plcXinjeSeriesRole, plcXinjeStationNumRole, plcXinjeByteOrderRole,
                    plcXinjeStartAddress0Role, plcXinjeCharReversedRole),
        modbusMaker("Inovance", plcInovanceSeriesRole, plcInovanceStationNumRole, plcInovanceByteOrderRole,
                    plcInovanceStartAddress0Role, plcInovanceCharReversedRole),
        modbusMaker("Modbus", plcModbusSeriesRole, plcModbusStationNumRole, plcModbusByteOrderRole,
                    plcModbusStartAddress0Role, plcModbusCharReversedRole),
        modbusMaker("Delta", plcDeltaSeriesRole, plcDeltaStationNumRole, plcDeltaByteOrderRole,
                    plcDeltaStartAddress0Role, plcDeltaCharReversedRole),
    };
}

const QVector<Link> &links()
{
    static const QVector<Link> table{
        {words("S7|PPI On TCP|EtherNet/IP|MC-1E|MC-3E|Fins|MicroCIP|Ads|Modbus TCP|Modbus RTU On TCP"),
         {{"ip", plcIpRole},
          {"port", plcPortRole},
          {"connectionTimeout", plcConnectionTimeoutRole},
          {"communicationTimeout", plcTcpCommunicationTimeoutRole},
          {"keepAlive", plcKeepAliveRole}}},
        // "HostLink On TCP" is among the serial ones on purpose, against its name.
        {words("PPI|MC-3C|FxLinks|FxSerial|HostLink|HostLink On TCP|DF1|Modbus RTU"),
         {{"serialport", plcSerialPortRole},
          {"baudRate", plcBaudRateRole},
          {"dataBit", plcDataBitRole},
          {"stopBit", plcStopBitRole},
          {"parityBit", plcParityBitRole},
          {"rtsEnable", plcRtsEnableRole, Coding::Flag},
          {"communicationTimeout", plcSerialCommunicationTimeoutRole},
          {"communicationGap", plcCommunicationGapRole}}},
        {{}, {{"collectionInterval", plcCollectionIntervalRole}}},
    };
    return table;
}

// Cells 0 to 8 of a parameter row; a row of a CSV file has one more, which is not written.
const Column pointColumns[] = {
    {QLatin1String("addr")},
    {QLatin1String("name")},
    {QLatin1String("dataType")},
    {QLatin1String("length")},
    {QLatin1String("permissions")},
    {QLatin1String("reportingMethod")},
    {QLatin1String("changeAmplitude")},
    {QLatin1String("collectionFormula")},
    {QLatin1String("writeFormula")},
};

QVector<Key> extendedKeys(const QString &manufacturer, const QString &protocol)
{
    static const QVector<Extended> table =
        siemensProtocols() + mitsubishiProtocols() + omronProtocols() + otherProtocols();
    for (const Extended &row : table) {
        if (row.manufacturer == manufacturer && row.protocols.contains(protocol)) {
            return row.keys;
        }
    }
    return {};
}

QVector<Key> parameterKeys(const QString &protocol)
{
    QVector<Key> keys;
    for (const Link &link : links()) {
        if (link.protocols.isEmpty() || link.protocols.contains(protocol)) {
            keys += link.keys;
        }
    }
    return keys;
}

QJsonObject writeKeys(const QVector<Key> &keys, const QStandardItem &plc)
{
    QJsonObject object;
    for (const Key &key : keys) {
        object.insert(QLatin1String(key.written), toDocument(plc.data(key.role), key.coding));
    }
    return object;
}

void readKeys(const QVector<Key> &keys, const QJsonObject &object, QStandardItem *item)
{
    for (const Key &key : keys) {
        const QString value =
            fromDocument(object.value(QLatin1String(key.read ? key.read : key.written)), key.coding);
        const bool elsewhere = key.roleIfNotOne != 0 && value == QLatin1String("false");
        item->setData(value, elsewhere ? key.roleIfNotOne : key.role);
    }
}

} // namespace

QJsonObject plcObject(const QStandardItem &plc)
{
    const QString manufacturer = plc.data(plcManufacturerRole).toString();
    const QString protocol = plc.data(plcProtocolRole).toString();
    QJsonObject object{
        {nameKey, plc.text()},
        {manufacturerKey, manufacturer},
        {protocolKey, protocol},
        {extendedParametersKey, writeKeys(extendedKeys(manufacturer, protocol), plc)},
        {parameterKey, writeKeys(parameterKeys(protocol), plc)},
        {datasKey, rowArray(pointColumns, plc.data(plcParametersRole).value<RowList>(), 0)},
    };
    // On purpose a second time, beside "extendedParameters", where alone it is read.
    if (manufacturer == QLatin1String("Siemens") && protocol == QLatin1String("S7")) {
        object.insert(modelKey, plc.data(plcModelRole).toString());
    }
    return object;
}

void transmitPlcData(const QJsonObject &plc, QStandardItem *item)
{
    const QString manufacturer = plc.value(manufacturerKey).toString();
    const QString protocol = plc.value(protocolKey).toString();
    item->setData(manufacturer, plcManufacturerRole);
    item->setData(protocol, plcProtocolRole);
    readKeys(extendedKeys(manufacturer, protocol), plc.value(extendedParametersKey).toObject(), item);
    readKeys(parameterKeys(protocol), plc.value(parameterKey).toObject(), item);

    RowList rows;
    const QJsonArray points = plc.value(datasKey).toArray();
    for (const QJsonValue &value : points) {
        rows.append(readRow(pointColumns, value.toObject()));
    }
    item->setData(QVariant::fromValue(rows), plcParametersRole);
}

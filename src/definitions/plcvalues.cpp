#include "definitions/valuetables.h"

#include "definitions/plccatalogue.h"
#include "model/itemroles.h"

namespace {

using namespace Definitions;

constexpr unsigned bit(PlcGroup group)
{
    return 1U << unsigned(group);
}

constexpr auto always = bit(PlcGroup::None);

Value plain(int role, const char *key)
{
    return {role, key, always};
}

Value parameter(int role, const char *key, unsigned groups, const char *defaultValue = nullptr)
{
    return {role, key, groups, Place::Parameter, Coding::Text, defaultValue};
}

Value text(PlcGroup group, int role, const char *key, const char *defaultValue = nullptr)
{
    return {role, key, bit(group), Place::ExtendedParameters, Coding::Text, defaultValue};
}

Value flag(PlcGroup group, int role, const char *key, const char *defaultValue = nullptr)
{
    return {role, key, bit(group), Place::ExtendedParameters, Coding::Flag, defaultValue};
}

// Compat: written as "Slot" and read as "slot", so that a slot does not come back.
Value slot(PlcGroup group, int role)
{
    Value value = text(group, role, "Slot", "0");
    value.readKey = "slot";
    return value;
}

QVector<Value> common()
{
    Value rtsEnable = parameter(plcRtsEnableRole, "rtsEnable", bit(PlcGroup::Serial));
    rtsEnable.coding = Coding::Flag;
    // Compat: a second time, beside "extendedParameters", where alone it is read.
    Value model = {plcModelRole, "model", bit(PlcGroup::S7Model)};
    model.readFor = 0;

    constexpr auto network = bit(PlcGroup::Network);
    constexpr auto serial = bit(PlcGroup::Serial);
    return {
        plain(plcManufacturerRole, "manufacturer"),
        plain(plcProtocolRole, "protocol"),
        parameter(plcIpRole, "ip", network, "192.168.1.60"),
        // Its default goes by the protocol: PlcCatalogue::defaultPort().
        parameter(plcPortRole, "port", network),
        parameter(plcConnectionTimeoutRole, "connectionTimeout", network, "2000"),
        parameter(plcTcpCommunicationTimeoutRole, "communicationTimeout", network, "2000"),
        parameter(plcKeepAliveRole, "keepAlive", network, "60000"),
        parameter(plcSerialPortRole, "serialport", serial),
        parameter(plcBaudRateRole, "baudRate", serial),
        parameter(plcDataBitRole, "dataBit", serial),
        parameter(plcStopBitRole, "stopBit", serial),
        parameter(plcParityBitRole, "parityBit", serial),
        rtsEnable,
        parameter(plcSerialCommunicationTimeoutRole, "communicationTimeout", serial, "2000"),
        parameter(plcCommunicationGapRole, "communicationGap", serial, "-1"),
        parameter(plcCollectionIntervalRole, "collectionInterval", always, "2000"),
        text(PlcGroup::S7Model, plcModelRole, "model"),
        model,
    };
}

QVector<Value> siemens()
{
    return {
        text(PlcGroup::S7Model, plcS7ConnectionTypeRole, "connectionType", "1"),
        text(PlcGroup::S7Model, plcS7RackRole, "rack", "0"),
        slot(PlcGroup::S7Model, plcS7SlotRole),
        text(PlcGroup::S7Model, plcS7LocalTsapRole, "localTSAP", "4D57"),
        text(PlcGroup::S7Model, plcS7DestTsapRole, "destTSA", "4D57"),
        text(PlcGroup::Ppi, plcPpiStationNumRole, "stationNum", "2"),
    };
}

QVector<Value> mitsubishi()
{
    // Compat: written unlike MC-3C's and read as MC-3C's; after a save and a load it is off.
    Value writeBitByWord = flag(PlcGroup::Mc3e, plcMc3eWriteBitByWordRole, "writeBitByWord", "true");
    writeBitByWord.readKey = "writebitByword";
    return {
        slot(PlcGroup::MitsubishiEip, plcMitsubishiEipSlotRole),
        text(PlcGroup::Mc3c, plcMc3cStationNumRole, "stationNum", "2"),
        text(PlcGroup::Mc3c, plcMc3cFormatRole, "format"),
        flag(PlcGroup::Mc3c, plcMc3cSumCheckRole, "sumCheck", "true"),
        flag(PlcGroup::Mc3c, plcMc3cWriteBitByWordRole, "writebitByword", "true"),
        text(PlcGroup::Mc1e, plcMc1eStationNumRole, "stationNum", "FF"),
        flag(PlcGroup::Mc1e, plcMc1eBinaryRole, "binary", "true"),
        text(PlcGroup::Mc3e, plcMc3eModeRole, "mode"),
        text(PlcGroup::Mc3e, plcMc3eStationNumRole, "stationNum", "0"),
        text(PlcGroup::Mc3e, plcMc3eNetNumRole, "netNum", "0"),
        flag(PlcGroup::Mc3e, plcMc3eBinaryRole, "binary", "true"),
        writeBitByWord,
        flag(PlcGroup::Mc3e, plcMc3eCharReversedRole, "charReversed"),
        text(PlcGroup::FxLinks, plcFxLinksStationNumRole, "stationNum", "0"),
        flag(PlcGroup::FxLinks, plcFxLinksSumCheckRole, "sumCheck", "true"),
        text(PlcGroup::FxLinks, plcFxLinksMessageWaitingTimeRole, "messageWaitingTime", "1"),
        text(PlcGroup::FxLinks, plcFxLinksFormatRole, "format"),
        flag(PlcGroup::FxSerial, plcFxSerialNewAgreementRole, "newAgreement", "true"),
    };
}

QVector<Value> omron()
{
    return {
        text(PlcGroup::Fins, plcFinsModeRole, "mode"),
        text(PlcGroup::Fins, plcFinsUnitNumberRole, "unitNumber", "0"),
        text(PlcGroup::Fins, plcFinsByteOrderRole, "byteOrder"),
        flag(PlcGroup::Fins, plcFinsCharReversedRole, "charReversed"),
        text(PlcGroup::OmronEip, plcOmronEipModelRole, "model", "omron-njnx"),
        slot(PlcGroup::OmronEip, plcOmronEipSlotRole),
        text(PlcGroup::HostLink, plcHostLinkStationNumRole, "stationNum", "0"),
        text(PlcGroup::HostLink, plcHostLinkDeviceIdNumRole, "deviceIDNum", "0"),
        text(PlcGroup::HostLink, plcHostLinkPlcUnitRole, "PLCUnit", "0"),
        text(PlcGroup::HostLink, plcHostLinkHostcomputerUnitRole, "hostcomputerUnit", "0"),
        text(PlcGroup::HostLink, plcHostLinkByteOrderRole, "byteOrder"),
        flag(PlcGroup::HostLink, plcHostLinkCharReversedRole, "charReversed"),
    };
}

QVector<Value> others()
{
    // Compat: anything but "1" turns off another maker's flag and leaves this one alone.
    Value autoNetId = flag(PlcGroup::Ads, plcAdsAutoNetIdRole, "autoNetld");
    autoNetId.roleIfOff = plcXinjeCharReversedRole;
    return {
        text(PlcGroup::AllenBradleyEip, plcAbModelRole, "model"),
        slot(PlcGroup::AllenBradleyEip, plcAbSlotRole),
        text(PlcGroup::AllenBradleyEip, plcAbRouterRole, "router"),
        text(PlcGroup::Df1, plcDf1StationNumRole, "stationNum", "1"),
        text(PlcGroup::Df1, plcDf1TargetNodeRole, "targetNode", "2"),
        text(PlcGroup::Df1, plcDf1SourceNodeRole, "sourceNode", "1"),
        autoNetId,
        text(PlcGroup::Ads, plcAdsTargetNetIdRole, "targetNetId"),
        text(PlcGroup::Ads, plcAdsSenderNetIdRole, "senderNetId"),
        flag(PlcGroup::Ads, plcAdsTagCacheRole, "tagCache"),
    };
}

QVector<Value> modbusMakers()
{
    return {
        text(PlcGroup::Inovance, plcInovanceSeriesRole, "series"),
        text(PlcGroup::Inovance, plcInovanceStationNumRole, "stationNum", "1"),
        text(PlcGroup::Inovance, plcInovanceByteOrderRole, "byteOrder"),
        flag(PlcGroup::Inovance, plcInovanceStartAddress0Role, "startAddress0", "true"),
        flag(PlcGroup::Inovance, plcInovanceCharReversedRole, "charReversed"),
        text(PlcGroup::Xinje, plcXinjeSeriesRole, "series"),
        text(PlcGroup::Xinje, plcXinjeStationNumRole, "stationNum", "1"),
        text(PlcGroup::Xinje, plcXinjeByteOrderRole, "byteOrder"),
        flag(PlcGroup::Xinje, plcXinjeStartAddress0Role, "startAddress0", "true"),
        flag(PlcGroup::Xinje, plcXinjeCharReversedRole, "charReversed"),
        text(PlcGroup::Modbus, plcModbusSeriesRole, "series"),
        text(PlcGroup::Modbus, plcModbusStationNumRole, "stationNum", "1"),
        text(PlcGroup::Modbus, plcModbusByteOrderRole, "byteOrder"),
        flag(PlcGroup::Modbus, plcModbusStartAddress0Role, "startAddress0", "true"),
        flag(PlcGroup::Modbus, plcModbusCharReversedRole, "charReversed"),
        text(PlcGroup::Delta, plcDeltaSeriesRole, "series"),
        text(PlcGroup::Delta, plcDeltaStationNumRole, "stationNum", "1"),
        text(PlcGroup::Delta, plcDeltaByteOrderRole, "byteOrder"),
        // Compat: off, unlike the three before.
        flag(PlcGroup::Delta, plcDeltaStartAddress0Role, "startAddress0"),
        flag(PlcGroup::Delta, plcDeltaCharReversedRole, "charReversed"),
    };
}

const Column parameterColumns[] = {
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
// A row of a CSV file has one cell more, which is not written.
const Rows parameterRows = rowsOf(parameterColumns);

} // namespace

const QVector<Value> &ValueTables::plc()
{
    static const QVector<Value> table = common() + siemens() + mitsubishi() + omron() + others()
        + modbusMakers()
        + QVector<Value>{
            {plcParametersRole, "datas", always, Place::Object, Coding::Rows, nullptr, &parameterRows}};
    return table;
}

#include "plc/plcfields.h"

#include "model/itemroles.h"

namespace PlcFields {

namespace {

// Labels that several groups have.
constexpr auto model = QT_TRANSLATE_NOOP("PLCEditDialog", "Model:");
constexpr auto slot = QT_TRANSLATE_NOOP("PLCEditDialog", "Slot:");
constexpr auto mode = QT_TRANSLATE_NOOP("PLCEditDialog", "Mode:");
constexpr auto format = QT_TRANSLATE_NOOP("PLCEditDialog", "Format:");
constexpr auto binary = QT_TRANSLATE_NOOP("PLCEditDialog", "Binary:");
constexpr auto series = QT_TRANSLATE_NOOP("PLCEditDialog", "Series:");
constexpr auto stationNum = QT_TRANSLATE_NOOP("PLCEditDialog", "Station Num:");
constexpr auto byteOrder = QT_TRANSLATE_NOOP("PLCEditDialog", "Byte Order:");
constexpr auto sumCheck = QT_TRANSLATE_NOOP("PLCEditDialog", "Sum Check:");
constexpr auto writeBitByWord = QT_TRANSLATE_NOOP("PLCEditDialog", "Write Bit By Word:");
constexpr auto charReversed = QT_TRANSLATE_NOOP("PLCEditDialog", "Char Reversed:");
constexpr auto startAddress0 = QT_TRANSLATE_NOOP("PLCEditDialog", "StartAddress0:");
constexpr auto communicationTimeout = QT_TRANSLATE_NOOP("PLCEditDialog", "Communication Timeout:");
constexpr auto plcInformation = QT_TRANSLATE_NOOP("PLCEditDialog", "PLC Information");

TextField *addHex(FieldGroup &fields, int role, const char *name, const char *label, const char *pattern)
{
    return fields.add<TextField>(role, name, label)->pattern(pattern);
}

ListField *addList(FieldGroup &fields, int role, const char *name, const char *label, const char *entries)
{
    return fields.add<ListField>(role, name, label)->entries(entries);
}

void addByteOrder(FieldGroup &fields, int role)
{
    addList(fields, role, "byteOrder", byteOrder, "ABCD BADC CDAB DCBA");
}

CheckField *addCheck(FieldGroup &fields, int role, const char *name, const char *label)
{
    return fields.add<CheckField>(role, name, label);
}

QVector<Choice> allenBradleyModels()
{
    QVector<Choice> choices;
    for (const PlcCatalogue::Model &each : PlcCatalogue::allenBradleyModels()) {
        choices.append({each.text, QString(each.code)});
    }
    return choices;
}

void addNetwork(FieldGroup &fields)
{
    fields.add<TextField>(plcIpRole, "ip", QT_TRANSLATE_NOOP("PLCEditDialog", "IP:"))
        ->check(ipv4Validator)
        ->initially("192.168.1.60");
    // Its default goes by the protocol: PlcCatalogue::defaultPort().
    fields.add<TextField>(plcPortRole, "port", QT_TRANSLATE_NOOP("PLCEditDialog", "Port:"))
        ->check(portValidator);
    addNumber(fields, plcConnectionTimeoutRole, "connectionTimeout",
              QT_TRANSLATE_NOOP("PLCEditDialog", "Connection Timeout:"))
        ->initially("2000");
    addNumber(fields, plcTcpCommunicationTimeoutRole, "communicationTimeout", communicationTimeout)
        ->initially("2000");
    addNumber(fields, plcKeepAliveRole, "keepAlive", QT_TRANSLATE_NOOP("PLCEditDialog", "Keep Alive Time:"))
        ->initially("60000");
}

void addSerial(FieldGroup &fields)
{
    // Compat: an unknown text leaves a list at the entry of the PLC before.
    fields.keepUnknownOnRefill();
    fields.resetEmptyOnRefill();
    addList(fields, plcSerialPortRole, "serialport", QT_TRANSLATE_NOOP("PLCEditDialog", "Serial Port:"),
            "COM1 COM2");
    addList(fields, plcBaudRateRole, "baudRate", QT_TRANSLATE_NOOP("PLCEditDialog", "Baud Rate:"),
            "115200 57600 38400 19200 9600 4800 2400 1200 600");
    addList(fields, plcDataBitRole, "dataBit", QT_TRANSLATE_NOOP("PLCEditDialog", "Data Bit:"), "8 7");
    addList(fields, plcStopBitRole, "stopBit", QT_TRANSLATE_NOOP("PLCEditDialog", "Stop Bit:"), "1 2");
    addList(fields, plcParityBitRole, "parityBit", QT_TRANSLATE_NOOP("PLCEditDialog", "Parity Bit:"),
            "NONE ODD EVEN");
    addCheck(fields, plcRtsEnableRole, "rtsEnable", QT_TRANSLATE_NOOP("PLCEditDialog", "Rts Enable:"));
    addNumber(fields, plcSerialCommunicationTimeoutRole, "communicationTimeout", communicationTimeout)
        ->initially("2000");
    addNumber(fields, plcCommunicationGapRole, "communicationGap",
              QT_TRANSLATE_NOOP("PLCEditDialog", "Communication Gap:"))
        ->initially("-1");
}

void addS7Rack(FieldGroup &fields)
{
    addNumber(fields, plcS7ConnectionTypeRole, "connectionType",
              QT_TRANSLATE_NOOP("PLCEditDialog", "Connection Type:"))
        ->initially("1");
    addNumber(fields, plcS7RackRole, "rack", QT_TRANSLATE_NOOP("PLCEditDialog", "Rack:"))->initially("0");
    addNumber(fields, plcS7SlotRole, "Slot", slot)->initially("0");
}

void addS7Tsap(FieldGroup &fields)
{
    addHex(fields, plcS7LocalTsapRole, "localTSAP", QT_TRANSLATE_NOOP("PLCEditDialog", "LocalTSAP:"),
           "^[0-9A-Fa-f]{0,4}$")
        ->initially("4D57");
    addHex(fields, plcS7DestTsapRole, "destTSA", QT_TRANSLATE_NOOP("PLCEditDialog", "DestTSAP:"),
           "^[0-9A-Fa-f]{0,4}$")
        ->initially("4D57");
}

void addPpi(FieldGroup &fields)
{
    addNumber(fields, plcPpiStationNumRole, "stationNum", stationNum)->initially("2");
}

void addMitsubishiEip(FieldGroup &fields)
{
    addNumber(fields, plcMitsubishiEipSlotRole, "Slot", slot)->initially("0");
}

void addMc3c(FieldGroup &fields)
{
    addNumber(fields, plcMc3cStationNumRole, "stationNum", stationNum)->initially("2");
    addList(fields, plcMc3cFormatRole, "format", format, "1 2 3 4");
    addCheck(fields, plcMc3cSumCheckRole, "sumCheck", sumCheck)->initially(true);
    addCheck(fields, plcMc3cWriteBitByWordRole, "writebitByword", writeBitByWord)->initially(true);
}

void addMc1e(FieldGroup &fields)
{
    addHex(fields, plcMc1eStationNumRole, "stationNum", stationNum, "^[0-9A-Fa-f]*$")->initially("FF");
    addCheck(fields, plcMc1eBinaryRole, "binary", binary)->initially(true);
}

void addMc3e(FieldGroup &fields)
{
    addList(fields, plcMc3eModeRole, "mode", mode, "TCP UDP");
    addNumber(fields, plcMc3eStationNumRole, "stationNum", stationNum)->initially("0");
    addNumber(fields, plcMc3eNetNumRole, "netNum", QT_TRANSLATE_NOOP("PLCEditDialog", "Net Num:"))
        ->initially("0");
    addCheck(fields, plcMc3eBinaryRole, "binary", binary)->initially(true);
    addCheck(fields, plcMc3eWriteBitByWordRole, "writeBitByWord", writeBitByWord)->initially(true);
    addCheck(fields, plcMc3eCharReversedRole, "charReversed", charReversed);
}

void addFxLinks(FieldGroup &fields)
{
    addNumber(fields, plcFxLinksStationNumRole, "stationNum", stationNum)->initially("0");
    addCheck(fields, plcFxLinksSumCheckRole, "sumCheck", sumCheck)->initially(true);
    addNumber(fields, plcFxLinksMessageWaitingTimeRole, "messageWaitingTime",
              QT_TRANSLATE_NOOP("PLCEditDialog", "Message waiting time:"))
        ->initially("1");
    addList(fields, plcFxLinksFormatRole, "format", format, "1 4");
}

void addFxSerial(FieldGroup &fields)
{
    addCheck(fields, plcFxSerialNewAgreementRole, "newAgreement",
             QT_TRANSLATE_NOOP("PLCEditDialog", "New Agreement:"))
        ->initially(true);
}

void addFins(FieldGroup &fields)
{
    addList(fields, plcFinsModeRole, "mode", mode, "TCP UDP");
    addNumber(fields, plcFinsUnitNumberRole, "unitNumber", QT_TRANSLATE_NOOP("PLCEditDialog", "Unit Number:"))
        ->initially("0");
    addByteOrder(fields, plcFinsByteOrderRole);
    addCheck(fields, plcFinsCharReversedRole, "charReversed", charReversed);
}

void addOmronEip(FieldGroup &fields)
{
    addNumber(fields, plcOmronEipSlotRole, "Slot", slot)->initially("0");
}

void addHostLink(FieldGroup &fields)
{
    addNumber(fields, plcHostLinkStationNumRole, "stationNum", stationNum)->initially("0");
    addNumber(fields, plcHostLinkDeviceIdNumRole, "deviceIDNum",
              QT_TRANSLATE_NOOP("PLCEditDialog", "DeviceID Num:"))
        ->initially("0");
    addNumber(fields, plcHostLinkPlcUnitRole, "PLCUnit", QT_TRANSLATE_NOOP("PLCEditDialog", "PLC Unit Num:"))
        ->initially("0");
    addNumber(fields, plcHostLinkHostcomputerUnitRole, "hostcomputerUnit",
              QT_TRANSLATE_NOOP("PLCEditDialog", "Hostomputer Unit Num:"))
        ->initially("0");
    addByteOrder(fields, plcHostLinkByteOrderRole);
    addCheck(fields, plcHostLinkCharReversedRole, "charReversed", charReversed);
}

void addAllenBradleyEip(FieldGroup &fields)
{
    fields.add<CodedField>(plcAbModelRole, "model", model)->choices(allenBradleyModels());
    addNumber(fields, plcAbSlotRole, "Slot", slot)->initially("0");
    addNumber(fields, plcAbRouterRole, "router", QT_TRANSLATE_NOOP("PLCEditDialog", "Router:"));
}

void addDf1(FieldGroup &fields)
{
    addNumber(fields, plcDf1StationNumRole, "stationNum", stationNum)->initially("1");
    addNumber(fields, plcDf1TargetNodeRole, "targetNode", QT_TRANSLATE_NOOP("PLCEditDialog", "Target Node:"))
        ->initially("2");
    addNumber(fields, plcDf1SourceNodeRole, "sourceNode", QT_TRANSLATE_NOOP("PLCEditDialog", "Source Node:"))
        ->initially("1");
}

void addAds(FieldGroup &fields)
{
    addCheck(fields, plcAdsAutoNetIdRole, "autoNetld", QT_TRANSLATE_NOOP("PLCEditDialog", "Auto Netld:"));
    addNumber(fields, plcAdsTargetNetIdRole, "targetNetId",
              QT_TRANSLATE_NOOP("PLCEditDialog", "TargetNetId:"));
    addNumber(fields, plcAdsSenderNetIdRole, "senderNetId",
              QT_TRANSLATE_NOOP("PLCEditDialog", "SenderNetId:"));
    addCheck(fields, plcAdsTagCacheRole, "tagCache", QT_TRANSLATE_NOOP("PLCEditDialog", "Tag Cache:"));
}

// The roles of a maker of Modbus devices.
struct ModbusRoles {
    int series;
    int stationNum;
    int byteOrder;
    int startAddress0;
    int charReversed;
};

// The list of series and the check of the address 0 are for the maker's own ways.
struct ModbusRows {
    ListField *series;
    CheckField *startAddress0;
};

ModbusRows addModbusMaker(FieldGroup &fields, const char *manufacturer, const ModbusRoles &roles)
{
    auto *ofMaker = fields.add<ListField>(roles.series, "series", series)
                        ->entries(PlcCatalogue::series(QLatin1String(manufacturer)));
    addNumber(fields, roles.stationNum, "stationNum", stationNum)->initially("1");
    addByteOrder(fields, roles.byteOrder);
    auto *startsAtZero = addCheck(fields, roles.startAddress0, "startAddress0", startAddress0);
    addCheck(fields, roles.charReversed, "charReversed", charReversed);
    return {ofMaker, startsAtZero};
}

void addInovance(FieldGroup &fields)
{
    addModbusMaker(fields, "Inovance",
                   {plcInovanceSeriesRole, plcInovanceStationNumRole, plcInovanceByteOrderRole,
                    plcInovanceStartAddress0Role, plcInovanceCharReversedRole})
        .startAddress0->initially(true);
}

void addXinje(FieldGroup &fields)
{
    addModbusMaker(fields, "XinJE",
                   {plcXinjeSeriesRole, plcXinjeStationNumRole, plcXinjeByteOrderRole,
                    plcXinjeStartAddress0Role, plcXinjeCharReversedRole})
        .startAddress0->initially(true);
}

void addModbus(FieldGroup &fields)
{
    const ModbusRows rows =
        addModbusMaker(fields, "Modbus",
                       {plcModbusSeriesRole, plcModbusStationNumRole, plcModbusByteOrderRole,
                        plcModbusStartAddress0Role, plcModbusCharReversedRole});
    rows.series->disabled();
    rows.startAddress0->initially(true);
}

void addDelta(FieldGroup &fields)
{
    // Compat: off, unlike the three before.
    addModbusMaker(fields, "Delta",
                   {plcDeltaSeriesRole, plcDeltaStationNumRole, plcDeltaByteOrderRole,
                    plcDeltaStartAddress0Role, plcDeltaCharReversedRole});
}

} // namespace

TextField *addNumber(FieldGroup &fields, int role, const char *name, const char *label)
{
    return fields.add<TextField>(role, name, label)->check(integerValidator);
}

ListField *addModels(FieldGroup &fields)
{
    return fields.add<ListField>(plcModelRole, "model", model);
}

void addOmronModel(FieldGroup &fields)
{
    fields.addUnseen<TextField>(plcOmronEipModelRole, "omronModel", fields.translated(model))
        ->initially("omron-njnx");
}

const QVector<Group> &groups()
{
    static const QVector<Group> all = {
        {PlcGroup::Network, "network", QT_TRANSLATE_NOOP("PLCEditDialog", "Network Layer Information"),
         addNetwork},
        {PlcGroup::Serial, "serial", QT_TRANSLATE_NOOP("PLCEditDialog", "Serial Port Information"),
         addSerial},
        {PlcGroup::S7Model, "s7Model", plcInformation, nullptr},
        {PlcGroup::S7Rack, "s7Rack", nullptr, addS7Rack},
        {PlcGroup::S7Tsap, "s7Tsap", nullptr, addS7Tsap},
        {PlcGroup::Ppi, "ppi", plcInformation, addPpi},
        {PlcGroup::MitsubishiEip, "mitsubishiEip", plcInformation, addMitsubishiEip},
        {PlcGroup::Mc3c, "mc3c", plcInformation, addMc3c},
        {PlcGroup::Mc1e, "mc1e", plcInformation, addMc1e},
        {PlcGroup::Mc3e, "mc3e", plcInformation, addMc3e},
        {PlcGroup::FxLinks, "fxLinks", plcInformation, addFxLinks},
        {PlcGroup::FxSerial, "fxSerial", plcInformation, addFxSerial},
        {PlcGroup::Fins, "fins", plcInformation, addFins},
        {PlcGroup::OmronEip, "omronEip", plcInformation, addOmronEip},
        {PlcGroup::HostLink, "hostLink", plcInformation, addHostLink},
        {PlcGroup::AllenBradleyEip, "allenBradleyEip", plcInformation, addAllenBradleyEip},
        {PlcGroup::Df1, "df1", plcInformation, addDf1},
        {PlcGroup::Ads, "ads", plcInformation, addAds},
        {PlcGroup::Inovance, "inovance", plcInformation, addInovance},
        {PlcGroup::Xinje, "xinje", plcInformation, addXinje},
        {PlcGroup::Modbus, "modbus", plcInformation, addModbus},
        {PlcGroup::Delta, "delta", plcInformation, addDelta},
    };
    return all;
}

} // namespace PlcFields

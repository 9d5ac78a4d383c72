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

constexpr auto fourHexDigits = "^[0-9A-Fa-f]{0,4}$";
constexpr auto hexDigits = "^[0-9A-Fa-f]*$";

Field number(const char *name, const char *label, int role, const char *defaultValue)
{
    return {name, label, FieldKind::Text, role, FieldCheck::Integer, {}, defaultValue};
}

Field matching(const char *name, const char *label, int role, const char *pattern, const char *defaultValue)
{
    return {name, label, FieldKind::Text, role, FieldCheck::Pattern, {}, defaultValue, nullptr, pattern};
}

Field list(const char *name, const char *label, int role, const QStringList &entries)
{
    return {name, label, FieldKind::List, role, FieldCheck::None, entries};
}

// The entries in one text, separated by blanks.
Field list(const char *name, const char *label, int role, const char *entries)
{
    return list(name, label, role, QString::fromLatin1(entries).split(QLatin1Char(' ')));
}

Field byteOrderList(int role)
{
    return list("byteOrder", byteOrder, role, "ABCD BADC CDAB DCBA");
}

enum class Initially { Off, On };

Field check(const char *name, const char *label, int role, Initially initially)
{
    return {name,
            label,
            FieldKind::Check,
            role,
            FieldCheck::None,
            {},
            initially == Initially::On ? "true" : nullptr};
}

QVector<Choice> allenBradleyModels()
{
    QVector<Choice> choices;
    for (const PlcCatalogue::Model &each : PlcCatalogue::allenBradleyModels()) {
        choices.append({each.text, QString(each.code)});
    }
    return choices;
}

QVector<Field> network()
{
    return {
        {"ip",
         QT_TRANSLATE_NOOP("PLCEditDialog", "IP:"),
         FieldKind::Text,
         plcIpRole,
         FieldCheck::Ipv4,
         {},
         "192.168.1.60"},
        // Its default goes by the protocol: PlcCatalogue::defaultPort().
        {"port", QT_TRANSLATE_NOOP("PLCEditDialog", "Port:"), FieldKind::Text, plcPortRole, FieldCheck::Port},
        number("connectionTimeout", QT_TRANSLATE_NOOP("PLCEditDialog", "Connection Timeout:"),
               plcConnectionTimeoutRole, "2000"),
        number("communicationTimeout", communicationTimeout, plcTcpCommunicationTimeoutRole, "2000"),
        number("keepAlive", QT_TRANSLATE_NOOP("PLCEditDialog", "Keep Alive Time:"), plcKeepAliveRole,
               "60000"),
    };
}

QVector<Field> serial()
{
    return {
        list("serialport", QT_TRANSLATE_NOOP("PLCEditDialog", "Serial Port:"), plcSerialPortRole,
             "COM1 COM2"),
        list("baudRate", QT_TRANSLATE_NOOP("PLCEditDialog", "Baud Rate:"), plcBaudRateRole,
             "115200 57600 38400 19200 9600 4800 2400 1200 600"),
        list("dataBit", QT_TRANSLATE_NOOP("PLCEditDialog", "Data Bit:"), plcDataBitRole, "8 7"),
        list("stopBit", QT_TRANSLATE_NOOP("PLCEditDialog", "Stop Bit:"), plcStopBitRole, "1 2"),
        list("parityBit", QT_TRANSLATE_NOOP("PLCEditDialog", "Parity Bit:"), plcParityBitRole,
             "NONE ODD EVEN"),
        check("rtsEnable", QT_TRANSLATE_NOOP("PLCEditDialog", "Rts Enable:"), plcRtsEnableRole,
              Initially::Off),
        number("communicationTimeout", communicationTimeout, plcSerialCommunicationTimeoutRole, "2000"),
        number("communicationGap", QT_TRANSLATE_NOOP("PLCEditDialog", "Communication Gap:"),
               plcCommunicationGapRole, "-1"),
    };
}

QVector<Group> siemens()
{
    return {
        {PlcGroup::S7Model, "s7Model", plcInformation, {list("model", model, plcModelRole, QStringList())}},
        {PlcGroup::S7Rack,
         "s7Rack",
         nullptr,
         {number("connectionType", QT_TRANSLATE_NOOP("PLCEditDialog", "Connection Type:"),
                 plcS7ConnectionTypeRole, "1"),
          number("rack", QT_TRANSLATE_NOOP("PLCEditDialog", "Rack:"), plcS7RackRole, "0"),
          number("Slot", slot, plcS7SlotRole, "0")}},
        {PlcGroup::S7Tsap,
         "s7Tsap",
         nullptr,
         {matching("localTSAP", QT_TRANSLATE_NOOP("PLCEditDialog", "LocalTSAP:"), plcS7LocalTsapRole,
                   fourHexDigits, "4D57"),
          matching("destTSA", QT_TRANSLATE_NOOP("PLCEditDialog", "DestTSAP:"), plcS7DestTsapRole,
                   fourHexDigits, "4D57")}},
        {PlcGroup::Ppi, "ppi", plcInformation, {number("stationNum", stationNum, plcPpiStationNumRole, "2")}},
    };
}

QVector<Group> mitsubishi()
{
    return {
        {PlcGroup::MitsubishiEip,
         "mitsubishiEip",
         plcInformation,
         {number("Slot", slot, plcMitsubishiEipSlotRole, "0")}},
        {PlcGroup::Mc3c,
         "mc3c",
         plcInformation,
         {number("stationNum", stationNum, plcMc3cStationNumRole, "2"),
          list("format", format, plcMc3cFormatRole, "1 2 3 4"),
          check("sumCheck", sumCheck, plcMc3cSumCheckRole, Initially::On),
          check("writebitByword", writeBitByWord, plcMc3cWriteBitByWordRole, Initially::On)}},
        {PlcGroup::Mc1e,
         "mc1e",
         plcInformation,
         {matching("stationNum", stationNum, plcMc1eStationNumRole, hexDigits, "FF"),
          check("binary", binary, plcMc1eBinaryRole, Initially::On)}},
        {PlcGroup::Mc3e,
         "mc3e",
         plcInformation,
         {list("mode", mode, plcMc3eModeRole, "TCP UDP"),
          number("stationNum", stationNum, plcMc3eStationNumRole, "0"),
          number("netNum", QT_TRANSLATE_NOOP("PLCEditDialog", "Net Num:"), plcMc3eNetNumRole, "0"),
          check("binary", binary, plcMc3eBinaryRole, Initially::On),
          check("writeBitByWord", writeBitByWord, plcMc3eWriteBitByWordRole, Initially::On),
          check("charReversed", charReversed, plcMc3eCharReversedRole, Initially::Off)}},
        {PlcGroup::FxLinks,
         "fxLinks",
         plcInformation,
         {number("stationNum", stationNum, plcFxLinksStationNumRole, "0"),
          check("sumCheck", sumCheck, plcFxLinksSumCheckRole, Initially::On),
          number("messageWaitingTime", QT_TRANSLATE_NOOP("PLCEditDialog", "Message waiting time:"),
                 plcFxLinksMessageWaitingTimeRole, "1"),
          list("format", format, plcFxLinksFormatRole, "1 4")}},
        {PlcGroup::FxSerial,
         "fxSerial",
         plcInformation,
         {check("newAgreement", QT_TRANSLATE_NOOP("PLCEditDialog", "New Agreement:"),
                plcFxSerialNewAgreementRole, Initially::On)}},
    };
}

QVector<Group> omron()
{
    return {
        {PlcGroup::Fins,
         "fins",
         plcInformation,
         {list("mode", mode, plcFinsModeRole, "TCP UDP"),
          number("unitNumber", QT_TRANSLATE_NOOP("PLCEditDialog", "Unit Number:"), plcFinsUnitNumberRole,
                 "0"),
          byteOrderList(plcFinsByteOrderRole),
          check("charReversed", charReversed, plcFinsCharReversedRole, Initially::Off)}},
        {PlcGroup::OmronEip, "omronEip", plcInformation, {number("Slot", slot, plcOmronEipSlotRole, "0")}},
        {PlcGroup::HostLink,
         "hostLink",
         plcInformation,
         {number("stationNum", stationNum, plcHostLinkStationNumRole, "0"),
          number("deviceIDNum", QT_TRANSLATE_NOOP("PLCEditDialog", "DeviceID Num:"),
                 plcHostLinkDeviceIdNumRole, "0"),
          number("PLCUnit", QT_TRANSLATE_NOOP("PLCEditDialog", "PLC Unit Num:"), plcHostLinkPlcUnitRole, "0"),
          number("hostcomputerUnit", QT_TRANSLATE_NOOP("PLCEditDialog", "Hostomputer Unit Num:"),
                 plcHostLinkHostcomputerUnitRole, "0"),
          byteOrderList(plcHostLinkByteOrderRole),
          check("charReversed", charReversed, plcHostLinkCharReversedRole, Initially::Off)}},
    };
}

QVector<Group> others()
{
    return {
        {PlcGroup::AllenBradleyEip,
         "allenBradleyEip",
         plcInformation,
         {Field{"model",
                model,
                FieldKind::Coded,
                plcAbModelRole,
                FieldCheck::None,
                {},
                nullptr,
                nullptr,
                nullptr,
                allenBradleyModels()},
          number("Slot", slot, plcAbSlotRole, "0"),
          number("router", QT_TRANSLATE_NOOP("PLCEditDialog", "Router:"), plcAbRouterRole, nullptr)}},
        {PlcGroup::Df1,
         "df1",
         plcInformation,
         {number("stationNum", stationNum, plcDf1StationNumRole, "1"),
          number("targetNode", QT_TRANSLATE_NOOP("PLCEditDialog", "Target Node:"), plcDf1TargetNodeRole, "2"),
          number("sourceNode", QT_TRANSLATE_NOOP("PLCEditDialog", "Source Node:"), plcDf1SourceNodeRole,
                 "1")}},
        {PlcGroup::Ads,
         "ads",
         plcInformation,
         {check("autoNetld", QT_TRANSLATE_NOOP("PLCEditDialog", "Auto Netld:"), plcAdsAutoNetIdRole,
                Initially::Off),
          number("targetNetId", QT_TRANSLATE_NOOP("PLCEditDialog", "TargetNetId:"), plcAdsTargetNetIdRole,
                 nullptr),
          number("senderNetId", QT_TRANSLATE_NOOP("PLCEditDialog", "SenderNetId:"), plcAdsSenderNetIdRole,
                 nullptr),
          check("tagCache", QT_TRANSLATE_NOOP("PLCEditDialog", "Tag Cache:"), plcAdsTagCacheRole,
                Initially::Off)}},
    };
}

// The roles of a maker of Modbus devices.
struct ModbusRoles {
    int series;
    int stationNum;
    int byteOrder;
    int startAddress0;
    int charReversed;
};

Group modbusGroup(PlcGroup id, const char *name, const char *manufacturer, const ModbusRoles &roles,
                  Initially startsAtZero)
{
    return {id,
            name,
            plcInformation,
            {list("series", series, roles.series, PlcCatalogue::series(QLatin1String(manufacturer))),
             number("stationNum", stationNum, roles.stationNum, "1"), byteOrderList(roles.byteOrder),
             check("startAddress0", startAddress0, roles.startAddress0, startsAtZero),
             check("charReversed", charReversed, roles.charReversed, Initially::Off)}};
}

QVector<Group> modbusMakers()
{
    return {
        modbusGroup(PlcGroup::Inovance, "inovance", "Inovance",
                    {plcInovanceSeriesRole, plcInovanceStationNumRole, plcInovanceByteOrderRole,
                     plcInovanceStartAddress0Role, plcInovanceCharReversedRole},
                    Initially::On),
        modbusGroup(PlcGroup::Xinje, "xinje", "XinJE",
                    {plcXinjeSeriesRole, plcXinjeStationNumRole, plcXinjeByteOrderRole,
                     plcXinjeStartAddress0Role, plcXinjeCharReversedRole},
                    Initially::On),
        modbusGroup(PlcGroup::Modbus, "modbus", "Modbus",
                    {plcModbusSeriesRole, plcModbusStationNumRole, plcModbusByteOrderRole,
                     plcModbusStartAddress0Role, plcModbusCharReversedRole},
                    Initially::On),
        // Compat: off, unlike the three before.
        modbusGroup(PlcGroup::Delta, "delta", "Delta",
                    {plcDeltaSeriesRole, plcDeltaStationNumRole, plcDeltaByteOrderRole,
                     plcDeltaStartAddress0Role, plcDeltaCharReversedRole},
                    Initially::Off),
    };
}

} // namespace

QVector<Field> attributes()
{
    return {
        {"name", QT_TRANSLATE_NOOP("PLCEditDialog", "PLC Name:"), FieldKind::ReadOnly, Qt::DisplayRole},
        {"manufacturer", QT_TRANSLATE_NOOP("PLCEditDialog", "Manufacturer:"), FieldKind::ReadOnly,
         plcManufacturerRole},
        {"protocol", QT_TRANSLATE_NOOP("PLCEditDialog", "Protocol:"), FieldKind::List, plcProtocolRole},
    };
}

QVector<Group> groups()
{
    return QVector<Group>{
               {PlcGroup::Network, "network", QT_TRANSLATE_NOOP("PLCEditDialog", "Network Layer Information"),
                network()},
               {PlcGroup::Serial, "serial", QT_TRANSLATE_NOOP("PLCEditDialog", "Serial Port Information"),
                serial()},
           }
    + siemens() + mitsubishi() + omron() + others() + modbusMakers();
}

QVector<Field> trigger()
{
    return {number("collectionInterval", QT_TRANSLATE_NOOP("PLCEditDialog", "Trigger Conditions:"),
                   plcCollectionIntervalRole, "2000")};
}

QVector<Field> omronModel()
{
    return {{"omronModel", model, FieldKind::Text, plcOmronEipModelRole, FieldCheck::None, {}, "omron-njnx"}};
}

} // namespace PlcFields

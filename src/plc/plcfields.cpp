#include "plc/plcfields.h"

#include "definitions/choices.h"
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

// A whole number, -1 or more.
void addNumber(FieldGroup &fields, int role, const char *label)
{
    fields.add<TextField>(role, label)->check(integerValidator);
}

void addList(FieldGroup &fields, int role, const char *label, const char *entries)
{
    fields.add<ListField>(role, label)->entries(entries);
}

void addByteOrder(FieldGroup &fields, int role)
{
    addList(fields, role, byteOrder, Choices::byteOrders);
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
    fields.add<TextField>(plcIpRole, QT_TRANSLATE_NOOP("PLCEditDialog", "IP:"))->check(ipv4Validator);
    // Its default goes by the protocol: PlcCatalogue::defaultPort().
    fields.add<TextField>(plcPortRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Port:"))->check(portValidator);
    fields
        .add<TextField>(plcConnectionTimeoutRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Connection Timeout:"))
        ->milliseconds();
    fields.add<TextField>(plcTcpCommunicationTimeoutRole, communicationTimeout)->milliseconds();
    fields.add<TextField>(plcKeepAliveRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Keep Alive Time:"))
        ->milliseconds();
}

void addSerial(FieldGroup &fields)
{
    // Compat: an unknown text leaves a list at the entry of the PLC before.
    fields.keepUnknownOnRefill();
    fields.resetEmptyOnRefill();
    addList(fields, plcSerialPortRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Serial Port:"),
            Choices::serialPorts);
    addList(fields, plcBaudRateRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Baud Rate:"), Choices::baudRates);
    addList(fields, plcDataBitRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Data Bit:"), Choices::dataBits);
    addList(fields, plcStopBitRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Stop Bit:"), Choices::stopBits);
    addList(fields, plcParityBitRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Parity Bit:"), Choices::parities);
    fields.add<CheckField>(plcRtsEnableRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Rts Enable:"));
    fields.add<TextField>(plcSerialCommunicationTimeoutRole, communicationTimeout)->milliseconds();
    fields.add<TextField>(plcCommunicationGapRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Communication Gap:"))
        ->milliseconds();
}

void addS7Rack(FieldGroup &fields)
{
    addNumber(fields, plcS7ConnectionTypeRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Connection Type:"));
    addNumber(fields, plcS7RackRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Rack:"));
    addNumber(fields, plcS7SlotRole, slot);
}

void addS7Tsap(FieldGroup &fields)
{
    fields.add<TextField>(plcS7LocalTsapRole, QT_TRANSLATE_NOOP("PLCEditDialog", "LocalTSAP:"))
        ->pattern("^[0-9A-Fa-f]{0,4}$");
    fields.add<TextField>(plcS7DestTsapRole, QT_TRANSLATE_NOOP("PLCEditDialog", "DestTSAP:"))
        ->pattern("^[0-9A-Fa-f]{0,4}$");
}

void addPpi(FieldGroup &fields)
{
    addNumber(fields, plcPpiStationNumRole, stationNum);
}

void addMitsubishiEip(FieldGroup &fields)
{
    addNumber(fields, plcMitsubishiEipSlotRole, slot);
}

void addMc3c(FieldGroup &fields)
{
    addNumber(fields, plcMc3cStationNumRole, stationNum);
    addList(fields, plcMc3cFormatRole, format, "1 2 3 4");
    fields.add<CheckField>(plcMc3cSumCheckRole, sumCheck);
    fields.add<CheckField>(plcMc3cWriteBitByWordRole, writeBitByWord);
}

void addMc1e(FieldGroup &fields)
{
    fields.add<TextField>(plcMc1eStationNumRole, stationNum)->pattern("^[0-9A-Fa-f]*$");
    fields.add<CheckField>(plcMc1eBinaryRole, binary);
}

void addMc3e(FieldGroup &fields)
{
    addList(fields, plcMc3eModeRole, mode, "TCP UDP");
    addNumber(fields, plcMc3eStationNumRole, stationNum);
    addNumber(fields, plcMc3eNetNumRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Net Num:"));
    fields.add<CheckField>(plcMc3eBinaryRole, binary);
    fields.add<CheckField>(plcMc3eWriteBitByWordRole, writeBitByWord);
    fields.add<CheckField>(plcMc3eCharReversedRole, charReversed);
}

void addFxLinks(FieldGroup &fields)
{
    addNumber(fields, plcFxLinksStationNumRole, stationNum);
    fields.add<CheckField>(plcFxLinksSumCheckRole, sumCheck);
    addNumber(fields, plcFxLinksMessageWaitingTimeRole,
              QT_TRANSLATE_NOOP("PLCEditDialog", "Message waiting time:"));
    addList(fields, plcFxLinksFormatRole, format, "1 4");
}

void addFxSerial(FieldGroup &fields)
{
    fields.add<CheckField>(plcFxSerialNewAgreementRole, QT_TRANSLATE_NOOP("PLCEditDialog", "New Agreement:"));
}

void addFins(FieldGroup &fields)
{
    addList(fields, plcFinsModeRole, mode, "TCP UDP");
    addNumber(fields, plcFinsUnitNumberRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Unit Number:"));
    addByteOrder(fields, plcFinsByteOrderRole);
    fields.add<CheckField>(plcFinsCharReversedRole, charReversed);
}

void addOmronEip(FieldGroup &fields)
{
    addNumber(fields, plcOmronEipSlotRole, slot);
}

void addHostLink(FieldGroup &fields)
{
    addNumber(fields, plcHostLinkStationNumRole, stationNum);
    addNumber(fields, plcHostLinkDeviceIdNumRole, QT_TRANSLATE_NOOP("PLCEditDialog", "DeviceID Num:"));
    addNumber(fields, plcHostLinkPlcUnitRole, QT_TRANSLATE_NOOP("PLCEditDialog", "PLC Unit Num:"));
    addNumber(fields, plcHostLinkHostcomputerUnitRole,
              QT_TRANSLATE_NOOP("PLCEditDialog", "Hostomputer Unit Num:"));
    addByteOrder(fields, plcHostLinkByteOrderRole);
    fields.add<CheckField>(plcHostLinkCharReversedRole, charReversed);
}

void addAllenBradleyEip(FieldGroup &fields)
{
    fields.add<CodedField>(plcAbModelRole, model)->choices(allenBradleyModels());
    addNumber(fields, plcAbSlotRole, slot);
    addNumber(fields, plcAbRouterRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Router:"));
}

void addDf1(FieldGroup &fields)
{
    addNumber(fields, plcDf1StationNumRole, stationNum);
    addNumber(fields, plcDf1TargetNodeRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Target Node:"));
    addNumber(fields, plcDf1SourceNodeRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Source Node:"));
}

void addAds(FieldGroup &fields)
{
    fields.add<CheckField>(plcAdsAutoNetIdRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Auto Netld:"));
    addNumber(fields, plcAdsTargetNetIdRole, QT_TRANSLATE_NOOP("PLCEditDialog", "TargetNetId:"));
    addNumber(fields, plcAdsSenderNetIdRole, QT_TRANSLATE_NOOP("PLCEditDialog", "SenderNetId:"));
    fields.add<CheckField>(plcAdsTagCacheRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Tag Cache:"));
}

// The five roles of a maker of Modbus devices stand side by side. Gives the list of series.
ListField *addModbusMaker(FieldGroup &fields, PlcGroup maker, int seriesRole)
{
    auto *ofMaker = fields.add<ListField>(seriesRole, series)->entries(PlcCatalogue::series(maker));
    addNumber(fields, seriesRole + 1, stationNum);
    addByteOrder(fields, seriesRole + 2);
    fields.add<CheckField>(seriesRole + 3, startAddress0);
    fields.add<CheckField>(seriesRole + 4, charReversed);
    return ofMaker;
}

void addInovance(FieldGroup &fields)
{
    addModbusMaker(fields, PlcGroup::Inovance, plcInovanceSeriesRole);
}

void addXinje(FieldGroup &fields)
{
    addModbusMaker(fields, PlcGroup::Xinje, plcXinjeSeriesRole);
}

void addModbus(FieldGroup &fields)
{
    addModbusMaker(fields, PlcGroup::Modbus, plcModbusSeriesRole)->disabled();
}

void addDelta(FieldGroup &fields)
{
    addModbusMaker(fields, PlcGroup::Delta, plcDeltaSeriesRole);
}

} // namespace

ListField *addModels(FieldGroup &fields)
{
    return fields.add<ListField>(plcModelRole, model);
}

void addOmronModel(FieldGroup &fields)
{
    fields.addUnseen<TextField>(plcOmronEipModelRole, "omronModel", fields.translated(model));
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

#pragma once

#include "formtest.h"
#include "model/itemroles.h"
#include "plc/plceditdialog.h"
#include "projectdump.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

// What the tests of the PLC form share.

inline QString S(const char *text = "")
{
    return QString::fromUtf8(text);
}

inline QStringList words(const char *text, char separator = ' ')
{
    return S(text).split(QLatin1Char(separator), Qt::SkipEmptyParts);
}

// One input of the form. Kinds: "int", "port", "ip", "tsap" and "hex" are line edits with that check, "list"
// is a list of entries, "codes" one with stored codes, "check" a check box.
struct PlcInput {
    const char *group;
    const char *name;
    const char *label;
    const char *kind;
    int role;
    const char *initially; // written into an empty role, or null; of a check box "true" or null
    const char *entries;   // of a list, separated by bars
    const char *other;     // a value that a user may enter
};

// clang-format off
inline const QVector<PlcInput> plcInputs{
    {"network", "ip", "IP:", "ip", plcIpRole, "192.168.1.60", nullptr, "10.0.0.7"},
    {"network", "port", "Port:", "port", plcPortRole, nullptr, nullptr, "-1"},
    {"network", "connectionTimeout", "Connection Timeout:", "int", plcConnectionTimeoutRole, "2000", nullptr, "3001"},
    {"network", "communicationTimeout", "Communication Timeout:", "int", plcTcpCommunicationTimeoutRole, "2000", nullptr, "3002"},
    {"network", "keepAlive", "Keep Alive Time:", "int", plcKeepAliveRole, "60000", nullptr, "3003"},
    {"serial", "serialport", "Serial Port:", "list", plcSerialPortRole, nullptr, "COM1|COM2", "COM2"},
    {"serial", "baudRate", "Baud Rate:", "list", plcBaudRateRole, nullptr, "115200|57600|38400|19200|9600|4800|2400|1200|600", "600"},
    {"serial", "dataBit", "Data Bit:", "list", plcDataBitRole, nullptr, "8|7", "7"},
    {"serial", "stopBit", "Stop Bit:", "list", plcStopBitRole, nullptr, "1|2", "2"},
    {"serial", "parityBit", "Parity Bit:", "list", plcParityBitRole, nullptr, "NONE|ODD|EVEN", "EVEN"},
    {"serial", "rtsEnable", "Rts Enable:", "check", plcRtsEnableRole, nullptr, nullptr, "true"},
    {"serial", "communicationTimeout", "Communication Timeout:", "int", plcSerialCommunicationTimeoutRole, "2000", nullptr, "3004"},
    {"serial", "communicationGap", "Communication Gap:", "int", plcCommunicationGapRole, "-1", nullptr, "3005"},
    {"s7Rack", "connectionType", "Connection Type:", "int", plcS7ConnectionTypeRole, "1", nullptr, "31"},
    {"s7Rack", "rack", "Rack:", "int", plcS7RackRole, "0", nullptr, "32"},
    {"s7Rack", "Slot", "Slot:", "int", plcS7SlotRole, "0", nullptr, "33"},
    {"s7Tsap", "localTSAP", "LocalTSAP:", "tsap", plcS7LocalTsapRole, "4D57", nullptr, "aB01"},
    {"s7Tsap", "destTSA", "DestTSAP:", "tsap", plcS7DestTsapRole, "4D57", nullptr, "F"},
    {"ppi", "stationNum", "Station Num:", "int", plcPpiStationNumRole, "2", nullptr, "34"},
    {"mitsubishiEip", "Slot", "Slot:", "int", plcMitsubishiEipSlotRole, "0", nullptr, "35"},
    {"mc3c", "stationNum", "Station Num:", "int", plcMc3cStationNumRole, "2", nullptr, "36"},
    {"mc3c", "format", "Format:", "list", plcMc3cFormatRole, nullptr, "1|2|3|4", "4"},
    {"mc3c", "sumCheck", "Sum Check:", "check", plcMc3cSumCheckRole, "true", nullptr, "false"},
    {"mc3c", "writebitByword", "Write Bit By Word:", "check", plcMc3cWriteBitByWordRole, "true", nullptr, "false"},
    {"mc1e", "stationNum", "Station Num:", "hex", plcMc1eStationNumRole, "FF", nullptr, "00afAF"},
    {"mc1e", "binary", "Binary:", "check", plcMc1eBinaryRole, "true", nullptr, "false"},
    {"mc3e", "mode", "Mode:", "list", plcMc3eModeRole, nullptr, "TCP|UDP", "UDP"},
    {"mc3e", "stationNum", "Station Num:", "int", plcMc3eStationNumRole, "0", nullptr, "37"},
    {"mc3e", "netNum", "Net Num:", "int", plcMc3eNetNumRole, "0", nullptr, "38"},
    {"mc3e", "binary", "Binary:", "check", plcMc3eBinaryRole, "true", nullptr, "false"},
    {"mc3e", "writeBitByWord", "Write Bit By Word:", "check", plcMc3eWriteBitByWordRole, "true", nullptr, "false"},
    {"mc3e", "charReversed", "Char Reversed:", "check", plcMc3eCharReversedRole, nullptr, nullptr, "true"},
    {"fxLinks", "stationNum", "Station Num:", "int", plcFxLinksStationNumRole, "0", nullptr, "39"},
    {"fxLinks", "sumCheck", "Sum Check:", "check", plcFxLinksSumCheckRole, "true", nullptr, "false"},
    {"fxLinks", "messageWaitingTime", "Message waiting time:", "int", plcFxLinksMessageWaitingTimeRole, "1", nullptr, "40"},
    {"fxLinks", "format", "Format:", "list", plcFxLinksFormatRole, nullptr, "1|4", "4"},
    {"fxSerial", "newAgreement", "New Agreement:", "check", plcFxSerialNewAgreementRole, "true", nullptr, "false"},
    {"fins", "mode", "Mode:", "list", plcFinsModeRole, nullptr, "TCP|UDP", "UDP"},
    {"fins", "unitNumber", "Unit Number:", "int", plcFinsUnitNumberRole, "0", nullptr, "41"},
    {"fins", "byteOrder", "Byte Order:", "list", plcFinsByteOrderRole, nullptr, "ABCD|BADC|CDAB|DCBA", "BADC"},
    {"fins", "charReversed", "Char Reversed:", "check", plcFinsCharReversedRole, nullptr, nullptr, "true"},
    {"omronEip", "Slot", "Slot:", "int", plcOmronEipSlotRole, "0", nullptr, "42"},
    {"hostLink", "stationNum", "Station Num:", "int", plcHostLinkStationNumRole, "0", nullptr, "43"},
    {"hostLink", "deviceIDNum", "DeviceID Num:", "int", plcHostLinkDeviceIdNumRole, "0", nullptr, "44"},
    {"hostLink", "PLCUnit", "PLC Unit Num:", "int", plcHostLinkPlcUnitRole, "0", nullptr, "45"},
    {"hostLink", "hostcomputerUnit", "Hostomputer Unit Num:", "int", plcHostLinkHostcomputerUnitRole, "0", nullptr, "46"},
    {"hostLink", "byteOrder", "Byte Order:", "list", plcHostLinkByteOrderRole, nullptr, "ABCD|BADC|CDAB|DCBA", "CDAB"},
    {"hostLink", "charReversed", "Char Reversed:", "check", plcHostLinkCharReversedRole, nullptr, nullptr, "true"},
    {"allenBradleyEip", "model", "Model:", "codes", plcAbModelRole, nullptr, "ControlLogix系列|CompactLogix系列|MicroLogix系列|Logix5000系列|Micro800系列|SLC 500", "slc500"},
    {"allenBradleyEip", "Slot", "Slot:", "int", plcAbSlotRole, "0", nullptr, "47"},
    {"allenBradleyEip", "router", "Router:", "int", plcAbRouterRole, nullptr, nullptr, "48"},
    {"df1", "stationNum", "Station Num:", "int", plcDf1StationNumRole, "1", nullptr, "49"},
    {"df1", "targetNode", "Target Node:", "int", plcDf1TargetNodeRole, "2", nullptr, "50"},
    {"df1", "sourceNode", "Source Node:", "int", plcDf1SourceNodeRole, "1", nullptr, "51"},
    {"ads", "autoNetld", "Auto Netld:", "check", plcAdsAutoNetIdRole, nullptr, nullptr, "true"},
    {"ads", "targetNetId", "TargetNetId:", "int", plcAdsTargetNetIdRole, nullptr, nullptr, "52"},
    {"ads", "senderNetId", "SenderNetId:", "int", plcAdsSenderNetIdRole, nullptr, nullptr, "53"},
    {"ads", "tagCache", "Tag Cache:", "check", plcAdsTagCacheRole, nullptr, nullptr, "true"},
    {"inovance", "series", "Series:", "list", plcInovanceSeriesRole, nullptr, "AM|H3U|H5U", "H5U"},
    {"inovance", "stationNum", "Station Num:", "int", plcInovanceStationNumRole, "1", nullptr, "54"},
    {"inovance", "byteOrder", "Byte Order:", "list", plcInovanceByteOrderRole, nullptr, "ABCD|BADC|CDAB|DCBA", "DCBA"},
    {"inovance", "startAddress0", "StartAddress0:", "check", plcInovanceStartAddress0Role, "true", nullptr, "false"},
    {"inovance", "charReversed", "Char Reversed:", "check", plcInovanceCharReversedRole, nullptr, nullptr, "true"},
    {"xinje", "series", "Series:", "list", plcXinjeSeriesRole, nullptr, "XD3E|XD5E|XDH|XG", "XDH"},
    {"xinje", "stationNum", "Station Num:", "int", plcXinjeStationNumRole, "1", nullptr, "55"},
    {"xinje", "byteOrder", "Byte Order:", "list", plcXinjeByteOrderRole, nullptr, "ABCD|BADC|CDAB|DCBA", "BADC"},
    {"xinje", "startAddress0", "StartAddress0:", "check", plcXinjeStartAddress0Role, "true", nullptr, "false"},
    {"xinje", "charReversed", "Char Reversed:", "check", plcXinjeCharReversedRole, nullptr, nullptr, "true"},
    {"modbus", "series", "Series:", "list", plcModbusSeriesRole, nullptr, "standard", "standard"},
    {"modbus", "stationNum", "Station Num:", "int", plcModbusStationNumRole, "1", nullptr, "56"},
    {"modbus", "byteOrder", "Byte Order:", "list", plcModbusByteOrderRole, nullptr, "ABCD|BADC|CDAB|DCBA", "CDAB"},
    {"modbus", "startAddress0", "StartAddress0:", "check", plcModbusStartAddress0Role, "true", nullptr, "false"},
    {"modbus", "charReversed", "Char Reversed:", "check", plcModbusCharReversedRole, nullptr, nullptr, "true"},
    {"delta", "series", "Series:", "list", plcDeltaSeriesRole, nullptr, "AH|AS|DVP", "AS"},
    {"delta", "stationNum", "Station Num:", "int", plcDeltaStationNumRole, "1", nullptr, "57"},
    {"delta", "byteOrder", "Byte Order:", "list", plcDeltaByteOrderRole, nullptr, "ABCD|BADC|CDAB|DCBA", "DCBA"},
    {"delta", "startAddress0", "StartAddress0:", "check", plcDeltaStartAddress0Role, nullptr, nullptr, "true"},
    {"delta", "charReversed", "Char Reversed:", "check", plcDeltaCharReversedRole, nullptr, nullptr, "true"},
    {"parameters", "collectionInterval", "Trigger Conditions:", "int", plcCollectionIntervalRole, "2000", nullptr, "3006"},
};

// What can be picked, and "Modbus", which a stored project may have; an S7 with each of its models.
struct PlcKind {
    const char *manufacturer;
    const char *protocol;
    const char *model;  // or null
    const char *groups; // that show, besides the attributes and the parameters
    const char *port;   // that opening writes
};
inline const QVector<PlcKind> plcKinds{
    {"Siemens", "S7", "S200", "network s7Model s7Tsap", "102"},
    {"Siemens", "S7", "S1200", "network s7Model s7Rack", "102"},
    {"Siemens", "S7", "S300", "network s7Model s7Rack", "102"},
    {"Siemens", "S7", "S400", "network s7Model s7Rack", "102"},
    {"Siemens", "S7", "S1500", "network s7Model s7Rack", "102"},
    {"Siemens", "S7", "S200Smart", "network s7Model", "102"},
    {"Siemens", "PPI", nullptr, "serial ppi", "102"},
    {"Mitsubishi", "EtherNet/IP", nullptr, "network mitsubishiEip", "44818"},
    {"Mitsubishi", "MC-3C", nullptr, "serial mc3c", "102"},
    {"Mitsubishi", "MC-1E", nullptr, "network mc1e", ""},
    {"Mitsubishi", "MC-3E", nullptr, "network mc3e", ""},
    {"Mitsubishi", "FxLinks", nullptr, "serial fxLinks", "102"},
    {"Mitsubishi", "FxSerial", nullptr, "serial fxSerial", "102"},
    {"Omron", "Fins", nullptr, "network fins", "9600"},
    {"Omron", "EtherNet/IP", nullptr, "network omronEip", "44818"},
    {"Omron", "HostLink", nullptr, "serial hostLink", "102"},
    {"AllenBradley", "EtherNet/IP", nullptr, "network allenBradleyEip", "44818"},
    {"AllenBradley", "DF1", nullptr, "serial df1", "102"},
    {"XinJE", "Modbus TCP", nullptr, "network xinje", "502"},
    {"XinJE", "Modbus RTU", nullptr, "serial xinje", "502"},
    {"Beckhoff", "Ads", nullptr, "network ads", "48898"},
    {"Inovance", "Modbus TCP", nullptr, "network inovance", "502"},
    {"Inovance", "Modbus RTU", nullptr, "serial inovance", "502"},
    {"Modbus", "Modbus TCP", nullptr, "network modbus", "502"},
    {"Modbus", "Modbus RTU", nullptr, "serial modbus", "502"},
    {"Delta", "Modbus TCP", nullptr, "network delta", "502"},
    {"Delta", "Modbus RTU", nullptr, "serial delta", "502"},
};
// clang-format on

// Rows of a _data() function, one for each kind; the column "kind" is its place.
inline void addKindRows()
{
    QTest::addColumn<int>("kind");
    for (int index = 0; index < plcKinds.size(); ++index) {
        const PlcKind &kind = plcKinds.at(index);
        QTest::addRow("%s %s %s", kind.manufacturer, kind.protocol, kind.model ? kind.model : "") << index;
    }
}

class PlcFormTest : public FormTest
{
protected:
    PlcFormTest()
        : FormTest("press 1", plcProtocolRole, "S7")
    {
    }
};

// A PLC with its form on a faked main window.
class PlcUnderTest
{
public:
    PlcUnderTest(const char *manufacturer, const char *protocol, const char *model = nullptr)
        : item(make(manufacturer, protocol, model))
    {
    }
    explicit PlcUnderTest(const PlcKind &kind)
        : PlcUnderTest(kind.manufacturer, kind.protocol, kind.model)
    {
    }

    static std::unique_ptr<QStandardItem> make(const char *manufacturer, const char *protocol,
                                               const char *model = nullptr)
    {
        auto made = std::make_unique<QStandardItem>(S("press 1"));
        made->setData(S(manufacturer), plcManufacturerRole);
        made->setData(S(protocol), plcProtocolRole);
        if (model) {
            made->setData(S(model), plcModelRole);
        }
        return made;
    }

    void open() { form = std::make_unique<PLCEditDialog>(item.get(), &workspace); }
    void openAndShow()
    {
        open();
        form->show();
    }

    QGroupBox *box(const char *group) const { return form->findChild<QGroupBox *>(S(group)); }
    template <typename Widget> Widget *input(const char *group, const char *name) const
    {
        return box(group)->findChild<Widget *>(S(name));
    }
    QComboBox *protocols() const { return input<QComboBox>("attributes", "protocol"); }
    QComboBox *models() const { return input<QComboBox>("s7Model", "model"); }
    QTableWidget *table() const { return form->findChild<QTableWidget *>(); }
    void press(const char *button) const { form->findChild<QPushButton *>(S(button))->click(); }

    // Names of the groups that are not hidden, from top to bottom, without the two that always show.
    QStringList shownGroups() const
    {
        QStringList names;
        for (const QGroupBox *each : form->findChildren<QGroupBox *>()) {
            if (!each->isHidden()) {
                names.append(each->objectName());
            }
        }
        names.removeOne("attributes");
        names.removeOne("parameters");
        return names;
    }

    // What an input shows, as text; of a list with codes the code.
    QString shown(const PlcInput &each) const
    {
        QWidget *widget = input<QWidget>(each.group, each.name);
        if (const auto *list = qobject_cast<QComboBox *>(widget)) {
            return S(each.kind) == "codes" ? list->currentData().toString() : list->currentText();
        }
        if (const auto *check = qobject_cast<QCheckBox *>(widget)) {
            return check->isChecked() ? S("true") : S("false");
        }
        return qobject_cast<QLineEdit *>(widget)->text();
    }
    void enter(const PlcInput &each) const
    {
        QWidget *widget = input<QWidget>(each.group, each.name);
        if (auto *list = qobject_cast<QComboBox *>(widget)) {
            list->setCurrentIndex(S(each.kind) == "codes" ? list->findData(S(each.other))
                                                          : list->findText(S(each.other)));
        } else if (auto *check = qobject_cast<QCheckBox *>(widget)) {
            check->setChecked(S(each.other) == "true");
        } else {
            auto *edit = qobject_cast<QLineEdit *>(widget);
            edit->clear();
            QTest::keyClicks(edit, S(each.other));
        }
    }

    std::unique_ptr<QStandardItem> item;
    WorkspaceFake workspace;
    std::unique_ptr<PLCEditDialog> form;
};

// Roles with their types and texts, as ProjectDump::roles() shows them.
class RoleLines
{
public:
    void text(int role, const QString &value)
    {
        m_lines.insert(role, QString("+%1 QString ").arg(role - Qt::UserRole) + value);
    }
    void flag(int role, bool value)
    {
        m_lines.insert(role,
                       QString("+%1 bool %2").arg(role - Qt::UserRole).arg(value ? S("true") : S("false")));
    }
    void line(int role, const QString &text)
    {
        m_lines.insert(role, QString("+%1 ").arg(role - Qt::UserRole) + text);
    }
    void value(const PlcInput &input, const char *text)
    {
        if (S(input.kind) == "check") {
            flag(input.role, S(text) == "true");
        } else {
            this->text(input.role, S(text));
        }
    }
    QStringList lines() const { return m_lines.values(); }

private:
    QMap<int, QString> m_lines;
};

// Attributes, and the model that no one sees.
inline RoleLines attributesOf(const PlcKind &kind)
{
    RoleLines roles;
    roles.text(plcManufacturerRole, S(kind.manufacturer));
    roles.text(plcProtocolRole, S(kind.protocol));
    roles.text(plcOmronEipModelRole, S("omron-njnx"));
    if (kind.model) {
        roles.text(plcModelRole, S(kind.model));
    }
    return roles;
}

// What the item of a new PLC holds once its form has opened.
inline QStringList openedRoles(const PlcKind &kind)
{
    RoleLines roles = attributesOf(kind);
    roles.text(plcPortRole, S(kind.port));
    for (const PlcInput &input : plcInputs) {
        if (input.initially) {
            roles.value(input, input.initially);
        }
    }
    return roles.lines();
}

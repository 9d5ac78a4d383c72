#include "standards/modbusfields.h"

#include "model/itemroles.h"
#include "standards/standardfields.h"
#include "standards/standardmodbuseditdialog.h"

void ModbusFields::addNetwork(FieldGroup &fields)
{
    fields.add<TextField>(standardIpRole, "ip", standardModbusEditDialog::tr("IP:"))
        ->check(ipv4Validator)
        ->initially("192.168.1.60");
    fields.add<TextField>(standardPortRole, "port", standardModbusEditDialog::tr("Port:"))
        ->check(portValidator)
        ->initially("502");
    fields
        .add<TextField>(standardConnectionTimeoutRole, "connectionTimeout",
                        standardModbusEditDialog::tr("Connection Timeout:"))
        ->check(integerValidator)
        ->initially("2000");
    fields
        .add<TextField>(standardCommunicationTimeoutRole, "communicationTimeout",
                        standardModbusEditDialog::tr("Communication Timeout:"))
        ->check(integerValidator)
        ->initially("2000");
    fields
        .add<TextField>(standardKeepAliveRole, "keepAlive", standardModbusEditDialog::tr("Keep Alive Time:"))
        ->check(integerValidator)
        ->initially("60000");
}

void ModbusFields::addSerial(FieldGroup &fields)
{
    StandardFields::addSerialLine(fields);
    StandardFields::addSerialTimes(fields, standardRtuCommunicationTimeoutRole, "rtuCommunicationTimeout");
}

void ModbusFields::addSlave(FieldGroup &fields)
{
    constexpr int none = FormField::noRole; // row 0 of the tab keeps them
    fields.add<ListField>(none, "seriesComboBox", standardModbusEditDialog::tr("Series:"))
        ->entries("standard")
        ->disabled();
    fields.add<TextField>(none, "stationNumEdit", standardModbusEditDialog::tr("Station Num:"))
        ->check(integerValidator)
        ->setText(QStringLiteral("1"));
    fields.add<ListField>(none, "byteOrderComboBox", standardModbusEditDialog::tr("Byte Order:"))
        ->entries("ABCD BADC CDAB DCBA");
    fields.add<CheckField>(none, "startAddress0CheckBox", standardModbusEditDialog::tr("StartAddress0:"))
        ->setText(QStringLiteral("true"));
    fields.add<CheckField>(none, "charReversedCheckBox", standardModbusEditDialog::tr("Char Reversed:"));
}

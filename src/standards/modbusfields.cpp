#include "standards/modbusfields.h"

#include "definitions/choices.h"
#include "model/itemroles.h"
#include "standards/standardfields.h"
#include "standards/standardmodbuseditdialog.h"

void ModbusFields::addNetwork(FieldGroup &fields)
{
    fields.add<TextField>(standardIpRole, standardModbusEditDialog::tr("IP:"))->check(ipv4Validator);
    fields.add<TextField>(standardPortRole, standardModbusEditDialog::tr("Port:"))->check(portValidator);
    fields.add<TextField>(standardConnectionTimeoutRole, standardModbusEditDialog::tr("Connection Timeout:"))
        ->milliseconds();
    fields
        .add<TextField>(standardCommunicationTimeoutRole,
                        standardModbusEditDialog::tr("Communication Timeout:"))
        ->milliseconds();
    fields.add<TextField>(standardKeepAliveRole, standardModbusEditDialog::tr("Keep Alive Time:"))
        ->milliseconds();
}

void ModbusFields::addSerial(FieldGroup &fields)
{
    StandardFields::addSerialLine(fields);
    // The name that is its key is the network's.
    StandardFields::addSerialTimes(fields, standardRtuCommunicationTimeoutRole, "rtuCommunicationTimeout");
}

TextField *ModbusFields::addSlave(FieldGroup &fields)
{
    constexpr int none = FormField::noRole; // row 0 of the tab keeps them
    fields.add<ListField>(none, "seriesComboBox", standardModbusEditDialog::tr("Series:"))
        ->entries(Choices::modbusSeries)
        ->disabled();
    TextField *station =
        fields.add<TextField>(none, "stationNumEdit", standardModbusEditDialog::tr("Station Num:"))
            ->check(integerValidator);
    station->setText(QStringLiteral("1"));
    fields.add<ListField>(none, "byteOrderComboBox", standardModbusEditDialog::tr("Byte Order:"))
        ->entries(Choices::byteOrders);
    fields.add<CheckField>(none, "startAddress0CheckBox", standardModbusEditDialog::tr("StartAddress0:"))
        ->setText(QStringLiteral("true"));
    fields.add<CheckField>(none, "charReversedCheckBox", standardModbusEditDialog::tr("Char Reversed:"));
    return station;
}

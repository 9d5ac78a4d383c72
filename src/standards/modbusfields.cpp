#include "standards/modbusfields.h"

#include "definitions/protocols.h"
#include "model/itemroles.h"
#include "standards/standardfields.h"

QVector<Field> ModbusFields::identity()
{
    return {
        {"name", QT_TRANSLATE_NOOP("standardModbusEditDialog", "Server Name:"), FieldKind::Text,
         Qt::DisplayRole},
        {"protocol",
         QT_TRANSLATE_NOOP("standardModbusEditDialog", "Protocol:"),
         FieldKind::List,
         standardProtocolRole,
         FieldCheck::None,
         {QStringLiteral("Modbus")}},
        {"modbus",
         QT_TRANSLATE_NOOP("standardModbusEditDialog", "Modbus:"),
         FieldKind::List,
         standardModbusModeRole,
         FieldCheck::None,
         {Protocols::modbusTcp, Protocols::modbusRtu}},
    };
}

QVector<Field> ModbusFields::network()
{
    return {
        {"ip",
         QT_TRANSLATE_NOOP("standardModbusEditDialog", "IP:"),
         FieldKind::Text,
         standardIpRole,
         FieldCheck::Ipv4,
         {},
         "192.168.1.60"},
        {"port",
         QT_TRANSLATE_NOOP("standardModbusEditDialog", "Port:"),
         FieldKind::Text,
         standardPortRole,
         FieldCheck::Port,
         {},
         "502"},
        {"connectionTimeout",
         QT_TRANSLATE_NOOP("standardModbusEditDialog", "Connection Timeout:"),
         FieldKind::Text,
         standardConnectionTimeoutRole,
         FieldCheck::Integer,
         {},
         "2000"},
        {"communicationTimeout",
         QT_TRANSLATE_NOOP("standardModbusEditDialog", "Communication Timeout:"),
         FieldKind::Text,
         standardCommunicationTimeoutRole,
         FieldCheck::Integer,
         {},
         "2000"},
        {"keepAlive",
         QT_TRANSLATE_NOOP("standardModbusEditDialog", "Keep Alive Time:"),
         FieldKind::Text,
         standardKeepAliveRole,
         FieldCheck::Integer,
         {},
         "60000"},
    };
}

QVector<Field> ModbusFields::serial()
{
    return StandardFields::serialLine()
        + StandardFields::serialTimes("rtuCommunicationTimeout", standardRtuCommunicationTimeoutRole);
}

QVector<Field> ModbusFields::slave()
{
    return {
        {"seriesComboBox",
         QT_TRANSLATE_NOOP("standardModbusEditDialog", "Series:"),
         FieldKind::List,
         FieldTable::noRole,
         FieldCheck::None,
         {QStringLiteral("standard")}},
        {"stationNumEdit", QT_TRANSLATE_NOOP("standardModbusEditDialog", "Station Num:"), FieldKind::Text,
         FieldTable::noRole, FieldCheck::Integer},
        {"byteOrderComboBox",
         QT_TRANSLATE_NOOP("standardModbusEditDialog", "Byte Order:"),
         FieldKind::List,
         FieldTable::noRole,
         FieldCheck::None,
         {QStringLiteral("ABCD"), QStringLiteral("BADC"), QStringLiteral("CDAB"), QStringLiteral("DCBA")}},
        {"startAddress0CheckBox", QT_TRANSLATE_NOOP("standardModbusEditDialog", "StartAddress0:"),
         FieldKind::Check, FieldTable::noRole},
        {"charReversedCheckBox", QT_TRANSLATE_NOOP("standardModbusEditDialog", "Char Reversed:"),
         FieldKind::Check, FieldTable::noRole},
    };
}

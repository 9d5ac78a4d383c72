#pragma once

#include <QLatin1String>
#include <QString>
#include <QtGlobal>

// The names of protocols as items and the document hold them. Logic compares them, so that none is
// translated.
namespace Protocols {

// Protocols of Standards.
inline const QLatin1String modbus("Modbus");
inline const QLatin1String dlt645("DLT645");
inline const QLatin1String dido("DIDO");
inline const QLatin1String customPoll("CustomPoll");
inline const QLatin1String opcUa("OpcUA");

// Modes of a Modbus Standard.
inline const QLatin1String modbusTcp("ModbusTCP");
inline const QLatin1String modbusRtu("ModbusRTU");

// Protocols of Services.
inline const QLatin1String iec61850("IEC61850");

// Protocols of Servers. Three are shown by the name that the provider has in the user's language.
inline const QLatin1String mqtt("MQTT");
inline const QLatin1String aliMqtt(QT_TRANSLATE_NOOP("ServerFields", "AliMQTT"));
inline const QLatin1String oneNetMqtt(QT_TRANSLATE_NOOP("ServerFields", "OneNetMQTT"));
inline const QLatin1String huaWeiMqtt(QT_TRANSLATE_NOOP("ServerFields", "HuaWeiMQTT"));
inline const QLatin1String modbusTcpSlave("ModbusTCP(Slave)");
inline const QLatin1String hj212("HJ212");
inline const QLatin1String sl651("SL651");
inline const QLatin1String opcUaServer("OpcUaServer");

// Icon resource of a Standard by protocol; empty for an unknown one. That of a Server:
// ServerProtocols::icon().
QString standardIcon(const QString &protocol);

} // namespace Protocols

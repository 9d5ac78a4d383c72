#pragma once

#include <QStringList>

// What the lists of the forms offer, as stored: texts separated by blanks, in the order of the list.
namespace Choices {

constexpr char serialPorts[] = "COM1 COM2";
constexpr char baudRates[] = "115200 57600 38400 19200 9600 4800 2400 1200 600";
constexpr char dataBits[] = "8 7";
constexpr char stopBits[] = "1 2";
constexpr char parities[] = "NONE ODD EVEN";
constexpr char modbusModes[] = "ModbusTCP ModbusRTU";
constexpr char modbusSeries[] = "standard";
constexpr char byteOrders[] = "ABCD BADC CDAB DCBA";
constexpr char dataTypes[] = "bool int8 uint8 int16 uint16 int32 uint32 int64 uint64 float double string";
constexpr char permissions[] = "r rw";
constexpr char boxModels[] = "MRN-RIM-KX91 MRN-GATE-70 MRN-GATE-20";
constexpr char dhcp[] = "Disabled Enable";
constexpr char flags[] = "true false"; // of a check that the document holds as it is stored
constexpr char wifiModes[] = "station";

// The texts of one of these; none for null.
inline QStringList list(const char *choices)
{
    return QString::fromLatin1(choices).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace Choices

#pragma once

#include <QStringList>

// What the lists of the forms offer, as stored: texts separated by blanks, in the order of the list.
namespace Choices {

inline constexpr char serialPorts[] = "COM1 COM2";
inline constexpr char baudRates[] = "115200 57600 38400 19200 9600 4800 2400 1200 600";
inline constexpr char dataBits[] = "8 7";
inline constexpr char stopBits[] = "1 2";
inline constexpr char parities[] = "NONE ODD EVEN";
inline constexpr char modbusModes[] = "ModbusTCP ModbusRTU";
inline constexpr char modbusSeries[] = "standard";
inline constexpr char byteOrders[] = "ABCD BADC CDAB DCBA";
inline constexpr char dataTypes[] =
    "bool int8 uint8 int16 uint16 int32 uint32 int64 uint64 float double string";
inline constexpr char permissions[] = "r rw";
inline constexpr char boxModels[] = "MRN-RIM-KX91 MRN-GATE-70 MRN-GATE-20";
inline constexpr char dhcp[] = "Disabled Enable";
inline constexpr char flags[] = "true false"; // of a check that the document holds as it is stored
inline constexpr char wifiModes[] = "station";

// The texts of one of these; none for null.
inline QStringList list(const char *choices)
{
    return QString::fromLatin1(choices).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace Choices

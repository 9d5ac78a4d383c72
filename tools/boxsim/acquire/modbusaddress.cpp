#include "boxsim/acquire/modbusaddress.h"

#include <algorithm>

namespace {

constexpr int largestNumber = 65535;

bool isDigits(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
}

// Whether the first digit chooses the area, and which.
bool readArea(const QString &digits, ModbusArea *area)
{
    if (digits.size() != 5 && digits.size() != 6) {
        return false;
    }
    switch (digits.at(0).toLatin1()) {
    case '0':
        *area = ModbusArea::Coils;
        return true;
    case '1':
        *area = ModbusArea::DiscreteInputs;
        return true;
    case '3':
        *area = ModbusArea::InputRegisters;
        return true;
    case '4':
        *area = ModbusArea::HoldingRegisters;
        return true;
    default:
        return false;
    }
}

} // namespace

bool isBitArea(ModbusArea area)
{
    return area == ModbusArea::Coils || area == ModbusArea::DiscreteInputs;
}

quint8 readFunction(ModbusArea area)
{
    switch (area) {
    case ModbusArea::Coils:
        return 1;
    case ModbusArea::DiscreteInputs:
        return 2;
    case ModbusArea::HoldingRegisters:
        return 3;
    case ModbusArea::InputRegisters:
        break;
    }
    return 4;
}

int mostInRequest(ModbusArea area)
{
    return isBitArea(area) ? 2000 : 125;
}

bool readModbusAddress(const QString &text, bool isBool, bool countsFrom0, ModbusAddress *address,
                       QString *reason)
{
    if (!isDigits(text)) {
        *reason = text.isEmpty() ? QStringLiteral("it has no address")
                                 : QStringLiteral("its address %1 is no number").arg(text);
        return false;
    }
    ModbusAddress read;
    const bool choosesArea = readArea(text, &read.area);
    bool ok = false;
    const uint number = (choosesArea ? text.mid(1) : text).toUInt(&ok);
    const uint first = choosesArea || !countsFrom0 ? 1 : 0;
    // The last of an area that counts from 1 has a number past that of any plain address.
    if (!ok || number < first || number > uint(largestNumber) + (choosesArea ? 1 : 0)) {
        *reason = QStringLiteral("there is no address %1").arg(text);
        return false;
    }
    if (!choosesArea) {
        read.area = isBool ? ModbusArea::Coils : ModbusArea::HoldingRegisters;
    }
    read.number = int(number - first);
    *address = read;
    return true;
}

int readModbusStation(const QString &text, bool serial)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    const int station = ok && isDigits(text) ? number : -1;
    const bool known =
        serial ? station >= 1 && station <= 247 : (station >= 0 && station <= 247) || station == 255;
    return known ? station : -1;
}

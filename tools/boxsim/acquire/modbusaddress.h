#pragma once

#include <QString>

// The four areas of a Modbus device.
enum class ModbusArea { Coils, DiscreteInputs, InputRegisters, HoldingRegisters };

// Whether the area holds single bits.
bool isBitArea(ModbusArea area);
// The function code that reads it.
quint8 readFunction(ModbusArea area);
// The most that one request may ask for.
int mostInRequest(ModbusArea area);

struct ModbusAddress {
    ModbusArea area = ModbusArea::HoldingRegisters;
    int number = 0; // as on the wire, 0 to 65535
};

// Reads the address of a point. Five or six digits that begin with 0, 1, 3 or 4 choose a coil, a discrete
// input, an input register or a holding register, counted from 1. Any other number is that of a holding
// register, of a coil for a bool; it counts from 0 or from 1. False, with the reason, if it is refused.
bool readModbusAddress(const QString &text, bool isBool, bool countsFrom0, ModbusAddress *address,
                       QString *reason);
// The station of a slave, -1 for one that the protocol does not have. On a serial line 0 is a broadcast,
// which nobody answers.
int readModbusStation(const QString &text, bool serial);

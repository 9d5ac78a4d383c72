#pragma once

#include "boxsim/acquire/reading.h"

#include <QString>

// How the registers of a slave become values.
struct ModbusOrder {
    QString bytes;             // "ABCD", "DCBA", "CDAB" or "BADC"; any other counts as the first
    bool charReversed = false; // a string has the first character of a register in its low byte
};

// A type of a point: how many registers a value has, and what text they are.
class ModbusType
{
public:
    // length is that of a string in characters. The type is not valid if there is no such type, or for a
    // string without a length.
    ModbusType(const QString &name, int length);

    bool isValid() const { return m_kind != Kind::None; }
    bool isBool() const { return m_kind == Kind::Bool; }
    int registers() const { return m_registers; }

    // The value of so many registers, as they come; of a bit for a bool in a bit area. A number that is none
    // is not valid.
    PointReading reading(const quint16 *registers, const ModbusOrder &order) const;

private:
    enum class Kind { None, Bool, Signed, Unsigned, Float, Text };

    PointReading number(quint64 bits) const;
    QString string(const quint16 *registers, bool charReversed) const;

    Kind m_kind = Kind::None;
    int m_bits = 0;
    int m_registers = 0;
    int m_length = 0;
};

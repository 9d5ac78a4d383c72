#pragma once

#include <QByteArray>
#include <QString>

// How the value of one item is laid out: so many digits, the last of them decimals, two digits a byte.
struct Dlt645Format {
    int digits = 0; // 0: not known
    int decimals = 0;
    bool isSigned = false; // the highest bit is the sign

    // Of an item as a project has it: its identifier and its data type, such as "XXX.X".
    static Dlt645Format of(const QString &item, const QString &dataType);

    bool isKnown() const { return digits > 0; }
    int bytes() const { return (digits + 1) / 2; }
    // The value as a decimal number. Null unless these are as many bytes as the value has, all digits from 0
    // to 9.
    QString text(const QByteArray &value) const;
};

#pragma once

#include <QMap>
#include <QString>

// How a Standard has its serial line opened. Times in milliseconds.
struct SerialSettings {
    int baudRate = 9600;
    int dataBits = 8;
    int stopBits = 1;
    char parity = 'N'; // 'N', 'O' or 'E'
    bool rts = false;  // whether RTS switches the driver of the line
    int timeout = 2000;
    int gap = -1; // silence before a request; below 0 for 3.5 characters

    // What so many characters take on the line, in microseconds.
    int timeOf(int characters) const;
    // The silence before a request that the gap stands for, in microseconds.
    int gapTime() const;
};

// Reads a Standard's parameters. What the lists of the forms do not hold counts as usual has it; a time-out
// that is no number above 0 counts as 2000.
SerialSettings serialSettings(const QMap<QString, QString> &parameters, const SerialSettings &usual);
// A time-out in milliseconds by the same rule.
int timeoutParameter(const QMap<QString, QString> &parameters, const char *key);

#pragma once

#include <QString>

// The device file of a serial line, open beside what Qt or libmodbus sends and receives by: for what they
// leave out.
class SerialFile
{
public:
    SerialFile() = default;
    ~SerialFile() { close(); }
    SerialFile(const SerialFile &) = delete;
    SerialFile &operator=(const SerialFile &) = delete;

    // Keeps the line for whoever has this open. One that is kept already, if under another name, is refused
    // and left as it is. False with the reason.
    bool open(const QString &path, QString *reason);
    void close();
    // Whether it has a parity as far as can be found out. Pseudo-terminals drop one without a word.
    bool hasParity() const;

private:
    int m_file = -1;
};

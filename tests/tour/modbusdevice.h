#pragma once

#include <QDeadlineTimer>
#include <QProcess>

// A Modbus device over TCP that somebody else wrote, as a process: pymodbus with the registers of
// modbuspeer.py.
class ModbusDevice
{
public:
    enum { Port = 1502 };

    ~ModbusDevice()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    // Why there can be none here; empty if there can.
    static QString whyNot()
    {
#ifdef BOXSIM_MODBUS
        QProcess python;
        python.start(interpreter(), {"-c", "import pymodbus, serial_asyncio"});
        const bool there = python.waitForFinished() && python.exitCode() == 0;
        return there ? QString() : "pymodbus for " + interpreter() + " is not installed";
#else
        return "this boxsim reads no Modbus devices";
#endif
    }

    // Starts it and waits until it listens.
    bool start(const QString &address)
    {
        m_process.start(interpreter(),
                        {SOURCE_ROOT "/tests/boxsim/modbuspeer.py", "tcp", address, QString::number(Port)});
        return waitFor("ready");
    }

    // Gives a holding register of station 1, counted from 0, this value.
    bool set(int address, int value)
    {
        m_process.write(QStringLiteral("1 %1 %2\n").arg(address).arg(value).toUtf8());
        return waitFor("set");
    }

private:
    static QString interpreter()
    {
        return "/usr/bin/python3";
    } // for which Debian's pymodbus is

    bool waitFor(const QByteArray &line)
    {
        const QDeadlineTimer deadline(10000);
        do {
            while (m_process.canReadLine()) {
                if (m_process.readLine().trimmed() == line) {
                    return true;
                }
            }
        } while (m_process.waitForReadyRead(int(deadline.remainingTime())));
        return false;
    }

    QProcess m_process;
};

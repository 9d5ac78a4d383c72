#pragma once

#include "boxsim/acquire/acquisition.h"
#include "boxsim/simproject.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <QTimer>
#include <QtTest>

#include <atomic>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

// What the tests of acquisition share: documents with Standards, and what is read of them.
namespace Acquire {

// Points from texts such as "40001 int16" and "0 string 20", each named as its text.
inline QJsonArray points(const QStringList &texts)
{
    QJsonArray points;
    for (const QString &text : texts) {
        const QStringList parts = text.split(' ');
        points.append(QJsonObject{{"addr", parts.at(0)},
                                  {"name", text},
                                  {"dataType", parts.value(1)},
                                  {"length", parts.value(2, "1")},
                                  {"permissions", "r"}});
    }
    return points;
}

// One slave.
inline QJsonObject slave(int station, const QStringList &texts, const QString &order = "ABCD",
                         bool charReversed = false)
{
    return {{"series", "standard"},   {"stationNum", QString::number(station)},
            {"byteOrder", order},     {"startAddress0", "1"},
            {"datas", points(texts)}, {"charReversed", charReversed ? "1" : "0"}};
}

inline QJsonObject standard(const QString &mode, QJsonObject parameter, const QJsonArray &slaves)
{
    parameter.insert("collectionInterval", "100");
    return {{"name", mode},
            {"protocol", "Modbus"},
            {"modbus", mode},
            {"parameter", parameter},
            {"datas", slaves}};
}

inline QJsonObject tcp(const QString &ip, int port, const QJsonArray &slaves, int timeout)
{
    return standard("ModbusTCP",
                    {{"ip", ip},
                     {"port", QString::number(port)},
                     {"connectionTimeout", QString::number(timeout)},
                     {"communicationTimeout", QString::number(timeout)},
                     {"keepAlive", "60000"}},
                    slaves);
}

inline QJsonObject rtu(const QJsonArray &slaves, int timeout, const QString &port = "COM1")
{
    return standard("ModbusRTU",
                    {{"serialport", port},
                     {"baudRate", "115200"},
                     {"dataBit", "8"},
                     {"stopBit", "1"},
                     {"parityBit", "NONE"},
                     {"rtsEnable", "0"},
                     {"communicationTimeout", QString::number(timeout)},
                     {"communicationGap", "-1"}},
                    slaves);
}

inline QByteArray project(const QJsonArray &standards)
{
    return QJsonDocument(QJsonObject{{"name", "P"}, {"description", "D"}, {"standards", standards}}).toJson();
}

// "!" stands before what is not valid.
inline QString text(const QString &value, bool valid)
{
    return valid ? value : "!" + value;
}

// The values of a report.
inline QStringList texts(const QJsonObject &report)
{
    QStringList texts;
    const QJsonArray datas = report.value("datas").toArray();
    for (const QJsonValue &data : datas) {
        texts.append(text(data["value"].toString(), data["valid"].toString() == "1"));
    }
    return texts;
}

// As QTest::qWaitFor(), but without its pauses, in which a device of the test's own would not answer.
template <typename Predicate> bool waitFor(Predicate predicate, int time = 20000)
{
    const QDeadlineTimer deadline(time);
    QTimer tick; // so that an event comes in any case
    tick.start(10);
    while (!predicate() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return predicate();
}

#define EVENTUALLY(condition) QVERIFY(Acquire::waitFor([&] { return condition; }))

// Whether it tells that beats are skipped or kept again. A busy computer may skip some at any time.
inline bool isOfTheBeat(const QString &line)
{
    static const QRegularExpression told("^\"[^\"]*\": (skips beats|keeps its beat)");
    return told.match(line).hasMatch();
}

// Reads Standards without a Box around it.
class Run : public QObject
{
public:
    Run()
    {
        connect(&m_acquisition, &Acquisition::told, this,
                [this](const QString &line) { (isOfTheBeat(line) ? beats : log).append(line); });
        connect(&m_acquisition, &Acquisition::readingOver, this,
                [this](int standard, const QVector<PointReading> &rows) {
                    QStringList texts;
                    for (const PointReading &reading : rows) {
                        texts.append(text(reading.value, reading.valid));
                    }
                    readings[standard].append(texts);
                    times[standard].append(m_clock.elapsed());
                });
        m_clock.start();
    }
    // All at one interval, which may be shorter than any document's.
    void start(const QJsonArray &standards, int interval, const QMap<QString, QString> &lines = {})
    {
        SimProject read;
        QString error;
        QVERIFY2(readSimProject(project(standards), &read, &error), qPrintable(error));
        readings.clear();
        m_acquisition.start(read.standards, {true, lines, true}, interval);
    }
    void stop() { m_acquisition.stop(); }
    QStringList last(int standard = 0) const { return readings.value(standard).value(count(standard) - 1); }
    int count(int standard = 0) const { return readings.value(standard).size(); }
    // Waits for a reading that is as said.
    bool comes(const QStringList &reading, int standard = 0)
    {
        const int before = count(standard);
        return waitFor([&] { return readings.value(standard).mid(qMax(0, before - 1)).contains(reading); });
    }

    QMap<int, QVector<QStringList>> readings;
    QMap<int, QVector<qint64>> times; // milliseconds
    QStringList log;                  // what was told
    QStringList beats;                // and what of that is about them

private:
    Acquisition m_acquisition;
    QElapsedTimer m_clock;
};

// A pseudo-terminal: path() is the line, and the test is what hangs on it.
class Terminal
{
public:
    Terminal()
        : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
        if (m_master >= 0 && grantpt(m_master) == 0 && unlockpt(m_master) == 0) {
            m_path = QFile::decodeName(ptsname(m_master));
            termios raw;
            tcgetattr(m_master, &raw);
            cfmakeraw(&raw);
            tcsetattr(m_master, TCSANOW, &raw);
        }
    }
    ~Terminal() { ::close(m_master); }
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    QString path() const { return m_path; }
    int master() const { return m_master; }
    QByteArray read() const
    {
        QByteArray bytes(1000, '\0');
        bytes.truncate(qMax(0, int(::read(m_master, bytes.data(), size_t(bytes.size())))));
        return bytes;
    }
    void write(const QByteArray &bytes) const
    {
        QCOMPARE(int(::write(m_master, bytes.constData(), size_t(bytes.size()))), bytes.size());
    }

private:
    int m_master;
    QString m_path;
};

// Another program that has a line in use.
class LineUser
{
public:
    LineUser(const QString &path, uint speed)
        : m_file(::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY))
    {
        flock(m_file, LOCK_EX | LOCK_NB);
        termios settings = {};
        tcgetattr(m_file, &settings);
        cfsetspeed(&settings, speed);
        tcsetattr(m_file, TCSANOW, &settings);
    }
    ~LineUser() { ::close(m_file); }
    LineUser(const LineUser &) = delete;
    LineUser &operator=(const LineUser &) = delete;

    // The speeds that it meets while something is done a hundred times.
    QSet<uint> speedsDuring(const std::function<void()> &action) const
    {
        std::atomic_bool isOver{false};
        std::thread actor([&] {
            for (int i = 0; i < 100; ++i) {
                action();
            }
            isOver = true;
        });
        QSet<uint> speeds;
        do {
            termios settings = {};
            tcgetattr(m_file, &settings);
            speeds.insert(cfgetospeed(&settings));
        } while (!isOver);
        actor.join();
        return speeds;
    }

private:
    int m_file;
};

} // namespace Acquire

#include "boxsim/acquire/modbusrtuline.h"
#include "boxsim/acquire/stopflag.h"
#include "modbusdevice.h"
#include "run.h"

#include <atomic>
#include <memory>
#include <thread>

using Modbus::Answer;
using Modbus::Device;
using Modbus::Request;

// What a serial line of Modbus slaves needs of all that use it: silence after a request without an answer,
// whoever asks next, and one user at a time. The device is the test's own.
class TestModbusSerial : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void afterATimeoutASerialLineMustBeSilent();
    void aLineIsSilentForAWholeTimeout();
    void whoeverReadsALineNextWaitsForItsSilence_data();
    void whoeverReadsALineNextWaitsForItsSilence();
    void aNameThatLedNowhereKeepsTheSilence();
    void aNameThatIsBackKeepsTheSilence();
    void theLongerTimeoutIsOwedToAnotherLine();
    void standardsOfALineWaitForItsSilence();
    void oneLineUnderTwoNamesIsOneLine();
    void twoNamesOfALineThatComesLate();
    void aLineInUseIsWaitedFor();
    void aLineInUseIsLeftAsItIs();
    void aLineThatIsNeverSilentCostsOneTimeout();
    void aLongAnswerThatIsLateIsNoRestlessLine();

private:
    static QByteArray good(const Request &request) { return request.good(); }

    // Starts a device and reads these slaves of it.
    void run(const QJsonArray &slaves, const Answer &answer, int interval, int timeout)
    {
        m_device = std::make_unique<Device>(true, 0, answer);
        m_run = std::make_unique<Acquire::Run>();
        m_run->start({m_device->standard(slaves, timeout)}, interval, {{"COM0", "line0"}});
    }

    // As long as the device is there.
    void sendLater(int time, const QByteArray &answer) const
    {
        Device *device = m_device.get();
        QTimer::singleShot(time, device, [device, answer] { device->send(answer); });
    }

    std::unique_ptr<Device> m_device;
    std::unique_ptr<Acquire::Run> m_run;
};

void TestModbusSerial::cleanup()
{
    m_run.reset();
    m_device.reset();
}

void TestModbusSerial::afterATimeoutASerialLineMustBeSilent()
{
    // The late answer of station 1 is a good one to the request to station 2, were it sent at once.
    RUN(run(
        {Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"7 uint16"})},
        [this](const Request &request) {
            if (request.station == 2) {
                return request.good();
            }
            for (const int time : {120, 150, 180}) {
                sendLater(time, request.frameOf(2, request.data()));
            }
            return QByteArray();
        },
        1000, 100));
    EVENTUALLY(m_run->count() == 1);
    QCOMPARE(m_run->last(), (QStringList{"!", "2007"}));
    QCOMPARE(m_device->times.size(), 2);
    const qint64 pause = m_device->times.at(1) - m_device->times.at(0);
    QVERIFY2(pause >= 180 + 95, QByteArray::number(pause));
}

// However short a request waited, which is how what is lost is tried. The late answer of station 1 is a good
// one to the request to station 2.
void TestModbusSerial::aLineIsSilentForAWholeTimeout()
{
    RUN(m_device = std::make_unique<Device>(true, 0, [this](const Request &request) {
            sendLater(request.station == 2 ? 100 : 120, request.frameOf(2, request.data()));
            return QByteArray();
        }));
    SerialSettings settings;
    settings.timeout = 300;
    StopFlag stop;
    ModbusRtuLine line("line0", settings, &stop, std::make_shared<LineSilence>(), [](const QString &) {});
    quint16 word = 0;
    std::atomic_bool isOver{false};
    std::thread reader([&] {
        QString reason;
        if (line.open(1000, &reason)) {
            line.read({1, ModbusArea::HoldingRegisters, 7, 1}, 50, &word);
            line.read({2, ModbusArea::HoldingRegisters, 7, 1}, 3000, &word);
        }
        isOver = true;
    });
    const bool ended = Acquire::waitFor([&] { return isOver.load(); }, 10000);
    stop.set();
    reader.join();
    QVERIFY(ended);
    QCOMPARE(int(word), 2007);
    QCOMPARE(m_device->asked(), (QStringList{"1:7+1", "2:7+1"}));
    const qint64 pause = m_device->times.at(1) - m_device->times.at(0);
    QVERIFY2(pause >= 120 + 295, QByteArray::number(pause));
}

void TestModbusSerial::whoeverReadsALineNextWaitsForItsSilence_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("the same line") << "line0";
    QTest::newRow("under another name") << "other";
}

// The answer to the project before would be a good one to that of the next.
void TestModbusSerial::whoeverReadsALineNextWaitsForItsSilence()
{
    QFETCH(QString, line);
    constexpr int timeout = 250;
    RUN(run(
        {Acquire::slave(1, {"7 uint16"})},
        [this](const Request &request) {
            sendLater(120, request.good());
            return QByteArray();
        },
        60, timeout));
    QFile::remove("other");
    QVERIFY(QFile::link("line0", "other"));
    EVENTUALLY(m_device->requestCount() == 1);
    m_run->start({m_device->standard({Acquire::slave(1, {"100 uint16"})}, timeout)}, 60, {{"COM0", line}});
    EVENTUALLY(m_run->count() >= 1);
    QCOMPARE(m_run->readings[0].at(0), QStringList{"1100"});
    const qint64 pause = m_device->times.at(1) - m_device->times.at(0);
    QVERIFY2(pause >= 120 + timeout - 5, QByteArray::number(pause));
}

// As that of an adapter that was plugged in late.
void TestModbusSerial::aNameThatLedNowhereKeepsTheSilence()
{
    constexpr int timeout = 250;
    RUN(m_device = std::make_unique<Device>(true, 0, [this](const Request &request) {
            sendLater(120, request.good());
            return QByteArray();
        }));
    m_run = std::make_unique<Acquire::Run>();
    QFile::remove("late");
    m_run->start({m_device->standard({Acquire::slave(1, {"7 uint16"})}, timeout)}, 60, {{"COM0", "late"}});
    EVENTUALLY(m_run->count() >= 1);
    QVERIFY(QFile::link("line0", "late"));
    EVENTUALLY(m_device->requestCount() == 1);
    m_run->start({m_device->standard({Acquire::slave(1, {"100 uint16"})}, timeout)}, 60, {{"COM0", "late"}});
    EVENTUALLY(m_run->count() >= 1);
    QCOMPARE(m_run->readings[0].at(0), QStringList{"1100"});
}

// As that of an adapter that is another tty and then the first again.
void TestModbusSerial::aNameThatIsBackKeepsTheSilence()
{
    constexpr int timeout = 250;
    RUN(m_device = std::make_unique<Device>(true, 0, [this](const Request &request) {
            sendLater(120, request.good());
            return QByteArray();
        }));
    Device other(true, 1, good);
    const auto lead = [](const QString &line) {
        QFile::remove("moves");
        return QFile::link(line, "moves");
    };
    m_run = std::make_unique<Acquire::Run>();
    const auto start = [&](const QString &point) {
        m_run->start({m_device->standard({Acquire::slave(1, {point})}, timeout)}, 60, {{"COM0", "moves"}});
    };
    QVERIFY(lead("line0"));
    RUN(start("7 uint16"));
    QVERIFY(m_run->comes({"1007"}));
    QVERIFY(lead("line1"));
    RUN(start("100 uint16"));
    QVERIFY(m_run->comes({"1100"}));
    QVERIFY(lead("line0"));
    const int before = m_device->requestCount();
    other.stop();
    EVENTUALLY(m_device->requestCount() > before);
    RUN(start("7 uint16"));
    EVENTUALLY(m_run->count() >= 1);
    QCOMPARE(m_run->readings[0].at(0), QStringList{"1007"});
}

// An answer is late by the time-out of the project before.
void TestModbusSerial::theLongerTimeoutIsOwedToAnotherLine()
{
    RUN(m_device = std::make_unique<Device>(true, 0, [this](const Request &request) {
            if (request.first == 7) {
                sendLater(170, request.good());
            }
            return QByteArray();
        }));
    m_run = std::make_unique<Acquire::Run>();
    QFile::remove("late");
    const auto start = [this](const QString &point, int timeout) {
        m_run->start({m_device->standard({Acquire::slave(1, {point})}, timeout)}, 60, {{"COM0", "late"}});
    };
    RUN(start("7 uint16", 400));
    EVENTUALLY(m_run->count() >= 1);
    QVERIFY(QFile::link("line0", "late"));
    EVENTUALLY(m_device->requestCount() == 1);
    RUN(start("100 uint16", 100));
    EVENTUALLY(m_run->count() >= 1);
    QCOMPARE(m_run->readings[0].at(0), QStringList{"!"});
    QCOMPARE(m_device->asked(), (QStringList{"1:7+1", "1:100+1"}));
}

// One Standard is answered too late, with what would be good to the other.
void TestModbusSerial::standardsOfALineWaitForItsSilence()
{
    constexpr int timeout = 250;
    RUN(m_device = std::make_unique<Device>(true, 0, [this](const Request &request) {
            sendLater(request.first == 7 ? 320 : 100, request.good());
            return QByteArray();
        }));
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({m_device->standard({Acquire::slave(1, {"7 uint16"})}, timeout),
                  m_device->standard({Acquire::slave(1, {"100 uint16"})}, timeout)},
                 5000, {{"COM0", "line0"}});
    EVENTUALLY(m_run->count(1) == 1);
    QCOMPARE(m_run->last(0), QStringList{"!"});
    QCOMPARE(m_run->last(1), QStringList{"1100"});
    QCOMPARE(m_device->asked(), (QStringList{"1:7+1", "1:100+1"}));
}

// As with the names that udev gives to one adapter: its Standards take turns.
void TestModbusSerial::oneLineUnderTwoNamesIsOneLine()
{
    RUN(m_device = std::make_unique<Device>(true, 0, [this](const Request &request) {
            sendLater(10, request.good());
            return QByteArray();
        }));
    QFile::remove("other");
    QVERIFY(QFile::link("line0", "other"));
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({Acquire::rtu({Acquire::slave(1, {"7 uint16"})}, 500, "COM1"),
                  Acquire::rtu({Acquire::slave(1, {"100 uint16"})}, 500, "COM2")},
                 60, {{"COM1", "line0"}, {"COM2", "other"}});
    EVENTUALLY(m_run->count(0) >= 4 && m_run->count(1) >= 4);
    QCOMPARE(m_run->readings[0], QVector<QStringList>(m_run->count(0), {"1007"}));
    QCOMPARE(m_run->readings[1], QVector<QStringList>(m_run->count(1), {"1100"}));
}

// They could not be told to be one when the project began. One has the line then, until the next push.
void TestModbusSerial::twoNamesOfALineThatComesLate()
{
    RUN(m_device = std::make_unique<Device>(true, 0, good));
    QFile::remove("late1");
    QFile::remove("late2");
    QJsonArray standards;
    for (const QString &number : {QString("1"), QString("2")}) {
        QJsonObject standard =
            Acquire::rtu({Acquire::slave(number.toInt(), {"7 uint16"})}, 150, "COM" + number);
        standard.insert("name", "S" + number);
        standards.append(standard);
    }
    m_run = std::make_unique<Acquire::Run>();
    const QMap<QString, QString> lines = {{"COM1", "late1"}, {"COM2", "late2"}};
    m_run->start(standards, 60, lines);
    EVENTUALLY(m_run->log.filter("No such file").size() == 2);
    m_run->log.clear();
    QVERIFY(QFile::link("line0", "late1"));
    QVERIFY(QFile::link("line0", "late2"));
    QVERIFY(m_run->comes({"1007"}, 0));
    EVENTUALLY(m_run->log.contains("\"S2\": late2 is not read, late1 is the same line"));
    const int before = m_run->count(1);
    EVENTUALLY(m_run->count(1) >= before + 5);
    QCOMPARE(m_run->log.filter("S2").size(), 1);
    QCOMPARE(m_run->readings[1], QVector<QStringList>(m_run->count(1), {"!"}));
    m_run->start(standards, 60, lines);
    QVERIFY(m_run->comes({"1007"}, 0) && m_run->comes({"2007"}, 1));
}

void TestModbusSerial::aLineInUseIsWaitedFor()
{
    RUN(m_device = std::make_unique<Device>(true, 0, good));
    auto user = std::make_unique<Acquire::LineUser>("line0", B38400);
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({m_device->standard({Acquire::slave(1, {"7 uint16"})}, 150)}, 60, {{"COM0", "line0"}});
    EVENTUALLY(!m_run->log.isEmpty());
    QCOMPARE(m_run->log, QStringList{"\"S0\": line0 lost after 3 attempts: it is in use"});
    QCOMPARE(m_device->requestCount(), 0);
    user.reset();
    QVERIFY(m_run->comes({"1007"}));
}

void TestModbusSerial::aLineInUseIsLeftAsItIs()
{
    const Acquire::Terminal terminal;
    const Acquire::LineUser user(terminal.path(), B38400);
    SerialSettings settings;
    settings.baudRate = 1200;
    StopFlag stop;
    ModbusRtuLine line(terminal.path(), settings, &stop, std::make_shared<LineSilence>(),
                       [](const QString &) {});
    QString reason;
    QCOMPARE(user.speedsDuring([&] { line.open(1000, &reason); }), QSet<uint>{B38400});
    QCOMPARE(reason, "it is in use");
}

// However many stations wait for it to be silent.
void TestModbusSerial::aLineThatIsNeverSilentCostsOneTimeout()
{
    QJsonArray stations;
    QStringList none;
    for (int station = 1; station <= 8; ++station) {
        stations.append(Acquire::slave(station, {"7 uint16"}));
        none.append("!");
    }
    QTimer babble;
    RUN(run(
        stations,
        [&](const Request &) {
            babble.disconnect();
            connect(&babble, &QTimer::timeout, this, [this] { m_device->send("\x11\x11\x11"); });
            babble.start(20);
            return QByteArray();
        },
        3000, 200));
    EVENTUALLY(m_run->count() == 1);
    babble.stop();
    QCOMPARE(m_run->last(), none);
    QCOMPARE(m_device->requestCount(), 1);
    QVERIFY2(m_run->times[0].at(0) < 1200, QByteArray::number(m_run->times[0].at(0)));
}

// At a low baud rate it takes longer than the time-out.
void TestModbusSerial::aLongAnswerThatIsLateIsNoRestlessLine()
{
    constexpr int timeout = 250;
    QTimer late;
    int pieces = 0;
    connect(&late, &QTimer::timeout, this, [&] {
        m_device->send("\x11");
        if (++pieces == 40) {
            late.stop();
        }
    });
    RUN(m_device = std::make_unique<Device>(true, 0, [&](const Request &request) {
            if (request.station == 2) {
                return request.good();
            }
            QTimer::singleShot(timeout + 50, &late, [&] { late.start(10); });
            return QByteArray();
        }));
    QJsonObject standard =
        m_device->standard({Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"7 uint16"})}, timeout);
    QJsonObject parameter = standard.value("parameter").toObject();
    parameter.insert("baudRate", "1200");
    standard.insert("parameter", parameter);
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({standard}, 5000, {{"COM0", "line0"}});
    EVENTUALLY(m_run->count() == 1);
    QCOMPARE(m_run->last(), (QStringList{"!", "2007"}));
}

QTEST_GUILESS_MAIN(TestModbusSerial)
#include "tst_modbusserial.moc"

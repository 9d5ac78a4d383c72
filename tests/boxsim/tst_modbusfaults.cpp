#include "boxsim/boxrange.h"
#include "modbusdevice.h"
#include "run.h"

#include <functional>
#include <memory>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/socket.h>

using Modbus::Answer;
using Modbus::Device;
using Modbus::Request;

// Devices and lines that fail, over TCP and over a serial line. The device is the test's own, since no
// well-behaved one fails in these ways: what it says is made here, byte by byte.
class TestModbusFaults : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void whatIsNoAnswerIsNotValid();
    void aFailureHitsOneBeatOnly();
    void lateAnswersAreLeftAside_data();
    void lateAnswersAreLeftAside();
    void afterATimeoutASerialLineMustBeSilent();
    void lateAnswersOfALostStationAreLeftAside();
    void answersWithoutAnEndAreNotReadToTheEnd();
    void theTimeoutIsOfTheWholeAnswer_data();
    void theTimeoutIsOfTheWholeAnswer();
    void aStationThatEndsTheConnectionLeavesTheOthersValid();
    void manyOpenFilesAreNoObstacle();
    void oneLineUnderTwoNamesIsOneLine();
    void aLineInUseIsWaitedFor();
    void aRefusedPointLeavesTheOthersValid_data();
    void aRefusedPointLeavesTheOthersValid();
    void aSplitIsRemembered();
    void otherExceptionsSplitNothing();
    void aGatewayIsHeardForItsDevices();
    void aSilentStationLeavesTheOthersTheirBeat_data();
    void aSilentStationLeavesTheOthersTheirBeat();
    void aSilentPointLeavesTheOthersValid();
    void aDeadDeviceSlowsNoOtherLink();
    void lostAndBackAreToldOnce_data();
    void lostAndBackAreToldOnce();
    void aServerThatIsNotThereIsLostAndBack();
    void aClosedConnectionIsOpenedAnew();
    void oneConnectionIsKept();
    void aPulledLineComesBack();
    void whatCannotBeReadIsToldByName();
    void everyWaitEndsAtAStop_data();
    void everyWaitEndsAtAStop();
    void aRangeStopsAtOnce();

private:
    struct Fault {
        QString name;
        bool network;   // whether it may happen on a network, too
        QString reason; // why the station is called lost; null if it is not, empty for any
        Answer answer;
    };
    static QVector<Fault> faults();
    static QByteArray good(const Request &request) { return request.good(); }
    static QByteArray silence(const Request &) { return QByteArray(); }

    // Starts a device and reads these slaves of it.
    void run(bool serial, const QJsonArray &slaves, const Answer &answer, int interval = 60,
             int timeout = 150)
    {
        m_device = std::make_unique<Device>(serial, 0, answer);
        m_run = std::make_unique<Acquire::Run>();
        m_run->start({m_device->standard(slaves, timeout)}, interval, {{"COM0", "line0"}});
    }
    // All faults on networks and lines at the same time. answer gets the fault.
    void runAll(const QJsonArray &slaves, const std::function<Answer(const Fault &)> &answer, int interval,
                int timeout)
    {
        QJsonArray standards;
        QMap<QString, QString> lines;
        for (const Fault &fault : faults()) {
            for (const bool serial : {false, true}) {
                if (serial || fault.network) {
                    const int number = int(m_devices.size());
                    m_names.append(fault.name + (serial ? QString(", RTU") : QString(", TCP")));
                    m_reasons.append(fault.reason);
                    m_devices.push_back(std::make_unique<Device>(serial, number, answer(fault)));
                    standards.append(m_devices.back()->standard(slaves, timeout));
                    lines.insert(QString("COM%1").arg(number), m_devices.back()->line());
                }
            }
        }
        m_run = std::make_unique<Acquire::Run>();
        m_run->start(standards, interval, lines);
    }
    bool allHave(int count) const
    {
        for (int i = 0; i < m_names.size(); ++i) {
            if (m_run->count(i) < count) {
                return false;
            }
        }
        return true;
    }
    static void addLines()
    {
        QTest::addColumn<bool>("serial");
        QTest::newRow("TCP") << false;
        QTest::newRow("RTU") << true;
    }

    std::unique_ptr<Device> m_device;
    std::vector<std::unique_ptr<Device>> m_devices;
    QStringList m_names;   // of the devices
    QStringList m_reasons; // of their faults
    std::unique_ptr<Acquire::Run> m_run;
};

void TestModbusFaults::cleanup()
{
    m_run.reset();
    m_device.reset();
    m_devices.clear();
    m_names.clear();
    m_reasons.clear();
}

QVector<TestModbusFaults::Fault> TestModbusFaults::faults()
{
    return {
        {"silence", true, "no answer", silence},
        {"wrong station", true, "only answers to other requests",
         [](const Request &request) { return request.frameOf(9, request.data()); }},
        {"wrong function", true, "only answers to other requests",
         [](const Request &request) { return request.frame(request.data().replace(0, 1, "\x04")); }},
        {"half a frame", true, "a broken answer",
         [](const Request &request) { return request.good().chopped(4); }},
        {"more than it says", true, "a broken answer",
         [](const Request &request) { return request.frame(request.data() + "abcd"); }},
        {"wrong length", true, "a broken answer",
         [](const Request &request) { return request.good().replace(4, 2, QByteArray(2, '\0')); }},
        {"endless length", true, "a broken answer",
         [](const Request &request) { return request.good().replace(4, 2, QByteArray(2, '\xee')); }},
        {"wrong protocol", true, "a broken answer",
         [](const Request &request) { return request.good().replace(2, 1, "\x12"); }},
        {"an empty answer", true, "",
         [](const Request &request) { return request.frame(QByteArray("\x03\0", 2)); }},
        {"device failure", true, QString(), [](const Request &request) { return request.refusal(4); }},
        {"device busy", true, QString(), [](const Request &request) { return request.refusal(6); }},
        {"gateway's target", true, "gateway's target is silent",
         [](const Request &request) { return request.refusal(11); }},
        {"wrong checksum", false, "a broken answer",
         [](const Request &request) { return request.good().chopped(1) + '?'; }},
        {"noise", false, "", [](const Request &) { return QByteArray(40, '\xa5'); }},
    };
}

void TestModbusFaults::whatIsNoAnswerIsNotValid()
{
    RUN(runAll(
        {Acquire::slave(1, {"7 uint16"})}, [](const Fault &fault) { return fault.answer; }, 120, 40));
    int lost = 0;
    for (const QString &reason : qAsConst(m_reasons)) {
        lost += reason.isNull() ? 0 : 1;
    }
    EVENTUALLY(allHave(5) && m_run->log.filter("lost").size() == lost);
    for (int i = 0; i < m_names.size(); ++i) {
        QVERIFY2(m_run->last(i) == QStringList{"!"}, qPrintable(m_names.at(i)));
        const QString told =
            QString("\"S%1\": station 1 lost after 3 attempts: %2").arg(i).arg(m_reasons.at(i));
        const bool isTold = !m_run->log.filter(QRegularExpression('^' + told)).isEmpty();
        QVERIFY2(isTold != m_reasons.at(i).isNull(), qPrintable(m_names.at(i)));
        m_devices[size_t(i)]->answer = good;
    }
    for (int i = 0; i < m_names.size(); ++i) {
        QVERIFY2(m_run->comes({"1007"}, i), qPrintable(m_names.at(i)));
    }
}

// After whatever has come, the next request is answered as if nothing had been.
void TestModbusFaults::aFailureHitsOneBeatOnly()
{
    const auto once = [](const Fault &fault) {
        return [fault, count = std::make_shared<int>(0)](const Request &request) {
            return request.station == 1 && ++*count == 2 ? fault.answer(request) : request.good();
        };
    };
    RUN(runAll({Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"8 uint16"})}, once, 100, 100));
    EVENTUALLY(allHave(4));
    m_run->stop();
    for (int i = 0; i < m_names.size(); ++i) {
        QVector<QStringList> expected(m_run->count(i), {"1007", "2008"});
        expected[1] = QStringList{"!1007", "2008"};
        QVERIFY2(m_run->readings[i] == expected, qPrintable(m_names.at(i)));
    }
    QCOMPARE(m_run->log.filter("lost"), QStringList());
}

void TestModbusFaults::lateAnswersAreLeftAside_data()
{
    addLines();
}

// The answer to each second request comes after its time-out. The values of two stations must not be mixed
// up.
void TestModbusFaults::lateAnswersAreLeftAside()
{
    QFETCH(bool, serial);
    RUN(run(
        serial, {Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"7 uint16"})},
        [this](const Request &request) {
            if (request.station == 2) {
                return request.good();
            }
            QTimer::singleShot(80, this, [this, late = request.good()] { m_device->send(late); });
            return QByteArray();
        },
        300, 50));
    EVENTUALLY(m_run->count() >= 3);
    m_run->stop();
    for (const QStringList &reading : qAsConst(m_run->readings[0])) {
        QCOMPARE(reading, (QStringList{"!", "2007"}));
    }
    QCOMPARE(m_device->connections, serial ? 0 : 1);
}

void TestModbusFaults::afterATimeoutASerialLineMustBeSilent()
{
    // The late answer of station 1 is a good one to the request to station 2, were it sent at once.
    RUN(run(
        true, {Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"7 uint16"})},
        [this](const Request &request) {
            if (request.station == 2) {
                return request.good();
            }
            for (const int time : {120, 150, 180}) {
                QTimer::singleShot(
                    time, this, [this, late = request.frameOf(2, request.data())] { m_device->send(late); });
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

// However short the others leave a try. Each register is asked for alone, by requests that look alike.
void TestModbusFaults::lateAnswersOfALostStationAreLeftAside()
{
    RUN(run(true, {Acquire::slave(1, {"7 uint16", "100 uint16", "200 uint16"})}, silence, 60, 200));
    EVENTUALLY(!m_run->log.filter("lost").isEmpty());
    m_device->answer = [this](const Request &request) {
        QTimer::singleShot(130, this, [this, late = request.good()] { m_device->send(late); });
        return QByteArray();
    };
    const int before = m_run->count();
    EVENTUALLY(m_run->count() >= before + 12);
    for (const QStringList &reading : qAsConst(m_run->readings[0])) {
        QCOMPARE(reading, (QStringList{"!", "!", "!"}));
    }
}

void TestModbusFaults::answersWithoutAnEndAreNotReadToTheEnd()
{
    QTimer flood;
    RUN(run(
        false, {Acquire::slave(1, {"7 uint16"})},
        [&](const Request &request) {
            const QByteArray other = "\xee\xee" + request.good().mid(2);
            flood.disconnect();
            connect(&flood, &QTimer::timeout, this, [this, other] {
                if (m_device->socket && m_device->socket->bytesToWrite() < 1000000) {
                    m_device->socket->write(other.repeated(10000));
                }
            });
            flood.start(0);
            return QByteArray();
        },
        100, 50));
    EVENTUALLY(!m_run->log.isEmpty());
    QCOMPARE(m_run->log,
             QStringList{"\"S0\": station 1 lost after 3 attempts: only answers to other requests"});
    QElapsedTimer clock;
    clock.start();
    m_run.reset();
    QVERIFY2(clock.elapsed() < 1000, QByteArray::number(clock.elapsed()));
}

void TestModbusFaults::theTimeoutIsOfTheWholeAnswer_data()
{
    addLines();
}

// The bytes come one by one, each long before its time-out.
void TestModbusFaults::theTimeoutIsOfTheWholeAnswer()
{
    QFETCH(bool, serial);
    QTimer trickle;
    RUN(run(
        serial, {Acquire::slave(1, {"7 string 40"})},
        [&](const Request &request) {
            trickle.disconnect();
            connect(&trickle, &QTimer::timeout, this, [this, rest = request.good()]() mutable {
                m_device->send(rest.left(1));
                rest.remove(0, 1);
            });
            trickle.start(30);
            return QByteArray();
        },
        5000, 150));
    EVENTUALLY(m_run->count() == 1);
    trickle.stop();
    QCOMPARE(m_run->last(), QStringList{"!"});
    QVERIFY2(m_run->times[0].at(0) < 600, QByteArray::number(m_run->times[0].at(0)));
}

void TestModbusFaults::aStationThatEndsTheConnectionLeavesTheOthersValid()
{
    RUN(run(
        false,
        {Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"7 uint16"}), Acquire::slave(3, {"7 uint16"})},
        [this](const Request &request) {
            if (request.station != 2) {
                return request.good();
            }
            m_device->socket->disconnectFromHost();
            return QByteArray();
        }));
    EVENTUALLY(m_run->count() >= 8);
    QCOMPARE(m_run->readings[0], QVector<QStringList>(m_run->count(), {"1007", "!", "3007"}));
    QCOMPARE(m_run->log, QStringList{"\"S0\": station 2 lost after 3 attempts: Connection reset by peer"});
}

void TestModbusFaults::manyOpenFilesAreNoObstacle()
{
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    const rlimit before = limit;
    limit.rlim_cur = qMin<rlim_t>(limit.rlim_max, 2 * FD_SETSIZE);
    if (limit.rlim_cur < 2 * FD_SETSIZE || setrlimit(RLIMIT_NOFILE, &limit) != 0) {
        QSKIP("not so many files may be open");
    }
    QVector<int> files;
    while (files.isEmpty() || files.constLast() < FD_SETSIZE) {
        files.append(::open("/dev/null", O_RDONLY));
        QVERIFY(files.constLast() >= 0);
    }
    Device line(true, 1, good);
    RUN(m_device = std::make_unique<Device>(false, 0, good));
    const QJsonArray slaves = {Acquire::slave(1, {"7 uint16"})};
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({m_device->standard(slaves, 2000), line.standard(slaves, 2000)}, 60, {{"COM1", "line1"}});
    const bool came = m_run->comes({"1007"}, 0) && m_run->comes({"1007"}, 1);
    m_run.reset();
    for (const int file : qAsConst(files)) {
        ::close(file);
    }
    setrlimit(RLIMIT_NOFILE, &before);
    QVERIFY(came);
}

// As with the names that udev gives to one adapter: its Standards take turns.
void TestModbusFaults::oneLineUnderTwoNamesIsOneLine()
{
    RUN(m_device = std::make_unique<Device>(true, 0, [this](const Request &request) {
            QTimer::singleShot(10, this, [this, answer = request.good()] { m_device->send(answer); });
            return QByteArray();
        }));
    QFile::remove("other");
    QVERIFY(QFile::link("line0", "other"));
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({Acquire::rtu({Acquire::slave(1, {"7 uint16"})}, 500, "COM1"),
                  Acquire::rtu({Acquire::slave(1, {"100 uint16"})}, 500, "COM2")},
                 60, {{"COM1", "line0"}, {"COM2", "other"}});
    EVENTUALLY(m_run->count(0) >= 6 && m_run->count(1) >= 6);
    QCOMPARE(m_run->readings[0], QVector<QStringList>(m_run->count(0), {"1007"}));
    QCOMPARE(m_run->readings[1], QVector<QStringList>(m_run->count(1), {"1100"}));
}

void TestModbusFaults::aLineInUseIsWaitedFor()
{
    RUN(m_device = std::make_unique<Device>(true, 0, good));
    const int user = ::open("line0", O_RDWR | O_NOCTTY);
    QCOMPARE(flock(user, LOCK_EX | LOCK_NB), 0);
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({m_device->standard({Acquire::slave(1, {"7 uint16"})}, 150)}, 60, {{"COM0", "line0"}});
    EVENTUALLY(!m_run->log.isEmpty());
    QCOMPARE(m_run->log, QStringList{"\"S0\": line0 lost after 3 attempts: it is in use"});
    QCOMPARE(m_device->requestCount(), 0);
    ::close(user);
    QVERIFY(m_run->comes({"1007"}));
}

void TestModbusFaults::aRefusedPointLeavesTheOthersValid_data()
{
    QTest::addColumn<bool>("serial");
    QTest::addColumn<int>("code");
    QTest::newRow("TCP, address") << false << 2;
    QTest::newRow("TCP, value") << false << 3;
    QTest::newRow("RTU, address") << true << 2;
}

void TestModbusFaults::aRefusedPointLeavesTheOthersValid()
{
    QFETCH(bool, serial);
    QFETCH(int, code);
    RUN(run(serial, {Acquire::slave(1, {"0 uint16", "1 uint16", "2 uint16", "3 uint16", "4 uint16"})},
            [code](const Request &request) {
                const bool refused = request.first <= 3 && request.first + request.count > 3;
                return refused ? request.refusal(code) : request.good();
            }));
    QVERIFY(m_run->comes({"1000", "1001", "1002", "!", "1004"}));
    QCOMPARE(m_run->readings[0].at(0), (QStringList{"1000", "1001", "1002", "!", "1004"}));
    EVENTUALLY(m_run->count() >= 3);
    const QString what = code == 2 ? QString("illegal data address") : QString("illegal data value");
    QCOMPARE(m_run->log,
             QStringList{QString("\"S0\": 3 uint16 is not read, station 1 refuses it: %1").arg(what)});
}

void TestModbusFaults::aSplitIsRemembered()
{
    RUN(run(false, {Acquire::slave(1, {"0 uint16", "1 uint16", "2 uint16", "3 uint16"})},
            [](const Request &request) {
                return request.first <= 3 && request.first + request.count > 3 ? request.refusal(2)
                                                                               : request.good();
            }));
    EVENTUALLY(m_run->count() == 1);
    QCOMPARE(m_device->asked(), (QStringList{"1:0+4", "1:0+2", "1:2+2", "1:2+1", "1:3+1"}));
    EVENTUALLY(m_run->count() == 2);
    QCOMPARE(m_device->asked(), (QStringList{"1:0+2", "1:2+1", "1:3+1"}));
    // Not when it was lost in between.
    m_device->stop();
    EVENTUALLY(!m_run->log.filter("lost").isEmpty());
    RUN(m_device->start());
    m_device->asked();
    QVERIFY(m_run->comes({"1000", "1001", "1002", "!"}));
    QVERIFY2(m_device->asked().contains("1:0+4"), "the request was not joined again");
}

void TestModbusFaults::otherExceptionsSplitNothing()
{
    RUN(run(false, {Acquire::slave(1, {"0 uint16", "1 uint16"})},
            [](const Request &request) { return request.refusal(4); }));
    EVENTUALLY(m_run->count() >= 2);
    m_run->stop();
    QCOMPARE(m_device->askedAtAll(), QStringList{"1:0+2"});
    QCOMPARE(m_run->log, QStringList{"\"S0\": station 1 has no value at times: device failure"});
}

// Nor is the connection closed: the gateway has answered.
void TestModbusFaults::aGatewayIsHeardForItsDevices()
{
    RUN(run(false, {Acquire::slave(1, {"0 uint16"})},
            [](const Request &request) { return request.refusal(11); }));
    EVENTUALLY(m_run->count() >= 8);
    QCOMPARE(m_device->connections, 1);
    QCOMPARE(m_run->log, QStringList{"\"S0\": station 1 lost after 3 attempts: gateway's target is silent"});
}

void TestModbusFaults::aSilentStationLeavesTheOthersTheirBeat_data()
{
    addLines();
}

void TestModbusFaults::aSilentStationLeavesTheOthersTheirBeat()
{
    QFETCH(bool, serial);
    RUN(run(
        serial, {Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"8 uint16"})},
        [](const Request &request) { return request.station == 1 ? QByteArray() : request.good(); }, 50,
        120));
    EVENTUALLY(!m_run->log.filter("lost").isEmpty());
    EVENTUALLY(!m_run->log.filter("keeps its beat again").isEmpty());
    const int before = m_run->count();
    EVENTUALLY(m_run->count() >= before + 10);
    const QVector<qint64> times = m_run->times[0].mid(before);
    QVERIFY2(times.at(9) - times.at(0) < 600, QByteArray::number(times.at(9) - times.at(0)));
    QCOMPARE(m_run->last(), (QStringList{"!", "2008"}));
    QCOMPARE(m_run->log.size(), 3);
}

// One register of a device that is there: each beat it is asked for last.
void TestModbusFaults::aSilentPointLeavesTheOthersValid()
{
    RUN(run(
        false, {Acquire::slave(1, {"0 uint16", "2 uint16", "4 uint16"})},
        [](const Request &request) { return request.first == 0 ? QByteArray() : request.good(); }, 80, 40));
    QVERIFY(m_run->comes({"!", "1002", "1004"}));
    EVENTUALLY(m_run->count() >= 6);
    QCOMPARE(m_run->last(), (QStringList{"!", "1002", "1004"}));
    QCOMPARE(m_run->log, QStringList());
}

void TestModbusFaults::aDeadDeviceSlowsNoOtherLink()
{
    Device dead(false, 1, silence);
    RUN(m_device = std::make_unique<Device>(false, 0, good));
    const QJsonArray slaves = {Acquire::slave(1, {"7 uint16"})};
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({dead.standard(slaves, 3000), m_device->standard(slaves, 3000)}, 50);
    EVENTUALLY(m_run->count(1) >= 10);
    QCOMPARE(m_run->count(0), 0);
    QVERIFY(m_run->times[1].at(9) - m_run->times[1].at(0) < 600);
    QCOMPARE(m_run->last(1), QStringList{"1007"});
    QCOMPARE(m_run->log, QStringList());
}

void TestModbusFaults::lostAndBackAreToldOnce_data()
{
    addLines();
}

void TestModbusFaults::lostAndBackAreToldOnce()
{
    QFETCH(bool, serial);
    RUN(run(serial, {Acquire::slave(1, {"7 uint16"})}, good, 120, 40));
    QVERIFY(m_run->comes({"1007"}));
    m_device->answer = silence;
    QVERIFY(m_run->comes({"!1007"}));
    EVENTUALLY(!m_run->log.filter("lost").isEmpty());
    const int count = m_run->count();
    EVENTUALLY(m_run->count() > count + 5);
    m_device->answer = good;
    QVERIFY(m_run->comes({"1007"}));
    const QStringList told = m_run->log.filter("station"); // not about beats
    QCOMPARE(told.size(), 2);
    QCOMPARE(told.at(0), "\"S0\": station 1 lost after 3 attempts: no answer");
    static const QRegularExpression back("^\"S0\": station 1 back after \\d+ attempts$");
    QVERIFY2(told.at(1).contains(back), qPrintable(told.at(1)));
}

void TestModbusFaults::aServerThatIsNotThereIsLostAndBack()
{
    RUN(m_device = std::make_unique<Device>(false, 0, good));
    m_device->stop();
    const QJsonArray slaves = {Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"7 uint16"})};
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({m_device->standard(slaves, 300)}, 60);
    EVENTUALLY(m_run->count() >= 5);
    QCOMPARE(m_run->last(), (QStringList{"!", "!"}));
    QCOMPARE(m_run->log, QStringList{"\"S0\": 127.0.52.1:1502 lost after 3 attempts: Connection refused"});
    RUN(m_device->start());
    QVERIFY(m_run->comes({"1007", "2007"}));
    QCOMPARE(m_run->log.size(), 2);
}

void TestModbusFaults::aClosedConnectionIsOpenedAnew()
{
    RUN(run(false, {Acquire::slave(1, {"7 uint16"})}, good));
    for (int i = 1; i < 4; ++i) {
        EVENTUALLY(m_device->connections == i && m_run->count() > 2 * i);
        m_device->socket->disconnectFromHost();
    }
    EVENTUALLY(m_device->connections == 4);
    EVENTUALLY(m_run->count() >= 8);
    QCOMPARE(m_run->readings[0], QVector<QStringList>(m_run->count(), {"1007"}));
    QCOMPARE(m_run->log, QStringList());
}

void TestModbusFaults::oneConnectionIsKept()
{
    RUN(run(false, {Acquire::slave(1, {"7 uint16", "30005 uint16"}), Acquire::slave(2, {"7 uint16"})}, good));
    EVENTUALLY(m_run->count() >= 5);
    QCOMPARE(m_device->connections, 1);
    QCOMPARE(m_run->last(), (QStringList{"1007", "1004", "2007"}));
}

void TestModbusFaults::aPulledLineComesBack()
{
    RUN(run(true, {Acquire::slave(1, {"7 uint16"})}, good));
    QVERIFY(m_run->comes({"1007"}));
    m_device->stop();
    QVERIFY(m_run->comes({"!1007"}));
    EVENTUALLY(m_run->log.size() == 1);
    QVERIFY2(m_run->log.at(0).startsWith("\"S0\": line0 lost after 3 attempts: "),
             qPrintable(m_run->log.at(0)));
    RUN(m_device->start());
    QVERIFY(m_run->comes({"1007"}));
    QCOMPARE(m_run->log.size(), 2);
    QVERIFY(m_run->log.at(1).contains("line0 back after "));
}

void TestModbusFaults::whatCannotBeReadIsToldByName()
{
    RUN(m_device = std::make_unique<Device>(false, 0, good));
    const int port = m_device->port();
    QJsonObject noAddress = Acquire::tcp("", port, {Acquire::slave(1, {"7 uint16"})}, 300);
    noAddress.insert("name", "A");
    QJsonObject noPort = Acquire::tcp("127.0.52.1", -1, {Acquire::slave(1, {"7 uint16"})}, 300);
    noPort.insert("name", "B");
    QJsonObject noLine = Acquire::rtu({Acquire::slave(1, {"7 uint16"})}, 300, "COM2");
    noLine.insert("name", "C");
    QJsonObject other = noLine;
    other.insert("name", "D");
    other.insert("protocol", "OpcUA");
    other.remove("modbus");
    QJsonObject points =
        Acquire::tcp("127.0.52.1", port,
                     {Acquire::slave(248, {"7 uint16"}),
                      Acquire::slave(1, {"x uint16", "00001 uint16", "70000 bool", "7 uint16"}),
                      Acquire::points({"9 uint16"}).at(0)},
                     300);
    points.insert("name", "E");
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({noAddress, noPort, noLine, other, points}, 50, {{"COM1", "line"}});
    for (int i = 0; i < 5; ++i) {
        EVENTUALLY(m_run->count(i) >= 3);
    }
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(m_run->last(i), QStringList{"!"});
    }
    QCOMPARE(m_run->last(4), (QStringList{"!", "!", "!", "!", "1007", "!"}));
    QCOMPARE(m_device->askedAtAll(), QStringList{"1:7+1"});
    m_run->log.sort();
    QCOMPARE(m_run->log,
             (QStringList{"\"A\": not read, it has no IPv4 address", "\"B\": not read, it has no port",
                          "\"C\": not read, no --serial names the line for COM2",
                          "\"D\": not read, OpcUA is not served by this boxsim",
                          "\"E\": 00001 uint16 is not read, uint16 at 00001 is a bit",
                          "\"E\": 70000 bool is not read, there is no address 70000",
                          "\"E\": 9 uint16 is not read, it belongs to no device",
                          "\"E\": station 248 is not read, there is no such station",
                          "\"E\": x uint16 is not read, its address x is no number"}));
}

void TestModbusFaults::everyWaitEndsAtAStop_data()
{
    QTest::addColumn<QString>("wait");
    QTest::newRow("for an answer, TCP") << "TCP";
    QTest::newRow("for an answer, RTU") << "RTU";
    QTest::newRow("for a connection") << "connection";
    QTest::newRow("for the beat") << "beat";
    QTest::newRow("for silence") << "silence";
    QTest::newRow("for the gap") << "gap";
}

// All times of the document are ten minutes.
void TestModbusFaults::everyWaitEndsAtAStop()
{
    QFETCH(QString, wait);
    const int minutes = 600000;
    const QJsonArray slaves = {Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"7 uint16"})};
    QTcpServer full; // whose queue of connections is full
    QVector<QTcpSocket *> queued;
    if (wait == "connection") {
        full.setMaxPendingConnections(1);
        QVERIFY(full.listen(QHostAddress("127.0.52.2"), 1502));
        full.pauseAccepting();
        ::listen(int(full.socketDescriptor()), 0);
        for (int i = 0; i < 4; ++i) {
            queued.append(new QTcpSocket(&full));
            queued.last()->connectToHost("127.0.52.2", 1502);
        }
        m_run = std::make_unique<Acquire::Run>();
        m_run->start({Acquire::tcp("127.0.52.2", 1502, slaves, minutes)}, minutes);
        QVERIFY(!Acquire::waitFor([&] { return m_run->count() > 0; }, 100));
    } else if (wait == "gap") {
        RUN(m_device = std::make_unique<Device>(true, 0, good));
        QJsonObject standard = m_device->standard(slaves, minutes);
        QJsonObject parameter = standard.value("parameter").toObject();
        parameter.insert("communicationGap", QString::number(minutes));
        standard.insert("parameter", parameter);
        m_run = std::make_unique<Acquire::Run>();
        m_run->start({standard}, minutes, {{"COM0", "line0"}});
        QVERIFY(!Acquire::waitFor([&] { return m_run->count() > 0; }, 100));
    } else if (wait == "beat") {
        RUN(run(false, slaves, good, minutes, minutes));
        EVENTUALLY(m_run->count() == 1);
    } else if (wait == "silence") {
        RUN(run(
            true, slaves, [](const Request &request) { return request.good().chopped(1) + '?'; }, minutes,
            minutes));
        EVENTUALLY(m_device->requestCount() == 1);
        QVERIFY(!Acquire::waitFor([&] { return m_device->requestCount() > 1; }, 100));
    } else {
        RUN(run(wait == "RTU", slaves, silence, minutes, minutes));
        EVENTUALLY(m_device->requestCount() == 1);
    }
    QElapsedTimer clock;
    clock.start();
    m_run.reset();
    QVERIFY2(clock.elapsed() < 1000, QByteArray::number(clock.elapsed()));
}

// However many Boxes it has: they do not end one after another.
void TestModbusFaults::aRangeStopsAtOnce()
{
    constexpr int count = 60;
    constexpr int minutes = 600000;
    RUN(m_device = std::make_unique<Device>(false, 0, silence));
    BoxSimOptions options;
    options.address = QHostAddress("127.0.52.11");
    options.discovery = false;
    options.reportInterval = minutes;
    options.acquire.on = true;
    options.project = Acquire::project({m_device->standard({Acquire::slave(1, {"7 uint16"})}, minutes)});
    BoxRange range(options, count);
    QVERIFY2(range.start(), qPrintable(range.errorString()));
    EVENTUALLY(m_device->requestCount() == count);
    QElapsedTimer clock;
    clock.start();
    range.stop();
    QVERIFY2(clock.elapsed() < 600, QByteArray::number(clock.elapsed()));
}

QTEST_GUILESS_MAIN(TestModbusFaults)
#include "tst_modbusfaults.moc"

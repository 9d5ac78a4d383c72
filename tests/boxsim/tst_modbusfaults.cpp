#include "modbusdevice.h"
#include "run.h"

#include <functional>
#include <memory>

using Modbus::Answer;
using Modbus::Device;
using Modbus::Request;

// Devices and lines that fail, over TCP and over a serial line. The device is the test's own, since no
// well-behaved one fails in these ways: what it says is made here, byte by byte.
class TestModbusFaults : public Modbus::DeviceTest
{
    Q_OBJECT

private slots:
    void cleanup();

    void whatIsNoAnswerIsNotValid();
    void aFailureHitsOneBeatOnly();
    void aRefusedPointLeavesTheOthersValid_data();
    void aRefusedPointLeavesTheOthersValid();
    void aSplitIsRemembered();
    void otherExceptionsSplitNothing();
    void aGatewayIsHeardForItsDevices();
    void aSilentStationLeavesTheOthersTheirBeat();
    void aPointWithoutAnAnswerLeavesTheOthersValid();
    void aDeviceThatIsSilentAboutOneOfAllIsFound();
    void aPointThatIsAnsweredAgainIsJoinedAgain();
    void aPeerThatEndsItsConnectionsIsRead_data();
    void aPeerThatEndsItsConnectionsIsRead();
    void aSlowPeerThatEndsItsConnectionsIsReadInTurns();
    void aDeadDeviceSlowsNoOtherLink();
    void lostAndBackAreToldOnce();
    void aServerThatIsNotThereIsLostAndBack();
    void whatCannotBeReadIsToldByName();

private:
    struct Fault {
        QString name;
        bool network;   // whether it may happen on a network, too
        QString reason; // why the station is called lost; null if it is not, empty for any
        Answer answer;
    };
    static QVector<Fault> faults();

    // Starts two devices, one on a network and one on a line, and reads these slaves of both.
    void runBoth(const QJsonArray &slaves, const Answer &answer, int interval, int timeout)
    {
        QJsonArray standards;
        for (const bool serial : {false, true}) {
            m_devices.push_back(std::make_unique<Device>(serial, serial ? 1 : 0, answer));
            standards.append(m_devices.back()->standard(slaves, timeout));
        }
        m_run = std::make_unique<Acquire::Run>();
        m_run->start(standards, interval, {{"COM1", "line1"}});
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

    std::vector<std::unique_ptr<Device>> m_devices;
    QStringList m_names;   // of the devices
    QStringList m_reasons; // of their faults
};

void TestModbusFaults::cleanup()
{
    stop();
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
        {Acquire::slave(1, {"7 uint16"})}, [](const Fault &fault) { return fault.answer; }, 300, 100));
    int lost = 0;
    for (const QString &reason : qAsConst(m_reasons)) {
        lost += reason.isNull() ? 0 : 1;
    }
    EVENTUALLY(allHave(4) && m_run->log.filter("lost").size() == lost);
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
    RUN(runAll({Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"8 uint16"})}, once, 100, 500));
    EVENTUALLY(allHave(4));
    m_run->stop();
    for (int i = 0; i < m_names.size(); ++i) {
        QVector<QStringList> expected(m_run->count(i), {"1007", "2008"});
        expected[1] = QStringList{"!1007", "2008"};
        QVERIFY2(m_run->readings[i] == expected, qPrintable(m_names.at(i)));
    }
    QCOMPARE(m_run->log.filter("lost"), QStringList());
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
    EVENTUALLY(m_run->count() >= 5);
    QCOMPARE(m_device->connections, 1);
    QCOMPARE(m_run->log, QStringList{"\"S0\": station 1 lost after 3 attempts: gateway's target is silent"});
}

void TestModbusFaults::aSilentStationLeavesTheOthersTheirBeat()
{
    RUN(runBoth(
        {Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"8 uint16"})},
        [](const Request &request) { return request.station == 1 ? QByteArray() : request.good(); }, 30, 80));
    EVENTUALLY(m_run->beats.filter("keeps its beat again").size() == 2);
    for (int i = 0; i < 2; ++i) {
        const int before = m_run->count(i);
        const auto hasBeat = [&] { // once, since a busy computer may skip some
            const QVector<qint64> times = m_run->times[i].mid(before);
            for (int last = 5; last < times.size(); ++last) {
                if (times.at(last) - times.at(last - 5) < 5 * 80) {
                    return true;
                }
            }
            return false;
        };
        EVENTUALLY(hasBeat());
        QCOMPARE(m_run->last(i), (QStringList{"!", "2008"}));
    }
    QStringList told = m_run->log.filter("station");
    told.sort();
    QCOMPARE(told,
             (QStringList{"\"S0\": station 1 lost after 3 attempts: no answer",
                          "\"S1\": station 1 lost after 3 attempts: no answer"}));
}

// One register of a device that is there, among others that are asked for together: each beat it is asked for
// last, and once, or once more over a new connection.
void TestModbusFaults::aPointWithoutAnAnswerLeavesTheOthersValid()
{
    const int ways = 4; // not to answer: silence on a network and on a line, a gateway's word, hanging up
    QJsonArray standards;
    for (int i = 0; i < ways; ++i) {
        m_devices.push_back(std::make_unique<Device>(i == 1, i, [this, i](const Request &request) {
            if (request.first > 53 || request.first + request.count <= 53) {
                return request.good();
            }
            if (i == 3) {
                m_devices.back()->socket->abort();
            }
            return i == 2 ? request.refusal(11) : QByteArray();
        }));
        standards.append(m_devices.back()->standard(
            {Acquire::slave(1, {"7 uint16", "50 uint16", "51 uint16", "52 uint16", "53 uint16"})}, 50));
    }
    m_run = std::make_unique<Acquire::Run>();
    m_run->start(standards, 110, {{"COM1", "line1"}});
    EVENTUALLY(m_run->log.filter("station").size() == ways);
    QVector<int> before;
    for (int i = 0; i < ways; ++i) {
        before.append(m_run->count(i) + 1);
        m_devices[size_t(i)]->asked();
    }
    EVENTUALLY(m_run->count(0) >= before.at(0) + 4 && m_run->count(1) >= before.at(1) + 4);
    m_run->stop();
    for (int i = 0; i < ways; ++i) {
        const QVector<QStringList> readings = m_run->readings[i].mid(before.at(i));
        const QStringList expected = {"1007", "1050", "1051", "1052", "!"};
        QCOMPARE(readings, QVector<QStringList>(readings.size(), expected));
        const int asked = m_devices[size_t(i)]->asked().filter("1:53+1").size() / (i == 3 ? 2 : 1);
        QVERIFY2(asked >= readings.size() && asked <= readings.size() + 2, QByteArray::number(asked));
    }
    m_run->log.sort();
    const QString told = "\"S%1\": 53 uint16 is not read, station 1 %2";
    QCOMPARE(m_run->log.filter("station"),
             (QStringList{told.arg("0", "gives no answer to it"), told.arg("1", "gives no answer to it"),
                          told.arg("2", "gives no answer to it"),
                          told.arg("3", "closes the connection when asked for it")}));
}

// Though all its values are joined, and the first that is asked for alone is the one without an answer.
void TestModbusFaults::aDeviceThatIsSilentAboutOneOfAllIsFound()
{
    RUN(runBoth(
        {Acquire::slave(1, {"50 uint16", "51 uint16", "52 uint16", "53 uint16"})},
        [](const Request &request) { return request.first > 50 ? request.good() : QByteArray(); }, 160, 50));
    const QString told = "\"S%1\": 50 uint16 is not read, station 1 gives no answer to it";
    for (int i = 0; i < 2; ++i) {
        EVENTUALLY(m_run->log.contains(told.arg(i)));
        const int before = m_run->count(i) + 1;
        EVENTUALLY(m_run->count(i) > before);
        QCOMPARE(m_run->readings[i].at(before), (QStringList{"!", "1051", "1052", "1053"}));
    }
}

// And told once more if it is not answered again.
void TestModbusFaults::aPointThatIsAnsweredAgainIsJoinedAgain()
{
    bool silent = true;
    bool joined = false;
    RUN(run(
        false, {Acquire::slave(1, {"7 uint16", "50 uint16", "51 uint16", "52 uint16", "53 uint16"})},
        [&](const Request &request) {
            joined = joined || (!silent && request.first == 50 && request.count == 4);
            return silent && request.first + request.count > 53 ? QByteArray() : request.good();
        },
        20, 50));
    const QString told = "\"S0\": 53 uint16 is not read, station 1 gives no answer to it";
    EVENTUALLY(m_run->log.contains(told));
    silent = false;
    EVENTUALLY(joined);
    QVERIFY(m_run->comes({"1007", "1050", "1051", "1052", "1053"}));
    silent = true;
    EVENTUALLY(m_run->log.count(told) == 2);
}

void TestModbusFaults::aPeerThatEndsItsConnectionsIsRead_data()
{
    QTest::addColumn<int>("answers"); // in a connection
    QTest::newRow("after each answer") << 1;
    QTest::newRow("after two") << 2;
}

// All of it in each reading: values apart, a long one, and a station behind it.
void TestModbusFaults::aPeerThatEndsItsConnectionsIsRead()
{
    QFETCH(int, answers);
    QMap<int, int> answered;
    RUN(run(false,
            {Acquire::slave(1, {"7 uint16", "50 uint16", "100 string 260", "300 uint16"}),
             Acquire::slave(2, {"8 uint16"})},
            [&](const Request &request) {
                if (++answered[m_device->connections] == answers) {
                    QTimer::singleShot(0, m_device->socket, &QTcpSocket::disconnectFromHost);
                }
                return request.good();
            }));
    EVENTUALLY(m_run->count() >= 6);
    m_run->stop();
    for (const QStringList &reading : qAsConst(m_run->readings[0])) {
        QCOMPARE(reading.filter(QRegularExpression("^!")), QStringList());
        QCOMPARE(reading.last(), "2008");
    }
    QCOMPARE(m_run->log, QStringList());
}

// It opens new connections for one time-out; what had no turn is read in the next reading.
void TestModbusFaults::aSlowPeerThatEndsItsConnectionsIsReadInTurns()
{
    RUN(run(
        false,
        {Acquire::slave(
            1, {"1 uint16", "3 uint16", "5 uint16", "7 uint16", "9 uint16", "11 uint16", "13 uint16"})},
        [this](const Request &request) {
            QTcpSocket *socket = m_device->socket;
            QTimer::singleShot(40, socket, [socket, request] {
                socket->write(request.good());
                socket->disconnectFromHost();
            });
            return QByteArray();
        },
        60, 100));
    QSet<QString> read;
    EVENTUALLY(m_run->count() >= 4);
    for (const QStringList &reading : qAsConst(m_run->readings[0])) {
        const QStringList valid = reading.filter(QRegularExpression("^[^!]"));
        QVERIFY2(valid.size() < reading.size(), qPrintable(reading.join(' ')));
        read.unite(QSet<QString>(valid.begin(), valid.end()));
    }
    QCOMPARE(read.size(), 7);
    QCOMPARE(m_run->log.filter("station"), QStringList());
}

void TestModbusFaults::aDeadDeviceSlowsNoOtherLink()
{
    Device dead(false, 1, silence);
    RUN(m_device = std::make_unique<Device>(false, 0, good));
    const QJsonArray slaves = {Acquire::slave(1, {"7 uint16"})};
    m_run = std::make_unique<Acquire::Run>();
    m_run->start({dead.standard(slaves, 3000), m_device->standard(slaves, 3000)}, 50);
    EVENTUALLY(m_run->count(1) >= 6);
    QCOMPARE(m_run->count(0), 0);
    QCOMPARE(m_run->last(1), QStringList{"1007"});
    QCOMPARE(m_run->log, QStringList());
}

void TestModbusFaults::lostAndBackAreToldOnce()
{
    RUN(runBoth({Acquire::slave(1, {"7 uint16"})}, good, 250, 100));
    const auto bothCome = [this](const QString &reading) {
        return m_run->comes({reading}, 0) && m_run->comes({reading}, 1);
    };
    QVERIFY(bothCome("1007"));
    for (const auto &device : m_devices) {
        device->answer = silence;
    }
    QVERIFY(bothCome("!1007"));
    EVENTUALLY(m_run->log.filter("lost").size() == 2);
    const int count = m_run->count();
    EVENTUALLY(m_run->count() > count + 3);
    for (const auto &device : m_devices) {
        device->answer = good;
    }
    QVERIFY(bothCome("1007"));
    for (const QString &name : {QString("S0"), QString("S1")}) {
        const QString station = QString("\"%1\": station").arg(name);
        const QStringList told = m_run->log.filter(station); // not about beats
        QCOMPARE(told.size(), 2);
        QCOMPARE(told.at(0), station + " 1 lost after 3 attempts: no answer");
        static const QRegularExpression back("station 1 back after \\d+ attempts\\z");
        QVERIFY2(told.at(1).contains(back), qPrintable(told.at(1)));
    }
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

QTEST_GUILESS_MAIN(TestModbusFaults)
#include "tst_modbusfaults.moc"

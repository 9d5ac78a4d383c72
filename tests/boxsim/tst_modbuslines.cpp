#include "boxsim/acquire/modbusreader.h"
#include "boxsim/acquire/modbustcpline.h"
#include "boxsim/acquire/stopflag.h"
#include "boxsim/boxrange.h"
#include "modbusdevice.h"
#include "run.h"

#include <memory>
#include <sys/resource.h>
#include <sys/socket.h>

using Modbus::Answer;
using Modbus::Device;
using Modbus::Request;

namespace {

// Closed at each second request; the others are answered with a failure. It takes its time to be opened anew.
class ClosingLine : public ModbusLine
{
public:
    explicit ClosingLine(StopFlag *stop)
        : ModbusLine(1000, stop)
    {
    }
    QString name() const override { return "line"; }
    int openTimeout() const override { return 1000; }

    QVector<int> opens; // the time that each had

protected:
    Context connect(int timeout, QString * /*reason*/) override
    {
        opens.append(timeout);
        m_requests = 0;
        QThread::msleep(opens.size() == 2 ? 30 : 0);
        return Context(modbus_new_tcp(nullptr, 1502));
    }
    bool prepare(int /*timeout*/, ModbusAnswer *answer) override
    {
        const bool isAnswered = ++m_requests == 1;
        *answer = {isAnswered ? ModbusAnswer::Kind::Exception : ModbusAnswer::Kind::Lost, 4, "none"};
        return false;
    }
    bool send(const ModbusAsk & /*ask*/) override { return false; }
    int missingBytes(const QByteArray & /*answer*/) const override { return -1; }
    bool isSound(const QByteArray & /*answer*/) const override { return false; }
    bool isLatest(const QByteArray & /*answer*/) const override { return false; }
    void noteFailure(Failure /*failure*/) override {}

private:
    int m_requests = 0; // since it was opened
};

} // namespace

// What a connection and a serial line are left to: answers that come late, slowly or without an end, lines
// that close, and how soon all that ends. The device is the test's own.
class TestModbusLines : public Modbus::DeviceTest
{
    Q_OBJECT

private slots:
    void initTestCase() { Modbus::address = "127.0.52.3"; }
    void cleanup() { stop(); }

    void lateAnswersAreLeftAside_data();
    void lateAnswersAreLeftAside();
    void answersWithoutAnEndAreNotReadToTheEnd();
    void theTimeoutIsOfTheWholeAnswer_data();
    void theTimeoutIsOfTheWholeAnswer();
    void aStationThatEndsTheConnectionLeavesTheOthersValid();
    void aPeerThatRefusesForAMomentIsRead_data();
    void aPeerThatRefusesForAMomentIsRead();
    void aLineIsOpenedAnewForOneTimeout();
    void manyOpenFilesAreNoObstacle();
    void aClosedConnectionIsOpenedAnew();
    void aReconnectionTakesNoLongerThanItsRequest();
    void oneConnectionIsKept();
    void aPulledLineComesBack();
    void everyWaitEndsAtAStop_data();
    void everyWaitEndsAtAStop();
    void aRangeStopsAtOnce();

private:
    // From then on whoever connects waits.
    static void fillQueue(QTcpServer *server)
    {
        server->pauseAccepting();
        QCOMPARE(::listen(int(server->socketDescriptor()), 0), 0);
        bool isTaken = true;
        for (int i = 0; i < 10 && isTaken; ++i) {
            auto *last = new QTcpSocket(server);
            last->connectToHost(server->serverAddress(), server->serverPort());
            isTaken = Acquire::waitFor([&] { return last->state() == QAbstractSocket::ConnectedState; }, 50);
        }
        QVERIFY(!isTaken);
    }
    static void addLines()
    {
        QTest::addColumn<bool>("serial");
        QTest::newRow("TCP") << false;
        QTest::newRow("RTU") << true;
    }
};

void TestModbusLines::lateAnswersAreLeftAside_data()
{
    addLines();
}

// The answer to each second request comes after its time-out. The values of two stations must not be mixed
// up.
void TestModbusLines::lateAnswersAreLeftAside()
{
    QFETCH(bool, serial);
    RUN(run(
        serial, {Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"7 uint16"})},
        [this](const Request &request) {
            if (request.station == 2) {
                return request.good();
            }
            Device *device = m_device.get();
            QTimer::singleShot(160, device, [device, late = request.good()] { device->send(late); });
            return QByteArray();
        },
        320, 100));
    EVENTUALLY(m_run->count() >= 3);
    m_run->stop();
    for (const QStringList &reading : qAsConst(m_run->readings[0])) {
        QCOMPARE(reading, (QStringList{"!", "2007"}));
    }
    QCOMPARE(m_device->connections, serial ? 0 : 1);
}

void TestModbusLines::answersWithoutAnEndAreNotReadToTheEnd()
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
        100, 200));
    EVENTUALLY(!m_run->log.isEmpty());
    QCOMPARE(m_run->log,
             QStringList{"\"S0\": station 1 lost after 3 attempts: only answers to other requests"});
    QElapsedTimer clock;
    clock.start();
    m_run.reset();
    QVERIFY2(clock.elapsed() < 1000, QByteArray::number(clock.elapsed()));
}

void TestModbusLines::theTimeoutIsOfTheWholeAnswer_data()
{
    addLines();
}

// The bytes come one by one, each long before its time-out; it takes six seconds until all are there.
void TestModbusLines::theTimeoutIsOfTheWholeAnswer()
{
    QFETCH(bool, serial);
    QTimer trickle;
    RUN(run(
        serial, {Acquire::slave(1, {"7 string 200"})},
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
    QVERIFY2(m_run->times[0].at(0) < 3000, QByteArray::number(m_run->times[0].at(0)));
}

void TestModbusLines::aStationThatEndsTheConnectionLeavesTheOthersValid()
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
    EVENTUALLY(m_run->count() >= 6);
    QCOMPARE(m_run->readings[0], QVector<QStringList>(m_run->count(), {"1007", "!", "3007"}));
    QCOMPARE(m_run->log, QStringList{"\"S0\": station 2 lost after 3 attempts: Connection reset by peer"});
}

void TestModbusLines::aPeerThatRefusesForAMomentIsRead_data()
{
    QTest::addColumn<QJsonArray>("slaves");
    QTest::newRow("one station") << QJsonArray{
        Acquire::slave(1, {"7 uint16", "50 uint16", "100 uint16", "200 uint16"})};
    QTest::newRow("two stations") << QJsonArray{Acquire::slave(1, {"7 uint16", "50 uint16"}),
                                                Acquire::slave(2, {"8 uint16"})};
}

// It ends a connection at the second request, and takes no other for a while.
void TestModbusLines::aPeerThatRefusesForAMomentIsRead()
{
    QFETCH(QJsonArray, slaves);
    int answered = 0; // in this connection
    RUN(run(
        false, slaves,
        [&](const Request &request) {
            if (++answered == 1) {
                return request.good();
            }
            QTimer::singleShot(0, m_device.get(), [&] { m_device->stop(); });
            QTimer::singleShot(90, m_device.get(), [&] {
                answered = 0;
                m_device->start();
            });
            return QByteArray();
        },
        100, 250));
    EVENTUALLY(m_run->count() >= 1);
    for (int point = 0; point < m_run->last().size(); ++point) {
        EVENTUALLY(!m_run->last().at(point).startsWith('!'));
    }
    EVENTUALLY(m_run->count() >= 6);
    QCOMPARE(m_run->log, QStringList());
}

// Only as long as is left of it, and only if the line may be opened.
void TestModbusLines::aLineIsOpenedAnewForOneTimeout()
{
    SimStandard standard;
    for (const QString &address : {QString("1"), QString("3"), QString("5"), QString("7")}) {
        standard.points.append({address, address, "uint16", 1});
    }
    standard.devices.append({{{"stationNum", "1"}}, 0, 4});
    StopFlag stop;
    int asked = 0;
    ReaderSetup setup = {&standard, QString(), true, &stop, [](const QString &) {}};
    setup.mayOpen = [&asked](QString *) { return ++asked < 4; };
    auto owned = std::make_unique<ClosingLine>(&stop);
    const ClosingLine *line = owned.get();
    ModbusReader reader(setup, std::move(owned));
    QString reason;
    QVERIFY(reader.open(1000, &reason));
    QVector<PointReading> readings(4);
    reader.read(0, 500, readings.data());
    QCOMPARE(asked, 4);
    QCOMPARE(line->opens.size(), 3);
    QVERIFY2(line->opens.at(2) <= 470, QByteArray::number(line->opens.at(2)));
}

void TestModbusLines::manyOpenFilesAreNoObstacle()
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

void TestModbusLines::aClosedConnectionIsOpenedAnew()
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

// The server answers nonsense, so that the connection is not used any more, and then accepts no other.
void TestModbusLines::aReconnectionTakesNoLongerThanItsRequest()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress("127.0.52.2"), 1502));
    ModbusTcpLine::Setup setup;
    setup.address = QHostAddress("127.0.52.2");
    setup.port = 1502;
    setup.connectTimeout = 20000;
    StopFlag stop;
    ModbusTcpLine line(setup, &stop);
    QString reason;
    QVERIFY2(line.open(5000, &reason), qPrintable(reason));
    QVERIFY(server.waitForNewConnection(5000));
    QTcpSocket *peer = server.nextPendingConnection();
    peer->write(QByteArray(12, '?'));
    QVERIFY(peer->waitForBytesWritten(5000));
    const ModbusAsk ask = {1, ModbusArea::HoldingRegisters, 7, 1};
    quint16 word = 0;
    QCOMPARE(line.read(ask, 5000, &word).reason, "a broken answer");
    RUN(fillQueue(&server));
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(line.read(ask, 100, &word).reason, "no answer to the connection");
    QVERIFY2(clock.elapsed() < 10000, QByteArray::number(clock.elapsed()));
}

void TestModbusLines::oneConnectionIsKept()
{
    RUN(run(false, {Acquire::slave(1, {"7 uint16", "30005 uint16"}), Acquire::slave(2, {"7 uint16"})}, good));
    EVENTUALLY(m_run->count() >= 5);
    QCOMPARE(m_device->connections, 1);
    QCOMPARE(m_run->last(), (QStringList{"1007", "1004", "2007"}));
}

void TestModbusLines::aPulledLineComesBack()
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

void TestModbusLines::everyWaitEndsAtAStop_data()
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
void TestModbusLines::everyWaitEndsAtAStop()
{
    QFETCH(QString, wait);
    const int minutes = 600000;
    const QJsonArray slaves = {Acquire::slave(1, {"7 uint16"}), Acquire::slave(2, {"7 uint16"})};
    QTcpServer full;
    if (wait == "connection") {
        QVERIFY(full.listen(QHostAddress("127.0.52.2"), 1502));
        RUN(fillQueue(&full));
        m_run = std::make_unique<Acquire::Run>();
        m_run->start({Acquire::tcp("127.0.52.2", 1502, slaves, minutes)}, minutes);
        QVERIFY(!Acquire::waitFor([&] { return m_run->count() > 0; }, 50));
    } else if (wait == "gap") {
        RUN(m_device = std::make_unique<Device>(true, 0, good));
        QJsonObject standard = m_device->standard(slaves, minutes);
        QJsonObject parameter = standard.value("parameter").toObject();
        parameter.insert("communicationGap", QString::number(minutes));
        standard.insert("parameter", parameter);
        m_run = std::make_unique<Acquire::Run>();
        m_run->start({standard}, minutes, {{"COM0", "line0"}});
        QVERIFY(!Acquire::waitFor([&] { return m_run->count() > 0; }, 50));
    } else if (wait == "beat") {
        RUN(run(false, slaves, good, minutes, minutes));
        EVENTUALLY(m_run->count() == 1);
    } else if (wait == "silence") {
        RUN(run(
            true, slaves, [](const Request &request) { return request.good().chopped(1) + '?'; }, minutes,
            minutes));
        EVENTUALLY(m_device->requestCount() == 1);
        QVERIFY(!Acquire::waitFor([&] { return m_device->requestCount() > 1; }, 50));
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
void TestModbusLines::aRangeStopsAtOnce()
{
    constexpr int count = 45; // no more than connect at once
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
    QVERIFY2(clock.elapsed() < 1200, QByteArray::number(clock.elapsed()));
}

QTEST_GUILESS_MAIN(TestModbusLines)
#include "tst_modbuslines.moc"

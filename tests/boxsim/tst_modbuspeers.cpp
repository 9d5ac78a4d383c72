#include "acquiretest.h"
#include "boxsimtest.h"

#include <QTcpServer>

#include <memory>

// The road from a register to a report, with devices that others wrote: pymodbus over TCP and over a serial
// line made by socat, and mbpoll, which reads the same registers.
class TestModbusPeers : public BoxSimTest
{
    Q_OBJECT
public:
    TestModbusPeers()
        : BoxSimTest("127.0.51.1")
    {
    }

private slots:
    void initTestCase();
    void cleanup() { stop(); }
    void cleanupTestCase();

    void everyTypeInEveryOrder_data();
    void everyTypeInEveryOrder();
    void bitsAndInputRegisters_data();
    void bitsAndInputRegisters();
    void anotherReaderSeesTheSame_data();
    void anotherReaderSeesTheSame();
    void aChangeIsReported_data();
    void aChangeIsReported();
    void aLineWithoutParityAndRtsIsUsedWithout();
    void twoStandardsShareALine();
    void aRebootAndAnotherProjectCloseTheConnection();

private:
    enum { Port = 1502 };

    static QString missing(const QString &program)
    {
        return QStandardPaths::findExecutable(program).isEmpty() ? program + " is not installed" : QString();
    }
    // Starts a program and waits for a line.
    static void startPeer(QProcess *process, const QString &program, const QStringList &arguments,
                          const QByteArray &ready)
    {
        process->setProcessChannelMode(QProcess::SeparateChannels);
        process->start(program, arguments);
        QVERIFY2(QTest::qWaitFor([&] { return process->peek(10000).contains(ready); }),
                 process->readAllStandardError());
        process->readAllStandardOutput();
    }
    static void end(QProcess *process)
    {
        if (process->state() != QProcess::NotRunning) {
            process->kill();
            process->waitForFinished();
        }
    }
    QString whyNot(bool serial) const
    {
        return serial && !m_missingSerial.isEmpty() ? m_missingSerial : m_missing;
    }
    QProcess *peer(bool serial) { return serial ? &m_serialPeer : &m_tcpPeer; }
    QJsonObject standard(bool serial, const QJsonArray &slaves) const
    {
        return serial ? Acquire::rtu(slaves, 1000) : Acquire::tcp("127.0.51.1", Port, slaves, 1000);
    }
    // Starts a Box that reads these Standards, with a session.
    void acquire(const QJsonArray &standards, bool grouping = true)
    {
        BoxSimOptions own = withProject(Acquire::project(standards));
        own.reportInterval = -1;
        own.acquire = {true, {{"COM1", m_line}}, grouping};
        m_log.clear();
        RUN(startBox(own));
        connect(m_box.get(), &BoxSim::acquisitionTold, this, [this](const QString &line) {
            if (!Acquire::isOfTheBeat(line)) {
                m_log.append(line);
            }
        });
        m_tool = std::make_unique<RawTool>();
        QVERIFY(m_tool->connectTo(address()));
        m_tool->send(Raw::heartbeat);
        QCOMPARE(m_tool->takeFrame().size(), 38);
    }
    // Waits for a report whose values are all valid; the values of the last report else.
    QStringList values(const QString &name)
    {
        QStringList texts;
        (void)QTest::qWaitFor([&] {
            for (const QJsonObject &report : Raw::reports(m_tool->bytes())) {
                if (report.value("plcName").toString() == name) {
                    texts = Acquire::texts(report);
                }
            }
            return !texts.isEmpty() && texts.filter(QRegularExpression("^!")).isEmpty();
        });
        return texts;
    }

    QString m_missing;
    QString m_missingSerial;
    QProcess m_tcpPeer;
    QProcess m_socat;
    QProcess m_serialPeer;
    QString m_line;
    QStringList m_log;
};

void TestModbusPeers::initTestCase()
{
    QProcess python;
    python.start("/usr/bin/python3", {"-c", "import pymodbus, serial_asyncio"});
    const bool there = python.waitForFinished() && python.exitCode() == 0;
    m_missing = there ? QString() : QString("pymodbus for /usr/bin/python3 is not installed");
    m_missingSerial = missing("socat");
    if (!m_missing.isEmpty()) {
        return;
    }
    const QString script = SOURCE_ROOT "/tests/boxsim/modbuspeer.py";
    RUN(startPeer(&m_tcpPeer, "/usr/bin/python3", {script, "tcp", "127.0.51.1", QString::number(Port)},
                  "ready"));
    if (m_missingSerial.isEmpty()) {
        m_line = QDir::current().filePath("line");
        const QString other = QDir::current().filePath("device");
        m_socat.start("socat", {"pty,raw,echo=0,link=" + m_line, "pty,raw,echo=0,link=" + other});
        QTRY_VERIFY(QFile::exists(m_line) && QFile::exists(other));
        RUN(startPeer(&m_serialPeer, "/usr/bin/python3", {script, "rtu", other}, "ready"));
    }
}

void TestModbusPeers::cleanupTestCase()
{
    for (QProcess *process : {&m_tcpPeer, &m_serialPeer, &m_socat}) {
        end(process);
    }
}

void TestModbusPeers::everyTypeInEveryOrder_data()
{
    QTest::addColumn<bool>("serial");
    QTest::addColumn<bool>("grouping");
    QTest::newRow("TCP") << false << true;
    QTest::newRow("TCP, each alone") << false << false;
    QTest::newRow("RTU") << true << true;
}

void TestModbusPeers::everyTypeInEveryOrder()
{
    QFETCH(bool, serial);
    QFETCH(bool, grouping);
    if (!whyNot(serial).isEmpty()) {
        QSKIP(qPrintable(whyNot(serial)));
    }
    const QStringList points = {"400001 bool",  "400002 bool",   "2 int8",         "3 uint8",
                                "4 int16",      "5 uint16",      "6 int32",        "8 uint32",
                                "10 int64",     "14 uint64",     "18 float",       "20 double",
                                "26 string 10", "31 string 6",   "36 string 4",    "100 string 300",
                                "40006 uint16", "400006 uint16", "100 string 250", "100 string 251"};
    QString letters;
    for (int i = 0; i < 300; ++i) {
        letters.append(QChar('a' + i % 26));
    }
    const QStringList expected = {"1",
                                  "0",
                                  "-10",
                                  "246",
                                  "-12345",
                                  "54321",
                                  "-123456789",
                                  "4000000000",
                                  "-1234567890123456789",
                                  "18000000000000000000",
                                  "230.1",
                                  "-0.1",
                                  "Pump 7",
                                  QString::fromUtf8("Gr\xc3\xbcn"),
                                  QString::fromUtf8("Gr\xc3\xbcn"),
                                  letters,
                                  "54321",
                                  "54321",
                                  letters.left(250),
                                  letters.left(251)};
    RUN(acquire({standard(serial,
                          {Acquire::slave(1, points, "ABCD"), Acquire::slave(2, points, "BADC", true),
                           Acquire::slave(3, points, "CDAB"), Acquire::slave(4, points, "DCBA")})},
                grouping));
    const QString name = serial ? "ModbusRTU" : "ModbusTCP";
    const QStringList read = values(name);
    QCOMPARE(read.size(), 4 * points.size());
    for (int station = 0; station < 4; ++station) {
        QCOMPARE(read.mid(station * points.size(), points.size()), expected);
    }
    QCOMPARE(m_log, QStringList());
}

void TestModbusPeers::bitsAndInputRegisters_data()
{
    QTest::addColumn<bool>("serial");
    QTest::newRow("TCP") << false;
    QTest::newRow("RTU") << true;
}

void TestModbusPeers::bitsAndInputRegisters()
{
    QFETCH(bool, serial);
    if (!whyNot(serial).isEmpty()) {
        QSKIP(qPrintable(whyNot(serial)));
    }
    QStringList points = {"30001 uint16", "30020 uint16", "300003 int32"};
    QStringList expected = {"1000", "1019", QString::number(1002 * 65536 + 1003)};
    for (int i = 0; i < 30; ++i) {
        points << QString("%1 bool").arg(i) << QString("1%1 bool").arg(i + 1, 4, 10, QChar('0'));
        expected << QString::number(i % 3 == 0) << QString::number(i % 2 == 1);
    }
    RUN(acquire({standard(serial, {Acquire::slave(1, points)})}));
    QCOMPARE(values(serial ? "ModbusRTU" : "ModbusTCP"), expected);
}

void TestModbusPeers::anotherReaderSeesTheSame_data()
{
    bitsAndInputRegisters_data();
}

void TestModbusPeers::anotherReaderSeesTheSame()
{
    QFETCH(bool, serial);
    if (!whyNot(serial).isEmpty() || !missing("mbpoll").isEmpty()) {
        QSKIP(qPrintable(whyNot(serial).isEmpty() ? missing("mbpoll") : whyNot(serial)));
    }
    QProcess mbpoll;
    QStringList arguments = {"-a", "1", "-r", "3", "-c", "4", "-1", "-o", "2"};
    arguments << (serial ? QStringList{"-m", "rtu", "-b", "115200", "-P", "none", m_line}
                         : QStringList{"-p", QString::number(Port), "127.0.51.1"});
    mbpoll.start("mbpoll", arguments);
    QVERIFY(mbpoll.waitForFinished());
    QStringList seen;
    static const QRegularExpression line("^\\[\\d+\\]:\\s+(\\d+)", QRegularExpression::MultilineOption);
    auto match = line.globalMatch(QString::fromUtf8(mbpoll.readAllStandardOutput()));
    while (match.hasNext()) {
        seen.append(match.next().captured(1));
    }
    QCOMPARE(seen.size(), 4);
    RUN(acquire({standard(serial, {Acquire::slave(1, {"2 uint16", "3 uint16", "4 uint16", "5 uint16"})})}));
    QCOMPARE(values(serial ? "ModbusRTU" : "ModbusTCP"), seen);
}

void TestModbusPeers::aChangeIsReported_data()
{
    bitsAndInputRegisters_data();
}

void TestModbusPeers::aChangeIsReported()
{
    QFETCH(bool, serial);
    if (!whyNot(serial).isEmpty()) {
        QSKIP(qPrintable(whyNot(serial)));
    }
    RUN(acquire({standard(serial, {Acquire::slave(3, {"399 uint16", "398 uint16"})})}));
    const QString name = serial ? "ModbusRTU" : "ModbusTCP";
    QCOMPARE(values(name), (QStringList{"0", "0"}));
    peer(serial)->write("3 399 4711\n");
    QTRY_COMPARE(values(name), (QStringList{"4711", "0"}));
    peer(serial)->write("3 399 0\n");
    QTRY_COMPARE(values(name), (QStringList{"0", "0"}));
}

// A pseudo-terminal has neither; a real line has both.
void TestModbusPeers::aLineWithoutParityAndRtsIsUsedWithout()
{
    if (!whyNot(true).isEmpty()) {
        QSKIP(qPrintable(whyNot(true)));
    }
    QJsonObject standard = this->standard(true, {Acquire::slave(1, {"5 uint16"})});
    QJsonObject parameter = standard.value("parameter").toObject();
    parameter.insert("parityBit", "EVEN");
    parameter.insert("rtsEnable", "1");
    standard.insert("parameter", parameter);
    QJsonObject second = standard;
    second.insert("name", "second"); // so that the line is opened many times
    RUN(acquire({standard, second}));
    QCOMPARE(values("ModbusRTU"), QStringList{"54321"});
    m_tool->take(m_tool->bytes().size());
    QCOMPARE(values("second"), QStringList{"54321"});
    m_log.sort();
    QCOMPARE(m_log,
             (QStringList{QString("\"ModbusRTU\": %1 has no RTS, and is used without").arg(m_line),
                          QString("\"ModbusRTU\": %1 has no parity, and is used without").arg(m_line),
                          QString("\"second\": %1 has no RTS, and is used without").arg(m_line),
                          QString("\"second\": %1 has no parity, and is used without").arg(m_line)}));
}

void TestModbusPeers::twoStandardsShareALine()
{
    if (!whyNot(true).isEmpty()) {
        QSKIP(qPrintable(whyNot(true)));
    }
    QJsonObject first = standard(true, {Acquire::slave(1, {"5 uint16", "6 int32"})});
    QJsonObject second = standard(true, {Acquire::slave(4, {"5 uint16", "6 int32"}, "DCBA")});
    QJsonObject parameter = second.value("parameter").toObject();
    parameter.insert("baudRate", "9600");
    second.insert("parameter", parameter);
    second.insert("name", "second");
    RUN(acquire({first, second}));
    QCOMPARE(values("ModbusRTU"), (QStringList{"54321", "-123456789"}));
    QCOMPARE(values("second"), (QStringList{"54321", "-123456789"}));
    QCOMPARE(m_log, QStringList());
}

void TestModbusPeers::aRebootAndAnotherProjectCloseTheConnection()
{
    QTcpServer device; // says nothing
    QVERIFY(device.listen(QHostAddress("127.0.51.1"), Port + 1));
    BoxSimOptions own = withProject(
        Acquire::project({Acquire::tcp("127.0.51.1", Port + 1, {Acquire::slave(1, {"5 uint16"})}, 600000)}));
    own.reportInterval = -1;
    own.rebootTime = 200;
    own.acquire.on = true;
    RUN(start(own));
    QTRY_VERIFY(device.hasPendingConnections());
    std::unique_ptr<QTcpSocket> first(device.nextPendingConnection());
    m_tool->send(Raw::json("{\"type\":\"6\",\"pares\":{\"reboot\":\"reboot\"}}"));
    QTRY_COMPARE(first->state(), QAbstractSocket::UnconnectedState);
    QTRY_VERIFY(device.hasPendingConnections()); // when it is back
    std::unique_ptr<QTcpSocket> second(device.nextPendingConnection());
    QElapsedTimer clock;
    clock.start();
    QVERIFY(m_box->runProject(Acquire::project({})));
    QVERIFY2(clock.elapsed() < 1000, QByteArray::number(clock.elapsed()));
    QTRY_COMPARE(second->state(), QAbstractSocket::UnconnectedState);
}

QTEST_GUILESS_MAIN(TestModbusPeers)
#include "tst_modbuspeers.moc"

#include "boxsim/commandline.h"
#include "rawtool.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>

// The program boxsim: its command line, what it prints, how it ends.
class TestBoxSimProgram : public QObject
{
    Q_OBJECT

private slots:
    void defaultsAreThoseOfABox();
    void everyOptionIsTaken();
    void wrongCommandLinesAreTold_data();
    void wrongCommandLinesAreTold();
    void whatItReceivesIsPrintedAndLogged();
    void bytesAreShownOnRequest();
    void quietPrintsTheReadinessLineOnly();
    void acceptedFilesAreKept();
    void endsWithTheLastConnection();
    void endsAfterItsSeconds();
    void endsOnASignal();
    void acquisitionIsLoggedAndEndsAtOnce();
    void whatKeepsItFromStartingIsTold_data();
    void whatKeepsItFromStartingIsTold();

private:
    static QString address() { return "127.0.12.4"; }
    // Starts the program on its address and waits for the readiness line.
    static bool start(QProcess *process, const QStringList &arguments)
    {
        process->setProgram(QString(BOXSIM_PROGRAM));
        process->setArguments(QStringList{"--address", address()} + arguments);
        process->start(QIODevice::ReadOnly);
        const QByteArray ready = "listening on 127.0.12.4:30088\n";
        return QTest::qWaitFor([process, ready] { return process->peek(1000000).contains(ready); });
    }
    static bool ended(QProcess *process)
    {
        return QTest::qWaitFor([process] { return process->state() == QProcess::NotRunning; });
    }
};

void TestBoxSimProgram::defaultsAreThoseOfABox()
{
    const CommandLine line = readCommandLine({"boxsim"});
    const BoxSimOptions usual;
    QCOMPARE(line.action, CommandLine::Action::Run);
    QCOMPARE(line.options.address, usual.address);
    QCOMPARE(line.options.port, 30088);
    QVERIFY(line.options.discovery);
    QVERIFY(line.options.discoveryAddress.isNull());
    QCOMPARE(line.options.reportInterval, usual.reportInterval);
    QCOMPARE(line.options.seed, usual.seed);
    QCOMPARE(line.options.version, usual.version);
    QCOMPARE(line.options.serialNumber, usual.serialNumber);
    QCOMPARE(line.options.model, usual.model);
    QCOMPARE(line.options.rebootTime, usual.rebootTime);
    QCOMPARE(line.options.maxFileSize, usual.maxFileSize);
    QVERIFY(!line.options.acquire.on && line.options.acquire.grouping);
    QVERIFY(!line.quiet && !line.once && !line.hex);
    QCOMPARE(line.seconds, 0);
}

void TestBoxSimProgram::everyOptionIsTaken()
{
    const QString text =
        "boxsim --address 0.0.0.0 --port 4000 --discovery-address 127.0.0.9 --no-discovery --project p.json "
        "--report-interval 250 --seed 9 --set lanIp=1.2.3.4 --set AT1=a=b --box-version 2.0 "
        "--serial-number S --model M --acquire --serial COM1=/dev/ttyS9 --serial COM2=/a=b --no-grouping "
        "--reboot-time 5 --max-file 7 --save kept --fault split=3 --fault silent --log l.txt --hex --quiet "
        "--once "
        "--seconds 12";
    const CommandLine line = readCommandLine(text.split(QLatin1Char(' ')));
    QCOMPARE(line.text, QString());
    QCOMPARE(line.action, CommandLine::Action::Run);
    QCOMPARE(line.options.address, QHostAddress(QHostAddress::AnyIPv4));
    QCOMPARE(line.options.port, 4000);
    QCOMPARE(line.options.discoveryAddress, QHostAddress("127.0.0.9"));
    QVERIFY(!line.options.discovery);
    QVERIFY(line.options.acquire.on && !line.options.acquire.grouping);
    QCOMPARE(line.options.acquire.serialLines,
             (QMap<QString, QString>{{"COM1", "/dev/ttyS9"}, {"COM2", "/a=b"}}));
    QCOMPARE(line.projectFile, "p.json");
    QCOMPARE(line.options.reportInterval, 250);
    QCOMPARE(line.options.seed, 9U);
    QCOMPARE(line.options.settings, (QMap<QString, QString>{{"lanIp", "1.2.3.4"}, {"AT1", "a=b"}}));
    QCOMPARE(line.options.version, "2.0");
    QCOMPARE(line.options.serialNumber, "S");
    QCOMPARE(line.options.model, "M");
    QCOMPARE(line.options.rebootTime, 5);
    QCOMPARE(line.options.maxFileSize, 7);
    QCOMPARE(line.saveFolder, "kept");
    QCOMPARE(line.options.faults.split, 3);
    QVERIFY(line.options.faults.silent);
    QCOMPARE(line.logFile, "l.txt");
    QVERIFY(line.hex && line.quiet && line.once);
    QCOMPARE(line.seconds, 12);
}

void TestBoxSimProgram::wrongCommandLinesAreTold_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("told");
    const auto row = [](const char *arguments, const char *told) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments) << QByteArray(told);
    };
    row("--nonsense", "Unknown option 'nonsense'.");
    row("--port 65536", "--port takes a number from 0 to 65535");
    row("--port x", "--port takes a number from 0 to 65535");
    row("--address localhost", "--address takes an IP address");
    row("--address=", "--address takes an IP address");
    const char *const range = "--address takes a range such as 127.1.0.1-200, up to 255";
    row("--address 127.1.0.200-1", range);
    row("--address 127.1.0.1-256", range);
    row("--address 127.1.0.1-5-9", range);
    row("--address 127.1.0.1-5,127.1.1.1-5", range);
    row("--address 127.1.0.010-20", range); // 8 or 10, by whom one asks
    row("--address 127.1.0.1-", range);
    row("--address 127.1.0.1-5\n", range);
    row("--address 127.1.0-5", range);
    row("--address 0.0.0.0-5", range);
    row("--address ::1-5", range);
    row("--seconds 0", "--seconds takes a number from 1 to 1000000");
    row("--report-interval -1", "--report-interval takes a number from 0 to 1000000000");
    row("--set lanIp", "--set takes key=value");
    row("--serial S7", "--serial takes NAME=PATH, such as COM1=/dev/ttyUSB0");
    row("--serial =/dev/ttyS0", "--serial takes NAME=PATH, such as COM1=/dev/ttyUSB0");
    row("--serial COM1=", "--serial takes NAME=PATH, such as COM1=/dev/ttyUSB0");
    // Whoever names a line takes what is reported for values of it.
    row("--serial COM1=/dev/ttyS9", "--serial needs --acquire");
    row("--no-grouping", "--no-grouping needs --acquire");
    row("--acquire --serial COM1=/dev/ttyS9 --address 127.1.0.1-2",
        "--serial is for one Box, since a line serves one only");
    row("--scenario bogus", "there is no scenario bogus");
    row("--scenario=", "there is no scenario ");
    row("--fault bogus", "there is no fault bogus");
    row("--fault split=x", "fault split cannot be set so: split=x");
    row("file", "unexpected argument: file");
}

void TestBoxSimProgram::wrongCommandLinesAreTold()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, told);
    QProcess process;
    process.start(QString(BOXSIM_PROGRAM), arguments.split(QLatin1Char(' ')), QIODevice::ReadOnly);
    QVERIFY(ended(&process));
    QCOMPARE(process.readAllStandardError(), "boxsim: " + told + "\nTry --help.\n");
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    QCOMPARE(process.exitCode(), 2);
}

void TestBoxSimProgram::whatItReceivesIsPrintedAndLogged()
{
    QProcess process;
    QVERIFY(start(&process, {"--log", "box.log"}));
    RawTool tool;
    QVERIFY(tool.connectTo(QHostAddress(address())));
    tool.send(Raw::heartbeat);
    QCOMPARE(tool.takeFrame().size(), 38);
    tool.send("?" + Raw::json("{\"type\":2,\"pares\":{}}"));
    QVERIFY(QTest::qWaitFor([&process] { return process.peek(1000000).contains("must have type"); }));
    process.terminate();
    QVERIFY(ended(&process));
    QString printed = QString::fromUtf8(process.readAllStandardOutput());
    QFile log("box.log");
    QVERIFY(log.open(QIODevice::ReadOnly));
    printed.remove("listening on 127.0.12.4:30088\n");
    QCOMPARE(QString::fromUtf8(log.readAll()), printed);
    static const QRegularExpression timeAndPeer(
        "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} 127\\.0\\.0\\.1:\\d+");
    printed.replace(timeAndPeer, "T P");
    QCOMPARE(printed.section("T P -- gone\n", 0, 0),
             "T P -- connected\n"
             "T P -> heartbeat\n"
             "T P <- heartbeat answer: 1.0.0, SIM00000001, MRN-GATE-70\n"
             "T P !! 1 bytes outside of any frame, 0 headers without one\n"
             "T P -> read LAN: {\"pares\":{},\"type\":2}\n"
             "T P !! read LAN must have type as a string\n");
}

void TestBoxSimProgram::bytesAreShownOnRequest()
{
    QProcess process;
    QVERIFY(start(&process, {"--hex", "--once", "--model", "M~\x7f"}));
    RawTool tool;
    QVERIFY(tool.connectTo(QHostAddress(address())));
    tool.send(Raw::heartbeat);
    QCOMPARE(tool.takeFrame().size(), 30);
    tool.socket().disconnectFromHost();
    QVERIFY(ended(&process));
    QStringList indented = QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n'));
    indented = indented.filter(QRegularExpression("^    "));
    QCOMPARE(indented,
             QStringList({
                 "    0000  12 34 01 00 08 00 56 78                          .4....Vx",
                 "    0000  12 34 02 00 1e 00 05 31 2e 30 2e 30 0b 53 49 4d  "
                 ".4.....1.0.0.SIM",
                 "    0010  30 30 30 30 30 30 30 31 03 4d 7e 7f 56 78        "
                 "00000001.M~.Vx",
             }));
}

void TestBoxSimProgram::quietPrintsTheReadinessLineOnly()
{
    QProcess process;
    QVERIFY(start(&process, {"--quiet", "--once"}));
    RawTool tool;
    QVERIFY(tool.connectTo(QHostAddress(address())));
    tool.send(Raw::heartbeat);
    QCOMPARE(tool.takeFrame().size(), 38);
    tool.socket().disconnectFromHost();
    QVERIFY(ended(&process));
    QCOMPARE(process.readAllStandardOutput(), QByteArray("listening on 127.0.12.4:30088\n"));
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void TestBoxSimProgram::acceptedFilesAreKept()
{
    QProcess process;
    QVERIFY(start(&process, {"--save", "kept/here", "--once"}));
    RawTool tool;
    QVERIFY(tool.connectTo(QHostAddress(address())));
    tool.send(Raw::transfer(3, "a", "0cc175b9c0f1b6a831c399e269772661")
              + Raw::checksum(4, 0, "d41d8cd98f00b204e9800998ecf8427e"));
    QCOMPARE(tool.take(20).size(), 20);
    tool.socket().disconnectFromHost();
    QVERIFY(ended(&process));
    QFile project("kept/here/project.json");
    QVERIFY(project.open(QIODevice::ReadOnly));
    QCOMPARE(project.readAll(), QByteArray("a"));
    QVERIFY(QFile::exists("kept/here/program.bin"));
}

void TestBoxSimProgram::endsWithTheLastConnection()
{
    QProcess process;
    QVERIFY(start(&process, {"--once"}));
    RawTool first;
    RawTool second;
    QVERIFY(first.connectTo(QHostAddress(address())));
    QVERIFY(second.connectTo(QHostAddress(address())));
    second.send(Raw::heartbeat);
    QCOMPARE(second.takeFrame().size(), 38);
    first.socket().disconnectFromHost();
    QVERIFY(QTest::qWaitFor([&process] { return process.peek(1000000).contains("gone"); }));
    second.send(Raw::heartbeat);
    QCOMPARE(second.takeFrame().size(), 38);
    second.socket().disconnectFromHost();
    QVERIFY(ended(&process));
    QCOMPARE(process.exitCode(), 0);
}

void TestBoxSimProgram::endsAfterItsSeconds()
{
    QProcess process;
    QVERIFY(start(&process, {"--seconds", "1"}));
    QVERIFY(ended(&process));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

void TestBoxSimProgram::endsOnASignal()
{
    QProcess process;
    QVERIFY(start(&process, {}));
    process.terminate();
    QVERIFY(ended(&process));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

// It waits ten minutes for a server that says nothing, and nobody has told it a line for COM1.
void TestBoxSimProgram::acquisitionIsLoggedAndEndsAtOnce()
{
#ifndef BOXSIM_MODBUS
    QSKIP("Modbus was left out of this build");
#endif
    QTcpServer device;
    QVERIFY(device.listen(QHostAddress(address()), 1502));
    QFile project("acquire.json");
    QVERIFY(project.open(QIODevice::WriteOnly));
    const QByteArray slaves = "\"datas\":[{\"stationNum\":\"1\",\"datas\":["
                              "{\"addr\":\"40001\",\"name\":\"p\",\"dataType\":\"int16\"}]}]";
    project.write("{\"name\":\"P\",\"standards\":["
                  "{\"name\":\"A\",\"protocol\":\"Modbus\",\"modbus\":\"ModbusTCP\",\"parameter\":"
                  "{\"ip\":\"127.0.12.4\",\"port\":\"1502\",\"communicationTimeout\":\"600000\"},"
                  + slaves
                  + "},{\"name\":\"B\",\"protocol\":\"Modbus\",\"modbus\":\"ModbusRTU\",\"parameter\":"
                    "{\"serialport\":\"COM1\"},"
                  + slaves + "}]}");
    project.close();
    QProcess process;
    QVERIFY(start(&process, {"--project", "acquire.json", "--acquire"}));
    QVERIFY(QTest::qWaitFor([&] { return process.peek(1000000).contains("not read"); }));
    QVERIFY(process.readAllStandardOutput().contains(
        " box -- \"B\": not read, no --serial names the line for COM1\n"));
    QTRY_VERIFY(device.hasPendingConnections());
    QElapsedTimer clock;
    clock.start();
    process.terminate();
    QVERIFY(ended(&process));
    QVERIFY2(clock.elapsed() < 2000, QByteArray::number(clock.elapsed()));
    QCOMPARE(process.exitCode(), 0);
}

void TestBoxSimProgram::whatKeepsItFromStartingIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("told");
    QTest::newRow("project file missing") << QStringList{"--project", "none.json"}
                                          << QByteArray("boxsim: none.json: No such file or directory\n");
    QTest::newRow("log in a missing folder") << QStringList{"--log", "none/l.txt"}
                                             << QByteArray("boxsim: none/l.txt: No such file or directory\n");
    QTest::newRow("unknown setting") << QStringList{"--set", "x=y"}
                                     << QByteArray("boxsim: no such setting, or not a value for it: x=y\n");
    QTest::newRow("address of another computer")
        << QStringList{"--address", "203.0.113.1"}
        << QByteArray("boxsim: TCP 203.0.113.1:30088: The address is not available\n");
}

void TestBoxSimProgram::whatKeepsItFromStartingIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, told);
    QProcess process;
    process.start(QString(BOXSIM_PROGRAM), QStringList{"--address", address()} + arguments,
                  QIODevice::ReadOnly);
    QVERIFY(ended(&process));
    QCOMPARE(process.readAllStandardError(), told);
    QCOMPARE(process.exitCode(), 1);
}

QTEST_GUILESS_MAIN(TestBoxSimProgram)
#include "tst_boxsimprogram.moc"

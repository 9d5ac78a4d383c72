#include "boxsim/boxrange.h"
#include "boxsim/commandline.h"
#include "files.h"
#include "rawtool.h"
#include "run.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>

#include <memory>

// Many Boxes in one process.
class TestBoxSimMany : public QObject
{
    Q_OBJECT

private slots:
    void rangesAreTaken_data();
    void rangesAreTaken();
    void eachHasItsOwnOptions_data();
    void eachHasItsOwnOptions();
    void eachHasSettingsAndAProjectOfItsOwn();
    void eachHasValuesOfItsOwn();
    void allHaveTheFaults();
    void oneThatIsTakenLeavesNothingOpen();
    void programTellsThemInOrder();
    void logTellsWhichBox();
    void endsWithTheLastConnectionOfAll();
    void filesAreKeptBoxByBox();
    void programEndsWhereOneIsTaken();

private:
    static BoxSimOptions options()
    {
        BoxSimOptions options = Raw::quietBox(QHostAddress("127.0.49.1"), QString());
        options.discovery = false;
        return options;
    }
    static std::unique_ptr<RawTool> toolAt(const QString &address)
    {
        auto tool = std::make_unique<RawTool>();
        return tool->connectTo(QHostAddress(address)) ? std::move(tool) : nullptr;
    }
    // Starts the program and waits until its last Box is there.
    static bool start(QProcess *process, const QStringList &arguments)
    {
        process->start(QString(BOXSIM_PROGRAM), QStringList{"--address", "127.0.49.1-3"} + arguments,
                       QIODevice::ReadOnly);
        return has(process, "listening on 127.0.49.3:30088\n");
    }
    static bool has(QProcess *process, const QByteArray &text)
    {
        return QTest::qWaitFor([process, text] { return process->peek(1000000).contains(text); });
    }
    static bool ended(QProcess *process)
    {
        return QTest::qWaitFor([process] { return process->state() == QProcess::NotRunning; });
    }
};

void TestBoxSimMany::rangesAreTaken_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("first");
    QTest::addColumn<int>("count");
    QTest::newRow("200") << "127.1.0.1-200"
                         << "127.1.0.1" << 200;
    QTest::newRow("all") << "127.1.0.0-255"
                         << "127.1.0.0" << 256;
    QTest::newRow("one") << "127.1.0.7-7"
                         << "127.1.0.7" << 1;
    QTest::newRow("no range") << "127.1.0.7"
                              << "127.1.0.7" << 1;
}

void TestBoxSimMany::rangesAreTaken()
{
    QFETCH(QString, text);
    QFETCH(QString, first);
    QFETCH(int, count);
    const CommandLine line = readCommandLine({"boxsim", "--address", text});
    QCOMPARE(line.text, QString());
    QCOMPARE(line.options.address, QHostAddress(first));
    QCOMPARE(line.boxCount, count);
}

void TestBoxSimMany::eachHasItsOwnOptions_data()
{
    QTest::addColumn<QString>("serialNumber");
    QTest::addColumn<int>("place");
    QTest::addColumn<QString>("own");
    QTest::newRow("first") << "SIM00000001" << 0 << "SIM00000001";
    QTest::newRow("last") << "SIM00000001" << 199 << "SIM00000200";
    QTest::newRow("a digit more") << "A-99" << 1 << "A-100";
    QTest::newRow("many digits") << "12345678901234567890" << 1 << "12345678901234567891";
    QTest::newRow("no number, first") << "S" << 0 << "S1";
    QTest::newRow("no number") << "S" << 11 << "S12";
    QTest::newRow("no number at the end") << "S1\n" << 1 << "S1\n2";
    QTest::newRow("nothing") << "" << 2 << "3";
}

void TestBoxSimMany::eachHasItsOwnOptions()
{
    QFETCH(QString, serialNumber);
    QFETCH(int, place);
    QFETCH(QString, own);
    BoxSimOptions first = options();
    first.serialNumber = serialNumber;
    first.seed = 7;
    const BoxSimOptions its = BoxRange::optionsAt(first, place);
    QCOMPARE(its.serialNumber, own);
    QCOMPARE(its.address, QHostAddress(0x7f003101U + quint32(place)));
    QCOMPARE(its.seed, 7U + quint32(place));
}

void TestBoxSimMany::eachHasSettingsAndAProjectOfItsOwn()
{
    BoxRange range(options(), 3);
    QVERIFY2(range.start(), qPrintable(range.errorString()));
    const auto second = toolAt("127.0.49.2");
    QVERIFY(second);
    const QByteArray project = Files::contents(TEST_DATA_DIR "/one-slave.json");
    second->send(
        Raw::transfer(3, project, QCryptographicHash::hash(project, QCryptographicHash::Md5).toHex()));
    QCOMPARE(second->take(10).size(), 10);
    const auto setting = toolAt("127.0.49.2");
    QVERIFY(setting);
    setting->send(Raw::json("{\"type\":108,\"pares\":{\"NTP\":\"10.0.0.9\"}}"));
    QVERIFY(!setting->takeJson().isEmpty());
    QStringList told;
    for (const auto &box : range.boxes()) {
        told.append(box->setting("NTP") + ' ' + box->projectName() + ' '
                    + QString::number(box->connectionCount()));
    }
    QCOMPARE(told.join(QLatin1String("; ")), "192.168.1.1  0; 10.0.0.9 P 2; 192.168.1.1  0");
}

void TestBoxSimMany::eachHasValuesOfItsOwn()
{
    BoxSimOptions all = options();
    all.project = Files::contents(TEST_DATA_DIR "/one-slave.json");
    BoxRange range(all, 2);
    QVERIFY2(range.start(), qPrintable(range.errorString()));
    QVector<QJsonObject> reports;
    for (const auto &box : range.boxes()) {
        const auto tool = toolAt(box->options().address.toString());
        QVERIFY(tool);
        tool->send(Raw::heartbeat);
        QCOMPARE(tool->takeFrame().size(), 38);
        box->reportNow();
        reports += Raw::reports(tool->takeFrame());
    }
    QCOMPARE(reports.size(), 2);
    QCOMPARE(reports.at(0).value("sn").toString(), "SIM00000001");
    QCOMPARE(reports.at(1).value("sn").toString(), "SIM00000002");
    QCOMPARE(reports.at(0).value("datas").toArray().size(), 2);
    QVERIFY(reports.at(0).value("datas") != reports.at(1).value("datas"));
}

void TestBoxSimMany::allHaveTheFaults()
{
    BoxSimOptions all = options();
    QVERIFY(applyFault("drop-after-received=1", &all.faults));
    BoxRange range(all, 3);
    QVERIFY2(range.start(), qPrintable(range.errorString()));
    for (const auto &box : range.boxes()) {
        const auto tool = toolAt(box->options().address.toString());
        QVERIFY(tool);
        tool->send(Raw::heartbeat);
        QVERIFY(tool->waitForEnd());
    }
}

void TestBoxSimMany::oneThatIsTakenLeavesNothingOpen()
{
    QTcpServer taken;
    QVERIFY(taken.listen(QHostAddress("127.0.49.3"), 30088));
    BoxRange range(options(), 3);
    QVERIFY(!range.start());
    QCOMPARE(range.errorString(), "TCP 127.0.49.3:30088: The bound address is already in use");
    for (const auto &box : range.boxes()) {
        QVERIFY(!box->isListening());
    }
    taken.close();
    QVERIFY2(range.start(), qPrintable(range.errorString()));
}

void TestBoxSimMany::programTellsThemInOrder()
{
    QProcess process;
    QVERIFY(start(&process, {}));
    process.terminate();
    QVERIFY(ended(&process));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardOutput(),
             QByteArray("listening on 127.0.49.1:30088\nlistening on 127.0.49.2:30088\n"
                        "listening on 127.0.49.3:30088\n"));
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void TestBoxSimMany::logTellsWhichBox()
{
    QProcess process;
    QVERIFY(start(&process, {"--quiet", "--log", "many.log"}));
    int gone = 0;
    for (const char *address : {"127.0.49.3", "127.0.49.1"}) {
        const auto tool = toolAt(QString::fromLatin1(address));
        QVERIFY(tool);
        tool->send(Raw::heartbeat);
        QCOMPARE(tool->takeFrame().size(), 38);
        tool->send(Raw::transfer(3, "a", "0cc175b9c0f1b6a831c399e269772661"));
        QCOMPARE(tool->take(10).size(), 10);
        tool->socket().disconnectFromHost();
        QTRY_COMPARE(Files::contents("many.log").count("gone"), gone + 1);
        ++gone;
    }
    process.kill();
    QVERIFY(ended(&process));
    QString log = QString::fromUtf8(Files::contents("many.log"));
    static const QRegularExpression time("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}");
    static const QRegularExpression peer(" 127\\.0\\.0\\.1:\\d+");
    log.replace(time, "T").replace(peer, " P");
    const QString lines = "T %1 P -- connected\n"
                          "T %1 P -> heartbeat\n"
                          "T %1 P <- heartbeat answer: 1.0.0, %2, MRN-GATE-70\n"
                          "T %1 P -> project chunk 1: 1 bytes of 1\n"
                          "T %1 P -> project checksum of 1 bytes: 0cc175b9c0f1b6a831c399e269772661\n"
                          "T %1 P <- project verdict: success\n"
                          "T %1 box -- project accepted, 1 bytes\n"
                          "T %1 P !! pushed file is no project: illegal value\n"
                          "T %1 P -- gone\n";
    QCOMPARE(log, lines.arg("127.0.49.3", "SIM00000003") + lines.arg("127.0.49.1", "SIM00000001"));
}

// One that ends while another has its own goes on.
void TestBoxSimMany::endsWithTheLastConnectionOfAll()
{
    QProcess process;
    QVERIFY(start(&process, {"--once"}));
    const auto first = toolAt("127.0.49.1");
    const auto second = toolAt("127.0.49.2");
    QVERIFY(first && second);
    QVERIFY(has(&process, "127.0.49.2 127.0.0.1:"));
    first->socket().disconnectFromHost();
    QVERIFY(has(&process, "gone"));
    second->send(Raw::heartbeat);
    QCOMPARE(second->takeFrame().size(), 38);
    second->socket().disconnectFromHost();
    QVERIFY(ended(&process));
    QCOMPARE(process.exitCode(), 0);
}

void TestBoxSimMany::filesAreKeptBoxByBox()
{
    QProcess process;
    QVERIFY(start(&process, {"--save", "kept/here"}));
    const auto second = toolAt("127.0.49.2");
    const auto third = toolAt("127.0.49.3");
    QVERIFY(second && third);
    second->send(Raw::transfer(3, "a", "0cc175b9c0f1b6a831c399e269772661"));
    third->send(Raw::transfer(4, "b", "92eb5ffee6ae2fec3ad71c777531578f"));
    QVERIFY(has(&process, "127.0.49.2 box -- saved kept/here/127.0.49.2/project.json\n"));
    QVERIFY(has(&process, "127.0.49.3 box -- saved kept/here/127.0.49.3/program.bin\n"));
    QCOMPARE(Files::contents("kept/here/127.0.49.2/project.json"), QByteArray("a"));
    QCOMPARE(Files::contents("kept/here/127.0.49.3/program.bin"), QByteArray("b"));
    QVERIFY(!QFile::exists("kept/here/127.0.49.3/project.json"));
    process.kill();
    QVERIFY(ended(&process));
}

void TestBoxSimMany::programEndsWhereOneIsTaken()
{
    QTcpServer taken;
    QVERIFY(taken.listen(QHostAddress("127.0.49.2"), 30088));
    QProcess process;
    process.start(QString(BOXSIM_PROGRAM), {"--address", "127.0.49.1-3"}, QIODevice::ReadOnly);
    QVERIFY(ended(&process));
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    QCOMPARE(process.readAllStandardError(),
             QByteArray("boxsim: TCP 127.0.49.2:30088: The bound address is already in use\n"));
    QCOMPARE(process.exitCode(), 1);
}

QTEST_GUILESS_MAIN(TestBoxSimMany)
#include "tst_boxsimmany.moc"

#include "boxctltest.h"
#include "files.h"
#include "fullhost.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtTest>

#include <memory>
#include <vector>

using namespace BoxCtl;

namespace {

const QString address = "127.0.40.20";
const QString other = "127.0.40.21";
const QString nowhere = "127.0.40.22"; // nothing listens there
const QString oneSlave = TEST_DATA_DIR "/one-slave.json";

// The output with each time that a push took as "T".
Outcome timeless(Outcome outcome)
{
    static const QRegularExpression time("in [0-9.]+ s|\"seconds\":[0-9.]+");
    outcome.out.replace(time, "T");
    return outcome;
}

} // namespace

// Projects and programs to Boxes.
class TestBoxCtlPushes : public QObject
{
    Q_OBJECT
private slots:
    void pushesWhatTheFileHolds();
    void pushesToManySideBySide();
    void pushAsJson();
    void documentWithErrorsIsNotPushed();
    void badDocumentIsNotPushed();
    void warningsAreTold();
    void faults_data();
    void faults();
    void program();
    void programThatChangesGoesToNoOtherBox();
    void badPrograms_data();
    void badPrograms();
    void boxThatTakesNoConnection();
    void interruptTellsOfThePushUnderWay();
    void interruptWhileItIsSent();
    void commissioningScript();
};

void TestBoxCtlPushes::pushesWhatTheFileHolds()
{
    SimulatedBox box(address, {"--save", "kept"});
    QCOMPARE(timeless(run({"push", oneSlave, address})),
             (Outcome{0, "127.0.40.20: took " + oneSlave + ", 2496 bytes T\n", QString()}));
    QVERIFY(box.hasHeard("saved "));
    QCOMPARE(Files::contents("kept/project.json"), Files::contents(oneSlave));
}

void TestBoxCtlPushes::pushesToManySideBySide()
{
    std::vector<std::unique_ptr<SimulatedBox>> boxes;
    QByteArray list;
    for (int box = 30; box < 38; ++box) {
        const QString its = QString("127.0.40.%1").arg(box);
        boxes.push_back(std::make_unique<SimulatedBox>(its, QStringList{"--fault", "late-verdict=500"}));
        list += its.toLatin1() + '\n';
    }
    Files::put("list", list);
    QElapsedTimer clock;
    clock.start();
    const Outcome outcome = run({"push", oneSlave, "@list"});
    QVERIFY2(clock.elapsed() < 8 * 500, "one waited for another");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.out.count("took "), 8);
}

void TestBoxCtlPushes::pushAsJson()
{
    const SimulatedBox box(address);
    QCOMPARE(timeless(run({"push", "--json", "--jobs", "1", oneSlave, address, nowhere})),
             (Outcome{1,
                      "{\"box\":\"127.0.40.20\",\"bytes\":2496,\"file\":\"" + oneSlave
                          + "\",\"ok\":true,T}\n"
                            "{\"box\":\"127.0.40.22\",\"error\":\"No connection (Connection refused)\","
                            "\"ok\":false}\n",
                      "boxctl: 127.0.40.22: No connection (Connection refused)\n"
                      "boxctl: 1 of 2 Boxes done, 1 failed\n"}));
}

void TestBoxCtlPushes::documentWithErrorsIsNotPushed()
{
    SimulatedBox box(address);
    Files::put("bad.json", Files::contents(oneSlave).replace("192.168.1.60", ""));
    const QString remark = "boxctl: bad.json: Error: Standard/M: The IP address is empty.\n";
    QCOMPARE(run({"push", "bad.json", address}),
             (Outcome{3, QString(),
                      remark + "boxctl: bad.json: not pushed, since it has errors; --force pushes it\n"}));
    QCOMPARE(timeless(run({"push", "--force", "bad.json", address})),
             (Outcome{0, "127.0.40.20: took bad.json, 2484 bytes T\n", remark}));
}

void TestBoxCtlPushes::badDocumentIsNotPushed()
{
    Files::put("none.json", "[]");
    QCOMPARE(run({"push", "none.json", address}),
             (Outcome{3, QString(), "boxctl: none.json: it holds no JSON object\n"}));
    Files::put("package.json", R"({"name": "leftpad", "version": "1.0.0", "dependencies": {}})");
    QCOMPARE(run({"push", "package.json", address}),
             (Outcome{3, QString(), "boxctl: package.json: it is no project document\n"}));
    QCOMPARE(run({"push", oneSlave}),
             (Outcome{2, QString(), "boxctl: push: a Box is missing\nboxctl: try boxctl push --help\n"}));
    QCOMPARE(
        run({"push"}),
        (Outcome{2, QString(),
                 "boxctl: push: it takes a project document, then Boxes\nboxctl: try boxctl push --help\n"}));
}

void TestBoxCtlPushes::warningsAreTold()
{
    const SimulatedBox box(address);
    Files::put("warned.json", Files::contents(oneSlave).replace("192.168.1.70", ""));
    QCOMPARE(timeless(run({"push", "warned.json", address})),
             (Outcome{0, "127.0.40.20: took warned.json, 2484 bytes T\n",
                      "boxctl: warned.json: Warning: Box/B: The IP address is empty.\n"}));
}

void TestBoxCtlPushes::faults_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("error");
    const QString unknown = ": whether it took the file is not known";
    QTest::newRow("bad verdict") << "verdict=bad"
                                 << "The Box refused the file: its checksum failed";
    QTest::newRow("other command") << "verdict=wrong-command"
                                   << "All was handed over, but the Box's verdict is none" + unknown;
    QTest::newRow("other sub-type") << "verdict=wrong-subtype"
                                    << "All was handed over, but the Box's verdict is none" + unknown;
    QTest::newRow("half a verdict") << "verdict=partial"
                                    << "All was handed over, but the Box's verdict is none" + unknown;
    QTest::newRow("lost at once")
        << "drop-after-received=1"
        << "The link broke before all was sent (The remote host closed the connection)";
    QTest::newRow("lost before the verdict") << "drop-after-received=2580"
                                             << "All was handed over, but the Box gave no verdict" + unknown
            + " (The remote host closed the connection)";
}

void TestBoxCtlPushes::faults()
{
    QFETCH(QString, fault);
    QFETCH(QString, error);
    const SimulatedBox box(address, {"--fault", fault});
    const SimulatedBox sound(other);
    QByteArray large = Files::contents(oneSlave);
    if (fault == "drop-after-received=1") {
        large += QByteArray(8 * 1024 * 1024, ' '); // past what the system takes at once
    }
    Files::put("pushed.json", large);
    // The Box that fails keeps no other from its project.
    QCOMPARE(timeless(run({"push", "pushed.json", address, other, "--jobs", "1"})),
             (Outcome{1, QString("127.0.40.21: took pushed.json, %1 bytes T\n").arg(large.size()),
                      "boxctl: 127.0.40.20: " + error + "\nboxctl: 1 of 2 Boxes done, 1 failed\n"}));
}

void TestBoxCtlPushes::program()
{
    SimulatedBox box(address, {"--save", "kept"});
    Files::put("box.bin", QByteArray(100000, '\x7f'));
    QCOMPARE(timeless(run({"program", "box.bin", address})),
             (Outcome{0, "127.0.40.20: took box.bin, 100000 bytes T\n", QString()}));
    QVERIFY(box.hasHeard("saved "));
    QCOMPARE(Files::contents("kept/program.bin"), QByteArray(100000, '\x7f'));
}

void TestBoxCtlPushes::programThatChangesGoesToNoOtherBox()
{
    const SimulatedBox box(address, {"--fault", "late-verdict=1000"});
    const SimulatedBox second(other);
    Files::put("changing.bin", "old");
    RunningCall call({"program", "--jobs", "1", "changing.bin", address, other});
    QVERIFY(box.hasHeard("checksum"));
    Files::put("changing.bin", "new");
    QCOMPARE(timeless(call.outcome()),
             (Outcome{1, "127.0.40.20: took changing.bin, 3 bytes T\n",
                      "boxctl: 127.0.40.21: The file has changed meanwhile, or can no longer be read\n"
                      "boxctl: 1 of 2 Boxes done, 1 failed\n"}));
}

void TestBoxCtlPushes::badPrograms_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("why");
    Files::put("nothing.bin", "");
    QTest::newRow("missing") << "missing.bin"
                             << "it is no file";
    QTest::newRow("a folder") << "."
                              << "it is no file";
    QTest::newRow("endless") << "/dev/zero"
                             << "it is no file";
    QTest::newRow("empty") << "nothing.bin"
                           << "it is empty";
}

void TestBoxCtlPushes::badPrograms()
{
    QFETCH(QString, path);
    QFETCH(QString, why);
    QCOMPARE(run({"program", path, address}),
             (Outcome{3, QString(), QString("boxctl: %1: %2\n").arg(path, why)}));
}

void TestBoxCtlPushes::boxThatTakesNoConnection()
{
    const FullHost host(address);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(run({"push", "--timeout", "0.2", oneSlave, address}),
             (Outcome{1, QString(), "boxctl: 127.0.40.20: No connection (no answer in 0.2 s)\n"}));
    QVERIFY(clock.elapsed() < 10000);
}

void TestBoxCtlPushes::interruptTellsOfThePushUnderWay()
{
    SimulatedBox box(address, {"--fault", "verdict=none"});
    RunningCall call({"push", "--jobs", "1", oneSlave, address, other});
    QVERIFY(box.hasHeard("checksum"));
    call.signal(SIGINT);
    QCOMPARE(call.outcome(),
             (Outcome{1, QString(),
                      "boxctl: 127.0.40.20: interrupted while the push is under way, all handed over and "
                      "no verdict yet\n"
                      "boxctl: 127.0.40.21: interrupted before it was begun\n"
                      "boxctl: 0 of 2 Boxes done, 2 failed\n"}));
}

void TestBoxCtlPushes::interruptWhileItIsSent()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress(address), 30088));
    QTcpSocket *link = nullptr;
    connect(&server, &QTcpServer::newConnection, &server, [&] {
        link = server.nextPendingConnection();
        link->setReadBufferSize(1); // so that it takes in no more than the system does
    });
    Files::put("large.json", Files::contents(oneSlave) + QByteArray(32 * 1024 * 1024, ' '));
    RunningCall call({"push", "large.json", address});
    QTRY_VERIFY(link && link->bytesAvailable() == 1);
    call.signal(SIGINT);
    const Outcome outcome = call.outcome();
    static const QRegularExpression told(
        "\\Aboxctl: 127.0.40.20: interrupted while the push is under way, [1-9]?[0-9] % sent\n\\z");
    QVERIFY2(told.match(outcome.error).hasMatch(), qPrintable(outcome.error));
    QCOMPARE(outcome.status, 1);
}

// The script of the documentation, on ten Boxes of one list.
void TestBoxCtlPushes::commissioningScript()
{
    std::vector<std::unique_ptr<SimulatedBox>> boxes;
    QByteArray list;
    for (int box = 50; box < 60; ++box) {
        const QString its = QString("127.0.40.%1").arg(box);
        const QString kept = its + ".kept";
        boxes.push_back(
            std::make_unique<SimulatedBox>(its, QStringList{"--reboot-time", "100", "--save", kept}));
        list += its.toLatin1() + " Box\n";
    }
    Files::put("plant.txt", list);
    const QString path = QFileInfo(BOXCTL_PROGRAM).path() + ":" + qEnvironmentVariable("PATH");
    const Outcome outcome =
        run("env", {"PATH=" + path, SOURCE_ROOT "/docs/commission.sh", "plant.txt", oneSlave, "10.0.0.1"});
    QCOMPARE(outcome.error, QString("boxctl: 10 of 10 Boxes done, 0 failed\n").repeated(5));
    QVERIFY2(outcome.out.endsWith("all Boxes of plant.txt run " + oneSlave + "\n"), qPrintable(outcome.out));
    QCOMPARE(outcome.out.count(QLatin1Char('\n')), 5 * 10 + 1);
    QCOMPARE(run({"get", "@plant.txt", "ntp"}).out.count("ntp server=10.0.0.1\n"), 10);
    for (int box = 50; box < 60; ++box) {
        QCOMPARE(Files::contents(QString("127.0.40.%1.kept/project.json").arg(box)),
                 Files::contents(oneSlave));
    }
    boxes.pop_back();
    const Outcome failed =
        run("env", {"PATH=" + path, SOURCE_ROOT "/docs/commission.sh", "plant.txt", oneSlave, "10.0.0.1"});
    QCOMPARE(
        failed.error,
        QString("boxctl: 127.0.40.59 (Box): Connection refused\nboxctl: 9 of 10 Boxes done, 1 failed\n"));
    QCOMPARE(failed.status, 1);
}

QTEST_GUILESS_MAIN(TestBoxCtlPushes)
#include "tst_boxctlpushes.moc"

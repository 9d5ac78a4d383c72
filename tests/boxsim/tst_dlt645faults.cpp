#include "acquiretest.h"
#include "dlt645readertest.h"
#include "meterproject.h"

#include <QElapsedTimer>

#include <thread>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <termios.h>
#endif

#ifdef Q_OS_UNIX
namespace {

// The reader's own, since it keeps others from opening it; -1 if there is none.
int openLine()
{
    struct stat line = {};
    struct stat file = {};
    ::stat(QFile::encodeName(MeterSim::path()).constData(), &line);
    for (int number = 0; number < 1000; ++number) {
        if (::fstat(number, &file) == 0 && file.st_dev == line.st_dev && file.st_ino == line.st_ino) {
            return number;
        }
    }
    return -1;
}

} // namespace
#endif

// What goes wrong on a line of DL/T 645 meters, against the simulated meter.
class TestDlt645Faults : public Dlt645ReaderTest
{
    Q_OBJECT

private slots:
    void gapIsNoPartOfTheTimeOut();
    void faultsOfTheLine_data();
    void faultsOfTheLine();
    void damagedAnswerIsAskedForOnceMore();
    void silenceAboutOneItemLeavesTheOthers();
    void lateAnswerIsNotTakenForAnother();
    void lateErrorIsNotTakenForAnother();
    void shortRequestNeedsAWholeSilence();
    void nextReaderWaitsForTheSilence_data();
    void nextReaderWaitsForTheSilence();
    void lineThatIsNeverSilentIsLost();
    void lineThatIsNeverSilentCostsOneTimeOut();
    void lineInUseIsLeftAsItIs();
    void lineThatTakesNothingHasNoAnswer();
    void damagedAnswersCostOneTimeOut();
    void timeOutLeavesRoomForAnAnswer_data();
    void timeOutLeavesRoomForAnAnswer();
    void lineComesBack();
    void stopEndsAWait();
};

void TestDlt645Faults::gapIsNoPartOfTheTimeOut()
{
    m_standard.parameters["communicationGap"] = "250";
    addMeter("123456789012", {{"ua", "02010100", "XXX.X"}});
    RUN(open());
    QElapsedTimer clock;
    clock.start();
    m_silence->noteByte();
    QCOMPARE(read(0, 240), QStringList({"230.1"}));
    QVERIFY(clock.elapsed() >= 240);
}

void TestDlt645Faults::faultsOfTheLine_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QStringList>("told");
    const QStringList sound = {"230.1", "231.2"};
    const QStringList silent = {"-", "-", "silent: no answer"};
    const QStringList none;
    const QString misfit =
        "\"Meters\": ua is not read, meter 123456789012 gives the bytes %1, which do not fit its format";
    QTest::newRow("silence") << QByteArray("silence") << silent << none;
    QTest::newRow("half an answer") << QByteArray("half") << silent << none;
    QTest::newRow("another meter") << QByteArray("station") << silent << none;
    QTest::newRow("another item") << QByteArray("item") << silent << none;
    QTest::newRow("too late") << QByteArray("late=100*1") << silent << none;
    QTest::newRow("wrong checksums") << QByteArray("checksum")
                                     << QStringList{"-", "-", "silent: wrong checksums"} << none;
    QTest::newRow("noise") << QByteArray("noise=100") << sound << none;
    QTest::newRow("in pieces") << QByteArray("split=1") << sound << none;
    QTest::newRow("echo") << QByteArray("echo") << sound << none;
    QTest::newRow("error") << QByteArray("error=2*1") << QStringList{"-", "231.2"}
                           << QStringList{
                                  "\"Meters\": ua is not read, meter 123456789012 refuses it: no such data"};
    QTest::newRow("a byte too few") << QByteArray("short*1") << QStringList{"-", "231.2"}
                                    << QStringList{misfit.arg("01")};
    QTest::newRow("digits above 9") << QByteArray("digits*1") << QStringList{"-", "231.2"}
                                    << QStringList{misfit.arg("ffff")};
    QTest::newRow("more to come") << QByteArray("more*1") << QStringList{"-", "231.2"}
                                  << QStringList{"\"Meters\": ua is not read, its value at meter "
                                                 "123456789012 has more than one frame"};
}

void TestDlt645Faults::faultsOfTheLine()
{
    QFETCH(QByteArray, fault);
    QFETCH(QStringList, texts);
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault " + fault));
    QCOMPARE(read(0, texts.last() == "silent: no answer" ? impatience : patience), texts);
    QVERIFY(m_meter.tell("sound"));
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    QTEST(m_told, "told");
}

void TestDlt645Faults::damagedAnswerIsAskedForOnceMore()
{
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault checksum*1"));
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    const QString ua = "123456789012 02010100";
    const QString ub = "123456789012 02010200";
    QCOMPARE(m_meter.takeRequests(), QStringList({ua, ua, ub}));
    QVERIFY(m_meter.tell("fault checksum*3"));
    QCOMPARE(read(), QStringList({"-", "231.2"}));
    QCOMPARE(m_meter.takeRequests(), QStringList({ua, ua, ub, ub}));
}

void TestDlt645Faults::silenceAboutOneItemLeavesTheOthers()
{
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault silence*1"));
    QCOMPARE(read(0, impatience), QStringList({"-", "-", "silent: no answer"}));
    QVERIFY(m_meter.tell("fault ignore=02010100"));
    const QStringList line = {"\"Meters\": ua is not read, meter 123456789012 gives no answer to it"};
    for (int i = 1; i <= 5; ++i) {
        QCOMPARE(read(0, impatience), QStringList({"-", "231.2"}));
        QCOMPARE(m_told, i < 3 ? QStringList() : line);
    }
    QVERIFY(m_meter.tell("sound"));
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    // Told again now that it was read.
    QVERIFY(m_meter.tell("fault ignore=02010100"));
    for (int i = 1; i <= 4; ++i) {
        QCOMPARE(read(0, impatience), QStringList({"-", "231.2"}));
    }
    QCOMPARE(m_told, line + line);
}

void TestDlt645Faults::lateAnswerIsNotTakenForAnother()
{
    addMeter("123456789012", {{"ua", "02010100", "XXX.X"}});
    addMeter("AAAAAAAAAAAA", {{"ub", "02010200", "XXX.X"}});
    RUN(open());
    QVERIFY(m_meter.tell("fault late=100*1"));
    QCOMPARE(read(0, impatience), QStringList({"-", "silent: no answer"}));
    QCOMPARE(read(1), QStringList({"231.2"}));
}

// An error does not say which item it is about.
void TestDlt645Faults::lateErrorIsNotTakenForAnother()
{
    m_standard.parameters["communicationTimeout"] = "200";
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault error=2*1"));
    QVERIFY(m_meter.tell("fault late=300*1"));
    QCOMPARE(read(0, 200), QStringList({"-", "-", "silent: no answer"}));
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    QCOMPARE(m_told, QStringList());
}

// As what is lost is tried.
void TestDlt645Faults::shortRequestNeedsAWholeSilence()
{
    m_standard.parameters["communicationTimeout"] = "400";
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault error=2*1"));
    QVERIFY(m_meter.tell("fault late=250*1"));
    QCOMPARE(read(0, impatience), QStringList({"-", "-", "silent: no answer"}));
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    QCOMPARE(m_told, QStringList());
}

void TestDlt645Faults::nextReaderWaitsForTheSilence_data()
{
    QTest::addColumn<bool>("stopped");
    QTest::newRow("after a time-out") << false;
    QTest::newRow("after a stop") << true;
}

// Another Standard of the line, or one of another project. Nothing waits for it before.
void TestDlt645Faults::nextReaderWaitsForTheSilence()
{
    QFETCH(bool, stopped);
    m_standard.parameters["communicationTimeout"] = "400";
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault error=2*1"));
    QVERIFY(m_meter.tell("fault late=250*1"));
    std::thread stopper([this, stopped] {
        QTest::qSleep(impatience);
        if (stopped) {
            m_stop->set();
        }
    });
    read(0, stopped ? patience : impatience);
    stopper.join();
    QElapsedTimer clock;
    clock.start();
    m_reader->close();
    QVERIFY2(clock.elapsed() < 300, qPrintable(QString::number(clock.elapsed())));
    m_stop = std::make_unique<StopFlag>();
    RUN(open());
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    QCOMPARE(m_told, QStringList());
}

void TestDlt645Faults::lineThatIsNeverSilentIsLost()
{
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault split=10"));
    QCOMPARE(read(0, 30), QStringList({"-", "-", "silent: no answer"}));
    QCOMPARE(read(0, 30), QStringList({"-", "-", "lost: the line is never silent"}));
    m_reader->close();
    QVERIFY(m_meter.tell("sound"));
    RUN(open());
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
}

// However many meters wait for it to be silent, and however often.
void TestDlt645Faults::lineThatIsNeverSilentCostsOneTimeOut()
{
#ifdef Q_OS_UNIX
    constexpr int timeout = 250;
    Acquire::Terminal terminal;
    QTimer babble;
    connect(&babble, &QTimer::timeout, this, [&terminal] {
        terminal.read();
        terminal.write("\x11\x11\x11");
    });
    babble.start(10);
    QJsonObject standard = meterStandard("Meters", "COM1", false);
    QJsonObject line = standard.value("parameter").toObject();
    line.insert("parityBit", "NONE");
    line.insert("communicationTimeout", QString::number(timeout));
    standard.insert("parameter", line);
    const QJsonValue meter = standard.value("datas").toArray().at(0);
    standard.insert("datas", QJsonArray{meter, meter, meter});
    Acquire::Run run;
    run.start({standard}, 10, {{"COM1", terminal.path()}});
    const QString lost =
        "\"Meters\": " + terminal.path() + " lost after 3 attempts: the line is never silent";
    EVENTUALLY(run.log.contains(lost) && run.count() >= 3);
    const qint64 took = run.times[0].at(2) - run.times[0].at(0); // two readings
    QVERIFY2(took < 2 * 2 * timeout, qPrintable(QString::number(took)));
#endif
}

void TestDlt645Faults::lineInUseIsLeftAsItIs()
{
#ifdef Q_OS_UNIX
    const Acquire::Terminal terminal;
    const Acquire::LineUser user(terminal.path(), B38400);
    m_standard.parameters["baudRate"] = "1200";
    makeReader(terminal.path());
    QString reason;
    QCOMPARE(user.speedsDuring([&] { m_reader->open(patience, &reason); }), QSet<uint>{B38400});
    QCOMPARE(reason, "it is in use");
#endif
}

// As one does whose other end holds it up: that is no failure of the line.
void TestDlt645Faults::lineThatTakesNothingHasNoAnswer()
{
#ifdef Q_OS_UNIX
    addMeter("123456789012");
    RUN(open());
    const int line = openLine();
    QVERIFY(line >= 0);
    QCOMPARE(tcflow(line, TCOOFF), 0);
    QCOMPARE(read(0, impatience), QStringList({"-", "-", "silent: no answer"}));
    QCOMPARE(tcflow(line, TCOON), 0);
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    QCOMPARE(m_meter.takeRequests(),
             QStringList({"123456789012 02010200", "123456789012 02010100"})); // nothing of the first one
#endif
}

// Each item takes part of it; those behind have their turn next time.
void TestDlt645Faults::damagedAnswersCostOneTimeOut()
{
    const QVector<SimPoint> points = allPoints(false);
    addMeter("123456789012", points);
    RUN(open());
    QVERIFY(m_meter.tell("fault checksum"));
    QCOMPARE(read(0, 190).last(), QString("silent: wrong checksums"));
    const QStringList asked = m_meter.takeRequests();
    QVERIFY2(asked.size() >= 4 && asked.size() <= 6, qPrintable(asked.join(", ")));
    QCOMPARE(read(0, 190).last(), QString("silent: wrong checksums"));
    QCOMPARE(m_meter.takeRequests().first(), "123456789012 " + points.at(asked.size() / 2).addr);
    QVERIFY(m_meter.tell("sound"));
    QCOMPARE(read(), allTexts(false));
}

void TestDlt645Faults::timeOutLeavesRoomForAnAnswer_data()
{
    QTest::addColumn<QString>("baudRate");
    QTest::addColumn<int>("least");
    QTest::newRow("600") << "600" << 1453;
    QTest::newRow("2400") << "2400" << 738;
    QTest::newRow("115200") << "115200" << 504;
}

// 500 ms until the answer begins, and 52 characters of 11 bits.
void TestDlt645Faults::timeOutLeavesRoomForAnAnswer()
{
    QFETCH(QString, baudRate);
    m_standard.parameters["baudRate"] = baudRate;
    m_standard.parameters["parityBit"] = "EVEN";
    makeReader();
    QTEST(m_reader->leastTimeout(), "least");
}

void TestDlt645Faults::lineComesBack()
{
    m_standard.parameters["parityBit"] = "EVEN";
    m_standard.parameters["rtsEnable"] = "1";
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_reader->isOpen());
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    const QStringList lost = {"-", "-", "lost: the line hung up"};
    QVERIFY(m_meter.tell("fault gone"));
    QCOMPARE(read(), lost); // while it waits for an answer
    QCOMPARE(read(), lost);
    m_reader->close();
    QVERIFY(!m_reader->isOpen());
    QString reason;
    QVERIFY(!m_reader->open(patience, &reason));
    QCOMPARE(reason, "No such file or directory");
    QVERIFY(m_meter.start());
    QVERIFY(m_reader->open(patience, &reason));
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    QCOMPARE(m_told,
             QStringList({"\"Meters\": " + MeterSim::path() + " has no parity, and is used without",
                          "\"Meters\": " + MeterSim::path() + " has no RTS, and is used without"}));
}

void TestDlt645Faults::stopEndsAWait()
{
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault silence"));
    std::thread stopper([this] {
        QTest::qSleep(100);
        m_stop->set();
    });
    QElapsedTimer clock;
    clock.start();
    read(0, 60000);
    stopper.join();
    QVERIFY2(clock.elapsed() < patience, qPrintable(QString::number(clock.elapsed())));
}

QTEST_GUILESS_MAIN(TestDlt645Faults)
#include "tst_dlt645faults.moc"

#include "boxsim/acquire/dlt645reader.h"
#include "boxsim/acquire/stopflag.h"
#include "boxsim/boxsim.h"
#include "boxsim/simproject.h"
#include "meterproject.h"
#include "metersim.h"
#include "rawtool.h"
#include "run.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <memory>
#include <thread>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>
#endif

namespace {

constexpr int patience = 5000; // milliseconds; no answer of the meter takes so long
constexpr int impatience = 50;

// The texts of a report, "-" for what is not valid.
QStringList reportedTexts(const QJsonObject &report)
{
    QStringList texts;
    const QJsonArray points = report.value("datas").toArray();
    for (const QJsonValue &point : points) {
        const bool valid = point.toObject().value("valid").toString() == "1";
        texts.append(valid ? point.toObject().value("value").toString() : "-");
    }
    return texts;
}

} // namespace

// DL/T 645 meters on a serial line, against the simulated meter, which has code of its own.
class TestDlt645Reader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void everyItemIsRead_data();
    void everyItemIsRead();
    void boxReportsWhatMetersSay();
    void metersOfALineAreToldApart();
    void changedValueIsSeen();
    void gapIsNoPartOfTheTimeOut();
    void faultsOfTheLine_data();
    void faultsOfTheLine();
    void damagedAnswerIsAskedForOnceMore();
    void silenceAboutOneItemLeavesTheOthers();
    void lateAnswerIsNotTakenForAnother();
    void lateErrorIsNotTakenForAnother();
    void lineIsSilentBeforeItIsClosed();
    void lineThatIsNeverSilentIsLost();
    void lineThatTakesNothingHasNoAnswer();
    void damagedAnswersCostOneTimeOut();
    void timeOutLeavesRoomForAnAnswer_data();
    void timeOutLeavesRoomForAnAnswer();
    void refusalIsToldAgainAfterAValue();
    void lineComesBack();
    void whatIsNoLineIsTold_data();
    void whatIsNoLineIsTold();
    void whatCannotBeReadIsTold_data();
    void whatCannotBeReadIsTold();
    void stopEndsAWait();
    void simulatedMeterRefusesWrongWords_data();
    void simulatedMeterRefusesWrongWords();

private:
    // A meter with voltages of the phases A and B unless told otherwise.
    void addMeter(const QString &address,
                  const QVector<SimPoint> &points = {{"ua", "02010100", "XXX.X"},
                                                     {"ub", "02010200", "XXX.X"}})
    {
        SimDevice device;
        device.settings = {{"slaveAddress", address}, {"protocolVersion", "1"}};
        device.firstPoint = m_standard.points.size();
        device.pointCount = points.size();
        m_standard.devices.append(device);
        m_standard.points += points;
    }
    void makeReader(const QString &path = MeterSim::path())
    {
        ReaderSetup setup;
        setup.standard = &m_standard;
        setup.serialPath = path;
        setup.stop = m_stop.get();
        setup.tell = [this](const QString &text) { m_told.append(text); };
        m_reader = std::make_unique<Dlt645Reader>(setup);
    }
    void open()
    {
        makeReader();
        QString reason;
        QVERIFY2(m_reader->open(patience, &reason), qPrintable(reason));
    }
    // The texts of a meter's values, "-" for what is not valid, and at last the reason if it has not
    // answered.
    QStringList read(int device = 0, int timeout = patience)
    {
        QVector<PointReading> readings(m_standard.devices.at(device).pointCount);
        const DeviceReader::Result result = m_reader->read(device, timeout, readings.data());
        QStringList texts;
        for (const PointReading &reading : qAsConst(readings)) {
            texts.append(reading.valid ? reading.value : "-");
        }
        if (result.outcome != DeviceReader::Outcome::Answered) {
            const bool lost = result.outcome == DeviceReader::Outcome::Closed;
            texts.append((lost ? QString("lost: ") : QString("silent: ")) + result.reason);
        }
        return texts;
    }

    MeterSim m_meter;
    SimStandard m_standard;
    std::unique_ptr<StopFlag> m_stop;
    std::unique_ptr<Dlt645Reader> m_reader;
    QStringList m_told;
};

void TestDlt645Reader::initTestCase()
{
    if (!MeterSim::whyNot().isEmpty()) {
        QSKIP(qPrintable(MeterSim::whyNot()));
    }
    QVERIFY(m_meter.start());
}

void TestDlt645Reader::init()
{
    m_standard = SimStandard();
    m_standard.name = "Meters";
    m_standard.parameters = {{"baudRate", "115200"}, {"parityBit", "NONE"}, {"communicationGap", "0"}};
    m_stop = std::make_unique<StopFlag>();
    m_told.clear();
    QVERIFY(m_meter.tell("sound"));
    m_meter.takeRequests();
}

void TestDlt645Reader::cleanup()
{
    m_reader.reset();
}

void TestDlt645Reader::everyItemIsRead_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("older");
    QTest::addColumn<int>("count");
    QTest::newRow("2007") << "123456789012" << false << 44;
    QTest::newRow("1997") << "123456789012" << true << 30;
    QTest::newRow("2007, any meter") << "AAAAAAAAAAAA" << false << 44;
    QTest::newRow("1997, the end of the address") << "AAAAAAAA9012" << true << 30;
}

void TestDlt645Reader::everyItemIsRead()
{
    QFETCH(QString, address);
    QFETCH(bool, older);
    QFETCH(int, count);
    const QVector<SimPoint> points = allPoints(older);
    QStringList requests;
    for (const SimPoint &point : points) {
        requests.append(address + " " + point.addr);
    }
    QCOMPARE(points.size(), count);
    addMeter(address, points);
    m_standard.devices[0].settings["protocolVersion"] = older ? "2" : "1";
    RUN(open());
    QCOMPARE(read(), allTexts(older));
    QCOMPARE(m_meter.takeRequests(), requests);
    QCOMPARE(m_told, QStringList());
}

// Two Standards on one line, and one whose line nobody names.
void TestDlt645Reader::boxReportsWhatMetersSay()
{
    BoxSimOptions options;
    options.address = QHostAddress("127.0.53.21");
    options.reportInterval = 60000; // one reading
    options.acquire.on = true;
    options.acquire.serialLines = {{"COM1", MeterSim::path()}};
    BoxSim box(options);
    QStringList told;
    connect(&box, &BoxSim::acquisitionTold, this, [&told](const QString &text) { told.append(text); });
    QVERIFY2(box.start(), qPrintable(box.errorString()));
    RawTool tool;
    QVERIFY(tool.connectTo(options.address));
    tool.send(Raw::heartbeat);
    QCOMPARE(tool.takeFrame().size(), 38);
    const QJsonArray standards{meterStandard("of 2007", "COM1", false),
                               meterStandard("of 1997", "COM1", true), meterStandard("none", "COM2", true)};
    QVERIFY(box.runProject(QJsonDocument(QJsonObject{{"name", "P"}, {"standards", standards}}).toJson()));
    QMap<QString, QStringList> texts;
    QTRY_VERIFY([&] {
        const QVector<QJsonObject> reports = Raw::reports(tool.bytes());
        for (const QJsonObject &report : reports) {
            texts[report.value("plcName").toString()] = reportedTexts(report);
        }
        return texts.size() == 3;
    }());
    QCOMPARE(texts.value("of 2007"), allTexts(false));
    QCOMPARE(texts.value("of 1997"), allTexts(true));
    QCOMPARE(texts.value("none").count("-"), 30);
    told.sort();
    QCOMPARE(told,
             QStringList({"\"none\": not read, no --serial names the line for COM2",
                          "\"of 1997\": " + MeterSim::path() + " has no parity, and is used without",
                          "\"of 2007\": " + MeterSim::path() + " has no parity, and is used without"}));
}

void TestDlt645Reader::metersOfALineAreToldApart()
{
    QVERIFY(m_meter.start({"--address", "11", "--address", "22", "--set", "22:02010100=99.9"}));
    addMeter("11");
    addMeter("22");
    addMeter("33");
    RUN(open());
    QCOMPARE(read(0), QStringList({"230.1", "231.2"}));
    QCOMPARE(read(1), QStringList({"99.9", "231.2"}));
    QCOMPARE(read(2, impatience), QStringList({"-", "-", "silent: no answer"}));
    QCOMPARE(m_meter.takeRequests(),
             QStringList({"000000000011 02010100", "000000000011 02010200", "000000000022 02010100",
                          "000000000022 02010200", "000000000033 02010100"}));
    m_reader.reset();
    QVERIFY(m_meter.start());
}

void TestDlt645Reader::changedValueIsSeen()
{
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("set 02010100=5"));
    QCOMPARE(read(), QStringList({"5.0", "231.2"}));
    QVERIFY(m_meter.tell("set 02010100=230.1"));
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
}

void TestDlt645Reader::gapIsNoPartOfTheTimeOut()
{
    m_standard.parameters["communicationGap"] = "400";
    addMeter("123456789012", {{"ua", "02010100", "XXX.X"}});
    RUN(open());
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(read(0, 350), QStringList({"230.1"}));
    QVERIFY(clock.elapsed() >= 350);
}

void TestDlt645Reader::faultsOfTheLine_data()
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

void TestDlt645Reader::faultsOfTheLine()
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

void TestDlt645Reader::damagedAnswerIsAskedForOnceMore()
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

void TestDlt645Reader::silenceAboutOneItemLeavesTheOthers()
{
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault silence*1"));
    QCOMPARE(read(0, impatience), QStringList({"-", "-", "silent: no answer"}));
    QVERIFY(m_meter.tell("fault ignore=02010100"));
    QCOMPARE(read(0, 300), QStringList({"-", "231.2"}));
    QVERIFY(m_meter.tell("sound"));
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
}

void TestDlt645Reader::lateAnswerIsNotTakenForAnother()
{
    addMeter("123456789012", {{"ua", "02010100", "XXX.X"}});
    addMeter("AAAAAAAAAAAA", {{"ub", "02010200", "XXX.X"}});
    RUN(open());
    QVERIFY(m_meter.tell("fault late=100*1"));
    QCOMPARE(read(0, impatience), QStringList({"-", "silent: no answer"}));
    QCOMPARE(read(1), QStringList({"231.2"}));
}

// An error does not say which item it is about.
void TestDlt645Reader::lateErrorIsNotTakenForAnother()
{
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault error=2*1"));
    QVERIFY(m_meter.tell("fault late=150*1"));
    QCOMPARE(read(0, 100), QStringList({"-", "-", "silent: no answer"}));
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    QCOMPARE(m_told, QStringList());
}

// The next Standard of the line opens it anew.
void TestDlt645Reader::lineIsSilentBeforeItIsClosed()
{
    addMeter("123456789012");
    RUN(open());
    QVERIFY(m_meter.tell("fault error=2*1"));
    QVERIFY(m_meter.tell("fault late=150*1"));
    QCOMPARE(read(0, 100), QStringList({"-", "-", "silent: no answer"}));
    QElapsedTimer clock;
    clock.start();
    m_reader->close();
    QVERIFY2(clock.elapsed() >= 100, qPrintable(QString::number(clock.elapsed())));
    RUN(open());
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
}

void TestDlt645Reader::lineThatIsNeverSilentIsLost()
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

// As one does whose other end holds it up: that is no failure of the line.
void TestDlt645Reader::lineThatTakesNothingHasNoAnswer()
{
#ifdef Q_OS_UNIX
    addMeter("123456789012");
    RUN(open());
    const int line = ::open(QFile::encodeName(MeterSim::path()).constData(), O_RDWR | O_NOCTTY);
    QVERIFY(line >= 0);
    QCOMPARE(tcflow(line, TCOOFF), 0);
    QCOMPARE(read(0, impatience), QStringList({"-", "-", "silent: no answer"}));
    QCOMPARE(tcflow(line, TCOON), 0);
    ::close(line);
    QCOMPARE(read(), QStringList({"230.1", "231.2"}));
    QCOMPARE(m_meter.takeRequests(),
             QStringList({"123456789012 02010200", "123456789012 02010100"})); // nothing of the first one
#endif
}

// Each item takes part of it; those behind have their turn next time.
void TestDlt645Reader::damagedAnswersCostOneTimeOut()
{
    const QVector<SimPoint> points = allPoints(false);
    addMeter("123456789012", points);
    RUN(open());
    QVERIFY(m_meter.tell("fault checksum"));
    QCOMPARE(read(0, 250).last(), QString("silent: wrong checksums"));
    const QStringList asked = m_meter.takeRequests();
    QVERIFY2(asked.size() >= 4 && asked.size() <= 6, qPrintable(asked.join(", ")));
    QCOMPARE(read(0, 250).last(), QString("silent: wrong checksums"));
    QCOMPARE(m_meter.takeRequests().first(), "123456789012 " + points.at(asked.size() / 2).addr);
    QVERIFY(m_meter.tell("sound"));
    QCOMPARE(read(), allTexts(false));
}

void TestDlt645Reader::timeOutLeavesRoomForAnAnswer_data()
{
    QTest::addColumn<QString>("baudRate");
    QTest::addColumn<int>("least");
    QTest::newRow("600") << "600" << 1453;
    QTest::newRow("2400") << "2400" << 738;
    QTest::newRow("115200") << "115200" << 504;
}

// 500 ms until the answer begins, and 52 characters of 11 bits.
void TestDlt645Reader::timeOutLeavesRoomForAnAnswer()
{
    QFETCH(QString, baudRate);
    m_standard.parameters["baudRate"] = baudRate;
    m_standard.parameters["parityBit"] = "EVEN";
    makeReader();
    QTEST(m_reader->leastTimeout(), "least");
}

void TestDlt645Reader::refusalIsToldAgainAfterAValue()
{
    addMeter("123456789012", {{"ua", "02010100", "XXX.X"}});
    RUN(open());
    const QString told = "\"Meters\": ua is not read, meter 123456789012 refuses it: no such data";
    for (const QStringList &lines : {QStringList{told}, QStringList{told, told}}) {
        QVERIFY(m_meter.tell("fault error=2*2"));
        QCOMPARE(read(), QStringList("-"));
        QCOMPARE(read(), QStringList("-"));
        QCOMPARE(m_told, lines);
        QCOMPARE(read(), QStringList("230.1"));
    }
}

void TestDlt645Reader::lineComesBack()
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

void TestDlt645Reader::whatIsNoLineIsTold_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");
    QTest::newRow("nothing there") << "/nowhere/tty"
                                   << "No such file or directory";
    QTest::newRow("no terminal") << "/dev/null"
                                 << "Inappropriate ioctl for device";
}

void TestDlt645Reader::whatIsNoLineIsTold()
{
    QFETCH(QString, path);
    makeReader(path);
    QCOMPARE(m_reader->lineName(), path);
    QString reason;
    QVERIFY(!m_reader->open(patience, &reason));
    QVERIFY(!m_reader->isOpen());
    QTEST(reason, "reason");
}

void TestDlt645Reader::whatCannotBeReadIsTold_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("dataType");
    QTest::addColumn<QStringList>("told");
    const QString none = "\"Meters\": ua is not read, \"%1\" is no data identifier of DL/T 645-%2";
    QTest::newRow("all is well") << "1"
                                 << "1"
                                 << "02010100"
                                 << "XXX.X" << QStringList();
    QTest::newRow("no address") << "1"
                                << ""
                                << "02010100"
                                << "XXX.X"
                                << QStringList(
                                       "\"Meters\": meter \"\" is not read, there is no such address");
    QTest::newRow("wrong address") << "1"
                                   << "00BC"
                                   << "02010100"
                                   << "XXX.X"
                                   << QStringList(
                                          "\"Meters\": meter \"00BC\" is not read, there is no such address");
    QTest::newRow("no item") << "1"
                             << "1"
                             << ""
                             << "XXX.X" << QStringList(none.arg("", "2007"));
    QTest::newRow("the other edition") << "2"
                                       << "1"
                                       << "02010100"
                                       << "XXX.X" << QStringList(none.arg("02010100", "1997"));
    QTest::newRow("no format") << "1"
                               << "1"
                               << "02010100"
                               << "float"
                               << QStringList(
                                      "\"Meters\": ua is not read, \"float\" is no format of a value");
}

void TestDlt645Reader::whatCannotBeReadIsTold()
{
    QFETCH(QString, address);
    QFETCH(QStringList, told);
    QFETCH(QString, item);
    QFETCH(QString, dataType);
    QFETCH(QString, version);
    addMeter(address, {{"ua", item, dataType}});
    m_standard.devices[0].settings["protocolVersion"] = version;
    makeReader();
    QCOMPARE(m_told, told);
    QCOMPARE(m_reader->hasWork(0), told.isEmpty());
    QCOMPARE(m_reader->deviceName(0), "meter " + address);
}

void TestDlt645Reader::stopEndsAWait()
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

void TestDlt645Reader::simulatedMeterRefusesWrongWords_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("refusal");
    QTest::newRow("no command") << QByteArray("sleep") << QByteArray("sleep: set, fault or sound is wanted");
    QTest::newRow("no fault") << QByteArray("fault fire") << QByteArray("fire is no fault");
    QTest::newRow("a value too many") << QByteArray("fault half=2") << QByteArray("half has no value");
    QTest::newRow("a value of letters") << QByteArray("fault late=a") << QByteArray("a is no number");
    QTest::newRow("no item") << QByteArray("set 02019900=1") << QByteArray("there is no 02019900=1");
    QTest::newRow("no such meter") << QByteArray("set 9:02010100=1")
                                   << QByteArray("there is no 9:02010100=1");
    QTest::newRow("no number") << QByteArray("set 02010100=high") << QByteArray("high is no number");
    QTest::newRow("too many digits") << QByteArray("set 02010100=1000")
                                     << QByteArray("1000 has more digits than 230.1");
    QTest::newRow("no room for the sign")
        << QByteArray("set 02010100=-900") << QByteArray("-900 has no room for its sign");
}

void TestDlt645Reader::simulatedMeterRefusesWrongWords()
{
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, refusal);
    QVERIFY(m_meter.refuses(command, refusal));
}

QTEST_GUILESS_MAIN(TestDlt645Reader)
#include "tst_dlt645reader.moc"

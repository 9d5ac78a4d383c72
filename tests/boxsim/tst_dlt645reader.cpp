#include "boxsim/boxsim.h"
#include "dlt645readertest.h"
#include "meterproject.h"
#include "rawtool.h"

#include <QSignalSpy>

namespace {

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
class TestDlt645Reader : public Dlt645ReaderTest
{
    Q_OBJECT

private slots:
    void everyItemIsRead_data();
    void everyItemIsRead();
    void boxReportsWhatMetersSay();
    void metersOfALineAreToldApart();
    void changedValueIsSeen();
    void refusalIsToldAgainAfterAValue();
    void whatIsNoLineIsTold_data();
    void whatIsNoLineIsTold();
    void whatCannotBeReadIsTold_data();
    void whatCannotBeReadIsTold();
    void simulatedMeterRefusesWrongWords_data();
    void simulatedMeterRefusesWrongWords();
};

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

#include "boxsim/acquire/link.h"
#include "standardruntest.h"

#include <QSemaphore>

// The rhythm of one Standard's readings: beats, and what is lost and comes back.
class TestStandardRun : public StandardRunTest
{
    Q_OBJECT

private slots:
    void beatsAreKeptOrSkipped_data();
    void beatsAreKeptOrSkipped();
    void skippedBeatsAreToldOnce();
    void beatsThatTriesTakeAreCounted();
    void whatCannotBeReadKeepsItsLastValue();
    void aDeadDeviceIsLostAndBack();
    void aDeadDeviceCostsOneTimeoutUntilItIsLost();
    void aLineThatDoesNotOpenIsLostAndBack();
    void aLineThatBreaksIsOpenedAnewAtOnce();
    void aDeviceThatBreaksTheLineIsLostAlone();
    void aLineThatCannotBeUsedIsAskedOnce();
    void aSilentLineIsNotClosedInTheReading();
    void whatIsSaidForADeviceKeepsTheLine();
    void aLineWithoutAnAnswerIsOpenedAnew();
    void aReadingInWhichNobodyAnswersEnds();
    void aGatewayThatNamesTheSilentEndsAReading();
    void thatNobodyAnswersIsToldWhenItIsSo_data();
    void thatNobodyAnswersIsToldWhenItIsSo();
    void theSilentKeepNobodyFromTheirTurn();
    void thoseThatAnsweredAreAskedBehindTheSilent();
    void nothingIsToldAfterAStop();
    void withoutAReaderNothingIsValid();
    void readingsThatNobodyTakesDoNotQueue();
};

void TestStandardRun::beatsAreKeptOrSkipped_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("cost");
    QTest::addColumn<QVector<qint64>>("starts");
    using Times = QVector<qint64>;
    QTest::newRow("no time") << 1000 << 0 << Times{0, 1000, 2000, 3000};
    QTest::newRow("within the beat") << 1000 << 999 << Times{0, 1000, 2000, 3000};
    QTest::newRow("as long as the beat") << 1000 << 1000 << Times{0, 1000, 2000, 3000};
    QTest::newRow("longer") << 1000 << 1001 << Times{0, 2000, 4000, 6000};
    QTest::newRow("two and a half") << 1000 << 2500 << Times{0, 3000, 6000, 9000};
}

void TestStandardRun::beatsAreKeptOrSkipped()
{
    QFETCH(int, interval);
    QFETCH(int, cost);
    start(1, interval);
    m_reader->cost = cost;
    QVector<qint64> starts;
    for (int i = 0; i < 4; ++i) {
        starts.append(m_run->due());
        beat();
    }
    QTEST(starts, "starts");
}

void TestStandardRun::skippedBeatsAreToldOnce()
{
    start(1, 1000);
    m_reader->cost = 2500;
    beats(10);
    QCOMPARE(m_told, QStringList{"\"S\": skips beats, a reading takes longer than 1000 ms"});
    m_reader->cost = 10;
    beats(10);
    QCOMPARE(m_told.mid(1), QStringList{"\"S\": keeps its beat again, 20 were skipped"});
}

// Those of a plant that is off, too: until its beat is kept each has a report or is counted.
void TestStandardRun::beatsThatTriesTakeAreCounted()
{
    start(10, 2000);
    m_reader->timeout = 2000;
    m_reader->quiet = 2000;
    m_reader->die(0, 10);
    int reports = 0;
    for (; m_told.filter("keeps").isEmpty() && reports < 1000; ++reports) {
        beat(true);
    }
    const QString told = "\"S\": keeps its beat again, %1 were skipped";
    QCOMPARE(m_told.filter("keeps"), QStringList{told.arg(m_run->due() / 2000 - reports)});
}

void TestStandardRun::whatCannotBeReadKeepsItsLastValue()
{
    start(2, 1000);
    m_reader->dead = {1};
    QCOMPARE(beat(), (QStringList{"v1", "-"}));
    m_reader->dead.clear();
    QCOMPARE(beat(), (QStringList{"v2", "v2"}));
    m_reader->dead = {0};
    QCOMPARE(beat(), (QStringList{"-v2", "v3"}));
    QCOMPARE(beat(), (QStringList{"-v2", "v4"}));
}

void TestStandardRun::aDeadDeviceIsLostAndBack()
{
    start(2, 1000);
    m_reader->dead = {0};
    beats(100);
    QCOMPARE(m_told, QStringList{"\"S\": station 1 lost after 3 attempts: no answer"});
    QCOMPARE(m_reader->forgotten, QVector<int>{0});
    const int attempts = m_reader->asked[0];
    QVERIFY2(attempts >= 13 && attempts <= 100, QByteArray::number(attempts));
    QCOMPARE(m_reader->asked[1], 100);
    m_reader->dead.clear();
    beats(11);
    QCOMPARE(m_told.mid(1), QStringList{QString("\"S\": station 1 back after %1 attempts").arg(attempts)});
    QCOMPARE(beat().at(0).at(0), QChar('v'));
    QCOMPARE(m_run->due(), 112000); // no beat fell out
}

void TestStandardRun::aDeadDeviceCostsOneTimeoutUntilItIsLost()
{
    start(2, 1000);
    m_reader->dead = {0};
    for (const int took : {200, 200, 200, 0, 0, 0}) {
        beat();
        QCOMPARE(m_took, took);
    }
}

void TestStandardRun::aLineThatDoesNotOpenIsLostAndBack()
{
    start(3, 1000);
    m_reader->closed = true;
    for (const int took : {200, 200, 200, 0, 0}) {
        QCOMPARE(beat(), (QStringList{"-", "-", "-"}));
        QCOMPARE(m_took, took);
    }
    beats(20);
    QCOMPARE(m_told, QStringList{"\"S\": line lost after 3 attempts: no line"});
    QCOMPARE(m_reader->forgotten, (QVector<int>{0, 1, 2}));
    const int attempts = m_reader->opened;
    m_reader->closed = false;
    beats(11);
    QCOMPARE(m_told.mid(1), QStringList{QString("\"S\": line back after %1 attempts").arg(attempts)});
    QCOMPARE(m_reader->opened, attempts + 1);
    QVERIFY(!beat().contains("-"));
}

void TestStandardRun::aLineThatBreaksIsOpenedAnewAtOnce()
{
    start(2, 1000);
    beats(2);
    QCOMPARE(m_reader->opened, 1);
    m_reader->breaks = 1;
    QCOMPARE(beat(), (QStringList{"v4", "v3"}));
    QCOMPARE(m_reader->opened, 2);
    m_reader->breaks = 2;
    QCOMPARE(beat(), (QStringList{"-v4", "v4"}));
    QCOMPARE(beat().at(0).at(0), QChar('v'));
    QCOMPARE(m_told, QStringList());
}

void TestStandardRun::aDeviceThatBreaksTheLineIsLostAlone()
{
    start(4, 1000);
    m_reader->breakers = {1};
    for (int i = 1; i <= 20; ++i) {
        const QString value = QString("v%1").arg(i);
        QCOMPARE(beat(), (QStringList{value, "-", value, value}));
    }
    QCOMPARE(m_told, QStringList{"\"S\": station 2 lost after 3 attempts: closed"});
    // All are lost with the line; the first is the one that then stays away.
    m_reader->closed = true;
    m_reader->breakers = {2};
    beats(5);
    m_reader->breakers = {0};
    m_reader->closed = false;
    beats(15);
    QCOMPARE(beat().mid(1).filter("-"), QStringList());
}

void TestStandardRun::aLineThatCannotBeUsedIsAskedOnce()
{
    start(3, 1000);
    m_reader->unusable = true;
    QCOMPARE(beat(), (QStringList{"-", "-", "-"}));
    QCOMPARE(m_reader->asked, (QMap<int, int>{{0, 1}}));
    beats(10);
    QCOMPARE(m_told, QStringList{"\"S\": line lost after 3 attempts: no use"});
}

// A serial line waits for silence before it is closed, which costs the report nothing.
void TestStandardRun::aSilentLineIsNotClosedInTheReading()
{
    start(1, 1000);
    m_reader->quiet = 200;
    m_reader->dead = {0};
    for (int i = 0; i < 3; ++i) {
        beat();
        QCOMPARE(m_took, 200);
        QVERIFY(!m_reader->isOpen());
    }
}

// A gateway has answered, if not the device behind it.
void TestStandardRun::whatIsSaidForADeviceKeepsTheLine()
{
    start(1, 1000);
    m_reader->absent = {0};
    beats(20);
    QCOMPARE(m_told, QStringList{"\"S\": station 1 lost after 3 attempts: away"});
    QCOMPARE(m_reader->opened, 1);
}

// A peer that was switched off does not end its connection.
void TestStandardRun::aLineWithoutAnAnswerIsOpenedAnew()
{
    start(2, 1000);
    m_reader->dead = {0};
    beats(5);
    QCOMPARE(m_reader->opened, 1);
    m_reader->dead = {0, 1};
    beat();
    QCOMPARE(m_reader->opened, 2);
}

// Not after the time-outs of a whole plant, so that something is seen soon when the cable is off.
void TestStandardRun::aReadingInWhichNobodyAnswersEnds()
{
    start(10, 2000);
    m_reader->timeout = 2000;
    m_reader->quiet = 2000;
    m_reader->die(0, 10);
    const QVector<QSet<int>> turns = {{0, 1, 2}, {3, 4, 5}, {6, 7, 8}, {9, 0, 1}, {2, 3, 4}};
    for (const QSet<int> &turn : turns) {
        m_reader->asked.clear();
        beat();
        QVERIFY(m_took <= 12000); // three time-outs, and the silence before each
        const QList<int> asked = m_reader->asked.keys();
        QCOMPARE(QSet<int>(asked.begin(), asked.end()), turn);
    }
    timeUntilTold("lost", 10);
    QCOMPARE(m_told.filter("nobody").size(), 1);
    QVERIFY2(m_time <= 130000, QByteArray::number(m_time)); // of 120 s that the attempts take
    // Again if somebody was heard in between.
    m_reader->dead.clear();
    timeUntilTold("back", 10);
    m_reader->die(0, 10);
    beats(2);
    QCOMPARE(m_told.filter("nobody").size(), 2);
}

// As if they were silent, since it may take as long. It tells why itself.
void TestStandardRun::aGatewayThatNamesTheSilentEndsAReading()
{
    start(10, 2000);
    m_reader->timeout = 2000;
    for (int i = 0; i < 10; ++i) {
        m_reader->slow[i] = 1000;
        m_reader->absent.insert(i);
    }
    while (m_told.filter("lost").size() < 10) {
        beat();
        QVERIFY2(m_took <= 3000, QByteArray::number(m_took));
    }
    QCOMPARE(m_told.filter("nobody"), QStringList());
    QCOMPARE(m_reader->opened, 1);
    QVERIFY2(m_time <= 50000, QByteArray::number(m_time));
    for (int i = 0; i < 20; ++i) {
        const qint64 before = m_time;
        beat(true);
        QVERIFY2(m_time - before <= 4000, QByteArray::number(m_time - before));
    }
}

void TestStandardRun::thatNobodyAnswersIsToldWhenItIsSo_data()
{
    QTest::addColumn<int>("devices");
    QTest::addColumn<int>("answering"); // the last ones
    QTest::addColumn<int>("before");    // readings in which all answer
    QTest::addColumn<int>("reading");   // in which it is told
    QTest::addColumn<QString>("asked"); // empty if it is not told
    QTest::newRow("two") << 2 << 0 << 0 << 3 << "";
    QTest::newRow("three") << 3 << 0 << 0 << 1 << "3 of 3";
    QTest::newRow("four") << 4 << 0 << 0 << 2 << "4 of 4";
    QTest::newRow("many") << 10 << 0 << 0 << 2 << "6 of 10";
    QTest::newRow("many that answered before") << 10 << 0 << 2 << 1 << "10 of 10";
    QTest::newRow("the fourth answers") << 4 << 1 << 0 << 5 << "";
    QTest::newRow("the sixth answers") << 6 << 1 << 0 << 5 << "";
}

void TestStandardRun::thatNobodyAnswersIsToldWhenItIsSo()
{
    QFETCH(int, devices);
    QFETCH(int, answering);
    QFETCH(int, before);
    QFETCH(int, reading);
    QFETCH(QString, asked);
    start(devices, 1000);
    beats(before);
    m_reader->die(0, devices - answering);
    beats(reading - 1);
    QCOMPARE(m_told.filter("nobody"), QStringList());
    beat();
    const QString told = "\"S\": nobody answers on line, %1 were asked: look at power, cable and settings";
    QCOMPARE(m_told.filter("nobody"), asked.isEmpty() ? QStringList() : QStringList{told.arg(asked)});
}

// Of a plant of which some are dead the others have their turn first, and the dead ones are lost as soon.
void TestStandardRun::theSilentKeepNobodyFromTheirTurn()
{
    start(6, 1000);
    m_reader->dead = {0, 1, 2, 3};
    const QString none = "-";
    QCOMPARE(beat(), (QStringList{none, none, none, none, none, none}));
    QCOMPARE(m_took, 600);
    QCOMPARE(beat(), (QStringList{none, none, none, none, "v1", "v1"}));
    QCOMPARE(beat(), (QStringList{none, none, none, none, "v2", "v2"}));
    QCOMPARE(m_told.filter("lost").size(), 3);
    QCOMPARE(beat(), (QStringList{none, none, none, none, "v3", "v3"}));
    QCOMPARE(m_told.filter("lost").size(), 4);
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(beat().filter("v").size(), 2);
    }
}

void TestStandardRun::thoseThatAnsweredAreAskedBehindTheSilent()
{
    start(6, 1000);
    beat();
    m_reader->dead = {0, 1, 2};
    QCOMPARE(beat(), (QStringList{"-v1", "-v1", "-v1", "v2", "v2", "v2"}));
    QCOMPARE(m_told, QStringList());
}

void TestStandardRun::nothingIsToldAfterAStop()
{
    start(1, 1000);
    m_reader->dead = {0};
    beats(2);
    m_stop->set();
    beat();
    QCOMPARE(m_told, QStringList());
}

void TestStandardRun::withoutAReaderNothingIsValid()
{
    SimStandard standard;
    standard.points.append({"p", "1", "int16", 0});
    StopFlag stop;
    StandardRun run(standard, nullptr, 500, {[] { return 0; }, [](const QString &) {}, &stop});
    const QVector<PointReading> readings = run.read();
    QCOMPARE(readings.size(), 1);
    QVERIFY(!readings.at(0).valid && readings.at(0).value.isEmpty());
    QCOMPARE(run.due(), 500);
}

// As when reports take the main thread longer than a beat.
void TestStandardRun::readingsThatNobodyTakesDoNotQueue()
{
    class Counter : public Reader
    {
    public:
        using Reader::Reader;
        Result read(int device, int most, PointReading *readings) override
        {
            const Result result = Reader::read(device, most, readings);
            count.release();
            return result;
        }
        QSemaphore count;
    };
    qint64 clock = 0;
    auto reader = std::make_unique<Counter>(&clock);
    QSemaphore *count = &reader->count;
    SimStandard standard;
    standard.points.append({"p", "1", "int16", 0});
    standard.devices.append({{}, 0, 1});
    QStringList taken;
    Link link;
    link.add(0, standard, std::move(reader), 5);
    connect(
        &link, &Link::readingOver, this, [&](int id) { taken.append(link.takeReading(id).at(0).value); },
        Qt::QueuedConnection);
    link.start();
    QVERIFY(count->tryAcquire(10, 5000));
    link.stopFlag()->set();
    link.wait();
    QCoreApplication::processEvents();
    QCOMPARE(taken.size(), 1);
    QVERIFY2(taken.at(0).midRef(1).toInt() >= 9, qPrintable(taken.at(0)));
}

QTEST_GUILESS_MAIN(TestStandardRun)
#include "tst_standardrun.moc"

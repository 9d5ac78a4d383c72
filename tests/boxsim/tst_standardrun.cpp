#include "boxsim/acquire/link.h"
#include "boxsim/acquire/standardrun.h"

#include <QSemaphore>
#include <QtTest>

// The rhythm of one Standard's readings: beats, what is lost and comes back, and what that costs. Clock and
// line are made up, so that an hour takes no time.
class TestStandardRun : public QObject
{
    Q_OBJECT

private slots:
    void beatsAreKeptOrSkipped_data();
    void beatsAreKeptOrSkipped();
    void skippedBeatsAreToldOnce();
    void whatCannotBeReadKeepsItsLastValue();
    void aDeadDeviceIsLostAndBack();
    void aDeadDeviceCostsOneTimeoutUntilItIsLost();
    void triesFitBetweenTheReadings_data();
    void triesFitBetweenTheReadings();
    void noTryIsTooShortForAnAnswer_data();
    void noTryIsTooShortForAnAnswer();
    void manyLostDevicesAllHaveTheirTurn();
    void lostDevicesLeaveTheOthersTheirBeat_data();
    void lostDevicesLeaveTheOthersTheirBeat();
    void aSlowDeviceComesBack_data();
    void aSlowDeviceComesBack();
    void manyComeBackSoon();
    void aLineThatDoesNotOpenIsLostAndBack();
    void aLineThatBreaksIsOpenedAnewAtOnce();
    void aDeviceThatBreaksTheLineIsLostAlone();
    void aLineThatCannotBeUsedIsAskedOnce();
    void aSilentLineIsNotClosedInTheReading();
    void whatIsSaidForADeviceKeepsTheLine();
    void aTryLeavesRoomForTheSilenceAfterIt_data();
    void aTryLeavesRoomForTheSilenceAfterIt();
    void aLineWithoutAnAnswerIsOpenedAnew();
    void nothingIsToldAfterAStop();
    void withoutAReaderNothingIsValid();
    void readingsThatNobodyTakesDoNotQueue();

private:
    // Reads one value a device, the number of the attempt, in no time but for the devices that are dead.
    class Reader : public DeviceReader
    {
    public:
        explicit Reader(qint64 *clock)
            : m_clock(clock)
        {
        }
        bool hasWork(int device) const override { return device != idle; }
        QString deviceName(int device) const override { return QString("station %1").arg(device + 1); }
        QString lineName() const override { return "line"; }
        int openTimeout() const override { return timeout; }
        int requestTimeout() const override { return timeout; }
        int leastTimeout() const override { return least; }
        bool open(int most, QString *reason) override
        {
            ++opened;
            *m_clock += closed ? qMin(most, timeout) : 0;
            *reason = "no line";
            m_open = !closed;
            return m_open;
        }
        void close() override
        {
            settle();
            m_open = false;
        }
        void settle() override { *m_clock = m_open ? qMax(*m_clock, m_quietUntil) : *m_clock; }
        int quietTime() const override { return quiet; }
        bool isOpen() const override { return m_open; }
        Result read(int device, int most, PointReading *readings) override
        {
            settle();
            ++asked[device];
            lastAsked[device] = *m_clock;
            if (breakers.contains(device)) {
                return {Outcome::Closed, "closed"};
            }
            if (unusable) {
                return {Outcome::LineLost, "no use"};
            }
            if (absent.contains(device)) {
                return {Outcome::Absent, "away"};
            }
            if (breaks-- > 0) {
                return {Outcome::Closed, "broken"};
            }
            const int needed = dead.contains(device) ? INT_MAX : slow.value(device);
            if (needed > most) {
                *m_clock += qMin(most, timeout);
                waits.append(most);
                m_quietUntil = *m_clock + (quietAsLong ? most : quiet);
                return {Outcome::Silent, "no answer"};
            }
            *m_clock += needed + cost;
            readings[0] = {QString("v%1").arg(asked[device]), true};
            return {};
        }
        void forget(int device) override { forgotten.append(device); }

        int timeout = 200;
        int quiet = 0;
        bool quietAsLong = false; // as the request waited
        QSet<int> breakers;
        QSet<int> absent;
        bool unusable = false;
        int least = 20;
        int cost = 0;
        QMap<int, int> slow; // what a request to a device takes
        int idle = -1;
        QSet<int> dead;
        bool closed = false;
        int breaks = 0;
        int opened = 0;
        QMap<int, int> asked;
        QMap<int, qint64> lastAsked;
        QVector<int> forgotten;
        QVector<int> waits; // for the devices that are dead

    private:
        qint64 *m_clock;
        qint64 m_quietUntil = 0;
        bool m_open = false;
    };

    void start(int devices, int interval)
    {
        m_time = 0;
        m_told.clear();
        SimStandard standard;
        standard.name = "S";
        for (int i = 0; i < devices; ++i) {
            standard.points.append({QString("p%1").arg(i), QString::number(i), "int16", 0});
            standard.devices.append({{}, i, 1});
        }
        auto reader = std::make_unique<Reader>(&m_time);
        m_reader = reader.get();
        m_stop = std::make_unique<StopFlag>();
        m_run = std::make_unique<StandardRun>(
            standard, std::move(reader), interval,
            StandardRun::Surroundings{[this] { return m_time; },
                                      [this](const QString &text) { m_told.append(text); }, m_stop.get()});
    }
    // One beat with what follows it, as on a link of its own or a shared one. Each row as text, "-" in front
    // of those that are not valid.
    QStringList beat(bool alone = false)
    {
        m_time = qMax(m_time, m_run->due());
        const qint64 due = m_time;
        const QVector<PointReading> readings = m_run->read();
        m_took = m_time - due;
        m_run->tryLost(m_run->due(), alone);
        QStringList rows;
        for (const PointReading &reading : readings) {
            rows.append((reading.valid ? QString() : QString("-")) + reading.value);
        }
        return rows;
    }
    void beatsFor(qint64 milliseconds)
    {
        for (const qint64 begin = m_time; m_time < begin + milliseconds;) {
            beat();
        }
    }
    void beats(int count, bool alone = false)
    {
        for (int i = 0; i < count; ++i) {
            beat(alone);
        }
    }

    qint64 m_time = 0;
    qint64 m_took = 0; // the last reading
    QStringList m_told;
    std::unique_ptr<StopFlag> m_stop;
    Reader *m_reader = nullptr;
    std::unique_ptr<StandardRun> m_run;
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

void TestStandardRun::triesFitBetweenTheReadings_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("timeout");
    QTest::addColumn<int>("cost"); // of the device that is there
    QTest::newRow("room enough") << 1000 << 200 << 100;
    QTest::newRow("time-out as long as the beat") << 2000 << 2000 << 100;
    QTest::newRow("longer") << 500 << 2000 << 100;
}

// The other devices keep their beat but for the tries that wait longer once a minute. Every ten seconds there
// is one at least.
void TestStandardRun::triesFitBetweenTheReadings()
{
    QFETCH(int, interval);
    QFETCH(int, timeout);
    QFETCH(int, cost);
    start(2, interval);
    m_reader->dead = {0};
    m_reader->timeout = timeout;
    beats(10);
    m_told.clear();
    m_reader->cost = cost;
    const qint64 begin = m_time;
    const int before = m_reader->asked[1];
    qint64 lastTry = m_time;
    qint64 longestPause = 0;
    int tries = m_reader->asked[0];
    while (m_time < begin + 600000) {
        beat();
        if (m_reader->asked[0] > tries) {
            QCOMPARE(m_reader->asked[0], tries + 1);
            longestPause = qMax(longestPause, m_time - lastTry);
            lastTry = m_time;
            tries = m_reader->asked[0];
        }
    }
    const int kept = m_reader->asked[1] - before;
    const int due = 600000 / interval;
    QVERIFY2(kept >= due - 10 * (timeout / interval + 1), QByteArray::number(kept));
    QVERIFY2(longestPause <= 10000 + timeout, QByteArray::number(longestPause));
    QCOMPARE(m_told, QStringList());
}

void TestStandardRun::noTryIsTooShortForAnAnswer_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("timeout");
    QTest::addColumn<int>("cost"); // of the device that is there
    QTest::addColumn<int>("shortest");
    QTest::newRow("room enough") << 5000 << 2000 << 100 << 2000;
    QTest::newRow("room for an answer") << 2000 << 2000 << 100 << 900;
    QTest::newRow("no room for an answer") << 1000 << 2000 << 100 << 740;
    QTest::newRow("no room at all") << 500 << 2000 << 500 << 740;
    QTest::newRow("a short time-out") << 1000 << 400 << 100 << 400;
}

void TestStandardRun::noTryIsTooShortForAnAnswer()
{
    QFETCH(int, interval);
    QFETCH(int, timeout);
    QFETCH(int, cost);
    start(2, interval);
    m_reader->dead = {0};
    m_reader->timeout = timeout;
    m_reader->least = 740;
    m_reader->cost = cost;
    beats(3);
    m_reader->waits.clear();
    beatsFor(60000);
    QVERIFY2(m_reader->waits.size() >= 4, QByteArray::number(m_reader->waits.size()));
    QTEST(*std::min_element(m_reader->waits.begin(), m_reader->waits.end()), "shortest");
}

void TestStandardRun::manyLostDevicesAllHaveTheirTurn()
{
    start(30, 1000);
    for (int i = 1; i < 30; ++i) {
        m_reader->dead.insert(i);
    }
    beats(3);
    m_told.clear();
    const QMap<int, int> before = m_reader->asked;
    const qint64 begin = m_time;
    beats(10);
    for (int i = 0; i < 30; ++i) {
        QVERIFY2(m_reader->asked[i] > before[i], QByteArray::number(i));
    }
    QVERIFY2(m_time - begin <= 11000, QByteArray::number(m_time - begin));
    QCOMPARE(m_reader->asked[0], 13);
}

void TestStandardRun::lostDevicesLeaveTheOthersTheirBeat_data()
{
    QTest::addColumn<int>("lost");
    QTest::addColumn<int>("timeout");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("quiet");
    QTest::addColumn<bool>("quietAsLong");
    QTest::addColumn<int>("kept");  // of 600 beats
    QTest::addColumn<int>("bound"); // seconds, between two tries of the same device
    QTest::newRow("many on a network") << 29 << 2000 << 20 << 0 << false << 590 << 13;
    QTest::newRow("many meters") << 29 << 2000 << 738 << 0 << true << 570 << 190;
    QTest::newRow("many on a Modbus line") << 29 << 2000 << 110 << 2000 << false << 510 << 270;
    QTest::newRow("two meters") << 2 << 2000 << 738 << 0 << true << 570 << 17;
    QTest::newRow("two on a Modbus line") << 2 << 1000 << 110 << 1000 << false << 570 << 15;
    QTest::newRow("a long time-out") << 1 << 10000 << 110 << 10000 << false << 300 << 55;
}

// One is not lost, and the beat is a second. Where the tries do not fit, the beat comes first.
void TestStandardRun::lostDevicesLeaveTheOthersTheirBeat()
{
    QFETCH(int, lost);
    QFETCH(int, kept);
    QFETCH(int, bound);
    QFETCH(int, timeout);
    QFETCH(int, least);
    QFETCH(int, quiet);
    QFETCH(bool, quietAsLong);
    start(lost + 1, 1000);
    m_reader->timeout = timeout;
    m_reader->least = least;
    m_reader->quiet = quiet;
    m_reader->quietAsLong = quietAsLong;
    m_reader->cost = 100;
    for (int i = 1; i <= lost; ++i) {
        m_reader->dead.insert(i);
    }
    beatsFor(600000);
    m_told.clear();
    const qint64 begin = m_time;
    const int before = m_reader->asked[0];
    QMap<int, qint64> last = m_reader->lastAsked;
    qint64 longestPause = 0;
    while (m_time < begin + 600000) {
        beat();
        for (int i = 1; i <= lost; ++i) {
            longestPause = qMax(longestPause, qMax(m_time, m_reader->lastAsked[i]) - last[i]);
        }
        last = m_reader->lastAsked;
    }
    const int count = m_reader->asked[0] - before;
    QVERIFY2(count >= kept, QByteArray::number(count));
    QVERIFY2(longestPause <= bound * 1000, QByteArray::number(longestPause));
    QCOMPARE(m_told, QStringList());
}

void TestStandardRun::aSlowDeviceComesBack_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("quiet");
    QTest::addColumn<bool>("alone");
    QTest::addColumn<int>("bound"); // seconds
    QTest::newRow("no room for its answer") << 1000 << 0 << true << 65;
    QTest::newRow("no room at all") << 1000 << 2000 << true << 75;
    QTest::newRow("room for a short answer") << 3000 << 0 << true << 65;
    QTest::newRow("others wait for the line") << 1000 << 0 << false << 65;
}

// One that needs longer than the others leave.
void TestStandardRun::aSlowDeviceComesBack()
{
    QFETCH(int, interval);
    QFETCH(int, quiet);
    QFETCH(bool, alone);
    QFETCH(int, bound);
    start(2, interval);
    m_reader->timeout = 2000;
    m_reader->quiet = quiet;
    m_reader->dead = {0};
    beats(10, alone);
    m_reader->dead.clear();
    m_reader->slow[0] = 1800;
    const qint64 begin = m_time;
    while (m_told.filter("back").isEmpty() && m_time < begin + 600000) {
        beat(alone);
    }
    QVERIFY2(m_time - begin <= bound * 1000, QByteArray::number(m_time - begin));
}

// As after a power cut: who answers costs the others nothing.
void TestStandardRun::manyComeBackSoon()
{
    start(30, 1000);
    m_reader->timeout = 2000;
    m_reader->quiet = 2000;
    m_reader->least = 110;
    m_reader->cost = 20;
    for (int i = 0; i < 30; ++i) {
        m_reader->dead.insert(i);
    }
    beats(20);
    m_reader->dead.clear();
    const qint64 begin = m_time;
    while (m_told.filter("back").size() < 30 && m_time < begin + 600000) {
        beat();
    }
    QVERIFY2(m_time - begin <= 30000, QByteArray::number(m_time - begin));
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

void TestStandardRun::aTryLeavesRoomForTheSilenceAfterIt_data()
{
    QTest::addColumn<int>("timeout");
    QTest::addColumn<int>("tries"); // in ten seconds
    QTest::addColumn<int>("longest");
    QTest::newRow("room enough") << 200 << 10 << 200;
    QTest::newRow("room for a short one") << 700 << 10 << 300;
    QTest::newRow("no room") << 1500 << 1 << 20; // and no more than an answer needs
}

void TestStandardRun::aTryLeavesRoomForTheSilenceAfterIt()
{
    QFETCH(int, timeout);
    start(2, 1000);
    m_reader->timeout = timeout;
    m_reader->quiet = timeout;
    m_reader->dead = {0};
    beats(8);
    m_reader->waits.clear();
    beatsFor(9500);
    QTEST(m_reader->waits.size(), "tries");
    QTEST(*std::max_element(m_reader->waits.begin(), m_reader->waits.end()), "longest");
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

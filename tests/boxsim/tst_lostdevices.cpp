#include "standardruntest.h"

// What tries of lost devices cost those that answer, and how soon what is back is seen.
class TestLostDevices : public StandardRunTest
{
    Q_OBJECT

private slots:
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
    void aTryLeavesRoomForTheSilenceAfterIt_data();
    void aTryLeavesRoomForTheSilenceAfterIt();
    void triesOfAllTheLostEndWithTheBeat_data();
    void triesOfAllTheLostEndWithTheBeat();
    void whatIsBackIsReadAtTheNextBeat_data();
    void whatIsBackIsReadAtTheNextBeat();
};

void TestLostDevices::triesFitBetweenTheReadings_data()
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
void TestLostDevices::triesFitBetweenTheReadings()
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

void TestLostDevices::noTryIsTooShortForAnAnswer_data()
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

void TestLostDevices::noTryIsTooShortForAnAnswer()
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

void TestLostDevices::manyLostDevicesAllHaveTheirTurn()
{
    start(30, 1000);
    m_reader->die(1, 30);
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

void TestLostDevices::lostDevicesLeaveTheOthersTheirBeat_data()
{
    QTest::addColumn<int>("lost");
    QTest::addColumn<int>("timeout");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("quiet");
    QTest::addColumn<int>("kept");  // of 600 beats
    QTest::addColumn<int>("bound"); // seconds, between two tries of the same device
    QTest::newRow("many on a network") << 29 << 2000 << 20 << 0 << 590 << 13;
    QTest::newRow("many meters") << 29 << 2000 << 738 << 2000 << 510 << 270;
    QTest::newRow("many on a Modbus line") << 29 << 2000 << 110 << 2000 << 510 << 270;
    QTest::newRow("two meters") << 2 << 2000 << 738 << 2000 << 510 << 24;
    QTest::newRow("two on a Modbus line") << 2 << 1000 << 110 << 1000 << 570 << 15;
    QTest::newRow("a long time-out") << 1 << 10000 << 110 << 10000 << 300 << 55;
}

// One is not lost, and the beat is a second. Where the tries do not fit, the beat comes first.
void TestLostDevices::lostDevicesLeaveTheOthersTheirBeat()
{
    QFETCH(int, lost);
    QFETCH(int, kept);
    QFETCH(int, bound);
    QFETCH(int, timeout);
    QFETCH(int, least);
    QFETCH(int, quiet);
    start(lost + 1, 1000);
    m_reader->timeout = timeout;
    m_reader->least = least;
    m_reader->quiet = quiet;
    m_reader->cost = 100;
    m_reader->die(1, lost + 1);
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

void TestLostDevices::aSlowDeviceComesBack_data()
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
void TestLostDevices::aSlowDeviceComesBack()
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
    const qint64 took = timeUntilTold("back", 1, alone);
    QVERIFY2(took <= bound * 1000, QByteArray::number(took));
}

// As after a power cut: who answers costs the others nothing.
void TestLostDevices::manyComeBackSoon()
{
    start(30, 1000);
    m_reader->timeout = 2000;
    m_reader->quiet = 2000;
    m_reader->least = 110;
    m_reader->cost = 20;
    m_reader->die(0, 30);
    timeUntilTold("lost", 30);
    m_reader->dead.clear();
    const qint64 took = timeUntilTold("back", 30);
    QVERIFY2(took <= 30000, QByteArray::number(took));
}

void TestLostDevices::aTryLeavesRoomForTheSilenceAfterIt_data()
{
    QTest::addColumn<int>("timeout");
    QTest::addColumn<int>("tries"); // in ten seconds
    QTest::addColumn<int>("longest");
    QTest::newRow("room enough") << 200 << 10 << 200;
    QTest::newRow("room for a short one") << 700 << 10 << 300;
    QTest::newRow("no room") << 1500 << 1 << 20; // and no more than an answer needs
}

void TestLostDevices::aTryLeavesRoomForTheSilenceAfterIt()
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

void TestLostDevices::triesOfAllTheLostEndWithTheBeat_data()
{
    QTest::addColumn<int>("interval");
    QTest::newRow("2 s") << 2000;
    QTest::newRow("10 s") << 10000;
    QTest::newRow("60 s") << 60000;
}

// The report of a plant that is off comes late by one try at most.
void TestLostDevices::triesOfAllTheLostEndWithTheBeat()
{
    QFETCH(int, interval);
    start(8, interval);
    m_reader->timeout = 3000;
    m_reader->die(0, 8);
    beats(100, true);
    for (int i = 0; i < 50; ++i) {
        const qint64 before = m_time;
        beat(true);
        QVERIFY2(m_time - before <= interval + 2 * m_reader->timeout, QByteArray::number(m_time - before));
    }
}

void TestLostDevices::whatIsBackIsReadAtTheNextBeat_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("quiet");
    QTest::addColumn<bool>("line"); // what is lost
    QTest::newRow("a little longer than a pause") << 10001 << 0 << false;
    QTest::newRow("two pauses") << 15000 << 0 << false;
    QTest::newRow("a line") << 15000 << 0 << true;
    QTest::newRow("a line that needs silence") << 35000 << 500 << false;
    QTest::newRow("a quarter of an hour") << 900000 << 0 << false;
}

// However far the beats are from each other, what is lost is tried each ten seconds.
void TestLostDevices::whatIsBackIsReadAtTheNextBeat()
{
    QFETCH(int, interval);
    QFETCH(int, quiet);
    QFETCH(bool, line);
    start(2, interval);
    m_reader->timeout = 500;
    m_reader->quiet = quiet;
    m_reader->dead = {1};
    m_reader->closed = line;
    beats(5, true);
    qint64 longestPause = 0;
    for (qint64 last = m_time; m_run->wake() < m_run->due(); last = m_time) {
        m_time = qMax(m_time, m_run->wake());
        if (m_time > m_run->due() - 2500) {
            m_reader->closed = false;
            m_reader->backAt = m_time;
        }
        longestPause = qMax(longestPause, m_time - last);
        m_run->tryLost(m_run->due(), true);
    }
    QVERIFY2(longestPause <= 10000, QByteArray::number(longestPause));
    QCOMPARE(beat(true).filter("-"), QStringList());
    QCOMPARE(m_time, m_run->due() - interval); // on the beat
}

QTEST_GUILESS_MAIN(TestLostDevices)
#include "tst_lostdevices.moc"

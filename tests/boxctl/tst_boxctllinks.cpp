#include "boxctl/reportlink.h"
#include "files.h"
#include "reportingbox.h"

#include <QSignalSpy>
#include <QtTest>

using namespace BoxCtl;

namespace {

const QString nowhere = "127.0.47.15"; // nothing listens there at first

} // namespace

// The links of the commands that take reports, and what a terminal shows of them.
class TestBoxCtlLinks : public QObject
{
    Q_OBJECT
private slots:
    void pausesGrow();
    void silentBoxIsLost();
    void boxThatNeverAnswersHasNoLink();
    void progressOnASmallTerminal_data();
    void progressOnASmallTerminal();
    void progressBeginsWithWhatIsMissing();
};

void TestBoxCtlLinks::pausesGrow()
{
    ReportLink link(nowhere, 1000);
    QSignalSpy lost(&link, &ReportLink::lost);
    auto *pause = link.findChild<QTimer *>("pauseTimer");
    QVERIFY(pause);
    link.start();
    for (const int seconds : {1, 2, 4, 8, 16, 32, 60, 60}) {
        QTRY_COMPARE(lost.count(), 1);
        QCOMPARE(lost.takeFirst(), (QVariantList{"Connection refused", false}));
        QCOMPARE(pause->interval(), 1000 * seconds);
        pause->start(0);
    }
    // From the start once the Box has answered.
    QTRY_COMPARE(lost.count(), 1);
    const ReportingBox box(nowhere);
    pause->start(0);
    QSignalSpy reported(&link, &ReportLink::reported);
    QTRY_VERIFY(box.isLinked() && !box.received().isEmpty());
    box.send(bytesOf("{}"));
    QTRY_COMPARE(reported.count(), 1);
    QVERIFY(link.isUp());
    QCOMPARE(link.error(), QString());
    box.close();
    QTRY_COMPARE(lost.count(), 2);
    QCOMPARE(lost.last(), (QVariantList{"The remote host closed the connection", true}));
    QCOMPARE(pause->interval(), 1000);
}

void TestBoxCtlLinks::silentBoxIsLost()
{
    const ReportingBox box(nowhere);
    ReportLink link(nowhere, 1000);
    QSignalSpy lost(&link, &ReportLink::lost);
    link.start();
    QTRY_VERIFY(link.isUp());
    auto *silence = link.findChild<QTimer *>("offlineTimer");
    QVERIFY(silence);
    QCOMPARE(silence->interval(), 30000);
    silence->start(0);
    QTRY_COMPARE(lost.count(), 1);
    QCOMPARE(lost.constFirst(), (QVariantList{"No answer to a heartbeat in 30 s", true}));
    QVERIFY(!link.isUp());
    QTRY_COMPARE(box.link()->state(), QAbstractSocket::UnconnectedState);
    QTRY_COMPARE(box.count(), 2); // the next one
}

// A connection alone is no link: the system may have accepted it.
void TestBoxCtlLinks::boxThatNeverAnswersHasNoLink()
{
    const FakeBox box(nowhere);
    ReportLink link(nowhere, 200);
    QSignalSpy opened(&link, &ReportLink::opened);
    QSignalSpy lost(&link, &ReportLink::lost);
    link.start();
    QTRY_COMPARE(lost.count(), 1);
    QCOMPARE(lost.constFirst(), (QVariantList{"No answer in 0.2 s", false}));
    QCOMPARE(opened.count(), 0);
    // Nor does a connection bring the pauses back to their start.
    QCOMPARE(link.findChild<QTimer *>("pauseTimer")->interval(), 1000);
    QTRY_COMPARE(lost.count(), 2);
    QCOMPARE(link.findChild<QTimer *>("pauseTimer")->interval(), 2000);
}

void TestBoxCtlLinks::progressOnASmallTerminal_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("drawn");
    const QString total = "0 of 3 Boxes linked, 0 reports\r\n";
    const QString first = "127.0.47.16: connecting\r\n";
    QTest::newRow("room for all") << 5
                                  << first + "127.0.47.17 (North): connecting\r\n"
            + "127.0.47.18: connecting\r\n" + total;
    QTest::newRow("one line too few") << 4 << first + "and 2 more\r\n" + total;
    QTest::newRow("for the total") << 2 << total;
}

// None goes past the upper edge, where it could not be erased.
void TestBoxCtlLinks::progressOnASmallTerminal()
{
    QFETCH(int, rows);
    QFETCH(QString, drawn);
    const FakeBox silent[] = {FakeBox("127.0.47.16"), FakeBox("127.0.47.17"), FakeBox("127.0.47.18")};
    Files::put("list", "127.0.47.16\n127.0.47.17 North\n127.0.47.18\n");
    const QString command =
        QString("stty rows %1 cols 60; %2 watch --seconds 1 @list >/dev/null").arg(rows).arg(boxctl());
    const Outcome outcome = runOnTerminal(command);
    QVERIFY2(outcome.out.startsWith(drawn + erasure(drawn)), qPrintable(outcome.out));
}

void TestBoxCtlLinks::progressBeginsWithWhatIsMissing()
{
    const ReportingBox box("127.0.47.19");
    const FakeBox silent("127.0.47.16");
    const QString command = boxctl() + " watch --seconds 2 127.0.47.19 127.0.47.16 >/dev/null";
    const Outcome outcome = runOnTerminal(command);
    QVERIFY2(outcome.out.contains("127.0.47.16: connecting\r\n127.0.47.19: 0 reports\r\n"
                                  "1 of 2 Boxes linked, 0 reports\r\n"),
             qPrintable(outcome.out));
}

QTEST_GUILESS_MAIN(TestBoxCtlLinks)
#include "tst_boxctllinks.moc"

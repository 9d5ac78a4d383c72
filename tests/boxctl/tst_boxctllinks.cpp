#include "boxctl/reportlink.h"
#include "reportingbox.h"

#include <QSignalSpy>
#include <QtTest>

using namespace BoxCtl;

namespace {

const QString nowhere = "127.0.47.15"; // nothing listens there at first

} // namespace

// The links of the commands that take reports.
class TestBoxCtlLinks : public QObject
{
    Q_OBJECT
private slots:
    void pausesGrow();
    void silentBoxIsLost();
    void boxThatNeverAnswersHasNoLink();
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

QTEST_GUILESS_MAIN(TestBoxCtlLinks)
#include "tst_boxctllinks.moc"

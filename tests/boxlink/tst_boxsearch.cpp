#include "boxlink/boxsearch.h"
#include "handframes.h"

#include <QtTest>

using HandFrames::foundBox;

// A search without a network: what it finds, and when it ends.
class TestBoxSearch : public QObject
{
    Q_OBJECT
private slots:
    void broadcastThatCantBeSentIsTold();
    void aBoxIsFoundOnceByItsAddress();
    void badDatagramLeavesNoTrace();
    void newSearchForgetsWhatWasFound();
    void firstEndOfTwoSearchesStopsTheBroadcasts();
    void interfaceIsAskedForAtEachBroadcast();
    void searchMayGoWhenItEnds();
};

namespace {

// An interface without an address, which nothing can be sent from.
QNetworkInterface noInterface()
{
    return {};
}

// "address mask model" of each Box that the search finds.
void listen(BoxSearch *search, QStringList *found)
{
    QObject::connect(search, &BoxSearch::found, search, [found](const Discovery::Answer &box) {
        found->append(box.ip + QLatin1Char(' ') + box.mask + QLatin1Char(' ') + box.model);
    });
}

QTimer *broadcastsOf(const BoxSearch &search)
{
    return search.findChild<QTimer *>("searchTimer");
}

QList<QTimer *> endsOf(const BoxSearch &search)
{
    return search.findChildren<QTimer *>("searchEnd");
}

} // namespace

void TestBoxSearch::aBoxIsFoundOnceByItsAddress()
{
    BoxSearch search(noInterface);
    QStringList found;
    listen(&search, &found);
    search.take(foundBox("192.168.1.70"));
    search.take(foundBox("192.168.1.71"));
    search.take(foundBox("192.168.1.70"));
    QCOMPARE(
        found,
        (QStringList{"192.168.1.70 255.255.255.0 MRN-GATE-70", "192.168.1.71 255.255.255.0 MRN-GATE-70"}));
}

void TestBoxSearch::badDatagramLeavesNoTrace()
{
    BoxSearch search(noInterface);
    QStringList found;
    listen(&search, &found);
    search.take(QByteArray());
    search.take(foundBox("192.168.1.70").left(37));
    search.take(foundBox("192.168.1.70").replace(0, 1, "\x11"));
    search.take(foundBox("192.168.1.70").replace(2, 1, QByteArray(1, '\0')));
    QCOMPARE(found, QStringList());
}

void TestBoxSearch::newSearchForgetsWhatWasFound()
{
    BoxSearch search(noInterface);
    QStringList found;
    listen(&search, &found);
    search.take(foundBox("192.168.1.70"));
    search.start();
    search.take(foundBox("192.168.1.70"));
    QCOMPARE(found.size(), 2);
}

void TestBoxSearch::firstEndOfTwoSearchesStopsTheBroadcasts()
{
    BoxSearch search(noInterface);
    QSignalSpy finished(&search, &BoxSearch::finished);
    search.start();
    QVERIFY(broadcastsOf(search)->isActive());
    QCOMPARE(broadcastsOf(search)->interval(), 1000);
    search.start();
    QCOMPARE(endsOf(search).size(), 2);
    QCOMPARE(endsOf(search).at(0)->interval(), 10000);
    endsOf(search).at(0)->start(1);
    QVERIFY(finished.wait());
    QVERIFY(!broadcastsOf(search)->isActive());
    QTRY_COMPARE(endsOf(search).size(), 1);
    endsOf(search).at(0)->start(1);
    QVERIFY(finished.wait());
    QCOMPARE(finished.size(), 2);
}

void TestBoxSearch::interfaceIsAskedForAtEachBroadcast()
{
    int asked = 0;
    BoxSearch search([&asked] {
        ++asked;
        return QNetworkInterface();
    });
    search.start();
    QCOMPARE(asked, 0); // the first broadcast comes with the timer
    for (int time = 1; time <= 2; ++time) {
        QTest::ignoreMessage(QtDebugMsg, "No IPv4 address found for selected network interface!");
        search.broadcast();
        QCOMPARE(asked, time);
    }
    QVERIFY(broadcastsOf(search)->isActive());
}

void TestBoxSearch::searchMayGoWhenItEnds()
{
    QPointer<BoxSearch> search = new BoxSearch(noInterface);
    connect(search, &BoxSearch::finished, this, [&] { delete search; });
    search->start();
    endsOf(*search).first()->start(1);
    QTRY_VERIFY(!search);
}

void TestBoxSearch::broadcastThatCantBeSentIsTold()
{
    BoxSearch search(QHostAddress("192.0.2.1")); // no address of this host
    QStringList told;
    connect(&search, &BoxSearch::failed, this, [&told](const QHostAddress &address, const QString &error) {
        told += address.toString() + ": " + error;
    });
    search.broadcast();
    QCOMPARE(told, QStringList{"192.0.2.1: The address is not available"});
}

QTEST_GUILESS_MAIN(TestBoxSearch)
#include "tst_boxsearch.moc"

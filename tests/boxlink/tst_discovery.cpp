#include "boxlink/discovery.h"

#include <QtTest>

// The datagrams of the search, byte by byte.
class TestDiscovery : public QObject
{
    Q_OBJECT
private slots:
    void requestIsSixteenFixedBytes();
    void answerIsRead_data();
    void answerIsRead();
    void everyTruncationIsReadWithinItsBounds();
};

namespace {

QByteArray padded(const QByteArray &text)
{
    return text.leftJustified(16, '\0', true);
}

QByteArray answer(const QByteArray &ip, const QByteArray &mask, const QByteArray &counted)
{
    return QByteArray("\x12\x34\xFF\xFF", 4) + padded(ip) + padded(mask) + counted;
}

} // namespace

void TestDiscovery::requestIsSixteenFixedBytes()
{
    QCOMPARE(Discovery::request(), QByteArray("\x12\x34\x00\x00Search Box\x56\x78", 16));
}

void TestDiscovery::answerIsRead_data()
{
    QTest::addColumn<QByteArray>("datagram");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("ip");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("model");

    const QString none;
    const QString ip = "192.168.1.70";
    const QString mask = "255.255.255.0";
    const QByteArray good = answer("192.168.1.70", "255.255.255.0", "\x0CMRN-GATE-70X");
    QTest::newRow("whole") << good << true << ip << mask << "MRN-GATE-70X";
    QTest::newRow("bytes behind the model are not read")
        << good + QByteArray("\x56\x78tail") << true << ip << mask << "MRN-GATE-70X";
    QTest::newRow("38 bytes with one of model")
        << answer("192.168.1.70", "255.255.255.0", "\x01M") << true << ip << mask << "M";
    QTest::newRow("37 bytes") << answer("192.168.1.70", "255.255.255.0", QByteArray("\x00", 1)) << false
                              << none << none << none;
    QTest::newRow("model longer than what is left")
        << answer("192.168.1.70", "255.255.255.0", "\xFFMRN") << true << ip << mask << "MRN";
    QTest::newRow("sixteen characters need no NUL")
        << answer("1234567890123456", "6543210987654321", "\x01M") << true << "1234567890123456"
        << "6543210987654321"
        << "M";
    QTest::newRow("white space is cut")
        << answer(" 10.0.0.1 ", "\t255.0.0.0\n", "\x05 G70 ") << true << "10.0.0.1"
        << "255.0.0.0"
        << "G70";
    QTest::newRow("first NUL ends a text")
        << answer(QByteArray("1.2.3.4\0junk", 12), "255.0.0.0", QByteArray("\x04G\0xx", 5)) << true
        << "1.2.3.4"
        << "255.0.0.0"
        << "G";
    QTest::newRow("wrong header") << QByteArray(good).replace(0, 1, "\x13") << false << none << none << none;
    QTest::newRow("wrong second header byte")
        << QByteArray(good).replace(1, 1, "\x35") << false << none << none << none;
    QTest::newRow("half a command") << QByteArray(good).replace(3, 1, "\xFE") << false << none << none
                                    << none;
    QTest::newRow("our own request") << Discovery::request() << false << none << none << none;
    QTest::newRow("empty") << QByteArray() << false << none << none << none;
}

void TestDiscovery::answerIsRead()
{
    QFETCH(QByteArray, datagram);
    QFETCH(bool, valid);
    QFETCH(QString, ip);
    QFETCH(QString, mask);
    QFETCH(QString, model);
    const Discovery::Answer read = Discovery::parseAnswer(datagram);
    QCOMPARE(read.valid, valid);
    QCOMPARE(read.ip, ip);
    QCOMPARE(read.mask, mask);
    QCOMPARE(read.model, model);
}

void TestDiscovery::everyTruncationIsReadWithinItsBounds()
{
    const QByteArray whole = answer("192.168.1.70", "255.255.255.0", "\xFF" + QByteArray(255, 'M'));
    for (int size = 0; size <= whole.size(); ++size) {
        const Discovery::Answer read = Discovery::parseAnswer(whole.left(size));
        QCOMPARE(read.valid, size >= 38);
        QCOMPARE(read.model.size(), qMax(0, size >= 38 ? size - 37 : 0));
    }
}

QTEST_GUILESS_MAIN(TestDiscovery)
#include "tst_discovery.moc"

#include "boxlink/discovery.h"
#include "tablerow.h"

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
    QTest::addColumn<QString>("read"); // "address|mask|model"; null: no answer

    const QString none;
    const QByteArray good = answer("192.168.1.70", "255.255.255.0", "\x0CMRN-GATE-70X");
    tableRow("whole", good, "192.168.1.70|255.255.255.0|MRN-GATE-70X");
    tableRow("bytes behind the model are not read", good + QByteArray("\x56\x78tail"),
             "192.168.1.70|255.255.255.0|MRN-GATE-70X");
    tableRow("38 bytes with one of model", answer("192.168.1.70", "255.255.255.0", "\x01M"),
             "192.168.1.70|255.255.255.0|M");
    tableRow("37 bytes", answer("192.168.1.70", "255.255.255.0", QByteArray("\x00", 1)), none);
    tableRow("model longer than what is left", answer("192.168.1.70", "255.255.255.0", "\xFFMRN"),
             "192.168.1.70|255.255.255.0|MRN");
    tableRow("sixteen characters need no NUL", answer("1234567890123456", "6543210987654321", "\x01M"),
             "1234567890123456|6543210987654321|M");
    tableRow("white space is cut", answer(" 10.0.0.1 ", "\t255.0.0.0\n", "\x05 G70 "),
             "10.0.0.1|255.0.0.0|G70");
    tableRow("first NUL ends a text",
             answer(QByteArray("1.2.3.4\0junk", 12), "255.0.0.0", QByteArray("\x04G\0xx", 5)),
             "1.2.3.4|255.0.0.0|G");
    tableRow("wrong header", QByteArray(good).replace(0, 1, "\x13"), none);
    tableRow("wrong second header byte", QByteArray(good).replace(1, 1, "\x35"), none);
    tableRow("half a command", QByteArray(good).replace(3, 1, "\xFE"), none);
    tableRow("our own request", Discovery::request(), none);
    tableRow("empty", QByteArray(), none);
}

void TestDiscovery::answerIsRead()
{
    QFETCH(QByteArray, datagram);
    QFETCH(QString, read);
    const Discovery::Answer answer = Discovery::parseAnswer(datagram);
    QCOMPARE(answer.valid, !read.isNull());
    QCOMPARE(QStringList({answer.ip, answer.mask, answer.model}).join(QLatin1Char('|')),
             read.isNull() ? QString("||") : read);
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

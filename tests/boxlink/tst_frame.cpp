#include "boxlink/frame.h"
#include "handframes.h"

#include <QJsonObject>
#include <QtTest>

using HandFrames::hex;

class TestFrame : public QObject
{
    Q_OBJECT
private slots:
    void heartbeatIsEightBytes();
    void jsonFrameCarriesBothLengths();
    void jsonTextLongerThanAByteCounts();
    void jsonTextIsUtf8();
    void chunkFrame_data();
    void chunkFrame();
    void checksumFrame_data();
    void checksumFrame();
    void numbersAreLittleEndianAndUnsigned();
    void commandIsBigEndian();
};

void TestFrame::heartbeatIsEightBytes()
{
    QCOMPARE(Frame::heartbeatFrame(), hex("12 34 01 00 08 00 56 78"));
}

void TestFrame::jsonFrameCarriesBothLengths()
{
    const QJsonObject request{{"type", "2"}, {"pares", QJsonObject()}};
    const QByteArray text = "{\n"
                            "    \"pares\": {\n"
                            "    },\n"
                            "    \"type\": \"2\"\n"
                            "}\n"; // 2 + 15 + 7 + 16 + 2 = 42 bytes
    QCOMPARE(Frame::buildJsonFrame(request), hex("12 34 05 00 34 00 2a 00") + text + hex("56 78"));
}

void TestFrame::jsonTextLongerThanAByteCounts()
{
    const QJsonObject request{{"a", QString(500, QLatin1Char('x'))}};
    const QByteArray frame = Frame::buildJsonFrame(request);
    // 500 characters and 16 around them: 516 = 0x0204, and 10 more in all
    QCOMPARE(frame.left(8), hex("12 34 05 00 0e 02 04 02"));
    QCOMPARE(frame.size(), 526);
}

void TestFrame::jsonTextIsUtf8()
{
    const QJsonObject request{{"ssid", QString::fromUtf8("\xE7\xBD\x91")}};
    QCOMPARE(Frame::buildJsonFrame(request),
             hex("12 34 05 00 20 00 16 00") + "{\n    \"ssid\": \"\xE7\xBD\x91\"\n}\n" + hex("56 78"));
}

void TestFrame::chunkFrame_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<quint32>("total");
    QTest::addColumn<quint32>("number");
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<QByteArray>("head");

    QTest::newRow("project, one byte")
        << 0x0300 << 1u << 1u << QByteArray("{") << hex("12 34 03 00 14 00 01 01 00 00 00 01 00 01 00 00 00");
    QTest::newRow("program, full chunk") << 0x0400 << 0x04030201u << 0x0d0c0b0au << QByteArray(1024, 'z')
                                         << hex("12 34 04 00 13 04 01 01 02 03 04 00 04 0a 0b 0c 0d");
}

void TestFrame::chunkFrame()
{
    QFETCH(int, command);
    QFETCH(quint32, total);
    QFETCH(quint32, number);
    QFETCH(QByteArray, chunk);
    QFETCH(QByteArray, head);

    QCOMPARE(Frame::chunkFrame(Frame::Command(command), total, number, chunk), head + chunk + hex("56 78"));
}

void TestFrame::checksumFrame_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<quint32>("total");
    QTest::addColumn<QByteArray>("digest");
    QTest::addColumn<QByteArray>("head");

    QTest::newRow("program, \"abc\"") << 0x0400 << 3u << hex("900150983cd24fb0d6963f7d28e17f72")
                                      << hex("12 34 04 00 1e 00 02 03 00 00 00 10");
    QTest::newRow("project of no data") << 0x0300 << 0u << hex("d41d8cd98f00b204e9800998ecf8427e")
                                        << hex("12 34 03 00 1e 00 02 00 00 00 00 10");
}

void TestFrame::checksumFrame()
{
    QFETCH(int, command);
    QFETCH(quint32, total);
    QFETCH(QByteArray, digest);
    QFETCH(QByteArray, head);

    QCOMPARE(Frame::checksumFrame(Frame::Command(command), total, digest), head + digest + hex("56 78"));
}

void TestFrame::numbersAreLittleEndianAndUnsigned()
{
    const QByteArray bytes = hex("fe ff fd fc");
    QCOMPARE(Frame::readLittle16(bytes.constData()), quint16(0xfffe));
    QCOMPARE(Frame::readLittle32(bytes.constData()), 0xfcfdfffeu);
}

void TestFrame::commandIsBigEndian()
{
    QCOMPARE(Frame::readCommand(hex("12 34 06 01 00 00").constData()), quint16(0x0601));
}

QTEST_GUILESS_MAIN(TestFrame)
#include "tst_frame.moc"

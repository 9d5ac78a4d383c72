#include "boxlink/frame.h"

#include <QJsonObject>
#include <QtTest>

class tst_Frame : public QObject
{
    Q_OBJECT
private slots:
    void heartbeatIsEightBytes();
    void jsonFrameCarriesBothLengths();
    void jsonTextLongerThanAByteCounts();
    void jsonTextIsUtf8();
    void chunkFrame_data();
    void chunkFrame();
    void checksumFrame();
    void checksumFrameOfNoData();
    void numbersAreLittleEndianAndUnsigned();
    void commandIsBigEndian();
};

void tst_Frame::heartbeatIsEightBytes()
{
    QCOMPARE(Frame::heartbeatFrame(), QByteArray::fromHex("12 34 01 00 08 00 56 78"));
}

void tst_Frame::jsonFrameCarriesBothLengths()
{
    const QJsonObject request{{"type", "2"}, {"pares", QJsonObject()}};
    const QByteArray text = "{\n"
                            "    \"pares\": {\n"
                            "    },\n"
                            "    \"type\": \"2\"\n"
                            "}\n"; // 2 + 15 + 7 + 16 + 2 = 42 bytes
    QCOMPARE(Frame::buildJsonFrame(request),
             QByteArray::fromHex("12 34 05 00 34 00 2a 00") + text + QByteArray::fromHex("56 78"));
}

void tst_Frame::jsonTextLongerThanAByteCounts()
{
    const QJsonObject request{{"a", QString(500, QLatin1Char('x'))}};
    const QByteArray frame = Frame::buildJsonFrame(request);
    // 500 characters and 16 around them: 516 = 0x0204, and 10 more in all
    QCOMPARE(frame.left(8), QByteArray::fromHex("12 34 05 00 0e 02 04 02"));
    QCOMPARE(frame.size(), 526);
}

void tst_Frame::jsonTextIsUtf8()
{
    const QJsonObject request{{"ssid", QString::fromUtf8("\xE7\xBD\x91")}};
    QCOMPARE(Frame::buildJsonFrame(request),
             QByteArray::fromHex("12 34 05 00 20 00 16 00") + "{\n    \"ssid\": \"\xE7\xBD\x91\"\n}\n"
                 + QByteArray::fromHex("56 78"));
}

void tst_Frame::chunkFrame_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<quint32>("total");
    QTest::addColumn<quint32>("number");
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<QByteArray>("head");

    QTest::newRow("project, one byte")
        << 0x0300 << 1u << 1u << QByteArray("{")
        << QByteArray::fromHex("12 34 03 00 14 00 01 01 00 00 00 01 00 01 00 00 00");
    QTest::newRow("program, full chunk")
        << 0x0400 << 0x04030201u << 0x0d0c0b0au << QByteArray(1024, 'z')
        << QByteArray::fromHex("12 34 04 00 13 04 01 01 02 03 04 00 04 0a 0b 0c 0d");
}

void tst_Frame::chunkFrame()
{
    QFETCH(int, command);
    QFETCH(quint32, total);
    QFETCH(quint32, number);
    QFETCH(QByteArray, chunk);
    QFETCH(QByteArray, head);

    QCOMPARE(Frame::chunkFrame(Frame::Command(command), total, number, chunk),
             head + chunk + QByteArray::fromHex("56 78"));
}

void tst_Frame::checksumFrame()
{
    const QByteArray digest = QByteArray::fromHex("900150983cd24fb0d6963f7d28e17f72"); // of "abc"
    QCOMPARE(Frame::checksumFrame(Frame::ProgramTransfer, 3, digest),
             QByteArray::fromHex("12 34 04 00 1e 00 02 03 00 00 00 10"
                                 "90 01 50 98 3c d2 4f b0 d6 96 3f 7d 28 e1 7f 72 56 78"));
}

void tst_Frame::checksumFrameOfNoData()
{
    const QByteArray digest = QByteArray::fromHex("d41d8cd98f00b204e9800998ecf8427e");
    QCOMPARE(Frame::checksumFrame(Frame::ProjectTransfer, 0, digest),
             QByteArray::fromHex("12 34 03 00 1e 00 02 00 00 00 00 10"
                                 "d4 1d 8c d9 8f 00 b2 04 e9 80 09 98 ec f8 42 7e 56 78"));
}

void tst_Frame::numbersAreLittleEndianAndUnsigned()
{
    const QByteArray bytes = QByteArray::fromHex("fe ff fd fc");
    QCOMPARE(Frame::readLittle16(bytes.constData()), quint16(0xfffe));
    QCOMPARE(Frame::readLittle32(bytes.constData()), 0xfcfdfffeu);
}

void tst_Frame::commandIsBigEndian()
{
    QCOMPARE(Frame::readCommand(QByteArray::fromHex("12 34 06 01 00 00").constData()), quint16(0x0601));
}

QTEST_GUILESS_MAIN(tst_Frame)
#include "tst_frame.moc"

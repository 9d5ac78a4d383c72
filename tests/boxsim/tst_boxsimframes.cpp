#include "boxsimtest.h"

#include <QRandomGenerator>

// How the simulated Box cuts a stream into frames, survives what is none, and words them.
class TestBoxSimFrames : public BoxSimTest
{
    Q_OBJECT
public:
    TestBoxSimFrames()
        : BoxSimTest("127.0.12.7")
    {
    }

private slots:
    void cleanup() { stop(); }

    void requestsAreFoundHoweverTheyAreCut_data();
    void requestsAreFoundHoweverTheyAreCut();
    void garbageCostsNothingButItself_data();
    void garbageCostsNothingButItself();
    void garbageIsCounted();
    void randomGarbageNeverEndsTheBox();
    void framesAreDecodedForTheLog_data();
    void framesAreDecodedForTheLog();
};

void TestBoxSimFrames::requestsAreFoundHoweverTheyAreCut_data()
{
    QTest::addColumn<int>("piece");
    for (int piece : {1, 2, 3, 5, 7, 8, 9, 13, 40}) {
        QTest::newRow(qPrintable(QString("pieces of %1").arg(piece))) << piece;
    }
}

void TestBoxSimFrames::requestsAreFoundHoweverTheyAreCut()
{
    QFETCH(int, piece);
    FrameReader reader;
    const QByteArray json = Raw::json("{\"type\":\"2\",\"pares\":{}}");
    const QByteArray stream = "noise" + Raw::heartbeat + QByteArray(1, '\x12') + json + Raw::heartbeat;
    QVector<QByteArray> frames;
    int skipped = 0;
    for (int at = 0; at < stream.size(); at += piece) {
        const FrameReader::Result result = reader.feed(stream.mid(at, piece));
        frames += result.frames;
        skipped += result.skipped;
        QCOMPARE(result.rejected, 0);
    }
    QCOMPARE(frames, QVector<QByteArray>({Raw::heartbeat, json, Raw::heartbeat}));
    QCOMPARE(skipped, 6);
}

void TestBoxSimFrames::garbageCostsNothingButItself_data()
{
    QTest::addColumn<QByteArray>("garbage");
    QTest::newRow("text") << QByteArray("GET / HTTP/1.1\r\n\r\n");
    QTest::newRow("length 0") << Raw::hex("123401000000");
    QTest::newRow("length 7") << Raw::hex("123401000700");
    QTest::newRow("bad footer") << Raw::hex("1234010008005679");
    QTest::newRow("headers only") << Raw::hex("12341234123412341234");
    QTest::newRow("frame inside a rejected frame") << Raw::hex("12340100080012345678");
    QTest::newRow("big") << QByteArray(300000, '\x12');
    QTest::newRow("nested JSON") << Raw::json(QByteArray(60000, '['));
    QTest::newRow("broken UTF-8") << Raw::json("{\"type\":\"\xff\xfe\",\"pares\":{}}");
}

void TestBoxSimFrames::garbageCostsNothingButItself()
{
    QFETCH(QByteArray, garbage);
    RUN(start());
    // What the headers claim at most is filled up, so that no length keeps the Box waiting.
    m_tool->send(garbage + QByteArray(65536, '\0') + Raw::heartbeat);
    QCOMPARE(m_tool->takeFrame().left(4).toHex(), QByteArray("12340200"));
    QCOMPARE(m_box->connectionCount(), 1);
}

void TestBoxSimFrames::garbageIsCounted()
{
    FrameReader reader;
    const FrameReader::Result result = reader.feed("noise" + Raw::hex("1234010008005679") + Raw::heartbeat);
    QCOMPARE(result.frames, QVector<QByteArray>{Raw::heartbeat});
    QCOMPARE(result.rejected, 1);
    QCOMPARE(result.skipped, 13);
}

void TestBoxSimFrames::randomGarbageNeverEndsTheBox()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    const QByteArray alphabet = Raw::hex("12345678000102030405060810ff7b7d22");
    RUN(start());
    QSignalSpy frames(m_box.get(), &BoxSim::frameReceived);
    for (int i = 0; i < 200; ++i) {
        QByteArray bytes =
            Raw::hex("1234") + QByteArray(1, static_cast<char>(random.bounded(8))) + QByteArray(1, '\0');
        const int body = random.bounded(64);
        bytes += Raw::little(static_cast<quint32>(body) + 8, 2);
        for (int j = 0; j < body; ++j) {
            bytes.append(alphabet.at(random.bounded(alphabet.size())));
        }
        m_tool->send(bytes + Raw::hex("5678"));
    }
    m_tool->send(QByteArray(65536, '\0') + Raw::heartbeat);
    QTRY_VERIFY(!frames.isEmpty() && frames.constLast().at(0).value<BoxSimFrame>().bytes == Raw::heartbeat);
    QVERIFY(frames.size() > 100);
}

void TestBoxSimFrames::framesAreDecodedForTheLog_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QByteArray &frame, const char *text) {
        QTest::newRow(name) << frame << QString::fromLatin1(text);
    };
    row("heartbeat", Raw::heartbeat, "heartbeat");
    row("heartbeat answer", Raw::hex("123402001100 03322e31 024137 014d 5678"),
        "heartbeat answer: 2.1, A7, M");
    row("heartbeat answer with wild lengths", Raw::hex("123402000a00 ff32 5678"), "heartbeat answer: 2Vx");
    row("read", Raw::json("{\"type\":\"3\", \"pares\":{}}"), "read WAN: {\"pares\":{},\"type\":\"3\"}");
    row("write", Raw::json("{\"type\":109,\"pares\":{}}"), "write time: {\"pares\":{},\"type\":109}");
    row("reboot", Raw::json("{\"type\":\"6\"}"), "reboot: {\"type\":\"6\"}");
    row("unused type", Raw::json("{\"type\":\"7\"}"), "JSON type 7: {\"type\":\"7\"}");
    row("no object", Raw::json("[]"), "JSON that is no object: 5b 5d");
    row("JSON without room for a length", Raw::hex("1234050008005678"), "JSON that is no object: ");
    row("chunk", Raw::chunk(3, 1030, 2, "abcdef"), "project chunk 2: 6 bytes of 1030");
    row("checksum", Raw::checksum(4, 1, "0cc175b9c0f1b6a831c399e269772661"),
        "program checksum of 1 bytes: 0cc175b9c0f1b6a831c399e269772661");
    row("verdict", Raw::hex("123403000a0003015678"), "project verdict: failure");
    row("segment", Raw::hex("123406001500 01 02000000 0200 01000000 7b7d 5678"),
        "report segment 1: 2 bytes of 2");
    row("transfer without a body", Raw::hex("1234030008005678"),
        "project frame of no known kind: 12 34 03 00 08 00 56 78");
    row("unknown", Raw::hex("1234070008005678"), "unknown command 0x0700: 12 34 07 00 08 00 56 78");
    row("no frame", Raw::hex("1234"), "no frame: 12 34");
}

void TestBoxSimFrames::framesAreDecodedForTheLog()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, text);
    QCOMPARE(describeFrame(frame), text);
}

QTEST_GUILESS_MAIN(TestBoxSimFrames)
#include "tst_boxsimframes.moc"

#include "framestream.h"
#include "tablerow.h"

#include <QtTest>

using namespace FrameStream;

class TestFrameAssembler : public QObject
{
    Q_OBJECT
private slots:
    void chunks_data();
    void chunks();
    void everySplitOfGoodFramesGivesAllOfThem();
    void byteByByteGivesAllFrames();
    void wholeFramesAreGivenInPlace();
    void lengthFieldTooSmallCostsItsHeader_data();
    void lengthFieldTooSmallCostsItsHeader();
    void carryHoldsUpTo4096Bytes_data();
    void carryHoldsUpTo4096Bytes();
    void longFrameWholeInAChunkIsGiven();
    void garbageIsWorkedOff_data();
    void garbageIsWorkedOff();
};

void TestFrameAssembler::chunks_data()
{
    QTest::addColumn<QList<QByteArray>>("chunks");
    QTest::addColumn<QList<QByteArray>>("frames");

    tableRow("nothing", QList<QByteArray>{QByteArray()}, Frames{});
    tableRow("length 8 is a frame with an empty body", QList<QByteArray>{heartbeat}, Frames{heartbeat});
    tableRow("two frames in one chunk", QList<QByteArray>{answer + json}, Frames{answer, json});
    tableRow("cut behind the length field", QList<QByteArray>{answer.left(6), answer.mid(6)}, Frames{answer});
    tableRow("cut behind the length field of a bodiless frame",
             QList<QByteArray>{heartbeat.left(6), hex("56 78")}, Frames{heartbeat});
    tableRow("cut inside the footer", QList<QByteArray>{answer.chopped(1), hex("78")}, Frames{answer});
    tableRow("cut inside the footer, more behind", QList<QByteArray>{answer.chopped(1), hex("78") + json},
             Frames{answer, json});
    tableRow("cut inside the footer, wrong second byte",
             QList<QByteArray>{answer.chopped(1), hex("79") + json}, Frames{json});
    tableRow("rest of a frame and the start of the next",
             QList<QByteArray>{json.left(9), json.mid(9) + segment.left(12), segment.mid(12)},
             Frames{json, segment});
    tableRow("rest of a frame and the next one's first byte",
             QList<QByteArray>{json.left(9), json.mid(9) + hex("12"), segment.mid(1)}, Frames{json, segment});
    tableRow("bad footer: the frame inside is found",
             QList<QByteArray>{hex("12 34 05 00 10 00") + heartbeat + hex("00 00")}, Frames{heartbeat});
    tableRow("bad footer of a carried frame: the frame inside what was carried is lost",
             QList<QByteArray>{hex("12 34 05 00 16 00") + heartbeat, hex("00 00 00 00 00 00 00 00") + json},
             Frames{json});
    tableRow(
        "bad footer of a carried frame: the frame inside the new chunk is found",
        QList<QByteArray>{hex("12 34 05 00 14 00 00 00"), hex("00 00") + heartbeat + hex("00 00") + json},
        Frames{heartbeat, json});
    tableRow("noise before the first header", QList<QByteArray>{QByteArray(5000, '.') + answer},
             Frames{answer});
    tableRow("chunk of noise leaves no trace", QList<QByteArray>{hex("34 56 78 12 00 01"), heartbeat},
             Frames{heartbeat});
    tableRow("header gives up a carried frame that lacks more",
             QList<QByteArray>{segment.left(7), heartbeat, segment.mid(7)}, Frames{heartbeat});
    tableRow("single header byte is kept", QList<QByteArray>{hex("12"), answer.mid(1)}, Frames{answer});
    tableRow("header byte at the end of a longer chunk is not kept",
             QList<QByteArray>{hex("00 12"), answer.mid(1)}, Frames{});
    tableRow("header byte behind a whole frame is kept",
             QList<QByteArray>{heartbeat + hex("12"), answer.mid(1)}, Frames{heartbeat, answer});
    tableRow("single header byte in a body gives the carried frame up",
             QList<QByteArray>{hex("12 34 07 00 0b 00 61"), hex("12"), hex("62 63 56 78") + heartbeat},
             Frames{heartbeat});
    tableRow("kept header byte is taken for a header",
             QList<QByteArray>{hex("12"), hex("ff 02 00 08 00 56 78")},
             Frames{hex("12 ff 02 00 08 00 56 78")});
    tableRow("header behind a rejected one in the carry",
             QList<QByteArray>{hex("12 34") + heartbeat.left(4), heartbeat.mid(4)}, Frames{heartbeat});
    tableRow("header further behind a rejected one in the carry",
             QList<QByteArray>{hex("12 34 05 00 0c 00") + heartbeat.left(4), heartbeat.mid(4), answer},
             Frames{answer});
    // A rejected carry is counted longer than it is: what was put behind it stands for the missing bytes.
    tableRow("header behind a rejected one begins a frame with the chunk's first byte twice",
             QList<QByteArray>{hex("12 34 00 12 34"),
                               hex("01 0c 00 61 62 63 64 56 78") + QByteArray(300, 'p') + answer},
             Frames{hex("12 34 01 01 0c 00 61 62 63 64 56 78"), answer});
    tableRow("header behind a rejected one begins a frame with bytes of an earlier one",
             QList<QByteArray>{frameOfSize(30).left(25), frameOfSize(30).mid(25),
                               hex("12 34 05 00 10 00 12 34 07 00 10 00 79 79"), hex("61 62 56 78")},
             Frames{frameOfSize(30), hex("12 34 07 00 10 00 79 79 62 62 62 62 61 62 56 78")});
    tableRow("rejected carry leaves the chunk alone",
             QList<QByteArray>{hex("12 34 05 00 03 00"), answer + json}, Frames{answer, json});
    tableRow("rejected carry is forgotten",
             QList<QByteArray>{hex("12 34 05 00 03 00"), hex("00 00"), answer.left(9), answer.mid(9)},
             Frames{answer});
    tableRow("empty chunk between two pieces", QList<QByteArray>{answer.left(3), QByteArray(), answer.mid(3)},
             Frames{answer});
    tableRow("start that another start follows",
             QList<QByteArray>{answer.left(10), answer.left(5), answer.mid(5)}, Frames{answer});
}

void TestFrameAssembler::chunks()
{
    QFETCH(QList<QByteArray>, chunks);
    QFETCH(QList<QByteArray>, frames);

    QCOMPARE(readerFrames(chunks), frames);
    QCOMPARE(modelFrames(chunks), frames);
}

void TestFrameAssembler::everySplitOfGoodFramesGivesAllOfThem()
{
    const QByteArray stream = heartbeat + answer + json + segment + frameOfSize(1043) + heartbeat;
    const Frames all{heartbeat, answer, json, segment, frameOfSize(1043), heartbeat};
    for (int place = 0; place <= stream.size(); ++place) {
        const Frames frames = readerFrames(cut(stream, {place}));
        QVERIFY2(frames == all, qPrintable(QString("cut at %1").arg(place)));
    }
}

void TestFrameAssembler::byteByByteGivesAllFrames()
{
    Reader reader;
    const QByteArray stream = heartbeat + answer + json + segment + frameOfSize(1043) + heartbeat;
    for (const char byte : stream) {
        reader.feed(QByteArray(1, byte));
    }
    QCOMPARE(reader.frames, (Frames{heartbeat, answer, json, segment, frameOfSize(1043), heartbeat}));
}

void TestFrameAssembler::wholeFramesAreGivenInPlace()
{
    QList<const char *> places;
    FrameAssembler assembler([&places](const char *frame, unsigned) { places.append(frame); });
    const QByteArray chunk = heartbeat + answer;
    assembler.assemble(chunk.constData(), unsigned(chunk.size()));
    QCOMPARE(places, (QList<const char *>{chunk.constData(), chunk.constData() + heartbeat.size()}));
}

void TestFrameAssembler::lengthFieldTooSmallCostsItsHeader_data()
{
    QTest::addColumn<int>("size");
    for (int size = 0; size < 8; ++size) {
        QTest::addRow("%d", size) << size;
    }
}

void TestFrameAssembler::lengthFieldTooSmallCostsItsHeader()
{
    QFETCH(int, size);

    // Behind a frame, so that a footer stands in front; the last one has a footer for a command.
    const QByteArray stream =
        answer + hex("12 34 05 00") + little16(size) + heartbeat + hex("12 34 56 78") + little16(size) + json;
    for (int place = 0; place <= stream.size(); ++place) {
        const QList<QByteArray> chunks = cut(stream, {place});
        QVERIFY2(readerFrames(chunks) == modelFrames(chunks), qPrintable(QString("cut at %1").arg(place)));
    }
    QCOMPARE(readerFrames({stream}), (Frames{answer, heartbeat, json}));
}

void TestFrameAssembler::carryHoldsUpTo4096Bytes_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("firstPiece");
    QTest::addColumn<bool>("given");

    QTest::newRow("4096, cut early") << 4096 << 10 << true;
    QTest::newRow("4096, cut before its last byte") << 4096 << 4095 << true;
    QTest::newRow("4097, cut early") << 4097 << 10 << false;
    QTest::newRow("4097, cut before its last byte") << 4097 << 4096 << false;
    QTest::newRow("65535, cut early") << 65535 << 10 << false;
    QTest::newRow("65535, cut late") << 65535 << 65000 << false;
}

void TestFrameAssembler::carryHoldsUpTo4096Bytes()
{
    QFETCH(int, size);
    QFETCH(int, firstPiece);
    QFETCH(bool, given);

    const QByteArray stream = frameOfSize(size) + answer;
    const Frames expected = given ? Frames{frameOfSize(size), answer} : Frames{answer};
    QCOMPARE(readerFrames(cut(stream, {firstPiece})), expected);
    QCOMPARE(modelFrames(cut(stream, {firstPiece})), expected);

    Reader byteByByte;
    for (const char byte : stream) {
        byteByByte.feed(QByteArray(1, byte));
    }
    QCOMPARE(byteByByte.frames, expected);
}

void TestFrameAssembler::longFrameWholeInAChunkIsGiven()
{
    QCOMPARE(readerFrames({heartbeat + frameOfSize(65535)}), (Frames{heartbeat, frameOfSize(65535)}));
}

void TestFrameAssembler::garbageIsWorkedOff_data()
{
    QTest::addColumn<QByteArray>("pattern");
    QTest::addColumn<int>("chunk");

    const QList<QByteArray> patterns{hex("00"),
                                     hex("12"),
                                     hex("12 34"),
                                     hex("12 34 ff ff"),
                                     hex("12 34 00 00 ff ff"),
                                     hex("12 34 05 00 00 00 56 78"),
                                     hex("12 34 05 00 00 10") + QByteArray(4000, '\x12'),
                                     hex("12 34 05 00 ff 0f 00 00 12 34 05 00 ff ff")
                                         + QByteArray(4000, 'g')};
    for (const QByteArray &pattern : patterns) {
        for (const int chunk : {1, 2, 3, 1000, 5000, 1 << 20}) {
            QTest::addRow("%s... in pieces of %d", pattern.left(14).toHex(' ').constData(), chunk)
                << pattern << chunk;
        }
    }
}

void TestFrameAssembler::garbageIsWorkedOff()
{
    QFETCH(QByteArray, pattern);
    QFETCH(int, chunk);

    const QByteArray garbage = pattern.repeated((1 << 20) / pattern.size());
    Reader reader;
    for (int place = 0; place < garbage.size(); place += chunk) {
        reader.feed(garbage.mid(place, chunk));
    }
    reader.feed(answer);
    QCOMPARE(reader.frames, Frames{answer});
}

QTEST_GUILESS_MAIN(TestFrameAssembler)
#include "tst_frameassembler.moc"

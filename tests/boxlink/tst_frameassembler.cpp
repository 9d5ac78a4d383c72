#include "framestream.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace FrameStream;

namespace {

QByteArray oneOf(QRandomGenerator &random, const QList<QByteArray> &choice)
{
    return choice.at(random.bounded(choice.size()));
}

// A stream of frames good and bad with noise of the dangerous bytes between them.
QByteArray randomStream(QRandomGenerator &random)
{
    static const QByteArray noise = hex("12 34 56 78 00 01 02 05 06 08 0c 12 34 ff");
    QByteArray stream;
    const int pieces = random.bounded(1, 12);
    for (int piece = 0; piece < pieces; ++piece) {
        switch (random.bounded(8)) {
        case 0: { // noise
            for (int left = random.bounded(20); left > 0; --left) {
                stream.append(noise.at(random.bounded(noise.size())));
            }
            break;
        }
        case 1: // a header with a length of its own
            stream.append(hex("12 34 06 00")).append(little16(random.bounded(40)));
            break;
        case 2: // a frame without its end
            stream.append(oneOf(random, {answer, json, segment}).left(random.bounded(1, 17)));
            break;
        case 3: // a frame that lost its footer
            stream.append(oneOf(random, {answer, json, segment}).chopped(random.bounded(1, 3)) + "..");
            break;
        case 4: { // a frame with a body of the dangerous bytes
            QByteArray body;
            for (int left = random.bounded(24); left > 0; --left) {
                body.append(noise.at(random.bounded(noise.size())));
            }
            stream.append(hex("12 34 05 00") + little16(8 + body.size()) + body + hex("56 78"));
            break;
        }
        default:
            stream.append(
                oneOf(random, {heartbeat, answer, json, segment, frameOfSize(18), frameOfSize(300)}));
        }
    }
    return stream;
}

QList<QByteArray> randomChunks(QRandomGenerator &random, const QByteArray &stream)
{
    const int longest = random.bounded(3) == 0 ? 3 : random.bounded(1, 60);
    QList<int> places;
    for (int place = random.bounded(1, longest + 1); place < stream.size();
         place += random.bounded(1, longest + 1)) {
        places.append(place);
    }
    return cut(stream, places);
}

} // namespace

class tst_FrameAssembler : public QObject
{
    Q_OBJECT
private slots:
    void chunks_data();
    void chunks();
    void everySplitOfGoodFramesGivesAllOfThem();
    void byteByByteGivesAllFrames();
    void everySplitFollowsTheRules_data();
    void everySplitFollowsTheRules();
    void everyPairOfSplitsFollowsTheRules();
    void randomFragmentsFollowTheRules_data();
    void randomFragmentsFollowTheRules();
    void wholeFramesAreGivenInPlace();
    void lengthFieldTooSmallCostsItsHeader_data();
    void lengthFieldTooSmallCostsItsHeader();
    void carryHoldsUpTo4096Bytes_data();
    void carryHoldsUpTo4096Bytes();
    void longFrameWholeInAChunkIsGiven();
    void garbageIsWorkedOff_data();
    void garbageIsWorkedOff();
};

void tst_FrameAssembler::chunks_data()
{
    QTest::addColumn<QList<QByteArray>>("chunks");
    QTest::addColumn<QList<QByteArray>>("frames");

    QTest::newRow("nothing") << QList<QByteArray>{QByteArray()} << Frames{};
    QTest::newRow("length 8 is a frame with an empty body")
        << QList<QByteArray>{heartbeat} << Frames{heartbeat};
    QTest::newRow("two frames in one chunk") << QList<QByteArray>{answer + json} << Frames{answer, json};
    QTest::newRow("cut behind the length field")
        << QList<QByteArray>{answer.left(6), answer.mid(6)} << Frames{answer};
    QTest::newRow("cut behind the length field of a bodiless frame")
        << QList<QByteArray>{heartbeat.left(6), hex("56 78")} << Frames{heartbeat};
    QTest::newRow("cut inside the footer")
        << QList<QByteArray>{answer.chopped(1), hex("78")} << Frames{answer};
    QTest::newRow("cut inside the footer, more behind")
        << QList<QByteArray>{answer.chopped(1), hex("78") + json} << Frames{answer, json};
    QTest::newRow("cut inside the footer, wrong second byte")
        << QList<QByteArray>{answer.chopped(1), hex("79") + json} << Frames{json};
    QTest::newRow("rest of a frame and the start of the next")
        << QList<QByteArray>{json.left(9), json.mid(9) + segment.left(12), segment.mid(12)}
        << Frames{json, segment};
    QTest::newRow("rest of a frame and the next one's first byte")
        << QList<QByteArray>{json.left(9), json.mid(9) + hex("12"), segment.mid(1)} << Frames{json, segment};
    QTest::newRow("bad footer: the frame inside is found")
        << QList<QByteArray>{hex("12 34 05 00 10 00") + heartbeat + hex("00 00")} << Frames{heartbeat};
    QTest::newRow("noise before the first header")
        << QList<QByteArray>{QByteArray(5000, '.') + answer} << Frames{answer};
    QTest::newRow("chunk of noise leaves no trace")
        << QList<QByteArray>{hex("34 56 78 12 00 01"), heartbeat} << Frames{heartbeat};
    QTest::newRow("header gives up a carried frame that lacks more")
        << QList<QByteArray>{segment.left(7), heartbeat, segment.mid(7)} << Frames{heartbeat};
    QTest::newRow("single header byte is kept")
        << QList<QByteArray>{hex("12"), answer.mid(1)} << Frames{answer};
    QTest::newRow("header byte at the end of a longer chunk is not kept")
        << QList<QByteArray>{hex("00 12"), answer.mid(1)} << Frames{};
    QTest::newRow("header byte behind a whole frame is kept")
        << QList<QByteArray>{heartbeat + hex("12"), answer.mid(1)} << Frames{heartbeat, answer};
    QTest::newRow("single header byte in a body gives the carried frame up")
        << QList<QByteArray>{hex("12 34 07 00 0b 00 61"), hex("12"), hex("62 63 56 78") + heartbeat}
        << Frames{heartbeat};
    QTest::newRow("kept header byte is taken for a header")
        << QList<QByteArray>{hex("12"), hex("ff 02 00 08 00 56 78")}
        << Frames{hex("12 ff 02 00 08 00 56 78")};
    QTest::newRow("header behind a rejected one in the carry")
        << QList<QByteArray>{hex("12 34") + heartbeat.left(4), heartbeat.mid(4)} << Frames{heartbeat};
    QTest::newRow("header further behind a rejected one in the carry")
        << QList<QByteArray>{hex("12 34 05 00 0c 00") + heartbeat.left(4), heartbeat.mid(4), answer}
        << Frames{answer};
    QTest::newRow("rejected carry leaves the chunk alone")
        << QList<QByteArray>{hex("12 34 05 00 03 00"), answer + json} << Frames{answer, json};
    QTest::newRow("rejected carry is forgotten")
        << QList<QByteArray>{hex("12 34 05 00 03 00"), hex("00 00"), answer.left(9), answer.mid(9)}
        << Frames{answer};
    QTest::newRow("empty chunk between two pieces")
        << QList<QByteArray>{answer.left(3), QByteArray(), answer.mid(3)} << Frames{answer};
    QTest::newRow("start that another start follows")
        << QList<QByteArray>{answer.left(10), answer.left(5), answer.mid(5)} << Frames{answer};
}

void tst_FrameAssembler::chunks()
{
    QFETCH(QList<QByteArray>, chunks);
    QFETCH(QList<QByteArray>, frames);

    QCOMPARE(readerFrames(chunks), frames);
    QCOMPARE(modelFrames(chunks), frames);
}

void tst_FrameAssembler::everySplitOfGoodFramesGivesAllOfThem()
{
    const QByteArray stream = heartbeat + answer + json + segment + frameOfSize(1043) + heartbeat;
    const Frames all{heartbeat, answer, json, segment, frameOfSize(1043), heartbeat};
    for (int place = 0; place <= stream.size(); ++place) {
        const Frames frames = readerFrames(cut(stream, {place}));
        QVERIFY2(frames == all, qPrintable(QStringLiteral("cut at %1").arg(place)));
    }
}

void tst_FrameAssembler::byteByByteGivesAllFrames()
{
    Reader reader;
    const QByteArray stream = heartbeat + answer + json + segment + frameOfSize(1043) + heartbeat;
    for (const char byte : stream) {
        reader.feed(QByteArray(1, byte));
    }
    QCOMPARE(reader.frames, (Frames{heartbeat, answer, json, segment, frameOfSize(1043), heartbeat}));
}

void tst_FrameAssembler::everySplitFollowsTheRules_data()
{
    QTest::addColumn<QByteArray>("stream");

    // A body may hold anything, a header too: version text "4..." of 18 characters in the heartbeat answer.
    const QByteArray headerInside =
        hex("12 34 02 00 1d 00 12") + "4567890123456789AB" + hex("01 73 00 00 56 78");
    QTest::newRow("good frames") << heartbeat + answer + json + segment;
    QTest::newRow("header in a body") << heartbeat + headerInside + answer + headerInside + json;
    QTest::newRow("length of 18") << frameOfSize(18) + frameOfSize(18) + answer;
    QTest::newRow("noise between") << hex("12 00 34 12") + answer + hex("12 12 34 56 78 12") + json
            + hex("12 34") + segment + heartbeat;
    QTest::newRow("lost footers") << answer.chopped(2) + json.chopped(1) + segment + answer
            + heartbeat.chopped(2) + json;
    QTest::newRow("nested headers")
        << hex("12 34 12 34 12 34 08 00 12 34 12 34 00 00 12 34 0c 00 08 00 56 78") + answer;
    QTest::newRow("small lengths") << hex("12 34 01 00 00 00 12 34 01 00 07 00 56 78") + answer
            + hex("12 34 56 78 04 00 12 34 00 00 01 00") + json;
}

void tst_FrameAssembler::everySplitFollowsTheRules()
{
    QFETCH(QByteArray, stream);

    for (int place = 0; place <= stream.size(); ++place) {
        const QList<QByteArray> chunks = cut(stream, {place});
        QVERIFY2(readerFrames(chunks) == modelFrames(chunks),
                 qPrintable(QStringLiteral("cut at %1").arg(place)));
    }
}

void tst_FrameAssembler::everyPairOfSplitsFollowsTheRules()
{
    const QByteArray stream = answer + hex("12 34 05 00 0c 00") + heartbeat + hex("12") + segment
        + json.chopped(2) + answer + hex("12 34 09 00 0a 00 12 34 56 78");
    for (int first = 0; first <= stream.size(); ++first) {
        for (int second = first; second <= stream.size(); ++second) {
            const QList<QByteArray> chunks = cut(stream, {first, second});
            QVERIFY2(readerFrames(chunks) == modelFrames(chunks),
                     qPrintable(QStringLiteral("cut at %1 and %2").arg(first).arg(second)));
        }
    }
}

void tst_FrameAssembler::randomFragmentsFollowTheRules_data()
{
    QTest::addColumn<quint32>("seed");

    QTest::newRow("seed 1") << 1u;
    QTest::newRow("seed 30088") << 30088u;
    // A new one each time; the row's name says which one to add above when it fails.
    const quint32 seed = QRandomGenerator::global()->generate();
    QTest::addRow("seed %u", seed) << seed;
}

void tst_FrameAssembler::randomFragmentsFollowTheRules()
{
    QFETCH(quint32, seed);

    QRandomGenerator random(seed);
    for (int round = 0; round < 3000; ++round) {
        const QList<QByteArray> chunks = randomChunks(random, randomStream(random));
        const Frames frames = readerFrames(chunks);
        if (frames != modelFrames(chunks)) {
            for (const QByteArray &chunk : chunks) {
                qWarning("%s", chunk.toHex(' ').constData());
            }
            QFAIL(qPrintable(QStringLiteral("round %1").arg(round)));
        }
    }
}

void tst_FrameAssembler::wholeFramesAreGivenInPlace()
{
    QList<const char *> places;
    FrameAssembler assembler([&places](const char *frame, unsigned) { places.append(frame); });
    const QByteArray chunk = heartbeat + answer;
    assembler.assemble(chunk.constData(), unsigned(chunk.size()));
    QCOMPARE(places, (QList<const char *>{chunk.constData(), chunk.constData() + heartbeat.size()}));
}

void tst_FrameAssembler::lengthFieldTooSmallCostsItsHeader_data()
{
    QTest::addColumn<int>("size");
    for (int size = 0; size < 8; ++size) {
        QTest::addRow("%d", size) << size;
    }
}

void tst_FrameAssembler::lengthFieldTooSmallCostsItsHeader()
{
    QFETCH(int, size);

    // Behind a frame, so that a footer stands in front; the last one has a footer for a command.
    const QByteArray stream =
        answer + hex("12 34 05 00") + little16(size) + heartbeat + hex("12 34 56 78") + little16(size) + json;
    for (int place = 0; place <= stream.size(); ++place) {
        const QList<QByteArray> chunks = cut(stream, {place});
        QVERIFY2(readerFrames(chunks) == modelFrames(chunks),
                 qPrintable(QStringLiteral("cut at %1").arg(place)));
    }
    QCOMPARE(readerFrames({stream}), (Frames{answer, heartbeat, json}));
}

void tst_FrameAssembler::carryHoldsUpTo4096Bytes_data()
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

void tst_FrameAssembler::carryHoldsUpTo4096Bytes()
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

void tst_FrameAssembler::longFrameWholeInAChunkIsGiven()
{
    QCOMPARE(readerFrames({heartbeat + frameOfSize(65535)}), (Frames{heartbeat, frameOfSize(65535)}));
}

void tst_FrameAssembler::garbageIsWorkedOff_data()
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

void tst_FrameAssembler::garbageIsWorkedOff()
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

QTEST_GUILESS_MAIN(tst_FrameAssembler)
#include "tst_frameassembler.moc"

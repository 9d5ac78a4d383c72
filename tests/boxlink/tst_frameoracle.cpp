// The reassembler against the model of its rules, over streams and cuts in great number. What comes out
// depends on the cuts, so that reading the whole stream at once would be no measure.

#include "framestream.h"
#include "rounds.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace FrameStream;

namespace {

QByteArray oneOf(QRandomGenerator &random, const QList<QByteArray> &choice)
{
    return choice.at(random.bounded(choice.size()));
}

QByteArray noise(QRandomGenerator &random, int most)
{
    static const QByteArray dangerous = hex("12 34 56 78 00 01 02 05 06 08 0c 12 34 ff");
    QByteArray bytes;
    for (int left = random.bounded(most); left > 0; --left) {
        bytes.append(dangerous.at(random.bounded(dangerous.size())));
    }
    return bytes;
}

QByteArray randomPiece(QRandomGenerator &random)
{
    switch (random.bounded(8)) {
    case 0:
        return noise(random, 20);
    case 1: // a header with a length of its own
        return hex("12 34 06 00") + little16(random.bounded(40));
    case 2: // a frame without its end
        return oneOf(random, {answer, json, segment}).left(random.bounded(1, 17));
    case 3: // a frame that lost its footer
        return oneOf(random, {answer, json, segment}).chopped(random.bounded(1, 3)) + "..";
    case 4: { // a frame with a body of the dangerous bytes
        const QByteArray body = noise(random, 24);
        return hex("12 34 05 00") + little16(8 + body.size()) + body + hex("56 78");
    }
    case 5: // a long frame, now and then about the longest that can be carried
        return frameOfSize(random.bounded(40) == 0 ? random.bounded(4090, 4100) : random.bounded(8, 300));
    default:
        return oneOf(random, {heartbeat, answer, json, segment});
    }
}

// A stream of frames good and bad with noise between them.
QByteArray randomStream(QRandomGenerator &random)
{
    QByteArray stream;
    for (int pieces = random.bounded(1, 12); pieces > 0; --pieces) {
        stream += randomPiece(random);
    }
    return stream;
}

QList<QByteArray> randomChunks(QRandomGenerator &random, const QByteArray &stream)
{
    const int longest = random.bounded(3) == 0 ? 3 : random.bounded(1, stream.size() > 4000 ? 4000 : 60);
    QList<int> places;
    for (int place = random.bounded(1, longest + 1); place < stream.size();
         place += random.bounded(1, longest + 1)) {
        places.append(place);
    }
    return cut(stream, places);
}

// Streams of up to 72 bytes, always the same fifty.
QList<QByteArray> fixedStreams()
{
    // A body may hold anything, a header too: version text "4..." of 18 characters in the heartbeat answer.
    const QByteArray headerInside =
        hex("12 34 02 00 1d 00 12") + "4567890123456789AB" + hex("01 73 00 00 56 78");
    QList<QByteArray> streams{
        heartbeat + answer + json + segment,
        heartbeat + headerInside + answer + headerInside,
        frameOfSize(18) + frameOfSize(18) + answer,
        hex("12 00 34 12") + answer + hex("12 12 34 56 78 12") + json + hex("12 34") + heartbeat,
        answer.chopped(2) + json.chopped(1) + answer + heartbeat.chopped(2) + json,
        hex("12 34 12 34 12 34 08 00 12 34 12 34 00 00 12 34 0c 00 08 00 56 78") + answer,
        hex("12 34 01 00 00 00 12 34 01 00 07 00 56 78") + answer + hex("12 34 56 78 04 00 12 34 00 00 01 00")
            + json,
        answer + hex("12 34 05 00 0c 00") + heartbeat + hex("12") + json.chopped(2)
            + hex("12 34 09 00 0a 00 12 34 56 78"),
        hex("12 34 00 12 34 00 61 08 00 56 78 56 78") + answer, // a header behind a rejected one, carried
    };
    for (quint32 seed = 1; streams.size() < 50; ++seed) {
        QRandomGenerator random(seed);
        streams.append((randomStream(random) + randomStream(random) + randomStream(random)).left(72));
    }
    return streams;
}

QString shown(const QList<QByteArray> &chunks)
{
    QStringList texts;
    for (const QByteArray &chunk : chunks) {
        texts.append(QString::fromLatin1(chunk.left(100).toHex(' ')));
    }
    return texts.join(" | ");
}

} // namespace

class TestFrameOracle : public QObject
{
    Q_OBJECT
private slots:
    void everyOneAndTwoCuts();
    void randomStreamsAndCuts_data();
    void randomStreamsAndCuts();
    void randomStreamsReachTheRulesOfACarry();
    void lengthsCarriesAndFooters_data();
    void lengthsCarriesAndFooters();
};

void TestFrameOracle::everyOneAndTwoCuts()
{
    const QList<QByteArray> streams = fixedStreams();
    QCOMPARE(streams.size(), 50);
    for (const QByteArray &stream : streams) {
        for (int first = 0; first <= stream.size(); ++first) {
            for (int second = first; second <= stream.size(); ++second) {
                const QList<QByteArray> chunks = cut(stream, {first, second});
                QVERIFY2(readerFrames(chunks) == modelFrames(chunks), qPrintable(shown(chunks)));
            }
        }
    }
}

void TestFrameOracle::randomStreamsAndCuts_data()
{
    QTest::addColumn<quint32>("seed");

    QTest::newRow("seed 1") << 1u;
    QTest::newRow("seed 30088") << 30088u;
    // A new one each time; the row's name says which one to add above when it fails.
    const quint32 seed = QRandomGenerator::global()->generate();
    QTest::addRow("seed %u", seed) << seed;
}

void TestFrameOracle::randomStreamsAndCuts()
{
    QFETCH(quint32, seed);

    QRandomGenerator random(seed);
    for (int round = rounds(7000); round > 0; --round) {
        const QList<QByteArray> chunks = randomChunks(random, randomStream(random));
        QVERIFY2(readerFrames(chunks) == modelFrames(chunks), qPrintable(shown(chunks)));
    }
}

void TestFrameOracle::randomStreamsReachTheRulesOfACarry()
{
    QRandomGenerator random(1);
    int frames = 0;
    int rejected = 0;
    int shifted = 0;
    int longest = 0;
    for (int round = 0; round < 2000; ++round) {
        FrameModel model;
        const QList<QByteArray> chunks = randomChunks(random, randomStream(random));
        for (const QByteArray &chunk : chunks) {
            model.feed(chunk);
        }
        frames += model.frames.size();
        rejected += model.rejectedCarries;
        shifted += model.shiftedCarries;
        longest = qMax(longest, model.longestCarry);
    }
    QVERIFY(frames > 2000);
    QVERIFY(rejected > 200);
    QVERIFY(shifted > 20);
    QVERIFY(longest > 4000 && longest <= 4096);
}

void TestFrameOracle::lengthsCarriesAndFooters_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QByteArray>("footer");

    const struct {
        const char *name;
        QByteArray bytes;
    } footers[] = {
        {"good footer", hex("56 78")},         {"wrong first byte", hex("57 78")},
        {"wrong second byte", hex("56 79")},   {"swapped footer", hex("78 56")},
        {"header for a footer", hex("12 34")},
    };
    for (const int size :
         {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 18, 19, 127, 128, 129, 1043, 4095, 4096, 4097, 32767, 32768, 65535}) {
        for (const auto &footer : footers) {
            QTest::addRow("%d, %s", size, footer.name) << size << footer.bytes;
        }
    }
}

// With TEST_ROUNDS every carry, otherwise those about which something may change, and some between.
void TestFrameOracle::lengthsCarriesAndFooters()
{
    QFETCH(int, size);
    QFETCH(QByteArray, footer);

    const bool good = footer == hex("56 78") && size >= 8;
    const QByteArray frame =
        hex("12 34 07 00") + little16(size) + QByteArray(qMax(0, size - 8), 'b') + footer;
    const QByteArray stream = frame + answer;
    const int step = rounds(0) > 0 ? 1 : 251;
    for (int carry = 0; carry <= qMin(stream.size(), Frame::carryCapacity); ++carry) {
        const bool matters = carry < 24 || qAbs(carry - size) < 4 || carry > Frame::carryCapacity - 8;
        if (!matters && carry % step != 0) {
            continue;
        }
        const QList<QByteArray> chunks = cut(stream, {carry});
        const Frames frames = readerFrames(chunks);
        QVERIFY2(frames == modelFrames(chunks), qPrintable(QString("carry of %1").arg(carry)));
        if (good) {
            const bool given = size <= Frame::carryCapacity || carry == 0;
            QVERIFY2(frames == (given ? Frames{frame, answer} : Frames{answer}),
                     qPrintable(QString("carry of %1").arg(carry)));
        }
    }
}

QTEST_GUILESS_MAIN(TestFrameOracle)
#include "tst_frameoracle.moc"

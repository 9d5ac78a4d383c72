// What a sink may do to the assembler that calls it.

#include "framestream.h"

#include <QtTest>

using namespace FrameStream;

class TestFrameReentry : public QObject
{
    Q_OBJECT
private slots:
    void nextChunkFromTheSinkComesAfterTheRest();
    void frameOutlivesWhatTheSinkBringsIn();
    void sinkMayNestDeeply();
    void sinkMayDestroyTheAssembler_data();
    void sinkMayDestroyTheAssembler();
    void nestedSinkMayDestroyTheAssembler();
};

void TestFrameReentry::nextChunkFromTheSinkComesAfterTheRest()
{
    const QByteArray first = json.mid(10) + answer + segment.left(8);
    const QByteArray second = segment.mid(8) + heartbeat + json.left(5);
    const QByteArray third = json.mid(5);
    Frames frames;
    std::unique_ptr<FrameAssembler> assembler;
    assembler = std::make_unique<FrameAssembler>([&](const char *frame, unsigned length) {
        frames.append(QByteArray(frame, int(length)));
        if (frames.size() == 1) {
            assembler->assemble(second.constData(), unsigned(second.size()));
        }
    });
    assembler->assemble(json.constData(), 10);
    assembler->assemble(first.constData(), unsigned(first.size()));
    QCOMPARE(frames, (Frames{json, answer, segment, heartbeat}));
    assembler->assemble(third.constData(), unsigned(third.size()));
    QCOMPARE(frames, (Frames{json, answer, segment, heartbeat, json}));
}

void TestFrameReentry::frameOutlivesWhatTheSinkBringsIn()
{
    Frames frames;
    std::unique_ptr<FrameAssembler> assembler;
    assembler = std::make_unique<FrameAssembler>([&](const char *frame, unsigned length) {
        if (frames.isEmpty()) {
            frames.append(QByteArray()); // once
            const QByteArray start = segment.left(20);
            assembler->assemble(start.constData(), unsigned(start.size())); // fills the carry anew
        }
        frames.append(QByteArray(frame, int(length)));
    });
    assembler->assemble(json.constData(), 10);
    assembler->assemble(json.constData() + 10, unsigned(json.size() - 10));
    assembler->assemble(segment.constData() + 20, unsigned(segment.size() - 20));
    QCOMPARE(frames, (Frames{QByteArray(), json, segment}));
}

void TestFrameReentry::sinkMayNestDeeply()
{
    // Each frame of the outermost chunk brings a further chunk, which ends inside a frame.
    const QByteArray stream =
        heartbeat + answer + json + segment + heartbeat + answer + json + segment + heartbeat;
    QList<QByteArray> chunks = cut(stream, {20, 30, 40, 70, 80, 100, 120});
    Frames frames;
    std::unique_ptr<FrameAssembler> assembler;
    const auto feedNext = [&] {
        if (!chunks.isEmpty()) {
            const QByteArray chunk = chunks.takeFirst();
            assembler->assemble(chunk.constData(), unsigned(chunk.size()));
        }
    };
    assembler = std::make_unique<FrameAssembler>([&](const char *frame, unsigned length) {
        frames.append(QByteArray(frame, int(length)));
        feedNext();
    });
    while (!chunks.isEmpty()) {
        feedNext();
    }
    QCOMPARE(frames, (Frames{heartbeat, answer, json, segment, heartbeat, answer, json, segment, heartbeat}));
}

void TestFrameReentry::sinkMayDestroyTheAssembler_data()
{
    QTest::addColumn<QList<QByteArray>>("chunks");
    QTest::newRow("whole frame, more behind") << QList<QByteArray>{answer + json};
    QTest::newRow("carried frame, more behind") << QList<QByteArray>{answer.left(9), answer.mid(9) + json};
}

void TestFrameReentry::sinkMayDestroyTheAssembler()
{
    QFETCH(QList<QByteArray>, chunks);

    Frames frames;
    std::unique_ptr<FrameAssembler> assembler;
    assembler = std::make_unique<FrameAssembler>([&](const char *frame, unsigned length) {
        assembler.reset();
        frames.append(QByteArray(frame, int(length)));
    });
    for (const QByteArray &chunk : chunks) {
        QVERIFY(assembler);
        assembler->assemble(chunk.constData(), unsigned(chunk.size()));
    }
    QVERIFY(!assembler);
    QCOMPARE(frames, Frames{answer});
}

void TestFrameReentry::nestedSinkMayDestroyTheAssembler()
{
    Frames frames;
    std::unique_ptr<FrameAssembler> assembler;
    assembler = std::make_unique<FrameAssembler>([&](const char *frame, unsigned length) {
        frames.append(QByteArray(frame, int(length)));
        if (frames.size() == 1) {
            assembler->assemble(segment.constData(), unsigned(segment.size()));
        } else {
            assembler.reset();
        }
    });
    const QByteArray chunk = heartbeat + answer + json;
    assembler->assemble(chunk.constData(), unsigned(chunk.size()));
    QVERIFY(!assembler);
    QCOMPARE(frames, (Frames{heartbeat, answer}));
}

QTEST_GUILESS_MAIN(TestFrameReentry)
#include "tst_framereentry.moc"

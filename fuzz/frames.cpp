// The reassembler with all that a session does with a frame, beside the model of the reassembler's rules. The
// pieces of the input are the chunks of the stream.

#include "boxlink/frameassembler.h"
#include "boxlink/monitoringaccumulator.h"
#include "boxlink/session.h"
#include "framemodel.h"
#include "fuzztarget.h"

#include <algorithm>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    MonitoringAccumulator::shared().reset();
    Session session;
    FrameModel model;
    QList<QByteArray> frames;
    FrameAssembler assembler(
        [&frames](const char *frame, unsigned length) { frames.append(QByteArray(frame, int(length))); });
    const QList<QByteArray> chunks = Fuzz::pieces(Fuzz::bytesOf(data, size));
    for (const QByteArray &chunk : chunks) {
        // In a block of its own size, so that a read behind it is seen.
        const std::unique_ptr<char[]> block(new char[std::size_t(chunk.size())]);
        std::copy(chunk.begin(), chunk.end(), block.get());
        assembler.assemble(block.get(), unsigned(chunk.size()));
        session.assemble(block.get(), unsigned(chunk.size()));
        model.feed(chunk);
    }
    Fuzz::require(frames == model.frames, "the reassembler gives the frames of its model");
    Fuzz::require(model.longestCarry <= Frame::carryCapacity, "no more than 4096 bytes are carried");
    return 0;
}

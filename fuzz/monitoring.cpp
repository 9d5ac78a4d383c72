// The segments of live reports. Each piece of the input is a whole frame, or, if it does not begin like one,
// the text of a segment that continues a well-formed report.

#include "boxlink/frame.h"
#include "boxlink/monitoringaccumulator.h"
#include "boxlink/monitoringreport.h"
#include "fuzztarget.h"

static QByteArray segment(quint32 total, quint32 number, const QByteArray &text)
{
    return Frame::chunkFrame(Frame::MonitoringSegment, total, number, text);
}

// The text of all pieces, sent as a Box does.
static void sendReport(const QByteArray &text)
{
    MonitoringAccumulator accumulator;
    for (int at = 0; at < text.size(); at += Frame::chunkSize) {
        const bool last = at + Frame::chunkSize >= text.size();
        const auto report = accumulator.addSegment(segment(
            quint32(text.size()), quint32(at / Frame::chunkSize + 1), text.mid(at, Frame::chunkSize)));
        Fuzz::require(last || !report, "a report is complete with its last segment and not before");
        if (report) {
            MonitoringReport::fromJson(*report);
        }
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    MonitoringAccumulator accumulator;
    QByteArray text;
    const QList<QByteArray> pieces = Fuzz::pieces(Fuzz::bytesOf(data, size));
    for (const QByteArray &piece : pieces) {
        if (piece.startsWith("\x12\x34")) {
            accumulator.addSegment(piece);
        } else {
            text += piece;
        }
    }
    sendReport(text);
    return 0;
}

#include "boxsim/reportframes.h"

#include "boxsim/options.h"
#include "boxsim/wire.h"

QVector<QByteArray> reportFrames(const QVector<QByteArray> &reports, const BoxSimFaults &faults)
{
    const int size = faults.segmentSize > 0 ? faults.segmentSize : Wire::segmentText;
    QVector<QVector<QByteArray>> cut;
    int longest = 0;
    for (const QByteArray &report : reports) {
        cut.append(Wire::segments(report, size, faults.wrongTotal, faults.wrongNumber));
        longest = qMax(longest, cut.constLast().size());
    }
    QVector<QByteArray> frames;
    for (int i = 0; i < longest; ++i) {
        for (const QVector<QByteArray> &one : qAsConst(cut)) {
            if (i < one.size()) {
                frames.append(one.at(i));
            }
        }
    }
    return frames;
}

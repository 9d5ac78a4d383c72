#pragma once

#include <QByteArray>
#include <QVector>

struct BoxSimFaults;

// The 0x0600 frames of reports that are due together, spoiled as faults say: one report in order, several
// mixed, a segment of each in turn.
QVector<QByteArray> reportFrames(const QVector<QByteArray> &reports, const BoxSimFaults &faults);

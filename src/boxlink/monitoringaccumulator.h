#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

// Joins the segments of a live data report into its JSON text. There is one accumulator for the whole
// program, shared by all sessions, and it holds one report at a time: segments count in the order of their
// arrival. For the GUI thread only.
namespace MonitoringAccumulator {

// Far above any report; one that grows past it is dropped, since a Box announces up to 4 GiB.
constexpr int sizeLimit = 64 * 1024 * 1024; // bytes of text

// Takes one frame of command 0x0600. Gives the report if this segment completes it, else nothing. A report
// whose text is an array reads as an empty object. Frames of any length and content may come.
std::optional<QJsonObject> addSegment(const QByteArray &frame);

// Forgets the report in hand and releases its memory.
void reset();

} // namespace MonitoringAccumulator

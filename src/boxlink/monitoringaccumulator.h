#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

// Joins the segments of a live data report into its JSON text. Holds one report at a time: segments count in
// the order of their arrival.
class MonitoringAccumulator
{
public:
    // Far above any report; one that grows past it is dropped, since a Box announces up to 4 GiB.
    static constexpr int sizeLimit = 64 * 1024 * 1024; // bytes of text

    // Compat: the one of all sessions of the window, for the GUI thread only. Two Boxes that report at the
    // same time disturb each other, and a disconnection of either loses the report in hand.
    static MonitoringAccumulator &shared();

    // Takes one frame of command 0x0600. Gives the report if this segment completes it, else nothing. A
    // report whose text is an array reads as an empty object. Frames of any length and content may come.
    std::optional<QJsonObject> addSegment(const QByteArray &frame);

    // Forgets the report in hand and releases its memory.
    void reset();

private:
    QByteArray m_text;
    quint32 m_total = 0; // the announced length of the whole text; 0: no report is being assembled
};

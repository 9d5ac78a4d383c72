#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// What a Box says about itself in answer to a heartbeat.
struct HeartbeatAnswer {
    QString version;
    QString serialNumber;
    QString model;

    // Reads a whole frame of command 0x0200: three texts in UTF-8, each behind one signed length byte. Gives
    // nothing for a length field that is not the frame's size, for a bad footer (after a debug line), and for
    // a count that is negative or leads past the footer.
    static std::optional<HeartbeatAnswer> fromFrame(const QByteArray &frame);
};

#pragma once

#include "boxctltest.h"
#include "fakebox.h"
#include "handframes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

// What the tests of reports share: Boxes that say what a test makes them say.
namespace BoxCtl {

inline const QByteArray heartbeatAnswer = HandFrames::hex("12 34 02 00 0c 00 01 31 00 00 56 78");

// The frames of a report's text, in segments of 1024 bytes.
inline QList<QByteArray> segments(const QByteArray &text)
{
    using namespace HandFrames;
    QList<QByteArray> frames;
    for (int at = 0; at < text.size(); at += 1024) {
        const QByteArray part = text.mid(at, 1024);
        frames.append(frame("06 00",
                            hex("01") + little(quint32(text.size()), 4) + little(quint32(part.size()), 2)
                                + little(quint32(frames.size() + 1), 4) + part));
    }
    return frames;
}

inline QJsonObject point(const char *name, const char *type, const char *value, const char *valid = "1")
{
    return {{"name", QString::fromUtf8(name)},
            {"addr", "7"},
            {"dataType", type},
            {"value", QString::fromUtf8(value)},
            {"valid", valid}};
}

inline QByteArray reportOf(const char *standard, const QJsonArray &points)
{
    return QJsonDocument(
               QJsonObject{{"projectName", "P"}, {"plcName", QString::fromUtf8(standard)}, {"datas", points}})
        .toJson(QJsonDocument::Compact);
}

inline QByteArray bytesOf(const QByteArray &report)
{
    QByteArray bytes;
    const QList<QByteArray> frames = segments(report);
    for (const QByteArray &one : frames) {
        bytes += one;
    }
    return bytes;
}

// A Box that answers heartbeats and sends these reports on each link.
class ReportingBox : public FakeBox
{
public:
    explicit ReportingBox(const QString &its, const QList<QByteArray> &reports = {})
        : FakeBox(its)
    {
        heard = [this, reports](int link) {
            send(link, heartbeatAnswer);
            for (const QByteArray &report : reports) {
                send(link, bytesOf(report));
            }
        };
    }
};

} // namespace BoxCtl

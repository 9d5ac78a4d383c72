#include "boxsim/simproject.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVariant>

namespace {

constexpr int mostStandards = 256;
constexpr int mostPoints = 50000;
constexpr int usualInterval = 1000;
constexpr int shortestInterval = 100;
constexpr int longestInterval = 24 * 60 * 60 * 1000;

QString text(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

void appendPoint(const QJsonObject &object, SimStandard *standard)
{
    SimPoint point;
    point.addr = text(object, "addr");
    point.name = text(object, "name");
    if (point.name.isEmpty()) {
        point.name = point.addr;
    }
    point.dataType = text(object, "dataType");
    point.length = text(object, "length").toInt();
    const bool left =
        object.contains(QLatin1String("select")) && text(object, "select") != QLatin1String("true");
    if (left || point.name.isEmpty()) {
        return;
    }
    if (standard->points.size() < mostPoints) {
        standard->points.append(point);
    } else {
        ++standard->leftOut;
    }
}

// As a Box reads them: a document has the edition of a meter as a number and all else as texts, and what is
// of another type is as if it were missing.
QMap<QString, QString> texts(const QJsonObject &object)
{
    QMap<QString, QString> texts;
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        const bool isEdition = it.key() == QLatin1String("protocolVersion");
        if (isEdition ? it->isDouble() : it->isString()) {
            texts.insert(it.key(), it->toVariant().toString());
        }
    }
    return texts;
}

SimStandard readStandard(const QJsonObject &object)
{
    SimStandard standard;
    standard.name = text(object, "name");
    const QJsonObject parameter = object.value(QLatin1String("parameter")).toObject();
    standard.protocol = text(object, "protocol");
    standard.mode = text(object, "modbus");
    standard.parameters = texts(parameter);
    const int interval = text(parameter, "collectionInterval").toInt();
    standard.interval = interval <= 0 ? usualInterval : qBound(shortestInterval, interval, longestInterval);
    const QJsonArray entries = object.value(QLatin1String("datas")).toArray();
    for (const QJsonValue &entry : entries) {
        const QJsonValue group = entry.toObject().value(QLatin1String("datas"));
        if (!group.isArray()) {
            appendPoint(entry.toObject(), &standard);
            continue;
        }
        SimDevice device;
        device.settings = texts(entry.toObject());
        device.firstPoint = standard.points.size();
        const QJsonArray points = group.toArray();
        for (const QJsonValue &point : points) {
            appendPoint(point.toObject(), &standard);
        }
        device.pointCount = standard.points.size() - device.firstPoint;
        standard.devices.append(device);
    }
    return standard;
}

} // namespace

bool readSimProject(const QByteArray &document, SimProject *project, QString *error)
{
    QJsonParseError parseError;
    const QJsonObject root = QJsonDocument::fromJson(document, &parseError).object();
    SimProject read;
    read.name = text(root, "name");
    if (read.name.isEmpty()) {
        *error = parseError.error == QJsonParseError::NoError ? QStringLiteral("not an object with a name")
                                                              : parseError.errorString();
        return false;
    }
    read.description = text(root, "description");
    const QJsonArray standards = root.value(QLatin1String("standards")).toArray();
    for (const QJsonValue &standard : standards) {
        if (read.standards.size() < mostStandards) {
            read.standards.append(readStandard(standard.toObject()));
        }
    }
    *project = read;
    return true;
}

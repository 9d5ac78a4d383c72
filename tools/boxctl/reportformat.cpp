#include "boxctl/reportformat.h"

#include "boxctl/output.h"
#include "boxctl/outputqueue.h"
#include "boxlink/monitoringreport.h"
#include "history/reading.h"
#include "log/csvcell.h"
#include "log/timetext.h"

#include <QDateTime>
#include <QJsonObject>
#include <QLocale>

#include <cmath>
#include <functional>

namespace {

constexpr qint64 nanoseconds = 1000000; // in a millisecond

std::optional<QByteArray> linesOf(const MonitoringReport &report,
                                  const std::function<QByteArray(const QJsonObject &)> &line)
{
    QByteArray lines;
    for (const QJsonValue &point : report.datas) {
        if (point.isObject()) {
            lines += line(point.toObject()) + '\n';
        }
        if (lines.size() > OutputQueue::limit) {
            return std::nullopt;
        }
    }
    return lines;
}

QString textOf(const QJsonObject &point, const char *key)
{
    return Output::printable(point.value(QLatin1String(key)).toString());
}

bool isValid(const QJsonObject &point)
{
    return textOf(point, "valid") == QLatin1String("1");
}

QByteArray noLoss(const BoxTarget &, const QString &, qint64)
{
    return {};
}

// For people: "192.168.1.80 (North): 2026-11-22 16:05:01.123 Meter 1 / Voltage A = 231.4".
std::optional<QByteArray> textReport(const BoxTarget &box, const MonitoringReport &report, qint64 time)
{
    const QString local =
        QDateTime::fromMSecsSinceEpoch(time).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
    const QString place =
        Output::printable(QStringLiteral("%1: %2 %3").arg(box.label(), local, report.plcName));
    return linesOf(report, [&](const QJsonObject &point) {
        const QString value = textOf(point, "value");
        QString told = value;
        if (!isValid(point)) {
            told =
                value.isEmpty() ? QStringLiteral("not valid") : QStringLiteral("not valid (%1)").arg(value);
        }
        return QStringLiteral("%1 / %2 = %3").arg(place, textOf(point, "name"), told).toUtf8();
    });
}

std::optional<QByteArray> csvReport(const BoxTarget &box, const MonitoringReport &report, qint64 time)
{
    const auto cell = [](const QString &text) { return csvCell(Output::printable(text)); };
    const QByteArrayList place{zonedTimeText(time).toLatin1(), box.address.toLatin1(),
                               cell(report.projectName), cell(report.plcName)};
    return linesOf(report, [&](const QJsonObject &point) {
        QByteArrayList cells = place;
        for (const char *key : {"name", "addr", "dataType", "value"}) {
            cells.append(csvCell(textOf(point, key)));
        }
        cells.append(isValid(point) ? "1" : "0");
        return cells.join(',');
    });
}

QByteArray jsonLine(const QJsonObject &object)
{
    return Output::jsonText(object).toUtf8() + '\n';
}

std::optional<QByteArray> jsonReport(const BoxTarget &box, const MonitoringReport &report, qint64 time)
{
    return jsonLine({{QStringLiteral("box"), box.address},
                     {QStringLiteral("ok"), true},
                     {QStringLiteral("report"), report.json},
                     {QStringLiteral("time"), zonedTimeText(time)}});
}

QByteArray jsonLoss(const BoxTarget &box, const QString &error, qint64 time)
{
    return jsonLine({{QStringLiteral("box"), box.address},
                     {QStringLiteral("error"), error},
                     {QStringLiteral("ok"), false},
                     {QStringLiteral("time"), zonedTimeText(time)}});
}

// With the tag's comma before it; nothing for an empty text, which no tag may have.
QByteArray influxTag(const char *key, const QString &text)
{
    QString value = Output::printable(text);
    // A backslash is one, but before a character that is escaped by it, and at the end.
    for (int i = 0; i < value.size(); ++i) {
        const bool isLast = i + 1 == value.size();
        if (value.at(i) == QLatin1Char('\\')
            && (isLast || QStringLiteral(",= \\").contains(value.at(i + 1)))) {
            value[i] = QLatin1Char('/');
        }
    }
    for (const char special : {',', '=', ' '}) {
        value.replace(QLatin1Char(special), QString(QLatin1Char('\\')) + QLatin1Char(special));
    }
    return value.isEmpty() ? QByteArray() : ',' + QByteArray(key) + '=' + value.toUtf8();
}

QByteArray influxText(const QString &text)
{
    QString value = Output::printable(text);
    value.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
    return '"' + value.toUtf8() + '"';
}

// What is no valid number has no field "value". Numbers are floating point whatever the type of the point,
// since a field has one type in all of a database.
QByteArray influxFields(const Reading &reading)
{
    QByteArrayList fields;
    if (!reading.text.isEmpty() || (reading.state == SampleState::Valid && std::isnan(reading.number))) {
        fields.append("text=" + influxText(reading.text));
    }
    fields.append(reading.state == SampleState::NotValid ? "valid=false" : "valid=true");
    if (!std::isnan(reading.number)) {
        fields.append("value=" + QByteArray::number(reading.number, 'g', QLocale::FloatingPointShortest));
    }
    return fields.join(',');
}

std::optional<QByteArray> influxReport(const BoxTarget &box, const MonitoringReport &report, qint64 time)
{
    const QByteArray end = ' ' + QByteArray::number(time * nanoseconds);
    return linesOf(report, [&](const QJsonObject &point) {
        const Reading reading = Reading::fromRow(rowOf(point));
        return "point" + influxTag("box", box.address) + influxTag("name", reading.name)
            + influxTag("project", report.projectName) + influxTag("standard", report.plcName) + ' '
            + influxFields(reading) + end;
    });
}

const ReportFormat table[] = {
    {"text", "", textReport, noLoss},
    {"csv", "time,box,project,standard,name,address,type,value,valid\n", csvReport, noLoss},
    {"json", "", jsonReport, jsonLoss},
    {"influx", "", influxReport, noLoss},
};

} // namespace

const ReportFormat *ReportFormat::named(const QString &name)
{
    for (const ReportFormat &format : table) {
        if (name == QLatin1String(format.name)) {
            return &format;
        }
    }
    return nullptr;
}

QVariantMap rowOf(const QJsonObject &point)
{
    QVariantMap row;
    for (const char *key : {"name", "addr", "dataType", "value", "valid"}) {
        row.insert(QLatin1String(key), point.value(QLatin1String(key)).toString());
    }
    return row;
}

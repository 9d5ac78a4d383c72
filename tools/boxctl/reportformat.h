#pragma once

#include "boxctl/boxlist.h"

#include <QByteArray>
#include <QVariantMap>

#include <optional>

class QJsonObject;
struct MonitoringReport;

// A way to print reports: whole lines in UTF-8. Times are in ms since 1970 UTC.
struct ReportFormat {
    const char *name;
    const char *head; // the first line
    // Nothing if they are more than an OutputQueue takes: a few names that are repeated for each point can
    // make that of a small report.
    std::optional<QByteArray> (*report)(const BoxTarget &box, const MonitoringReport &report, qint64 time);
    QByteArray (*loss)(const BoxTarget &box, const QString &error, qint64 time); // of a link

    static const ReportFormat *named(const QString &name); // null if there is none
};

// A point of a report as Reading takes it. What is no text reads as empty.
QVariantMap rowOf(const QJsonObject &point);

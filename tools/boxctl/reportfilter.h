#pragma once

#include "boxctl/command.h"
#include "boxlink/monitoringreport.h"

#include <QRegularExpression>

#include <optional>

// Which points of reports a call asks for: those of one Standard, or whose names match a pattern, or all.
class ReportFilter
{
public:
    static QList<QCommandLineOption> options();
    // Nothing, with the reason, if the options of the call are wrong.
    static std::optional<ReportFilter> of(const Call &call, QString *error);

    // The report with the points that are asked for; nothing if it is of another Standard, or has none of
    // them.
    std::optional<MonitoringReport> wanted(const MonitoringReport &report) const;

private:
    std::optional<QString> m_standard;
    std::optional<QRegularExpression> m_names;
};

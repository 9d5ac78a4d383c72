#include "boxctl/reportfilter.h"

#include "boxctl/call.h"

namespace {

// From "[" on: a set of characters, "!" in front for all others; empty if it has no end.
QString setAt(const QString &pattern, int begin, int *end)
{
    const bool isOther = pattern.midRef(begin + 1, 1) == QLatin1String("!");
    const int first = begin + (isOther ? 2 : 1);
    *end = pattern.indexOf(QLatin1Char(']'), first + 1); // a set holds something
    if (*end < 0) {
        return {};
    }
    QString characters = pattern.mid(first, *end - first);
    for (const char special : {'\\', '[', ']', '^'}) {
        characters.replace(QLatin1Char(special), QString(QLatin1Char('\\')) + QLatin1Char(special));
    }
    return (isOther ? QStringLiteral("[^%1]") : QStringLiteral("[%1]")).arg(characters);
}

// Of "*", "?" and sets such as "[a-c]"; all else stands for itself.
std::optional<QRegularExpression> expressionOf(const QString &pattern)
{
    QString text;
    QString plain;
    const auto append = [&](const QString &special) {
        text += QRegularExpression::escape(plain) + special;
        plain.clear();
    };
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar character = pattern.at(i);
        if (character == QLatin1Char('*')) {
            append(QStringLiteral(".*"));
        } else if (character == QLatin1Char('?')) {
            append(QStringLiteral("."));
        } else if (character == QLatin1Char('[')) {
            const QString set = setAt(pattern, i, &i);
            if (set.isEmpty()) {
                return std::nullopt;
            }
            append(set);
        } else {
            plain += character;
        }
    }
    append({});
    const QRegularExpression expression(QRegularExpression::anchoredPattern(text),
                                        QRegularExpression::DotMatchesEverythingOption);
    return expression.isValid() && !pattern.isEmpty() ? std::optional(expression) : std::nullopt;
}

} // namespace

QList<QCommandLineOption> ReportFilter::options()
{
    return {
        {"standard", "Take the reports of this Standard alone.", "name"},
        {"points",
         "Take the points alone whose whole names match: * for any characters, ? for one, [a-c] for one "
         "of these, [!a-c] for one of the others.",
         "pattern"},
    };
}

std::optional<ReportFilter> ReportFilter::of(const Call &call, QString *error)
{
    ReportFilter filter;
    if (call.isSet("standard")) {
        filter.m_standard = call.value("standard");
    }
    if (call.isSet("points")) {
        filter.m_names = expressionOf(call.value("points"));
        if (!filter.m_names) {
            *error =
                QStringLiteral("'%1' is no pattern for names of points").arg(call.value("points").left(60));
            return std::nullopt;
        }
    }
    return filter;
}

std::optional<MonitoringReport> ReportFilter::wanted(const MonitoringReport &report) const
{
    if (m_standard && report.plcName != *m_standard) {
        return std::nullopt;
    }
    if (!m_names) {
        return report;
    }
    MonitoringReport part = report;
    part.datas = {};
    for (const QJsonValue &point : report.datas) {
        if (m_names->match(point.toObject().value(QLatin1String("name")).toString()).hasMatch()) {
            part.datas.append(point);
        }
    }
    part.json.insert(QStringLiteral("datas"), part.datas);
    return part.datas.isEmpty() ? std::nullopt : std::optional(part);
}

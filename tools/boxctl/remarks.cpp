#include "boxctl/remarks.h"

#include "boxctl/projectdocument.h"

#include <QDateTime>
#include <QJsonArray>

#include <algorithm>

using ProjectCheck::Remark;
using ProjectCheck::Severity;

QVector<Remark> Remarks::on(const ProjectDocument &document)
{
    return ProjectCheck::remarksOn(document.object, QDateTime::currentDateTime());
}

bool Remarks::hasErrors(const QVector<Remark> &remarks)
{
    return std::any_of(remarks.cbegin(), remarks.cend(),
                       [](const Remark &remark) { return remark.severity == Severity::Error; });
}

QJsonObject Remarks::json(const Remark &remark)
{
    QJsonArray path;
    if (!remark.folder.isEmpty()) {
        path.append(remark.folder);
    }
    path.append(remark.name);
    return {{QStringLiteral("severity"),
             remark.severity == Severity::Error ? QStringLiteral("error") : QStringLiteral("warning")},
            {QStringLiteral("path"), path},
            {QStringLiteral("text"), remark.text}};
}

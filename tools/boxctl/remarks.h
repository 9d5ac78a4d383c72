#pragma once

#include "document/projectcheck.h"

#include <QJsonObject>

struct ProjectDocument;

// What the check of a document finds, for commands.
namespace Remarks {

QVector<ProjectCheck::Remark> on(const ProjectDocument &document);
bool hasErrors(const QVector<ProjectCheck::Remark> &remarks);
QJsonObject json(const ProjectCheck::Remark &remark);

} // namespace Remarks

#include "document/projectcheck.h"

#include "definitions/documentkeys.h"
#include "document/checkedobject.h"
#include "document/checktext.h"
#include "document/servicecheck.h"
#include "document/standardcheck.h"
#include "model/projecttree.h"

#include <QDateTime>
#include <QStandardItem>

namespace ProjectCheck {

namespace {

QVector<CheckedObject> objectsIn(CheckedObject *project, const char *key, const QString &folder,
                                 QVector<Remark> *remarks)
{
    QVector<CheckedObject> objects;
    const QJsonArray array = project->array(key);
    for (const QJsonValue &value : array) {
        objects.append(CheckedObject(value.toObject(), folder, objects.size(), remarks));
    }
    return objects;
}

// The project does not need what it says of a Box: the push goes to the address in the form.
void checkBox(CheckedObject *box)
{
    box->needText(Severity::Warning, "name");
    box->needText(Severity::Warning, "ip");
    box->checkValues(Severity::Warning, Definitions::Kind::Box, Definitions::anySubKind, false);
}

} // namespace

QString Remark::line() const
{
    const QString word = severity == Severity::Error ? CheckText::tr("Error") : CheckText::tr("Warning");
    const QString shown = CheckText::shortened(name);
    const QString place = folder.isEmpty() ? shown : folder + QLatin1Char('/') + shown;
    return CheckText::tr("%1: %2: %3").arg(word, place, text);
}

QVector<Remark> remarksOn(const QJsonObject &project, const QDateTime &now)
{
    QVector<Remark> remarks;
    CheckedObject root(project, QString(), -1, &remarks);
    root.needText(Severity::Error, "name");
    root.checkValues(Severity::Error, Definitions::Kind::Project, Definitions::anySubKind, false);
    StandardCheck::check(objectsIn(&root, "standards", ProjectTree::standardFolder, &remarks));
    for (CheckedObject &service : objectsIn(&root, "services", ProjectTree::serviceFolder, &remarks)) {
        ServiceCheck::check(&service, now);
    }
    for (CheckedObject &box : objectsIn(&root, "boxs", ProjectTree::boxFolder, &remarks)) {
        checkBox(&box);
    }
    return remarks;
}

// The writer walks all folders of one text and skips rows without an item.
QStandardItem *itemOf(const Remark &remark, QStandardItem *project)
{
    if (!project || remark.folder.isEmpty()) {
        return project;
    }
    int row = 0;
    for (int i = 0; i < project->rowCount(); ++i) {
        const QStandardItem *folder = project->child(i);
        for (int j = 0; folder && folder->text() == remark.folder && j < folder->rowCount(); ++j) {
            QStandardItem *item = folder->child(j);
            if (item && row++ == remark.row) {
                return item->text() == remark.name ? item : nullptr;
            }
        }
    }
    return nullptr;
}

} // namespace ProjectCheck

// The reader of projects, then the writer: the input is the document. What was read and written twice is what
// was read and written once more. The check of a project takes any document, too.

#include "document/projectcheck.h"
#include "document/projectreader.h"
#include "document/projectwriter.h"
#include "fuzztarget.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardItemModel>

static QByteArray readAndWritten(const QByteArray &document)
{
    QStandardItemModel model;
    return projectDocument(
        loadProject(model, QJsonDocument::fromJson(document).object(), QStringLiteral("/tmp")));
}

// From ten groups on their order changes each time: their names are sorted as texts.
static bool hasTenGroups(const QByteArray &document)
{
    const QJsonArray standards =
        QJsonDocument::fromJson(document).object().value(QLatin1String("standards")).toArray();
    for (const QJsonValue &standard : standards) {
        if (standard.toObject().value(QLatin1String("datas")).toArray().size() >= 10) {
            return true;
        }
    }
    return false;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const QJsonObject document = QJsonDocument::fromJson(Fuzz::bytesOf(data, size)).object();
    for (const ProjectCheck::Remark &remark :
         ProjectCheck::remarksOn(document, QDateTime::currentDateTime())) {
        Fuzz::require(!remark.text.isEmpty() && remark.line().size() < 2000, "a remark can be read");
    }
    // The first time settles what the document alone may hold: unknown keys, names that meet, points of the
    // kinds whose points are not read. The second settles labels of items that the group's edition lacks.
    const QByteArray once = readAndWritten(Fuzz::bytesOf(data, size));
    const QByteArray twice = readAndWritten(once);
    Fuzz::require(QJsonDocument::fromJson(twice).isObject(), "what was written is a document");
    if (!hasTenGroups(twice)) {
        Fuzz::require(readAndWritten(twice) == twice, "a document that was written reads as what it was");
    }
    return 0;
}

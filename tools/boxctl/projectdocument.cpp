#include "boxctl/projectdocument.h"

#include "boxctl/output.h"
#include "definitions/documentkeys.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLocale>

namespace {

constexpr qint64 documentLimit = qint64(64) * 1024 * 1024; // bytes

// The program's own documents have all three lists; one made by hand has at least one.
bool isProject(const QJsonObject &object)
{
    return object.contains(DocumentKeys::standardsKey) || object.contains(DocumentKeys::servicesKey)
        || object.contains(DocumentKeys::boxsKey);
}

} // namespace

bool readWhole(const QString &path, qint64 limit, QByteArray *bytes, QString *error)
{
    QFile file(path);
    if (QFileInfo(path).isDir()) {
        *error = QStringLiteral("it is a folder");
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return false;
    }
    // An endless file tells no size, so one byte more than the limit is asked for.
    bytes->clear();
    while (bytes->size() <= limit) {
        const QByteArray piece = file.read(limit + 1 - bytes->size());
        if (piece.isEmpty()) {
            break;
        }
        bytes->append(piece);
    }
    if (file.error() != QFileDevice::NoError) {
        *error = file.errorString();
        return false;
    }
    if (bytes->size() > limit) {
        *error = QStringLiteral("it holds more than ") + QLocale::c().formattedDataSize(limit, 0);
        return false;
    }
    return true;
}

ProjectDocument ProjectDocument::read(const QString &path)
{
    ProjectDocument document;
    document.path = path;
    if (!readWhole(path, documentLimit, &document.bytes, &document.error)) {
        return document;
    }
    QJsonParseError parse;
    const QJsonDocument json = QJsonDocument::fromJson(document.bytes, &parse);
    if (parse.error != QJsonParseError::NoError) {
        document.error =
            QStringLiteral("it is not JSON: %1 at byte %2").arg(parse.errorString()).arg(parse.offset);
    } else if (!json.isObject()) {
        document.error = QStringLiteral("it holds no JSON object");
    } else if (!isProject(json.object())) {
        document.error = QStringLiteral("it is no project document");
    }
    document.object = json.object();
    return document;
}

ProjectDocument ProjectDocument::readOrTell(const QString &path)
{
    ProjectDocument document = read(path);
    if (!document.ok()) {
        Output::error(QStringLiteral("%1: %2").arg(path, document.error));
    }
    return document;
}

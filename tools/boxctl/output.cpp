#include "boxctl/output.h"

#include "boxctl/command.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

void write(FILE *stream, const QByteArray &bytes)
{
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    fflush(stream);
}

} // namespace

QString Output::printable(const QString &text)
{
    QString shown = text;
    for (QChar &character : shown) {
        if (character.category() == QChar::Other_Control || character.category() == QChar::Other_Format) {
            character = QLatin1Char(' ');
        }
    }
    return shown;
}

QString Output::masked(const QString &secret)
{
    return secret.isEmpty() ? QString() : QStringLiteral("********");
}

void Output::line(const QString &text)
{
    write(stdout, printable(text).toUtf8() + '\n');
}

void Output::json(const QJsonObject &object)
{
    write(stdout, QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
}

void Output::text(const QString &text)
{
    write(stdout, text.toUtf8());
}

void Output::error(const QString &text)
{
    write(stderr, "boxctl: " + printable(text).toUtf8() + '\n');
}

int Output::finish(int status)
{
    if (ferror(stdout) == 0) {
        return status;
    }
    if (errno != EPIPE) { // whoever read it has seen enough
        error(QStringLiteral("the output could not be written"));
    }
    return status == AllDone ? SomeFailed : status;
}

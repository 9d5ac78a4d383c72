#include "boxctl/output.h"

#include "boxctl/command.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

std::atomic<int> outputError{0}; // the first errno of the standard output

bool write(FILE *stream, const char *bytes, int size)
{
    if (fwrite(bytes, 1, size_t(size), stream) == size_t(size) && fflush(stream) == 0) {
        return true;
    }
    int none = 0;
    if (stream == stdout) {
        outputError.compare_exchange_strong(none, errno);
    }
    return false;
}

void write(FILE *stream, const QByteArray &bytes)
{
    write(stream, bytes.constData(), bytes.size());
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

QString Output::jsonText(const QJsonValue &value)
{
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

void Output::line(const QString &text)
{
    write(stdout, printable(text).toUtf8() + '\n');
}

void Output::json(const QJsonObject &object)
{
    write(stdout, jsonText(object).toUtf8() + '\n');
}

void Output::text(const QString &text)
{
    write(stdout, text.toUtf8());
}

bool Output::bytes(const char *bytes, int size)
{
    return write(stdout, bytes, size);
}

void Output::error(const QString &text)
{
    write(stderr, "boxctl: " + printable(text).toUtf8() + '\n');
}

int Output::finish(int status)
{
    const int failure = outputError;
    if (failure == 0 || failure == EPIPE) { // whoever read it has seen enough
        return status;
    }
    error(
        QStringLiteral("the output could not be written: %1").arg(QString::fromLocal8Bit(strerror(failure))));
    return status == AllDone ? SomeFailed : status;
}

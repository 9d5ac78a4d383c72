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

// What is neither seen nor a blank: controls, marks of direction, line ends of Unicode.
bool isHidden(uint character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

template <typename Replace> QString withoutHidden(const QString &text, Replace replace)
{
    QString shown;
    shown.reserve(text.size());
    for (int place = 0; place < text.size();) {
        const bool isPair = text.at(place).isHighSurrogate() && place + 1 < text.size()
            && text.at(place + 1).isLowSurrogate();
        const uint code =
            isPair ? QChar::surrogateToUcs4(text.at(place), text.at(place + 1)) : text.at(place).unicode();
        const QStringRef character = text.midRef(place, isPair ? 2 : 1);
        if (isHidden(code)) {
            shown += replace(character);
        } else {
            shown += character;
        }
        place += character.size();
    }
    return shown;
}

// As JSON writes it, in two halves from U+10000 on.
QString escaped(const QStringRef &character)
{
    QString text;
    for (const QChar half : character) {
        text += QStringLiteral("\\u%1").arg(half.unicode(), 4, 16, QLatin1Char('0'));
    }
    return text;
}

} // namespace

QString Output::printable(const QString &text)
{
    return withoutHidden(text, [](const QStringRef &) { return QStringLiteral(" "); });
}

QString Output::masked(const QString &secret)
{
    return secret.isEmpty() ? QString() : QStringLiteral("********");
}

QString Output::jsonText(const QJsonValue &value)
{
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return withoutHidden(QString::fromUtf8(list.mid(1, list.size() - 2)), escaped);
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

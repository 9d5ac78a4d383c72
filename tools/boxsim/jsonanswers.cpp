#include "boxsim/jsonanswers.h"

#include "boxsim/options.h"
#include "boxsim/settingsmemory.h"
#include "boxsim/wire.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

struct Request {
    int type = 0;
    QJsonObject pares;
    QString violation;
};

Request refused(const QString &why)
{
    Request request;
    request.violation = why;
    return request;
}

Request readRequest(const QByteArray &frame)
{
    const int length = frame.size() - Wire::jsonOverhead;
    if (length < 0 || Wire::number(frame, Wire::bodyOffset, 2) != static_cast<quint32>(length)) {
        return refused(QStringLiteral("text length does not fit the frame"));
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(frame.mid(Wire::jsonTextOffset, length), &error);
    if (!document.isObject()) {
        return refused(QStringLiteral("text is no JSON object: ") + error.errorString());
    }
    const QJsonValue type = document.object().value(QLatin1String("type"));
    const QJsonValue pares = document.object().value(QLatin1String("pares"));
    if (!pares.isObject()) {
        return refused(QStringLiteral("pares is no object"));
    }
    Request request;
    request.type = type.isDouble() ? type.toInt() : type.toString().toInt();
    request.pares = pares.toObject();
    const bool write = SettingsMemory::isWrite(request.type);
    if (!write && !SettingsMemory::isRead(request.type) && request.type != rebootType) {
        request.violation = QStringLiteral("type is none that a Box knows");
    } else if (write != type.isDouble()) {
        request.violation = QStringLiteral("%1 must have type as a %2")
                                .arg(settingsCommandName(request.type),
                                     write ? QStringLiteral("number") : QStringLiteral("string"));
    }
    return request;
}

QString carryOut(const Request &request, SettingsMemory *settings, const BoxSimFaults &faults)
{
    QString refusal = faults.refusedWrites.value(request.type, faults.refusedWrites.value(0));
    if (!refusal.isEmpty()) {
        return refusal;
    }
    if (faults.ignoreWrites && request.type != rebootType) {
        return QStringLiteral("200");
    }
    const bool done = request.type == rebootType
        ? request.pares.value(QLatin1String("reboot")) == QJsonValue(QStringLiteral("reboot"))
        : settings->write(request.type, request.pares);
    return done ? QStringLiteral("200") : QStringLiteral("400");
}

// What a read answers in place of the record.
QJsonObject spoiled(QJsonObject record, const BoxSimFaults &faults)
{
    record.remove(faults.missingKey);
    if (record.contains(faults.numberKey)) {
        record.insert(faults.numberKey, record.value(faults.numberKey).toString().toInt());
    }
    for (auto value = record.begin(); value != record.end() && faults.capitals; ++value) {
        const QString text = value.value().toString();
        if (text == QLatin1String("on") || text == QLatin1String("off")) {
            value.value() = text.toUpper();
        }
    }
    return record;
}

} // namespace

JsonOutcome answerJson(const QByteArray &frame, SettingsMemory *settings, const BoxSimFaults &faults)
{
    const Request request = readRequest(frame);
    JsonOutcome outcome;
    outcome.violation = request.violation;
    if (!request.violation.isEmpty()) {
        return outcome;
    }
    QJsonObject answer;
    answer.insert(QStringLiteral("type"),
                  faults.typeAsNumber ? QJsonValue(request.type) : QJsonValue(QString::number(request.type)));
    if (SettingsMemory::isRead(request.type)) {
        answer.insert(QStringLiteral("pares"), spoiled(settings->record(request.type), faults));
    } else {
        const QString code = carryOut(request, settings, faults);
        answer.insert(QStringLiteral("code"),
                      faults.codeAsNumber ? QJsonValue(code.toInt()) : QJsonValue(code));
        outcome.reboots = request.type == rebootType && code == QLatin1String("200");
    }
    outcome.answer = Wire::jsonAnswer(answer);
    return outcome;
}

#include "boxsim/acquire/serialsettings.h"

namespace {

constexpr int usualTimeout = 2000;

// The number of a text that is one of those in the list, else the usual one.
int listed(const QString &text, std::initializer_list<int> list, int usual)
{
    for (const int number : list) {
        if (text == QString::number(number)) {
            return number;
        }
    }
    return usual;
}

char parity(const QString &text, char usual)
{
    const QMap<QString, char> letters = {
        {QStringLiteral("NONE"), 'N'}, {QStringLiteral("ODD"), 'O'}, {QStringLiteral("EVEN"), 'E'}};
    return letters.value(text, usual);
}

// With the start bit, and the parity bit if there is one.
int characterBits(const SerialSettings &settings)
{
    return 1 + settings.dataBits + (settings.parity == 'N' ? 0 : 1) + settings.stopBits;
}

} // namespace

int SerialSettings::timeOf(int characters) const
{
    return static_cast<int>(qint64(characters) * characterBits(*this) * 1000000 / baudRate);
}

int SerialSettings::gapTime() const
{
    return gap >= 0 ? qMin(gap, 1000000) * 1000 : timeOf(7) / 2;
}

SerialSettings serialSettings(const QMap<QString, QString> &parameters, const SerialSettings &usual)
{
    const auto text = [&](const char *key) { return parameters.value(QLatin1String(key)); };
    SerialSettings settings = usual;
    settings.baudRate =
        listed(text("baudRate"), {115200, 57600, 38400, 19200, 9600, 4800, 2400, 1200, 600}, usual.baudRate);
    settings.dataBits = listed(text("dataBit"), {8, 7}, usual.dataBits);
    settings.stopBits = listed(text("stopBit"), {1, 2}, usual.stopBits);
    settings.parity = parity(text("parityBit"), usual.parity);
    settings.rts = text("rtsEnable") == QLatin1String("1");
    settings.timeout = timeoutParameter(parameters, "communicationTimeout");
    bool ok = false;
    const int gap = text("communicationGap").toInt(&ok);
    settings.gap = ok ? gap : -1;
    return settings;
}

int timeoutParameter(const QMap<QString, QString> &parameters, const char *key)
{
    const int time = parameters.value(QLatin1String(key)).toInt();
    return time > 0 ? time : usualTimeout;
}

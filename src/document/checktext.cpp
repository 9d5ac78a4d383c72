#include "document/checktext.h"

#include <algorithm>

namespace {

constexpr int longest = 40; // characters of a text that is shown

QString cut(const QString &line)
{
    return line.size() > longest ? line.left(longest - 1) + QChar(0x2026) : line;
}

} // namespace

QString CheckText::labelOf(const QString &key)
{
    static const struct {
        QLatin1String key;
        const char *label;
    } labels[] = {
        {QLatin1String("name"), QT_TRANSLATE_NOOP("ProjectCheck", "The name")},
        {QLatin1String("protocol"), QT_TRANSLATE_NOOP("ProjectCheck", "The protocol")},
        {QLatin1String("modbus"), QT_TRANSLATE_NOOP("ProjectCheck", "The Modbus mode")},
        {QLatin1String("ip"), QT_TRANSLATE_NOOP("ProjectCheck", "The IP address")},
        {QLatin1String("port"), QT_TRANSLATE_NOOP("ProjectCheck", "The port")},
        {QLatin1String("serialport"), QT_TRANSLATE_NOOP("ProjectCheck", "The serial port")},
        {QLatin1String("baudRate"), QT_TRANSLATE_NOOP("ProjectCheck", "The baud rate")},
        {QLatin1String("dataBit"), QT_TRANSLATE_NOOP("ProjectCheck", "The number of data bits")},
        {QLatin1String("stopBit"), QT_TRANSLATE_NOOP("ProjectCheck", "The number of stop bits")},
        {QLatin1String("parityBit"), QT_TRANSLATE_NOOP("ProjectCheck", "The parity")},
        {QLatin1String("rtsEnable"), QT_TRANSLATE_NOOP("ProjectCheck", "The RTS setting")},
        {QLatin1String("series"), QT_TRANSLATE_NOOP("ProjectCheck", "The series")},
        {QLatin1String("stationNum"), QT_TRANSLATE_NOOP("ProjectCheck", "The station number")},
        {QLatin1String("byteOrder"), QT_TRANSLATE_NOOP("ProjectCheck", "The byte order")},
        {QLatin1String("slaveAddress"), QT_TRANSLATE_NOOP("ProjectCheck", "The slave address")},
        {QLatin1String("protocolVersion"), QT_TRANSLATE_NOOP("ProjectCheck", "The protocol version")},
        {QLatin1String("addr"), QT_TRANSLATE_NOOP("ProjectCheck", "The address")},
        {QLatin1String("dataType"), QT_TRANSLATE_NOOP("ProjectCheck", "The type")},
        {QLatin1String("permissions"), QT_TRANSLATE_NOOP("ProjectCheck", "The permission")},
        {QLatin1String("enableSSL"), QT_TRANSLATE_NOOP("ProjectCheck", "The SSL setting")},
        {QLatin1String("authentication"), QT_TRANSLATE_NOOP("ProjectCheck", "The authentication")},
        {QLatin1String("wanDhcp"), QT_TRANSLATE_NOOP("ProjectCheck", "The DHCP setting of the WAN page")},
    };
    for (const auto &each : labels) {
        if (key == each.key) {
            return tr(each.label);
        }
    }
    return key;
}

QString CheckText::empty(const QString &label)
{
    return tr("%1 is empty.").arg(label);
}

QString CheckText::noList(const QString &key)
{
    return tr("'%1' is not a list of objects.").arg(key);
}

QString CheckText::noText(const QString &label)
{
    return tr("%1 is not a text.").arg(label);
}

QString CheckText::notInList(const QString &label, const QString &value)
{
    QString line = cut(value); // with its blanks, which may be all that is wrong
    std::replace_if(
        line.begin(), line.end(), [](QChar c) { return c.isSpace(); }, QLatin1Char(' '));
    return tr("%1 is '%2', which no list has.").arg(label, line);
}

QString CheckText::shortened(const QString &text)
{
    return cut(text.left(2 * longest).simplified());
}

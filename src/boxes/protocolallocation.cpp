// The JSON commands of a session: a Box's settings, group by group, and its reboot.

#include "boxes/protocol.h"
#include "widgets/tell.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace {

// One value of a settings group: its key on the wire and its place in the record.
template <typename Record> struct Field {
    const char *key;
    QString Record::*text;
};

using Lan = Protocol::LanAllocationData;
constexpr Field<Lan> lanFields[] = {
    {"lanIp", &Lan::lanIp},     {"lanMask", &Lan::lanMask}, {"lanGateway", &Lan::lanGateway},
    {"lanDns1", &Lan::lanDns1}, {"lanDns2", &Lan::lanDns2},
};

using Wan = Protocol::WanAllocationData;
constexpr Field<Wan> wanFields[] = {
    {"wanDhcp", &Wan::wanDhcp},       {"wanIp", &Wan::wanIp},     {"wanMask", &Wan::wanMask},
    {"wanGateway", &Wan::wanGateway}, {"wanDns1", &Wan::wanDns1}, {"wanDns2", &Wan::wanDns2},
};

using Wifi = Protocol::WifiAllocationData;
constexpr Field<Wifi> wifiFields[] = {
    {"wifiOnOff", &Wifi::wifiOnOff}, {"wifiMode", &Wifi::wifiMode},       {"ssid", &Wifi::ssid},
    {"password", &Wifi::password},   {"wifiDhcp", &Wifi::wifiDhcp},       {"wifiIp", &Wifi::wifiIp},
    {"wifiMask", &Wifi::wifiMask},   {"wifiGateway", &Wifi::wifiGateway}, {"wifiDns1", &Wifi::wifiDns1},
    {"wifiDns2", &Wifi::wifiDns2},
};

using Lte = Protocol::LteAllocationData;
constexpr Field<Lte> lteFields[] = {
    {"lteOnOff", &Lte::lteOnOff}, {"AT1", &Lte::AT1}, {"AT2", &Lte::AT2},
    {"AT3", &Lte::AT3},           {"AT4", &Lte::AT4}, {"AT5", &Lte::AT5},
};

using Ntp = Protocol::NTPAllocationData;
constexpr Field<Ntp> ntpFields[] = {{"NTP", &Ntp::NTP}};

using Time = Protocol::timeAllocationData;
constexpr Field<Time> timeFields[] = {{"date", &Time::date}};

const QLatin1String typeKey("type");
const QLatin1String paresKey("pares");
const QLatin1String codeKey("code");

// A read and the reboot carry the type as a string.
QJsonObject readRequest(Frame::JsonType type, const QJsonObject &pares = QJsonObject())
{
    return {{typeKey, QString::number(type)}, {paresKey, pares}};
}

// A write carries the type as a number.
QJsonObject writeRequest(Frame::JsonType type, const QJsonObject &pares)
{
    return {{typeKey, int(type)}, {paresKey, pares}};
}

template <typename Record, std::size_t count>
QJsonObject toPares(const Record &record, const Field<Record> (&fields)[count])
{
    QJsonObject pares;
    for (const Field<Record> &field : fields) {
        pares.insert(QLatin1String(field.key), record.*field.text);
    }
    return pares;
}

// Says the form's word as the Box expects it, or leaves the key out for any other text.
void mapDhcp(QJsonObject *pares, QLatin1String key)
{
    const QString text = pares->take(key).toString();
    if (text == QLatin1String("Enable")) {
        pares->insert(key, QStringLiteral("1"));
    } else if (text == QLatin1String("Disabled")) {
        pares->insert(key, QStringLiteral("0"));
    }
}

// The record of a read's answer, or nothing unless all of its keys are there. A value that is not a JSON
// string gives an empty text.
template <typename Record, std::size_t count>
std::optional<Record> readRecord(const QByteArray &answer, const Field<Record> (&fields)[count])
{
    const QJsonValue pares = QJsonDocument::fromJson(answer).object().value(paresKey);
    if (!pares.isObject()) {
        return std::nullopt;
    }
    const QJsonObject values = pares.toObject();
    Record record;
    for (const Field<Record> &field : fields) {
        const QJsonValue value = values.value(QLatin1String(field.key));
        if (value.isUndefined()) {
            return std::nullopt;
        }
        record.*field.text = value.toString();
    }
    return record;
}

// What the user is told of the result of a write.
struct WriteTexts {
    const char *title;
    const char *success;
    const char *failure; // followed by the code
};
constexpr WriteTexts lanTexts{
    QT_TRANSLATE_NOOP("Protocol", "Write LAN Allocation"),
    QT_TRANSLATE_NOOP("Protocol", "LAN allocation write successful."),
    QT_TRANSLATE_NOOP("Protocol", "LAN allocation write failed. Error code: "),
};
constexpr WriteTexts wanTexts{
    QT_TRANSLATE_NOOP("Protocol", "Write WAN Allocation"),
    QT_TRANSLATE_NOOP("Protocol", "WAN allocation write successful."),
    QT_TRANSLATE_NOOP("Protocol", "WAN allocation write failed. Error code: "),
};
constexpr WriteTexts wifiTexts{
    QT_TRANSLATE_NOOP("Protocol", "Write WIFI Allocation"),
    QT_TRANSLATE_NOOP("Protocol", "WIFI allocation write successful."),
    QT_TRANSLATE_NOOP("Protocol", "WIFI allocation write failed. Error code: "),
};
constexpr WriteTexts lteTexts{
    QT_TRANSLATE_NOOP("Protocol", "Write LTE Allocation"),
    QT_TRANSLATE_NOOP("Protocol", "LTE allocation write successful."),
    QT_TRANSLATE_NOOP("Protocol", "LTE allocation write failed. Error code: "),
};
constexpr WriteTexts ntpTexts{
    QT_TRANSLATE_NOOP("Protocol", "Write NTP Allocation"),
    QT_TRANSLATE_NOOP("Protocol", "NTP allocation write successful."),
    QT_TRANSLATE_NOOP("Protocol", "NTP allocation write failed. Error code: "),
};
constexpr WriteTexts timeTexts{
    QT_TRANSLATE_NOOP("Protocol", "Write time Allocation"),
    QT_TRANSLATE_NOOP("Protocol", "time allocation write successful."),
    QT_TRANSLATE_NOOP("Protocol", "time allocation write failed. Error code: "),
};
constexpr WriteTexts rebootTexts{
    QT_TRANSLATE_NOOP("Protocol", "Write Restart Allocation"),
    QT_TRANSLATE_NOOP("Protocol", "Restart allocation write successful."),
    QT_TRANSLATE_NOOP("Protocol", "Restart allocation write failed. Error code: "),
};

// Shows the result of a write, unless the answer has no code as a JSON string.
void tellResult(const QByteArray &answer, const WriteTexts &texts)
{
    const QJsonValue code = QJsonDocument::fromJson(answer).object().value(codeKey);
    if (!code.isString()) {
        return;
    }
    const QString text = code.toString() == QLatin1String("200")
        ? Protocol::tr(texts.success)
        : Protocol::tr(texts.failure) + code.toString();
    Tell::information(nullptr, Protocol::tr(texts.title), text);
}

} // namespace

void Protocol::readLanAllocation()
{
    sendRequest(readRequest(Frame::lanRead));
}

void Protocol::readWanAllocation()
{
    sendRequest(readRequest(Frame::wanRead));
}

void Protocol::readWifiAllocation()
{
    sendRequest(readRequest(Frame::wifiRead));
}

void Protocol::readLteAllocation()
{
    sendRequest(readRequest(Frame::lteRead));
}

void Protocol::readNTPAllocation()
{
    sendRequest(readRequest(Frame::ntpRead));
}

void Protocol::readTimeAllocation()
{
    sendRequest(readRequest(Frame::timeRead));
}

void Protocol::rebootDevice()
{
    sendRequest(readRequest(Frame::deviceReboot, {{QLatin1String("reboot"), QStringLiteral("reboot")}}));
}

void Protocol::writeLanAllocation(const QString &ip, const QString &mask, const QString &gateway,
                                  const QString &dns1, const QString &dns2)
{
    sendRequest(writeRequest(Frame::lanWrite, toPares(Lan{ip, mask, gateway, dns1, dns2}, lanFields)));
}

void Protocol::writeWanAllocation(const QString &dhcp, const QString &ip, const QString &mask,
                                  const QString &gateway, const QString &dns1, const QString &dns2)
{
    QJsonObject pares = toPares(Wan{dhcp, ip, mask, gateway, dns1, dns2}, wanFields);
    mapDhcp(&pares, QLatin1String("wanDhcp"));
    sendRequest(writeRequest(Frame::wanWrite, pares));
}

void Protocol::writeWifiAllocation(const QString &onOff, const QString &mode, const QString &ssid,
                                   const QString &password, const QString &dhcp, const QString &ip,
                                   const QString &mask, const QString &gateway, const QString &dns1,
                                   const QString &dns2)
{
    QJsonObject pares =
        toPares(Wifi{onOff, mode, ssid, password, dhcp, ip, mask, gateway, dns1, dns2}, wifiFields);
    mapDhcp(&pares, QLatin1String("wifiDhcp"));
    sendRequest(writeRequest(Frame::wifiWrite, pares));
}

void Protocol::writeLteAllocation(const QString &onOff, const QString &at1, const QString &at2,
                                  const QString &at3, const QString &at4, const QString &at5)
{
    sendRequest(writeRequest(Frame::lteWrite, toPares(Lte{onOff, at1, at2, at3, at4, at5}, lteFields)));
}

void Protocol::writeNTPAllocation(const QString &server)
{
    sendRequest(writeRequest(Frame::ntpWrite, toPares(Ntp{server}, ntpFields)));
}

void Protocol::writeTimeAllocation(const QString &date)
{
    sendRequest(writeRequest(Frame::timeWrite, toPares(Time{date}, timeFields)));
}

void Protocol::readLanAllocationReturn(QByteArray responseData)
{
    if (const auto record = readRecord(responseData, lanFields)) {
        emit lanAllocationDataReceived(*record);
    }
}

void Protocol::readWanAllocationReturn(QByteArray responseData)
{
    if (const auto record = readRecord(responseData, wanFields)) {
        emit wanAllocationDataReceived(*record);
    }
}

void Protocol::readWifiAllocationReturn(QByteArray responseData)
{
    if (const auto record = readRecord(responseData, wifiFields)) {
        emit wifiAllocationDataReceived(*record);
    }
}

void Protocol::readLteAllocationReturn(QByteArray responseData)
{
    if (const auto record = readRecord(responseData, lteFields)) {
        emit lteAllocationDataReceived(*record);
    }
}

void Protocol::readNTPAllocationReturn(QByteArray responseData)
{
    if (const auto record = readRecord(responseData, ntpFields)) {
        emit NTPAllocationDataReceived(*record);
    }
}

void Protocol::readTimeAllocationReturn(QByteArray responseData)
{
    if (const auto record = readRecord(responseData, timeFields)) {
        emit timeAllocationDataReceived(*record);
    }
}

void Protocol::writeLanAllocationReturn(QByteArray responseData)
{
    tellResult(responseData, lanTexts);
}

void Protocol::writeWanAllocationReturn(QByteArray responseData)
{
    tellResult(responseData, wanTexts);
}

void Protocol::writeWifiAllocationReturn(QByteArray responseData)
{
    tellResult(responseData, wifiTexts);
}

void Protocol::writeLteAllocationReturn(QByteArray responseData)
{
    tellResult(responseData, lteTexts);
}

void Protocol::writeNTPAllocationReturn(QByteArray responseData)
{
    tellResult(responseData, ntpTexts);
}

void Protocol::writeTimeAllocationReturn(QByteArray responseData)
{
    tellResult(responseData, timeTexts);
}

void Protocol::rebootDeviceReturn(QByteArray responseData)
{
    tellResult(responseData, rebootTexts);
}

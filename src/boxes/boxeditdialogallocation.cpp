// The slots of BoxEditDialog that ask the Box for its settings and show what it answers.

#include "boxes/boxeditdialog.h"
#include "log/activitylog.h"
#include "widgets/tell.h"

#include <QDebug>
#include <QLabel>

namespace {

// The entry for a flag from the wire; an empty text, which no list has, for anything else.
QString dhcpEntry(const QString &flag)
{
    if (flag == QLatin1String("1")) {
        return BoxEditDialog::tr("Enable");
    }
    return flag == QLatin1String("0") ? BoxEditDialog::tr("Disabled") : QString();
}

} // namespace

// The present session, or a new one.
Protocol *BoxEditDialog::session()
{
    if (!m_protocol) {
        connectToServer();
    }
    return m_protocol;
}

template <typename Operation, typename... Names>
void BoxEditDialog::request(const char *logLine, Operation operation, Names... names)
{
    (session()->*operation)(m_fields.text(QLatin1String(names))...);
    logToFile(QLatin1String(logLine));
}

void BoxEditDialog::rebootDevice()
{
    request("BoxEditDialog: rebooting", &Protocol::rebootDevice);
}

void BoxEditDialog::readLanAllocation()
{
    request("BoxEditDialog: read Lan", &Protocol::readLanAllocation);
}

void BoxEditDialog::writeLanAllocation()
{
    request("BoxEditDialog: write Lan", &Protocol::writeLanAllocation, "lanIp", "lanMask", "lanGateway",
            "lanDns1", "lanDns2");
}

void BoxEditDialog::readWanAllocation()
{
    request("BoxEditDialog: read Wan", &Protocol::readWanAllocation);
}

void BoxEditDialog::writeWanAllocation()
{
    request("BoxEditDialog: write Wan", &Protocol::writeWanAllocation, "wanDhcp", "wanIp", "wanMask",
            "wanGateway", "wanDns1", "wanDns2");
}

void BoxEditDialog::readWifiAllocation()
{
    request("BoxEditDialog: read Wifi", &Protocol::readWifiAllocation);
}

void BoxEditDialog::writeWifiAllocation()
{
    request("BoxEditDialog: write Wifi", &Protocol::writeWifiAllocation, "wifiOnOff", "wifiMode", "wifissid",
            "wifipassword", "wifiDhcp", "wifiIp", "wifiMask", "wifiGateway", "wifiDns1", "wifiDns2");
}

void BoxEditDialog::readLteAllocation()
{
    request("BoxEditDialog: read Lte", &Protocol::readLteAllocation);
}

void BoxEditDialog::writeLteAllocation()
{
    request("BoxEditDialog: write Lte", &Protocol::writeLteAllocation, "lteOnOff", "at1", "at2", "at3", "at4",
            "at5");
}

void BoxEditDialog::readNTPAllocation()
{
    request("BoxEditDialog: read NTP", &Protocol::readNTPAllocation);
}

void BoxEditDialog::writeNTPAllocation()
{
    request("BoxEditDialog: write NTP", &Protocol::writeNTPAllocation, "ntpServer");
}

void BoxEditDialog::readTimeAllocation()
{
    request("BoxEditDialog: read Time", &Protocol::readTimeAllocation);
}

void BoxEditDialog::writeTimeAllocation()
{
    request("BoxEditDialog: write Time", &Protocol::writeTimeAllocation, "localTime");
}

void BoxEditDialog::showVersion(const QString &version)
{
    m_version->setText(tr("Program version: ") + version);
}

void BoxEditDialog::tellOffline()
{
    appendMessage(tr("!!!No communication for 30 seconds. Connection may be lost.!!!"));
}

void BoxEditDialog::passData(const Protocol::dataMonitoringData &report)
{
    qDebug() << report.projectName;
    emit sendDataToMainWindow(report);
    logToFile(QStringLiteral("BoxEditDialog: Data"));
}

void BoxEditDialog::showLan(const Protocol::LanAllocationData &lan)
{
    showAnswer({{"lanIp", lan.lanIp},
                {"lanMask", lan.lanMask},
                {"lanGateway", lan.lanGateway},
                {"lanDns1", lan.lanDns1},
                {"lanDns2", lan.lanDns2}},
               "BoxEditDialog: update Lan", tr("LAN Configuration"),
               tr("LAN configuration updated successfully."));
}

void BoxEditDialog::showWan(const Protocol::WanAllocationData &wan)
{
    showAnswer({{"wanDhcp", dhcpEntry(wan.wanDhcp)},
                {"wanIp", wan.wanIp},
                {"wanMask", wan.wanMask},
                {"wanGateway", wan.wanGateway},
                {"wanDns1", wan.wanDns1},
                {"wanDns2", wan.wanDns2}},
               "BoxEditDialog: update Wan", tr("Wan Configuration"),
               tr("Wan configuration updated successfully."));
}

void BoxEditDialog::showWifi(const Protocol::WifiAllocationData &wifi)
{
    showAnswer({{"wifiOnOff", wifi.wifiOnOff.toLower()},
                {"wifiMode", wifi.wifiMode},
                {"wifissid", wifi.ssid},
                {"wifipassword", wifi.password},
                {"wifiDhcp", dhcpEntry(wifi.wifiDhcp)},
                {"wifiIp", wifi.wifiIp},
                {"wifiMask", wifi.wifiMask},
                {"wifiGateway", wifi.wifiGateway},
                {"wifiDns1", wifi.wifiDns1},
                {"wifiDns2", wifi.wifiDns2}},
               "BoxEditDialog: update Wifi", tr("Wifi Configuration"),
               tr("Wifi configuration updated successfully."));
}

void BoxEditDialog::showLte(const Protocol::LteAllocationData &lte)
{
    showAnswer({{"lteOnOff", lte.lteOnOff.toLower()},
                {"at1", lte.AT1},
                {"at2", lte.AT2},
                {"at3", lte.AT3},
                {"at4", lte.AT4},
                {"at5", lte.AT5}},
               "BoxEditDialog: update Lte", tr("Lte Configuration"),
               tr("Lte configuration updated successfully."));
}

void BoxEditDialog::showNtp(const Protocol::NTPAllocationData &ntp)
{
    showAnswer({{"ntpServer", ntp.NTP}}, "BoxEditDialog: update NTP", tr("NTP Configuration"),
               tr("NTP configuration updated successfully."));
}

void BoxEditDialog::showTime(const Protocol::timeAllocationData &time)
{
    // The clock logs as NTP on purpose: the two share a line in the logs that are out there.
    showAnswer({{"time", time.date}}, "BoxEditDialog: update NTP", tr("time Configuration"),
               tr("time configuration updated successfully."));
}

void BoxEditDialog::showAnswer(const FieldTexts &texts, const char *logLine, const QString &title,
                               const QString &text)
{
    for (const auto &[name, shown] : texts) {
        m_fields.setText(QLatin1String(name), shown);
    }
    logToFile(QLatin1String(logLine));
    Tell::information(this, title, text);
}

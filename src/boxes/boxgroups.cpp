#include "boxes/boxgroups.h"

#include "model/itemroles.h"

#include <QStringList>

namespace BoxGroups {

namespace {

constexpr auto ip = QT_TRANSLATE_NOOP("BoxEditDialog", "IP:");
constexpr auto mask = QT_TRANSLATE_NOOP("BoxEditDialog", "Mask:");
constexpr auto gateway = QT_TRANSLATE_NOOP("BoxEditDialog", "Gateway:");
constexpr auto dns1 = QT_TRANSLATE_NOOP("BoxEditDialog", "Dns1:");
constexpr auto dns2 = QT_TRANSLATE_NOOP("BoxEditDialog", "Dns2:");
constexpr auto dhcp = QT_TRANSLATE_NOOP("BoxEditDialog", "Dhcp:");

Field address(const char *name, const char *label, int role)
{
    return {name, label, FieldKind::Text, role, FieldCheck::Ipv4};
}

Field words(const char *name, const char *label, int role)
{
    return {name, label, FieldKind::Text, role, FieldCheck::NoCjk};
}

Field list(const char *name, const char *label, int role, const QStringList &entries)
{
    return {name, label, FieldKind::List, role, FieldCheck::None, entries};
}

// Both words stay English in every language, see DhcpWord.
QStringList dhcpEntries()
{
    return {QStringLiteral(QT_TRANSLATE_NOOP("BoxEditDialog", "Disabled")),
            QStringLiteral(QT_TRANSLATE_NOOP("BoxEditDialog", "Enable"))};
}

Field onOff(const char *name, const char *label, int role)
{
    return {name,
            label,
            FieldKind::OnOff,
            role,
            FieldCheck::None,
            {QStringLiteral(QT_TRANSLATE_NOOP("BoxEditDialog", "ON")),
             QStringLiteral(QT_TRANSLATE_NOOP("BoxEditDialog", "OFF"))}};
}

QVector<Field> lan()
{
    return {
        address("lanIp", ip, boxLanIpRole),
        address("lanMask", mask, boxLanMaskRole),
        address("lanGateway", gateway, boxLanGatewayRole),
        address("lanDns1", dns1, boxLanDns1Role),
        address("lanDns2", dns2, boxLanDns2Role),
    };
}

QVector<Field> wan()
{
    return {
        list("wanDhcp", dhcp, boxWanDhcpRole, dhcpEntries()),
        address("wanIp", ip, boxWanIpRole),
        address("wanMask", mask, boxWanMaskRole),
        address("wanGateway", gateway, boxWanGatewayRole),
        address("wanDns1", dns1, boxWanDns1Role),
        address("wanDns2", dns2, boxWanDns2Role),
    };
}

QVector<Field> wifi()
{
    return {
        onOff("wifiOnOff", QT_TRANSLATE_NOOP("BoxEditDialog", "wifiOnOff:"), boxWifiOnOffRole),
        list("wifiMode", QT_TRANSLATE_NOOP("BoxEditDialog", "Mode:"), boxWifiModeRole,
             {QStringLiteral("station")}),
        words("wifissid", QT_TRANSLATE_NOOP("BoxEditDialog", "SSID:"), boxWifiSsidRole),
        {"wifipassword", QT_TRANSLATE_NOOP("BoxEditDialog", "Password:"), FieldKind::Password,
         boxWifiPasswordRole, FieldCheck::NoCjk},
        list("wifiDhcp", dhcp, boxWifiDhcpRole, dhcpEntries()),
        address("wifiIp", ip, boxWifiIpRole),
        address("wifiMask", mask, boxWifiMaskRole),
        address("wifiGateway", gateway, boxWifiGatewayRole),
        address("wifiDns1", dns1, boxWifiDns1Role),
        address("wifiDns2", dns2, boxWifiDns2Role),
    };
}

QVector<Field> lte()
{
    return {
        onOff("lteOnOff", QT_TRANSLATE_NOOP("BoxEditDialog", "4G:"), boxLteOnOffRole),
        words("at1", QT_TRANSLATE_NOOP("BoxEditDialog", "AT1:"), boxAt1Role),
        words("at2", QT_TRANSLATE_NOOP("BoxEditDialog", "AT2:"), boxAt2Role),
        words("at3", QT_TRANSLATE_NOOP("BoxEditDialog", "AT3:"), boxAt3Role),
        words("at4", QT_TRANSLATE_NOOP("BoxEditDialog", "AT4:"), boxAt4Role),
        words("at5", QT_TRANSLATE_NOOP("BoxEditDialog", "AT5:"), boxAt5Role),
    };
}

QVector<Field> ntp()
{
    return {address("ntpServer", QT_TRANSLATE_NOOP("BoxEditDialog", "NTP Server:"), boxNtpServerRole)};
}

QVector<Field> clocks()
{
    return {
        {"localTime", QT_TRANSLATE_NOOP("BoxEditDialog", "Local Time:"), FieldKind::ReadOnly,
         FieldTable::noRole},
        {"time", QT_TRANSLATE_NOOP("BoxEditDialog", "Box Time:"), FieldKind::ReadOnly, boxTimeRole},
    };
}

} // namespace

QVector<Field> head()
{
    // The item's text is its name.
    return {{"name", QT_TRANSLATE_NOOP("BoxEditDialog", "Name:"), FieldKind::Text, Qt::DisplayRole},
            address("ip", ip, boxIpRole)};
}

QVector<Field> model()
{
    return {
        list("model", QT_TRANSLATE_NOOP("BoxEditDialog", "Model:"), boxModelRole,
             {QStringLiteral("MRN-RIM-KX91"), QStringLiteral("MRN-GATE-70"), QStringLiteral("MRN-GATE-20")})};
}

QVector<BoxGroup> groups()
{
    return {
        {"lan", QT_TRANSLATE_NOOP("BoxEditDialog", "LAN"), "Lan", "Lan",
         QT_TRANSLATE_NOOP("BoxEditDialog", "LAN Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "LAN configuration updated successfully."), lan()},
        {"wan", QT_TRANSLATE_NOOP("BoxEditDialog", "WAN"), "Wan", "Wan",
         QT_TRANSLATE_NOOP("BoxEditDialog", "Wan Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "Wan configuration updated successfully."), wan()},
        // The next two are built and never shown: they keep the item's values through a save.
        {"wifi", nullptr, "Wifi", "Wifi", QT_TRANSLATE_NOOP("BoxEditDialog", "Wifi Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "Wifi configuration updated successfully."), wifi()},
        {"lte", nullptr, "Lte", "Lte", QT_TRANSLATE_NOOP("BoxEditDialog", "Lte Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "Lte configuration updated successfully."), lte()},
        {"ntp", QT_TRANSLATE_NOOP("BoxEditDialog", "NTP"), "NTP", "NTP",
         QT_TRANSLATE_NOOP("BoxEditDialog", "NTP Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "NTP configuration updated successfully."), ntp()},
        // Compat: the clock's update has the line of NTP's in the activity log.
        {"time", QT_TRANSLATE_NOOP("BoxEditDialog", "Time"), "Time", "NTP",
         QT_TRANSLATE_NOOP("BoxEditDialog", "time Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "time configuration updated successfully."), clocks()},
    };
}

} // namespace BoxGroups

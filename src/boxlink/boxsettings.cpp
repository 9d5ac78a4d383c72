#include "boxlink/boxsettings.h"

namespace {

using Texts = QVector<SettingsText>;

Texts texts(LanSettings &lan)
{
    return {{"lanIp", &lan.lanIp},
            {"lanMask", &lan.lanMask},
            {"lanGateway", &lan.lanGateway},
            {"lanDns1", &lan.lanDns1},
            {"lanDns2", &lan.lanDns2}};
}

Texts texts(WanSettings &wan)
{
    return {{"wanDhcp", &wan.wanDhcp, SettingsText::Dhcp},
            {"wanIp", &wan.wanIp},
            {"wanMask", &wan.wanMask},
            {"wanGateway", &wan.wanGateway},
            {"wanDns1", &wan.wanDns1},
            {"wanDns2", &wan.wanDns2}};
}

Texts texts(WifiSettings &wifi)
{
    return {{"wifiOnOff", &wifi.wifiOnOff, SettingsText::OnOff},
            {"wifiMode", &wifi.wifiMode},
            {"ssid", &wifi.ssid},
            {"password", &wifi.password},
            {"wifiDhcp", &wifi.wifiDhcp, SettingsText::Dhcp},
            {"wifiIp", &wifi.wifiIp},
            {"wifiMask", &wifi.wifiMask},
            {"wifiGateway", &wifi.wifiGateway},
            {"wifiDns1", &wifi.wifiDns1},
            {"wifiDns2", &wifi.wifiDns2}};
}

Texts texts(LteSettings &lte)
{
    return {{"lteOnOff", &lte.lteOnOff, SettingsText::OnOff},
            {"AT1", &lte.AT1},
            {"AT2", &lte.AT2},
            {"AT3", &lte.AT3},
            {"AT4", &lte.AT4},
            {"AT5", &lte.AT5}};
}

Texts texts(NtpSettings &ntp)
{
    return {{"NTP", &ntp.NTP}};
}

Texts texts(TimeSettings &time)
{
    return {{"date", &time.date}};
}

} // namespace

SettingsGroup groupOf(const BoxSettings &settings)
{
    return static_cast<SettingsGroup>(settings.index());
}

BoxSettings emptySettings(SettingsGroup group)
{
    const BoxSettings records[] = {LanSettings(), WanSettings(), WifiSettings(),
                                   LteSettings(), NtpSettings(), TimeSettings()};
    static_assert(std::size(records) == std::variant_size_v<BoxSettings>);
    return records[int(group)];
}

QVector<SettingsText> textsOf(BoxSettings &settings)
{
    return std::visit([](auto &record) { return texts(record); }, settings);
}

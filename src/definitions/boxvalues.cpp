#include "definitions/valuetables.h"

#include "model/itemroles.h"

namespace {

using namespace Definitions;

Value value(int role, const char *key, BoxSettings settings, const char *wireKey)
{
    return {role, key, settings, Place::Object, Coding::Text, nullptr, wireKey};
}

Value unsaved(int role, const char *key, BoxSettings settings, const char *wireKey = nullptr)
{
    return {role, key, settings, Place::Object, Coding::Unsaved, nullptr, wireKey};
}

} // namespace

const QVector<Value> &ValueTables::box()
{
    static const QVector<Value> table{
        value(boxIpRole, "ip", NoSettings, nullptr),
        unsaved(boxModelRole, "model", NoSettings),
        value(boxLanIpRole, "lanIp", LanSettings, "lanIp"),
        value(boxLanMaskRole, "lanMask", LanSettings, "lanMask"),
        value(boxLanGatewayRole, "lanGateway", LanSettings, "lanGateway"),
        value(boxLanDns1Role, "lanDns1", LanSettings, "lanDns1"),
        value(boxLanDns2Role, "lanDns2", LanSettings, "lanDns2"),
        value(boxWanDhcpRole, "wanDhcp", WanSettings, "wanDhcp"),
        value(boxWanIpRole, "wanIp", WanSettings, "wanIp"),
        value(boxWanMaskRole, "wanMask", WanSettings, "wanMask"),
        value(boxWanGatewayRole, "wanGateway", WanSettings, "wanGateway"),
        value(boxWanDns1Role, "wanDns1", WanSettings, "wanDns1"),
        value(boxWanDns2Role, "wanDns2", WanSettings, "wanDns2"),
        value(boxWifiOnOffRole, "wifiOnOff", WifiSettings, "wifiOnOff"),
        value(boxWifiModeRole, "wifiMode", WifiSettings, "wifiMode"),
        value(boxWifiSsidRole, "wifissid", WifiSettings, "ssid"),
        value(boxWifiPasswordRole, "wifipassword", WifiSettings, "password"),
        value(boxWifiDhcpRole, "wifiDhcp", WifiSettings, "wifiDhcp"),
        value(boxWifiIpRole, "wifiIp", WifiSettings, "wifiIp"),
        value(boxWifiMaskRole, "wifiMask", WifiSettings, "wifiMask"),
        value(boxWifiGatewayRole, "wifiGateway", WifiSettings, "wifiGateway"),
        value(boxWifiDns1Role, "wifiDns1", WifiSettings, "wifiDns1"),
        value(boxWifiDns2Role, "wifiDns2", WifiSettings, "wifiDns2"),
        value(boxLteOnOffRole, "lteOnOff", LteSettings, "lteOnOff"),
        unsaved(boxAt1Role, "at1", LteSettings, "AT1"),
        unsaved(boxAt2Role, "at2", LteSettings, "AT2"),
        unsaved(boxAt3Role, "at3", LteSettings, "AT3"),
        unsaved(boxAt4Role, "at4", LteSettings, "AT4"),
        unsaved(boxAt5Role, "at5", LteSettings, "AT5"),
        unsaved(boxNtpServerRole, "ntpServer", NtpSettings, "NTP"),
        unsaved(boxTimeRole, "time", TimeSettings, "date"),
    };
    return table;
}

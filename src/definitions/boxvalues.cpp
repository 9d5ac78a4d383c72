#include "definitions/valuetables.h"

#include "model/itemroles.h"

namespace {

using namespace Definitions;

Value saved(int role, const char *key)
{
    return {role, key, anySubKind};
}

Value unsaved(int role, const char *key)
{
    return {role, key, anySubKind, Place::Object, Coding::Unsaved};
}

} // namespace

const QVector<Value> &ValueTables::box()
{
    static const QVector<Value> table{
        saved(boxIpRole, "ip"),
        choice(Choices::boxModels, unsaved(boxModelRole, "model")),
        saved(boxLanIpRole, "lanIp"),
        saved(boxLanMaskRole, "lanMask"),
        saved(boxLanGatewayRole, "lanGateway"),
        saved(boxLanDns1Role, "lanDns1"),
        saved(boxLanDns2Role, "lanDns2"),
        choice(Choices::dhcp, saved(boxWanDhcpRole, "wanDhcp")),
        saved(boxWanIpRole, "wanIp"),
        saved(boxWanMaskRole, "wanMask"),
        saved(boxWanGatewayRole, "wanGateway"),
        saved(boxWanDns1Role, "wanDns1"),
        saved(boxWanDns2Role, "wanDns2"),
        saved(boxWifiOnOffRole, "wifiOnOff"),
        choice(Choices::wifiModes, saved(boxWifiModeRole, "wifiMode")),
        saved(boxWifiSsidRole, "wifissid"),
        saved(boxWifiPasswordRole, "wifipassword"),
        choice(Choices::dhcp, saved(boxWifiDhcpRole, "wifiDhcp")),
        saved(boxWifiIpRole, "wifiIp"),
        saved(boxWifiMaskRole, "wifiMask"),
        saved(boxWifiGatewayRole, "wifiGateway"),
        saved(boxWifiDns1Role, "wifiDns1"),
        saved(boxWifiDns2Role, "wifiDns2"),
        saved(boxLteOnOffRole, "lteOnOff"),
        unsaved(boxAt1Role, "at1"),
        unsaved(boxAt2Role, "at2"),
        unsaved(boxAt3Role, "at3"),
        unsaved(boxAt4Role, "at4"),
        unsaved(boxAt5Role, "at5"),
        unsaved(boxNtpServerRole, "ntpServer"),
        unsaved(boxTimeRole, "time"),
    };
    return table;
}

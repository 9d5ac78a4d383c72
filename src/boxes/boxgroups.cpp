#include "boxes/boxgroups.h"

#include "boxes/boxeditdialog.h"
#include "model/itemroles.h"

namespace BoxGroups {

namespace {

using Fields = BoxGroup::Fields;

struct AddressRow {
    int role;
    const char *name;
};

// The five addresses of a network interface.
Fields addAddresses(FieldGroup &group, const AddressRow (&rows)[5])
{
    const QStringList labels{BoxEditDialog::tr("IP:"), BoxEditDialog::tr("Mask:"),
                             BoxEditDialog::tr("Gateway:"), BoxEditDialog::tr("Dns1:"),
                             BoxEditDialog::tr("Dns2:")};
    Fields fields;
    for (const AddressRow &row : rows) {
        fields.append(
            group.add<TextField>(row.role, row.name, labels.at(fields.size()))->check(ipv4Validator));
    }
    return fields;
}

// Both words stay English in every language, see DhcpWord.
FormField *addDhcp(FieldGroup &group, int role, const char *name)
{
    return group.add<ListField>(role, name, BoxEditDialog::tr("Dhcp:"))
        ->entries({BoxEditDialog::tr("Disabled"), BoxEditDialog::tr("Enable")});
}

FormField *addOnOff(FieldGroup &group, int role, const char *name, const QString &label)
{
    return group.add<OnOffField>(role, name, label)->texts(BoxEditDialog::tr("ON"), BoxEditDialog::tr("OFF"));
}

TextField *addWords(FieldGroup &group, int role, const char *name, const QString &label)
{
    return group.add<TextField>(role, name, label)->check(noCjkValidator);
}

Fields addLan(FieldGroup &group)
{
    return addAddresses(group,
                        {{boxLanIpRole, "lanIp"},
                         {boxLanMaskRole, "lanMask"},
                         {boxLanGatewayRole, "lanGateway"},
                         {boxLanDns1Role, "lanDns1"},
                         {boxLanDns2Role, "lanDns2"}});
}

Fields addWan(FieldGroup &group)
{
    const Fields dhcp{addDhcp(group, boxWanDhcpRole, "wanDhcp")};
    return dhcp
        + addAddresses(group,
                       {{boxWanIpRole, "wanIp"},
                        {boxWanMaskRole, "wanMask"},
                        {boxWanGatewayRole, "wanGateway"},
                        {boxWanDns1Role, "wanDns1"},
                        {boxWanDns2Role, "wanDns2"}});
}

Fields addWifi(FieldGroup &group)
{
    const Fields fields{
        addOnOff(group, boxWifiOnOffRole, "wifiOnOff", BoxEditDialog::tr("wifiOnOff:")),
        group.add<ListField>(boxWifiModeRole, "wifiMode", BoxEditDialog::tr("Mode:"))->entries("station"),
        addWords(group, boxWifiSsidRole, "wifissid", BoxEditDialog::tr("SSID:")),
        addWords(group, boxWifiPasswordRole, "wifipassword", BoxEditDialog::tr("Password:"))->password(),
        addDhcp(group, boxWifiDhcpRole, "wifiDhcp")};
    return fields
        + addAddresses(group,
                       {{boxWifiIpRole, "wifiIp"},
                        {boxWifiMaskRole, "wifiMask"},
                        {boxWifiGatewayRole, "wifiGateway"},
                        {boxWifiDns1Role, "wifiDns1"},
                        {boxWifiDns2Role, "wifiDns2"}});
}

Fields addLte(FieldGroup &group)
{
    return {addOnOff(group, boxLteOnOffRole, "lteOnOff", BoxEditDialog::tr("4G:")),
            addWords(group, boxAt1Role, "at1", BoxEditDialog::tr("AT1:")),
            addWords(group, boxAt2Role, "at2", BoxEditDialog::tr("AT2:")),
            addWords(group, boxAt3Role, "at3", BoxEditDialog::tr("AT3:")),
            addWords(group, boxAt4Role, "at4", BoxEditDialog::tr("AT4:")),
            addWords(group, boxAt5Role, "at5", BoxEditDialog::tr("AT5:"))};
}

Fields addNtp(FieldGroup &group)
{
    return {group.add<TextField>(boxNtpServerRole, "ntpServer", BoxEditDialog::tr("NTP Server:"))
                ->check(ipv4Validator)};
}

Fields addClocks(FieldGroup &group)
{
    return {
        group.add<TextField>(FormField::noRole, "localTime", BoxEditDialog::tr("Local Time:"))->readOnly(),
        group.add<TextField>(boxTimeRole, "time", BoxEditDialog::tr("Box Time:"))->readOnly()};
}

} // namespace

const QVector<BoxGroup> &groups()
{
    static const QVector<BoxGroup> all = {
        {"lan", QT_TRANSLATE_NOOP("BoxEditDialog", "LAN"), "Lan", "Lan",
         QT_TRANSLATE_NOOP("BoxEditDialog", "LAN Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "LAN configuration updated successfully."), addLan},
        {"wan", QT_TRANSLATE_NOOP("BoxEditDialog", "WAN"), "Wan", "Wan",
         QT_TRANSLATE_NOOP("BoxEditDialog", "Wan Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "Wan configuration updated successfully."), addWan},
        // The next two are built and never shown: they keep the item's values through a save.
        {"wifi", nullptr, "Wifi", "Wifi", QT_TRANSLATE_NOOP("BoxEditDialog", "Wifi Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "Wifi configuration updated successfully."), addWifi},
        {"lte", nullptr, "Lte", "Lte", QT_TRANSLATE_NOOP("BoxEditDialog", "Lte Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "Lte configuration updated successfully."), addLte},
        {"ntp", QT_TRANSLATE_NOOP("BoxEditDialog", "NTP"), "NTP", "NTP",
         QT_TRANSLATE_NOOP("BoxEditDialog", "NTP Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "NTP configuration updated successfully."), addNtp},
        // Compat: the clock's update has the line of NTP's in the activity log.
        {"time", QT_TRANSLATE_NOOP("BoxEditDialog", "Time"), "Time", "NTP",
         QT_TRANSLATE_NOOP("BoxEditDialog", "time Configuration"),
         QT_TRANSLATE_NOOP("BoxEditDialog", "time configuration updated successfully."), addClocks},
    };
    return all;
}

} // namespace BoxGroups

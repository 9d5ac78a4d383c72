#include "boxes/boxgroups.h"

#include "boxes/boxeditdialog.h"
#include "model/itemroles.h"

namespace BoxGroups {

namespace {

using Fields = BoxGroup::Fields;

// The five addresses of a network interface.
Fields addAddresses(FieldGroup &group, const int (&roles)[5])
{
    const QStringList labels{BoxEditDialog::tr("IP:"), BoxEditDialog::tr("Mask:"),
                             BoxEditDialog::tr("Gateway:"), BoxEditDialog::tr("Dns1:"),
                             BoxEditDialog::tr("Dns2:")};
    Fields fields;
    for (const int role : roles) {
        fields.append(group.add<TextField>(role, labels.at(fields.size()))->check(ipv4Validator));
    }
    return fields;
}

// Both words stay English in every language, see DhcpWord.
FormField *addDhcp(FieldGroup &group, int role)
{
    return group.add<ListField>(role, BoxEditDialog::tr("Dhcp:"));
}

FormField *addOnOff(FieldGroup &group, int role, const QString &label)
{
    return group.add<OnOffField>(role, label)->texts(BoxEditDialog::tr("ON"), BoxEditDialog::tr("OFF"));
}

TextField *addWords(FieldGroup &group, int role, const QString &label)
{
    return group.add<TextField>(role, label)->check(noCjkValidator);
}

Fields addLan(FieldGroup &group)
{
    return addAddresses(group,
                        {boxLanIpRole, boxLanMaskRole, boxLanGatewayRole, boxLanDns1Role, boxLanDns2Role});
}

Fields addWan(FieldGroup &group)
{
    const Fields dhcp{addDhcp(group, boxWanDhcpRole)};
    return dhcp
        + addAddresses(group,
                       {boxWanIpRole, boxWanMaskRole, boxWanGatewayRole, boxWanDns1Role, boxWanDns2Role});
}

Fields addWifi(FieldGroup &group)
{
    const Fields fields{addOnOff(group, boxWifiOnOffRole, BoxEditDialog::tr("wifiOnOff:")),
                        group.add<ListField>(boxWifiModeRole, BoxEditDialog::tr("Mode:")),
                        addWords(group, boxWifiSsidRole, BoxEditDialog::tr("SSID:")),
                        addWords(group, boxWifiPasswordRole, BoxEditDialog::tr("Password:"))->password(),
                        addDhcp(group, boxWifiDhcpRole)};
    return fields
        + addAddresses(
               group, {boxWifiIpRole, boxWifiMaskRole, boxWifiGatewayRole, boxWifiDns1Role, boxWifiDns2Role});
}

Fields addLte(FieldGroup &group)
{
    return {addOnOff(group, boxLteOnOffRole, BoxEditDialog::tr("4G:")),
            addWords(group, boxAt1Role, BoxEditDialog::tr("AT1:")),
            addWords(group, boxAt2Role, BoxEditDialog::tr("AT2:")),
            addWords(group, boxAt3Role, BoxEditDialog::tr("AT3:")),
            addWords(group, boxAt4Role, BoxEditDialog::tr("AT4:")),
            addWords(group, boxAt5Role, BoxEditDialog::tr("AT5:"))};
}

Fields addNtp(FieldGroup &group)
{
    return {group.add<TextField>(boxNtpServerRole, BoxEditDialog::tr("NTP Server:"))->check(ipv4Validator)};
}

Fields addClocks(FieldGroup &group)
{
    return {
        group.add<TextField>(FormField::noRole, "localTime", BoxEditDialog::tr("Local Time:"))->readOnly(),
        group.add<TextField>(boxTimeRole, BoxEditDialog::tr("Box Time:"))->readOnly()};
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

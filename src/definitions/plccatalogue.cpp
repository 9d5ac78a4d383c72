#include "definitions/plccatalogue.h"

namespace {

const QLatin1String emptyEntry("Empty"); // of a list without choices

const QLatin1String siemens("Siemens");
const QLatin1String mitsubishi("Mitsubishi");
const QLatin1String omron("Omron");
const QLatin1String allenBradley("AllenBradley");
const QLatin1String xinje("XinJE");
const QLatin1String beckhoff("Beckhoff");
const QLatin1String inovance("Inovance");
const QLatin1String modbus("Modbus");
const QLatin1String delta("Delta");

const QLatin1String etherNetIp("EtherNet/IP");
const QLatin1String mc1e("MC-1E");
const QLatin1String mc3e("MC-3E");
const QLatin1String fins("Fins");
const QLatin1String ads("Ads");
const QLatin1String modbusTcp("Modbus TCP");
const QLatin1String modbusRtu("Modbus RTU");
const QLatin1String modbusRtuOnTcp("Modbus RTU On TCP");

// A model of "S7" and the group with its connection settings.
const struct {
    QLatin1String name;
    PlcGroup group;
} s7Models[] = {
    {QLatin1String("S200"), PlcGroup::S7Tsap},  {QLatin1String("S1200"), PlcGroup::S7Rack},
    {QLatin1String("S300"), PlcGroup::S7Rack},  {QLatin1String("S400"), PlcGroup::S7Rack},
    {QLatin1String("S1500"), PlcGroup::S7Rack}, {QLatin1String("S200Smart"), PlcGroup::None},
};

const struct {
    QLatin1String protocol;
    QLatin1String port;
} ports[] = {
    {modbusTcp, QLatin1String("502")},
    {modbusRtu, QLatin1String("502")},
    {modbusRtuOnTcp, QLatin1String("502")},
    {etherNetIp, QLatin1String("44818")},
    // Compat: empty; the user is to fill it in.
    {mc1e, QLatin1String("")},
    {mc3e, QLatin1String("")},
    {fins, QLatin1String("9600")},
    {ads, QLatin1String("48898")},
};

const struct {
    PlcGroup group;
    const char *names; // separated by blanks
} seriesOf[] = {
    {PlcGroup::Xinje, "XD3E XD5E XDH XG"},
    {PlcGroup::Inovance, "AM H3U H5U"},
    {PlcGroup::Modbus, "standard"},
    {PlcGroup::Delta, "AH AS DVP"},
};

// In the order of the lists.
const QVector<PlcCatalogue::Entry> &entries()
{
    // clang-format off
    static const QVector<PlcCatalogue::Entry> table{
        {siemens, PlcCatalogue::s7, PlcGroup::Network, PlcGroup::S7Model, true},
        {siemens, QLatin1String("PPI"), PlcGroup::Serial, PlcGroup::Ppi, true},
        {siemens, QLatin1String("PPI On TCP"), PlcGroup::Network, PlcGroup::Ppi, false},
        {mitsubishi, etherNetIp, PlcGroup::Network, PlcGroup::MitsubishiEip, true},
        {mitsubishi, QLatin1String("MC-3C"), PlcGroup::Serial, PlcGroup::Mc3c, true},
        {mitsubishi, mc1e, PlcGroup::Network, PlcGroup::Mc1e, true},
        {mitsubishi, mc3e, PlcGroup::Network, PlcGroup::Mc3e, true},
        {mitsubishi, QLatin1String("FxLinks"), PlcGroup::Serial, PlcGroup::FxLinks, true},
        {mitsubishi, QLatin1String("FxSerial"), PlcGroup::Serial, PlcGroup::FxSerial, true},
        {omron, fins, PlcGroup::Network, PlcGroup::Fins, true},
        {omron, etherNetIp, PlcGroup::Network, PlcGroup::OmronEip, true},
        {omron, QLatin1String("HostLink"), PlcGroup::Serial, PlcGroup::HostLink, true},
        // Compat: serial, against its name.
        {omron, QLatin1String("HostLink On TCP"), PlcGroup::Serial, PlcGroup::HostLink, false},
        {allenBradley, etherNetIp, PlcGroup::Network, PlcGroup::AllenBradleyEip, true},
        {allenBradley, QLatin1String("MicroCIP"), PlcGroup::Network, PlcGroup::AllenBradleyEip, false},
        {allenBradley, QLatin1String("DF1"), PlcGroup::Serial, PlcGroup::Df1, true},
        {xinje, modbusTcp, PlcGroup::Network, PlcGroup::Xinje, true},
        {xinje, modbusRtuOnTcp, PlcGroup::Network, PlcGroup::Xinje, false},
        {xinje, modbusRtu, PlcGroup::Serial, PlcGroup::Xinje, true},
        {beckhoff, ads, PlcGroup::Network, PlcGroup::Ads, true},
        {inovance, modbusTcp, PlcGroup::Network, PlcGroup::Inovance, true},
        {inovance, modbusRtuOnTcp, PlcGroup::Network, PlcGroup::Inovance, false},
        {inovance, modbusRtu, PlcGroup::Serial, PlcGroup::Inovance, true},
        {modbus, modbusTcp, PlcGroup::Network, PlcGroup::Modbus, true},
        {modbus, modbusRtu, PlcGroup::Serial, PlcGroup::Modbus, true},
        {delta, modbusTcp, PlcGroup::Network, PlcGroup::Delta, true},
        {delta, modbusRtu, PlcGroup::Serial, PlcGroup::Delta, true},
    };
    // clang-format on
    return table;
}

} // namespace

namespace PlcCatalogue {

const Entry *find(const QString &manufacturer, const QString &protocol)
{
    for (const Entry &entry : entries()) {
        if (entry.manufacturer == manufacturer && entry.protocol == protocol) {
            return &entry;
        }
    }
    return nullptr;
}

PlcGroup linkOf(const QString &protocol)
{
    for (const Entry &entry : entries()) {
        if (entry.protocol == protocol) {
            return entry.link;
        }
    }
    return PlcGroup::None;
}

PlcGroup groupInDocument(const QString &manufacturer, const QString &protocol)
{
    if (const Entry *entry = find(manufacturer, protocol)) {
        return entry->group;
    }
    if (protocol == modbusRtuOnTcp) {
        return manufacturer == modbus ? PlcGroup::Modbus
            : manufacturer == delta   ? PlcGroup::Delta
                                      : PlcGroup::None;
    }
    return PlcGroup::None;
}

QStringList manufacturers()
{
    QStringList names;
    for (const Entry &entry : entries()) {
        if (entry.manufacturer != modbus && !names.contains(entry.manufacturer)) {
            names.append(entry.manufacturer);
        }
    }
    return names;
}

QStringList protocols(const QString &manufacturer)
{
    QStringList names;
    for (const Entry &entry : entries()) {
        if (entry.listed && entry.manufacturer == manufacturer) {
            names.append(entry.protocol);
        }
    }
    return names.isEmpty() ? QStringList{emptyEntry} : names;
}

QStringList models(const QString &protocol)
{
    if (protocol != s7) {
        return {emptyEntry};
    }
    QStringList names;
    for (const auto &model : s7Models) {
        names.append(model.name);
    }
    return names;
}

PlcGroup groupOfModel(const QString &name)
{
    for (const auto &model : s7Models) {
        if (model.name == name) {
            return model.group;
        }
    }
    return PlcGroup::None;
}

const QVector<Model> &allenBradleyModels()
{
    static const QVector<Model> models{
        {"ControlLogix系列", QLatin1String("controllogix")},
        {"CompactLogix系列", QLatin1String("compactlogix")},
        {"MicroLogix系列", QLatin1String("micrologix")},
        {"Logix5000系列", QLatin1String("lgxplc5")},
        {"Micro800系列", QLatin1String("micro800")},
        {"SLC 500", QLatin1String("slc500")},
    };
    return models;
}

QStringList series(PlcGroup maker)
{
    for (const auto &row : seriesOf) {
        if (row.group == maker) {
            return QString::fromLatin1(row.names).split(QLatin1Char(' '));
        }
    }
    return {};
}

QString defaultPort(const QString &protocol)
{
    for (const auto &row : ports) {
        if (row.protocol == protocol) {
            return row.port;
        }
    }
    return QStringLiteral("102");
}

} // namespace PlcCatalogue

#include "definitions/values.h"

#include "definitions/plccatalogue.h"
#include "definitions/protocols.h"
#include "definitions/valuetables.h"
#include "model/itemroles.h"

#include <algorithm>

namespace Definitions {

namespace {

const QVector<Value> &projectValues()
{
    static const QVector<Value> table{{projectDescriptionRole, "description", anySubKind}};
    return table;
}

struct ProtocolKind {
    QLatin1String protocol;
    unsigned kind;
};

unsigned kindOf(const QString &protocol, std::initializer_list<ProtocolKind> kinds, unsigned unknown)
{
    for (const ProtocolKind &each : kinds) {
        if (protocol == each.protocol) {
            return each.kind;
        }
    }
    return unknown;
}

} // namespace

unsigned standardKind(const QString &protocol, const QString &mode)
{
    if (protocol == Protocols::modbus) {
        return mode == Protocols::modbusTcp ? ModbusTcp
            : mode == Protocols::modbusRtu  ? ModbusRtu
                                            : ModbusOther;
    }
    return kindOf(protocol,
                  {{Protocols::dlt645, Meter},
                   {Protocols::dido, Dido},
                   {Protocols::customPoll, CustomPoll},
                   {Protocols::opcUa, OpcUa}},
                  UnknownStandard);
}

unsigned serverKind(const QString &protocol)
{
    return kindOf(protocol,
                  {{Protocols::mqtt, Mqtt},
                   {Protocols::aliMqtt, AliMqtt},
                   {Protocols::oneNetMqtt, OneNetMqtt},
                   {Protocols::huaWeiMqtt, HuaWeiMqtt},
                   {Protocols::modbusTcpSlave, ModbusSlave},
                   {Protocols::hj212, Hj212},
                   {Protocols::sl651, Sl651},
                   {Protocols::opcUaServer, OpcUaServer}},
                  UnknownServer);
}

unsigned plcKinds(const QString &manufacturer, const QString &protocol)
{
    const auto bit = [](PlcGroup group) { return 1U << unsigned(group); };
    return bit(PlcGroup::None) | bit(PlcCatalogue::linkOf(protocol))
        | bit(PlcCatalogue::groupInDocument(manufacturer, protocol));
}

const QVector<Value> &values(Kind kind)
{
    switch (kind) {
    case Kind::Project:
        return projectValues();
    case Kind::Box:
        return ValueTables::box();
    case Kind::Standard:
        return ValueTables::standard();
    case Kind::Service:
        return ValueTables::service();
    case Kind::Server:
        return ValueTables::server();
    case Kind::Plc:
        break;
    }
    return ValueTables::plc();
}

unsigned subKindsWith(Kind kind, Place place)
{
    static const struct {
        Kind kind;
        Place place;
        unsigned subKinds;
    } table[] = {
        {Kind::Standard, Place::Parameter, anySubKind & ~unsigned(UnknownStandard)},
        {Kind::Standard, Place::ExtendedParameters, OpcUa},
        {Kind::Service, Place::ExtendedParameters, anySubKind & ~unsigned(UnknownService)},
        {Kind::Plc, Place::Parameter, anySubKind},
        {Kind::Plc, Place::ExtendedParameters, anySubKind},
    };
    for (const auto &row : table) {
        if (row.kind == kind && row.place == place) {
            return row.subKinds;
        }
    }
    return place == Place::Object ? anySubKind : 0;
}

const Value *find(Kind kind, int role, unsigned subKinds)
{
    const QVector<Value> &table = values(kind);
    const auto found = std::find_if(table.begin(), table.end(), [&](const Value &value) {
        return value.role == role && (value.subKinds & subKinds) != 0;
    });
    return found == table.end() ? nullptr : found;
}

const Value &valueOf(Kind kind, int role, unsigned subKinds)
{
    const Value *value = find(kind, role, subKinds);
    Q_ASSERT(value);
    return *value;
}

} // namespace Definitions

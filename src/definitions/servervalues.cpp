#include "definitions/valuetables.h"

#include "model/itemroles.h"

namespace {

using namespace Definitions;

constexpr unsigned device = AliMqtt | OneNetMqtt;
constexpr unsigned cloud = device | HuaWeiMqtt;
constexpr unsigned described = Mqtt | cloud | OpcUaServer;
constexpr unsigned loggedIn = Mqtt | HuaWeiMqtt | OpcUaServer;
constexpr unsigned known = described | ModbusSlave | Hj212 | Sl651;

// Read also where it is not written, so that it is emptied there.
Value always(int role, const char *key, unsigned kinds)
{
    return {role, key, kinds, Place::Object, Coding::Text, nullptr, nullptr, anySubKind};
}

Value neverRead(int role, const char *key, unsigned kinds)
{
    return {role, key, kinds, Place::Object, Coding::Text, nullptr, nullptr, 0};
}

Value constant(const char *key, const char *text, unsigned kinds)
{
    return {noRole, key, kinds, Place::Object, Coding::Constant, text};
}

Value datas(int role, unsigned kinds, const Rows &rows)
{
    return {role, "datas", kinds, Place::Object, Coding::Rows, nullptr, &rows};
}

const Column registerColumns[] = {
    {QLatin1String("plcname")}, {QLatin1String("name")},   {QLatin1String("dataType")},
    {QLatin1String("addr")},    {QLatin1String("length")},
};
// "register" is the Modbus code of the register type; rows of another value are dropped.
const Rows holdingRegisters = rowsOf(registerColumns, "4");
const Rows inputRegisters = rowsOf(registerColumns, "3");

const Column hj212Columns[] = {
    {QLatin1String("plcname")},
    {QLatin1String("name")},
    {QLatin1String("factorCode")},
};
const Rows hj212Rows = rowsOf(hj212Columns);

const Column sl651Columns[] = {
    {QLatin1String("plcname")},
    {QLatin1String("name")},
    {QLatin1String("code")},
};
const Rows sl651Rows = rowsOf(sl651Columns);

} // namespace

const QVector<Value> &ValueTables::server()
{
    static const QVector<Value> table{
        always(serverDescriptionRole, "description", described),
        always(serverProtocolRole, "protocol", known),
        {serverIpRole, "ip", Mqtt | Hj212 | Sl651},
        {serverDomainNameRole, "domainName", cloud},
        {serverTypeRole, "type", ModbusSlave},
        {serverPortRole, "port", known},
        {serverPayloadFormatRole, "payloadFormat", Mqtt},
        {serverReportTopicRole, "reportTopic", Mqtt},
        {serverReportJsRole, "reportJS", Mqtt},
        {serverWriteTopicRole, "writeTopic", Mqtt},
        {serverWriteJsRole, "writeJS", Mqtt},
        {serverProductKeyRole, "productKey", device},
        {serverDeviceNameRole, "deviceName", device},
        {serverDeviceSecretRole, "deviceSecret", device},
        {serverClientIdRole, "clientId", Mqtt | HuaWeiMqtt},
        {serverAnonymousRole, "anonymous", OpcUaServer},
        {serverUsernameRole, "username", loggedIn},
        {serverPasswordRole, "password", loggedIn},
        {serverServiceIdRole, "serviceId", HuaWeiMqtt},
        {serverQosRole, "qos", Mqtt | cloud},
        {serverClientIdRole, "MN", Hj212},
        {serverPasswordRole, "PW", Hj212},
        {serverSystemCodeRole, "ST", Hj212},
        constant("Flag", "4", Hj212),
        // Compat: the item's command code is its own and never reaches a document.
        constant("CN", "2011", Hj212),
        {serverCommandCodeRole, "commandCode", Hj212, Place::Object, Coding::Unsaved, "2011"},
        {serverCentralStationAddressRole, "centralStationAddress", Sl651},
        {serverRemoteStationAddressRole, "remoteStationAddress", Sl651},
        // Compat: a station that comes out of a document is without its password.
        neverRead(serverPasswordRole, "passwd", Sl651),
        {serverRemoteStationTypeRole, "remoteStationType", Sl651, Place::Object, Coding::Hexadecimal},
        datas(serverHoldingRegistersRole, ModbusSlave, holdingRegisters),
        datas(serverInputRegistersRole, ModbusSlave, inputRegisters),
        datas(serverPointsRole, Hj212, hj212Rows),
        datas(serverPointsRole, Sl651, sl651Rows),
    };
    return table;
}

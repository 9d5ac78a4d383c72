#include "definitions/valuetables.h"

#include "model/itemroles.h"

namespace {

using namespace Definitions;

constexpr unsigned modbus = ModbusTcp | ModbusRtu | ModbusOther;
constexpr unsigned known = modbus | Meter | Dido | CustomPoll | OpcUa;
constexpr unsigned serial = ModbusRtu | Meter | CustomPoll;

// Members are read of every Standard, so that a key that is missing empties its role.
Value plain(int role, const char *key, unsigned kinds)
{
    return {role, key, kinds, Place::Object, Coding::Text, nullptr, nullptr, anySubKind};
}

Value parameter(int role, const char *key, unsigned kinds, const char *defaultValue = nullptr,
                unsigned readFor = anySubKind)
{
    return {role, key, kinds, Place::Parameter, Coding::Text, defaultValue, nullptr, readFor};
}

Value flag(int role, const char *key, unsigned kinds)
{
    Value value = parameter(role, key, kinds);
    value.coding = Coding::Flag;
    return value;
}

Value security(int role, const char *key, Coding coding = Coding::Text)
{
    return {role, key, OpcUa, Place::ExtendedParameters, coding, nullptr, nullptr, anySubKind};
}

Value datas(unsigned kinds, Coding groups)
{
    return {standardDatasRole, "datas", kinds, Place::Object, groups};
}

// Compat: plain lists are written and never read back; their points are lost with a load.
Value datas(unsigned kinds, const Rows &rows)
{
    return {standardDatasRole, "datas", kinds, Place::Object, Coding::Rows, nullptr, &rows, 0};
}

const Column didoColumns[] = {
    {QLatin1String("addr")},
    {QLatin1String("name")},
    {QLatin1String("permissions")},
    {QLatin1String("reportingMethod")},
};
const Rows didoRows = rowsOf(didoColumns);

const Column customPollColumns[] = {
    {QLatin1String("name")}, {QLatin1String("hex")},         {QLatin1String("dataContent")},
    {QLatin1String("crc")},  {QLatin1String("permissions")}, {QLatin1String("reportingMethod")},
};
const Rows customPollRows = rowsOf(customPollColumns);

const Column opcUaColumns[] = {
    {QLatin1String("addr")},
    {QLatin1String("name")},
    {QLatin1String("index")},
    {QLatin1String("nodeType")},
    {QLatin1String("permissions")},
    {QLatin1String("reportingMethod")},
    {QLatin1String("changeAmplitude")},
    {QLatin1String("collectionFormula")},
    {QLatin1String("writeFormula")},
    {QLatin1String("dataType")},
};
const Rows opcUaRows = rowsOf(opcUaColumns);

} // namespace

const QVector<Value> &ValueTables::standard()
{
    static const QVector<Value> table{
        plain(standardProtocolRole, "protocol", known),
        choice(Choices::modbusModes, plain(standardModbusModeRole, "modbus", modbus)),
        choice(Choices::serialPorts, parameter(standardSerialPortRole, "serialport", serial)),
        choice(Choices::baudRates, parameter(standardBaudRateRole, "baudRate", serial)),
        choice(Choices::dataBits, parameter(standardDataBitRole, "dataBit", serial)),
        choice(Choices::stopBits, parameter(standardStopBitRole, "stopBit", serial)),
        choice(Choices::parities, parameter(standardParityBitRole, "parityBit", serial)),
        flag(standardRtsEnableRole, "rtsEnable", serial),
        // One key, two roles: the time-out of a serial line and that of a TCP link are kept apart. Read into
        // the one or the other; of a Modbus Standard of neither mode into none.
        parameter(standardCommunicationTimeoutRole, "communicationTimeout", ModbusTcp | Meter | CustomPoll,
                  "2000", anySubKind & ~unsigned(ModbusRtu | ModbusOther)),
        parameter(standardRtuCommunicationTimeoutRole, "communicationTimeout", ModbusRtu, "2000", ModbusRtu),
        parameter(standardCommunicationGapRole, "communicationGap", serial, "-1"),
        parameter(standardCollectionIntervalRole, "collectionInterval", known & ~unsigned(ModbusOther),
                  "2000"),
        parameter(standardUrlRole, "url", OpcUa),
        parameter(standardIpRole, "ip", ModbusTcp, "192.168.1.60"),
        parameter(standardPortRole, "port", ModbusTcp, "502"),
        parameter(standardConnectionTimeoutRole, "connectionTimeout", ModbusTcp, "2000"),
        parameter(standardKeepAliveRole, "keepAlive", ModbusTcp, "60000"),
        security(standardSecurityPolicyRole, "securityPolicy"),
        security(standardMessageSecurityModeRole, "messageSecurityMode"),
        security(standardAuthenticationRole, "authentication", Coding::StandardLogin),
        security(standardUsernameRole, "username"),
        security(standardPasswordRole, "password"),
        security(standardCertificateRole, "certificate"),
        security(standardCertificatePathRole, "certificatePath"),
        security(standardPrivateKeyRole, "privateKey"),
        security(standardPrivateKeyPathRole, "privateKeyPath"),
        datas(modbus, Coding::ModbusGroups),
        datas(Meter, Coding::MeterGroups),
        datas(Dido, didoRows),
        datas(CustomPoll, customPollRows),
        datas(OpcUa, opcUaRows),
    };
    return table;
}

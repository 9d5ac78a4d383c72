#include "document/serverdocument.h"

#include "definitions/protocols.h"
#include "document/documentrows.h"
#include "model/projecttree.h"

#include <QJsonArray>
#include <QVector>

using namespace DocumentKeys;

namespace {

enum Kind : unsigned {
    Unknown = 0,
    Mqtt = 0x01,
    AliMqtt = 0x02,
    OneNetMqtt = 0x04,
    HuaWeiMqtt = 0x08,
    Slave = 0x10,
    Hj212 = 0x20,
    Sl651 = 0x40,
    OpcUaServer = 0x80,
    Device = AliMqtt | OneNetMqtt,
    Cloud = Device | HuaWeiMqtt,
    LoggedIn = Mqtt | HuaWeiMqtt | OpcUaServer,
    Described = Mqtt | Cloud | OpcUaServer,
    WithRows = Slave | Hj212 | Sl651,
    Any = 0xff,
};

enum class Form {
    Text,        // as the role holds it
    Hexadecimal, // a decimal text in the role, upper-case hexadecimal digits in the document
    Unread,      // Text that is not read back
};

struct Member {
    QLatin1String key;
    int role;
    unsigned kinds; // that have it
    Form form = Form::Text;
};

// Beside the protocol and the description, which is read of every kind and written for some.
const Member members[] = {
    {QLatin1String("ip"), serverIpRole, Mqtt | Hj212 | Sl651},
    {QLatin1String("domainName"), serverDomainNameRole, Cloud},
    {QLatin1String("port"), serverPortRole, Any},
    {QLatin1String("type"), serverTypeRole, Slave},
    {QLatin1String("payloadFormat"), serverPayloadFormatRole, Mqtt},
    {QLatin1String("reportTopic"), serverReportTopicRole, Mqtt},
    {QLatin1String("reportJS"), serverReportJsRole, Mqtt},
    {QLatin1String("writeTopic"), serverWriteTopicRole, Mqtt},
    {QLatin1String("writeJS"), serverWriteJsRole, Mqtt},
    {QLatin1String("productKey"), serverProductKeyRole, Device},
    {QLatin1String("deviceName"), serverDeviceNameRole, Device},
    {QLatin1String("deviceSecret"), serverDeviceSecretRole, Device},
    {QLatin1String("clientId"), serverClientIdRole, Mqtt | HuaWeiMqtt},
    {QLatin1String("anonymous"), serverAnonymousRole, OpcUaServer},
    {QLatin1String("username"), serverUsernameRole, LoggedIn},
    {QLatin1String("password"), serverPasswordRole, LoggedIn},
    {QLatin1String("serviceId"), serverServiceIdRole, HuaWeiMqtt},
    {QLatin1String("qos"), serverQosRole, Mqtt | Cloud},
    {QLatin1String("MN"), serverClientIdRole, Hj212},
    {QLatin1String("PW"), serverPasswordRole, Hj212},
    {QLatin1String("ST"), serverSystemCodeRole, Hj212},
    {QLatin1String("centralStationAddress"), serverCentralStationAddressRole, Sl651},
    {QLatin1String("remoteStationAddress"), serverRemoteStationAddressRole, Sl651},
    // On purpose written and not read back: a station that comes out of a document is without its password.
    {QLatin1String("passwd"), serverPasswordRole, Sl651, Form::Unread},
    {QLatin1String("remoteStationType"), serverRemoteStationTypeRole, Sl651, Form::Hexadecimal},
};

// What a kind writes whatever its item holds, and never reads: the command code of the item stays its own, on
// purpose.
const struct {
    QLatin1String key;
    QLatin1String text;
    unsigned kinds;
} constants[] = {
    {QLatin1String("Flag"), QLatin1String("4"), Hj212},
    {QLatin1String("CN"), QLatin1String("2011"), Hj212},
};

const QLatin1String registerKey("register");

// Rows in "datas". The two lists of a slave share the array, told apart by "register", whose value is the
// Modbus code of the register type; rows of another value are dropped.
struct Rows {
    unsigned kind;
    int role;
    QLatin1String registerType; // empty for a kind without registers
    QVector<Column> columns;
};

const QVector<Rows> &rowTables()
{
    // clang-format off
    static const QVector<Column> slave = {
        {QLatin1String("plcname")},
        {QLatin1String("name")},
        {QLatin1String("dataType")},
        {QLatin1String("addr")},
        {QLatin1String("length")},
    };
    static const QVector<Column> hj212 = {
        {QLatin1String("plcname")},
        {QLatin1String("name")},
        {QLatin1String("factorCode")},
    };
    static const QVector<Column> sl651 = {
        {QLatin1String("plcname")},
        {QLatin1String("name")},
        {QLatin1String("code")},
    };
    static const QVector<Rows> tables = {
        {Slave, serverHoldingRegistersRole, QLatin1String("4"), slave},
        {Slave, serverInputRegistersRole, QLatin1String("3"), slave},
        {Hj212, serverPointsRole, QLatin1String(), hj212},
        {Sl651, serverPointsRole, QLatin1String(), sl651},
    };
    // clang-format on
    return tables;
}

unsigned kindOf(const QString &protocol)
{
    static const struct {
        QLatin1String protocol;
        Kind kind;
    } kinds[] = {
        {Protocols::mqtt, Mqtt},
        {Protocols::aliMqtt, AliMqtt},
        {Protocols::oneNetMqtt, OneNetMqtt},
        {Protocols::huaWeiMqtt, HuaWeiMqtt},
        {Protocols::modbusTcpSlave, Slave},
        {Protocols::hj212, Hj212},
        {Protocols::sl651, Sl651},
        {Protocols::opcUaServer, OpcUaServer},
    };
    for (const auto &each : kinds) {
        if (protocol == each.protocol) {
            return each.kind;
        }
    }
    return Unknown;
}

void appendRows(QJsonArray *array, const Rows &table, const QStandardItem &server)
{
    const auto rows = server.data(table.role).value<RowList>();
    for (const QVariantList &row : rows) {
        QJsonObject object = withRow(QJsonObject(), table.columns, row);
        if (table.registerType.size() > 0) {
            object.insert(registerKey, table.registerType);
        }
        array->append(object);
    }
}

RowList readRows(const QJsonArray &array, const Rows &table)
{
    RowList rows;
    for (const QJsonValue &value : array) {
        const QJsonObject object = value.toObject();
        if (table.registerType.size() == 0 || object.value(registerKey).toString() == table.registerType) {
            rows.append(readRow(table.columns, object));
        }
    }
    return rows;
}

} // namespace

QJsonObject serverObject(const QStandardItem &server)
{
    QJsonObject object{{nameKey, server.text()}};
    const QString protocol = textOf(server, serverProtocolRole);
    const unsigned kind = kindOf(protocol);
    if (kind == Unknown) {
        return object;
    }
    object.insert(protocolKey, protocol);
    if (kind & Described) {
        object.insert(descriptionKey, textOf(server, serverDescriptionRole));
    }
    for (const Member &member : members) {
        if (member.kinds & kind) {
            object.insert(member.key,
                          member.form == Form::Hexadecimal
                              ? QString::number(server.data(member.role).toInt(), 16).toUpper()
                              : textOf(server, member.role));
        }
    }
    for (const auto &constant : constants) {
        if (constant.kinds & kind) {
            object.insert(constant.key, constant.text);
        }
    }
    if (kind & WithRows) {
        QJsonArray rows;
        for (const Rows &table : rowTables()) {
            if (table.kind == kind) {
                appendRows(&rows, table, server);
            }
        }
        object.insert(datasKey, rows);
    }
    return object;
}

void transmitServerData(const QJsonObject &server, QStandardItem *item)
{
    const QString protocol = server.value(protocolKey).toString();
    const unsigned kind = kindOf(protocol);
    item->setData(protocol, serverProtocolRole);
    // Of every kind, on purpose, so that it is emptied where no description is written.
    item->setData(server.value(descriptionKey).toString(), serverDescriptionRole);
    for (const Member &member : members) {
        if ((member.kinds & kind) && member.form != Form::Unread) {
            const QString text = server.value(member.key).toString();
            item->setData(member.form == Form::Hexadecimal ? QString::number(text.toInt(nullptr, 16)) : text,
                          member.role);
        }
    }
    for (const Rows &table : rowTables()) {
        if (table.kind == kind) {
            const RowList rows = readRows(server.value(datasKey).toArray(), table);
            item->setData(QVariant::fromValue(rows), table.role);
        }
    }
}

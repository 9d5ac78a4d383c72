#pragma once

#include <QLatin1String>
#include <QString>
#include <QVector>

#include <cstddef>

// What each kind of definition holds, one row a value. The writer and the reader of the document walk these
// tables, and a form makes a field from the row of its role.
namespace Definitions {

enum class Kind { Project, Box, Standard, Service, Server, Plc };

// How a value lies in the document: as a string, but for the arrays.
enum class Coding {
    Text,          // as the role holds it
    Flag,          // "true" becomes "1", all else "0"; read back "1" becomes "true", all else "false"
    Hexadecimal,   // a decimal text in the role, upper-case hexadecimal digits in the document
    ServiceLogin,  // "None" or "Password" in the language in force: "0" or "1", and nothing else
    StandardLogin, // "anonymous" or "Username and password verification", likewise
    Rows,          // a list of rows: an array with an object a row
    ModbusGroups,  // rows by tab, row 0 with the tab's own settings: an array with an object a tab
    MeterGroups,   // the same with the items of DLT645
    Constant,      // no role: always the default value, and not read
    Unsaved,       // not in the document
};

enum class Place { Object, Parameter, ExtendedParameters };

// A cell of a row; its place in the row is the place in the list.
struct Column {
    QLatin1String key;
    Coding coding = Coding::Text;  // Text or Flag
    const char *choices = nullptr; // what its list offers, see choices.h; null for no list
};

// The shape of Coding::Rows. Lists that share an array are told apart by the member "register" of its
// objects, which others lack.
struct Rows {
    const Column *columns;
    int count;
    const char *registerType = nullptr;

    const Column *begin() const { return columns; }
    const Column *end() const { return columns + count; }
};

template <std::size_t count>
constexpr Rows rowsOf(const Column (&columns)[count], const char *registerType = nullptr)
{
    return {columns, int(count), registerType};
}

constexpr int noRole = -1;
constexpr unsigned anySubKind = ~0U;

struct Value {
    int role;
    const char *key;   // in the document; of an unsaved value, what a form calls it
    unsigned subKinds; // that have it and are written with it, as bits of their enumeration below
    Place place = Place::Object;
    Coding coding = Coding::Text;
    const char *defaultValue = nullptr; // what a form writes into an empty role; null for none
    const Rows *rows = nullptr;         // of Coding::Rows

    // How reading differs from writing.
    unsigned readFor = subKinds;   // sub-kinds whose objects are read for it; 0 for none
    const char *readKey = nullptr; // null: the key that is written
    int roleIfOff = noRole;        // Flag: the role that "false" goes into

    const char *choices = nullptr; // what its list offers, see choices.h; null for no list
};

// Sub-kinds of a Standard.
enum StandardKind : unsigned {
    UnknownStandard = 0x01, // of another protocol than these
    ModbusTcp = 0x02,
    ModbusRtu = 0x04,
    ModbusOther = 0x08, // of neither mode
    Meter = 0x10,       // DLT645
    Dido = 0x20,
    CustomPoll = 0x40,
    OpcUa = 0x80,
};

// Sub-kinds of a Service: what its settings bring into the document.
enum ServiceKind : unsigned {
    UnknownService = 0x01,
    OpenService = 0x02,
    PasswordService = 0x04,
    SslService = 0x08,
    VerifyingService = 0x10, // SSL, and clients have to show a certificate
};

// Sub-kinds of a Server.
enum ServerKind : unsigned {
    UnknownServer = 0x01,
    Mqtt = 0x02,
    AliMqtt = 0x04,
    OneNetMqtt = 0x08,
    HuaWeiMqtt = 0x10,
    ModbusSlave = 0x20,
    Hj212 = 0x40,
    Sl651 = 0x80,
    OpcUaServer = 0x100,
};

unsigned standardKind(const QString &protocol, const QString &mode);
unsigned serverKind(const QString &protocol);
// The bits 1 << PlcGroup of the groups that the object of such a PLC has. PlcGroup::None is among them for
// every PLC, also of an unknown pair.
unsigned plcKinds(const QString &manufacturer, const QString &protocol);

// All values of a kind, in the order of the document.
const QVector<Value> &values(Kind kind);
// The sub-kinds whose objects have "parameter" or "extendedParameters", be it an empty one; all have the
// object itself.
unsigned subKindsWith(Kind kind, Place place);

// The first value with this role that one of the sub-kinds has, or null.
const Value *find(Kind kind, int role, unsigned subKinds = anySubKind);
// The first value with this role that one of the sub-kinds has, for a role that is known to have one.
const Value &valueOf(Kind kind, int role, unsigned subKinds = anySubKind);

} // namespace Definitions

#pragma once

#include <QLatin1String>
#include <QStringList>
#include <QVector>

// The groups of settings of a link or of a protocol, in the order of the form.
enum class PlcGroup {
    None,
    Network,
    Serial,
    S7Model,
    S7Rack,
    S7Tsap,
    Ppi,
    MitsubishiEip,
    Mc3c,
    Mc1e,
    Mc3e,
    FxLinks,
    FxSerial,
    Fins,
    OmronEip,
    HostLink,
    AllenBradleyEip,
    Df1,
    Ads,
    Inovance,
    Xinje,
    Modbus,
    Delta,
};

// What the system can talk to. All strings are stored in projects as they are here, so none is translated.
namespace PlcCatalogue {

// A protocol of a manufacturer.
struct Entry {
    QLatin1String manufacturer;
    QLatin1String protocol;
    PlcGroup link;  // Network or Serial
    PlcGroup group; // with the protocol's own settings
    // Protocols that are not are known to the form and to the document only: no list offers them.
    bool listed;
};

// The entry of exactly this pair, or null.
const Entry *find(const QString &manufacturer, const QString &protocol);

// The link of a protocol, whatever the manufacturer: Network, Serial, or None for an unknown protocol.
PlcGroup linkOf(const QString &protocol);
// The group whose settings the document holds for this pair, or None. It knows more pairs than the form.
PlcGroup groupInDocument(const QString &manufacturer, const QString &protocol);

// The manufacturers that a new PLC can have.
// Compat: "Modbus" is none of them, and stored projects may have it.
QStringList manufacturers();
// The listed protocols; "Empty" for a manufacturer that is not in the catalogue.
QStringList protocols(const QString &manufacturer);

inline const QLatin1String s7("S7");
// The models of "S7"; "Empty" for every other protocol.
QStringList models(const QString &protocol);
// The group with the connection settings of an S7 model: rack, TSAP or none.
PlcGroup groupOfModel(const QString &name);
// A model as lists show it and as it is stored.
struct Model {
    const char *text; // UTF-8
    QLatin1String code;
};
// The models of AllenBradley.
const QVector<Model> &allenBradleyModels();
// The series of a maker of Modbus devices; empty for other groups.
QStringList series(PlcGroup maker);

// The port of a PLC that has none yet, whatever its manufacturer and link.
QString defaultPort(const QString &protocol);

} // namespace PlcCatalogue

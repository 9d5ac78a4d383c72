#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

enum class ParameterCell {
    Address,
    Name,
    Type,        // list of the twelve types
    Length,      // live for type "string" only
    Permissions, // list
    Method,      // list, shown translated, stored in English; the last entry for rows with an amplitude only
    Amplitude,   // live for the method "Change amplitude" only
    CollectionFormula,
    WriteFormula,
    Button,       // removes the current row; holds no value
    Hex,          // list, whether the data are hexadecimal digits
    DataContent,  // what is sent, an editor in either kind of row
    Crc,          // list
    SpatialIndex, // at least 1, an item in either kind of row
    NodeType,     // list, shown translated, stored in English
};

struct ParameterColumn {
    ParameterCell cell;
    const char *header; // source text in the context ParameterTable
    int width;          // pixels
};

// What differs between the tables of a PLC, of a Modbus tab and of the Standards that have rows without tabs.
struct ParameterVariant {
    QVector<ParameterColumn> columns;
    const char *form;              // class name, the prefix of the activity log
    const char *duplicateText;     // source text, %1 is a one-based row number
    bool loadedDuplicateNamesSelf; // in a loaded row %1 is the edited row, not the one that has the name
    bool nameWhileTyping;          // an added row's name is checked at each change, on the raw text
    bool commaRefused;             // a name with a comma is cleared
    bool addressOfLatestTable;     // an added row's address is looked up in the table that was made last
    bool onlyNameCheckedInItems;   // a loaded row's items get the name check and no other
    const char *exportTitle;       // source text
    const char *exportFailure;     // source text of the box's title
    bool badAddressAbandons;       // a bad address in a CSV row ends the import
    int height;                    // fixed height of the table in pixels, or 0
    const char *addressText;       // source text of a bad address, %1 as above; null: any address passes

    int indexOf(ParameterCell cell) const;         // -1 if the variant has no such column
    QStringList headers() const;                   // in the current language
    QStringList entries(ParameterCell cell) const; // of a list, as stored; empty for any other cell

    static const ParameterVariant &plc();
    static const ParameterVariant &modbus();
    static const ParameterVariant &customPoll();
    static const ParameterVariant &dido();
    static const ParameterVariant &opcUa();
};

namespace ParameterText {

// The twelve data types, in list order.
const QStringList &types();
const QStringList &permissions();
// The reporting methods as stored, and as shown in the current language.
const QStringList &methods();
QStringList shownMethods();
// An entry of a list, as shown for what is stored and the other way round; what is never translated, or is
// not known, stands for itself.
QString shown(const QString &stored);
QString stored(const QString &shown);
// The method that makes the amplitude live, as shown.
QString amplitudeMethod();
// A text of the parameter table in the current language.
QString translated(const char *source);

} // namespace ParameterText

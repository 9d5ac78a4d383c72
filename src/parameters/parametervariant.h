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
    const char *header; // source text
    int width;          // pixels
};

// What differs between the tables of a PLC, of a Modbus tab and of the Standards that have rows without tabs.
// Source texts are in the shared context ParameterTable and are looked up in that of the form.
struct ParameterVariant {
    QVector<ParameterColumn> columns;
    const char *form = nullptr; // class name: context of the texts, and the prefix of the activity log
    int height = 0;             // fixed height of the table in pixels, or 0

    // Source texts; %1 is a one-based row number. Without an addressText any address passes.
    const char *duplicateText = nullptr;
    const char *addressText = nullptr;
    bool loadedDuplicateNamesSelf = false; // in a loaded row %1 is its own number, not that of the other row
    bool nameWhileTyping = false;          // an added row's name is checked at each change, on the raw text
    bool commaRefused = false;             // a name with a comma is cleared
    bool addressOfLatestTable = false;     // an added row's address is looked up in the table made last
    bool onlyNameCheckedInItems = false;   // a loaded row's items get the name check and no other

    // Whether rows come from CSV files and go into them; what follows is unused where they do not.
    bool hasCsv = false;
    const char *exportTitle = nullptr;   // source text
    const char *exportFailure = nullptr; // source text of the message's title
    bool badAddressAbandons = false;     // a bad address in a row ends the import

    int indexOf(ParameterCell cell) const;         // -1 if the variant has no such column
    QStringList headers() const;                   // in the current language
    QStringList entries(ParameterCell cell) const; // of a list, as stored; empty for any other cell
    // A text of the table in the current language.
    QString translated(const char *source) const;
    // An entry of a list, as shown for what is stored and the other way round; what is never translated, or
    // is not known, stands for itself.
    QString shown(const QString &stored) const;
    QString stored(const QString &shown) const;
    // The entries of a list, as shown.
    QStringList shownEntries(ParameterCell cell) const;
    // The method that makes the amplitude live, as shown.
    QString amplitudeMethod() const;
    // Said while a table is filled.
    QString loadingText() const;

    static const ParameterVariant &plc();
    static const ParameterVariant &modbus();
    static const ParameterVariant &customPoll();
    static const ParameterVariant &dido();
    static const ParameterVariant &opcUa();
};

#pragma once

#include <QHash>
#include <QString>
#include <QVector>

#include <array>

// The data items that can be read from a DL/T 645 meter: the one table behind the form, the document and the
// point import. Its order is the order of the form's rows and of every search.
namespace Dlt645 {

// The edition of DL/T 645 that a meter speaks, with the number that the document holds for it.
enum Version : int { Version2007 = 1, Version1997 = 2 };

// How one edition addresses an item and lays out its value; all null where the edition has no such item.
struct Code {
    const char *address = nullptr; // Data identifier: eight hexadecimal digits in 2007, four in 1997.
    const char *format = nullptr;  // X is a digit, N a digit of a constant; blanks count.
    const char *length = nullptr;  // Of the value in bytes, as a Server's table takes it.
    const char *type = nullptr;    // Its data type there.
};

struct Item {
    const char *label; // Source text in the translation context CMainWindow.
    Code code2007;
    Code code1997;

    const Code &code(Version version) const { return version == Version2007 ? code2007 : code1997; }
};

constexpr int itemCount = 44;

// All items in table order.
const std::array<Item, itemCount> &items();
// The items that an edition has, in table order: 44 for 2007, 30 for 1997.
QVector<const Item *> itemsOf(Version version);

// The item's name in the language in force.
QString label(const Item &item);

// "DLT645_2007" or "DLT645_1997".
QString versionText(Version version);
// Version2007 for exactly "DLT645_2007", Version1997 for any other text.
Version versionOf(const QString &text);

// All labels in the language that was in force when this object was made. Make one for each run over many
// rows, and do not keep it: the language may change between two runs.
class Labels
{
public:
    Labels();

    // The first item in table order that has this label and that the edition has; null if there is none.
    const Item *find(const QString &label, Version version) const;
    // The label of the item with this identifier in either edition, exact and case-sensitive; empty if there
    // is none.
    QString ofAddress(const QString &address) const;

private:
    QHash<QString, const Item *> m_by2007;
    QHash<QString, const Item *> m_by1997;
    QHash<QString, QString> m_byAddress;
};

} // namespace Dlt645

#pragma once

#include "parameters/parametervariant.h"
#include "parameters/rowimport.h"

#include <QVariant>

// What a row from outside, of a file or of the clipboard, must hold to come into a table. Words are those of
// the current language.
class RowCheck
{
public:
    explicit RowCheck(const ParameterVariant &variant);

    // The fewest fields of a row in any variant: those of Modbus, with the empty one of the button.
    static constexpr int leastFields = 6;

    const QStringList &headers() const { return m_headers; }

    // The first column whose field does not pass, or -1; what is behind it is not looked at. A field beyond
    // the end of a short row counts as empty.
    int badColumn(const QStringList &fields) const;
    // Whether the column has a list, whose first entry stands for a word that it does not have.
    bool isChoice(int column) const { return !m_choices.at(column).isEmpty(); }
    // Source text that refuses a row for a bad column; null if the row stays all the same.
    const char *refusalOf(int column) const;

    // The trimmed fields, not more than the width.
    static QVariantList row(const QStringList &fields, int width);

    // What is wrong with a column of a row, or with a line as a whole, in words.
    QString fault(int column, const QStringList &fields) const;
    QString tooShort() const;
    QString otherHeader() const;
    // Whether all of a line was in the encoding that it was read with.
    static bool isReadable(const QString &line);
    QString unreadable() const;
    // Adds a row: its place is source text with %1 for the number.
    void add(RowFaults *faults, const char *place, int number, const QStringList &fields,
             const QString &fault) const;

private:
    const ParameterVariant &m_variant;
    QStringList m_headers;
    QList<QStringList> m_choices; // the words of each column's list, as shown; empty for a column without one
};

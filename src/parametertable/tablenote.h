#pragma once

#include "parameters/parametervariant.h"
#include "parameters/rowimport.h"
#include "widgets/quietline.h"

// The quiet line below the buttons of a parameter table: what the last import, export or paste came to. Its
// tool tip tells the faults in the rows.
class TableNote : public QuietLine
{
    Q_OBJECT
public:
    TableNote(const ParameterVariant &variant, QWidget *parent);

    // The note beside the buttons of the table, which are on its page; null if there is none.
    static TableNote *of(const QWidget *table);

    void tellImport(const RowImport &import, const QString &path);
    void tellPaste(const RowImport &import);
    void tellExport(int rows, const QString &path, bool isWhole);
    void tellNothing() { setText(QString()); }

private:
    void tell(const QString &text, const RowFaults &faults);

    const ParameterVariant &m_variant;
};

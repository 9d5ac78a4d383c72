#pragma once

#include "parameters/parametercsv.h"
#include "widgets/quietline.h"

// The quiet line beside the buttons of a parameter table: what the last import, export or paste came to. Its
// tool tip tells the faults in the rows.
class TableNote : public QuietLine
{
    Q_OBJECT
public:
    TableNote(const ParameterVariant &variant, QWidget *parent);

    // That of the table, which has its buttons on the same page; null without.
    static TableNote *of(const QWidget *table);

    void tellImport(const ParameterCsv::Import &import, const QString &path);
    void tellPaste(const ParameterCsv::Import &import);
    void tellExport(int rows, const QString &path, bool isWhole);
    void tellNothing() { setText(QString()); }

private:
    void tell(const QString &text, const RowFaults &faults);

    const ParameterVariant &m_variant;
};

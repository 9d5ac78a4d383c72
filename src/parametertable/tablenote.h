#pragma once

#include "parameters/parametercsv.h"

#include <QWidget>

// The quiet line beside the buttons of a parameter table: what the last import, export or paste came to. Its
// tool tip tells the faults in the rows. It labels no input, so it is no QLabel.
class TableNote : public QWidget
{
    Q_OBJECT
public:
    TableNote(const ParameterVariant &variant, QWidget *parent);

    // That of the table, which has its buttons on the same page; null without.
    static TableNote *of(const QWidget *table);

    QString text() const { return accessibleName(); }
    void tellImport(const ParameterCsv::Import &import, const QString &path);
    void tellPaste(const ParameterCsv::Import &import);
    void tellExport(int rows, const QString &path, bool isWhole);
    void tellNothing();

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void tell(const QString &text, const RowFaults &faults);

    const ParameterVariant &m_variant;
};

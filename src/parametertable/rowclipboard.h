#pragma once

#include "parameters/parametervariant.h"
#include "parameters/rowimport.h"

#include <QObject>

class ParameterTable;
class QAction;
class QPoint;

// Copies and pastes whole rows of a parameter table, by keys while it has the focus and by its context menu.
// Pasted rows are checked like those of a file, and go below the last one.
class RowClipboard : public QObject
{
    Q_OBJECT
public:
    // The table owns it. Only a variant with CSV has checks for rows from outside, and so "Paste".
    RowClipboard(const ParameterVariant &variant, ParameterTable *table);

signals:
    void pasted(const RowImport &import);

private:
    QString copied() const;
    void paste();
    void showMenu(const QPoint &place);

    const ParameterVariant &m_variant;
    ParameterTable *m_table;
};

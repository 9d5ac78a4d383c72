#pragma once

#include "standards/standardtableform.h"

// The form of a Standard of protocol "DIDO": digital inputs and outputs of the Box itself, so that there is
// no connection to set.
class standardDIOEditDialog : public StandardTableForm
{
    Q_OBJECT
public:
    // Writes the period's default into an empty role.
    standardDIOEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);
};

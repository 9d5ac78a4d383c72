#include "standards/standarddioeditdialog.h"

#include "plc/parametervariant.h"

standardDIOEditDialog::standardDIOEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent)
    : StandardTableForm(
        {"DIDO", ParameterVariant::dido(),
         QT_TRANSLATE_NOOP("StandardTableForm", "The Standard DIDO '%1' is saved successfully."),
         "StandardFields"},
        {}, item, workspace, parent)
{
    begin();
}

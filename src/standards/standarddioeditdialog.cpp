#include "standards/standarddioeditdialog.h"

#include "definitions/protocols.h"
#include "parameters/parametervariant.h"

standardDIOEditDialog::standardDIOEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent)
    : StandardTableForm(
        {staticMetaObject.className(),
         QT_TRANSLATE_NOOP("standardDIOEditDialog", "The Standard DIDO '%1' is saved successfully."),
         // Compat: the protocol's name, unlike the other lines of this form.
         "standardDIDOEditDialog"},
        Protocols::dido, ParameterVariant::dido(), item, workspace, parent)
{
    addTable();
    setParts();
}

#pragma once

#include "parametertable/parameterform.h"

class QFormLayout;

// Base of the forms of Standards that have one table of rows instead of tabs: name and protocol, the fields
// of the connection, the trigger and the table. No tab opens such a form, so that it connects "Save" itself.
class StandardTableForm : public ParameterForm
{
    Q_OBJECT
public:
    QLineEdit *nameEdit() const { return m_name->edit(); }

protected:
    StandardTableForm(const Names &names, QLatin1String protocol, const ParameterVariant &rows,
                      QStandardItem *item, Workspace *workspace, QWidget *parent);

    // Name and protocol, and what a form's constructor adds for its connection.
    FieldGroup &fields() { return m_fields; }
    QFormLayout *fieldLayout() const { return m_fieldLayout; }
    // Puts trigger and table below the fields, which are complete by now.
    ParameterTable *addTable();
    // Shows the item; what a form has beyond fields and table is saved behind them.
    void setParts(const QVector<FormPart *> &further = {});
    ParameterTable *currentTable() const override { return m_table; }

private:
    FieldGroup m_fields;
    CustomPart m_stored; // the rows
    TextField *m_name = nullptr;
    QFormLayout *m_fieldLayout;
    ParameterTable *m_table = nullptr;
};

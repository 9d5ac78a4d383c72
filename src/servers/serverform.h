#pragma once

#include "forms/definitionform.h"

// Base of the forms of a Server: a page of plain fields, under which a form may put more, and "Save"
// connected.
class ServerForm : public DefinitionForm
{
    Q_OBJECT
protected:
    ServerForm(const Names &names, QStandardItem *item, Workspace *workspace);

    // The rows of the page; a form's constructor adds them.
    FieldGroup &fields() { return m_fields; }
    // Where a form adds what is below its fields.
    QVBoxLayout *page() const { return m_page; }
    // Shows the page, which is complete by now, in these parts.
    void setParts(const QVector<FormPart *> &parts);

private:
    FieldGroup m_fields;
    QVBoxLayout *m_page;
};

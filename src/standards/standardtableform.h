#pragma once

#include "forms/fieldtable.h"
#include "model/itemref.h"
#include "parametertable/parameterform.h"

class QFormLayout;
class QPushButton;
class QStandardItem;

// Base of the forms of Standards that have one table of rows instead of tabs: name and protocol, the fields
// of the connection, the trigger and the table, with "Save" and "Cancel" below. No tab opens such a form, so
// that it connects "Save" itself.
class StandardTableForm : public ParameterForm
{
    Q_OBJECT
public:
    ~StandardTableForm() override;

    // Shows another Standard of the same kind; what was typed and not saved is overwritten.
    void replaceItem(QStandardItem *item);

    QLineEdit *nameEdit() const;
    QPushButton *saveButton() const { return m_save; }

public slots:
    // Writes the fields and the rows into the item and tells the workspace.
    void saveChanges();
    virtual void clearData();

protected:
    struct Kind {
        const char *protocol;
        const ParameterVariant &rows;
        const char *savedMessage; // source text with the name for %1
        const char *savedLine;    // what the activity log gets for a save
    };

    // The workspace is not owned and may be null. The form's own constructor ends with begin().
    StandardTableForm(const Kind &kind, const QVector<Field> &connection, QStandardItem *item,
                      Workspace *workspace, QWidget *parent);
    void begin();

    // What a form has beyond its fields and rows; the item is never null.
    virtual void showItem(QStandardItem *item);
    // Returns false to give up: the form or the item is gone.
    virtual bool saveItem(QStandardItem *item);

    const FieldTable &connection() const { return m_connection; }
    // Where a form adds rows below its fields.
    QFormLayout *fieldLayout() const { return m_fieldLayout; }
    ParameterTable *currentTable() const override { return m_table; }
    // Null once its node has left the tree.
    QStandardItem *item() const { return m_item.item(); }

private:
    // A text in the context of the form's own class.
    QString translated(const char *source) const;
    QWidget *buildContent();

    Kind m_kind;
    ItemRef m_item;
    FieldTable m_identity;
    FieldTable m_connection;
    FieldTable m_trigger;
    QFormLayout *m_fieldLayout = nullptr;
    ParameterTable *m_table = nullptr;
    QPushButton *m_save = nullptr;
};

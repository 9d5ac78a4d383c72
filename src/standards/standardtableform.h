#pragma once

#include "forms/editform.h"
#include "forms/fieldtable.h"
#include "model/itemref.h"

#include <QVariantList>

class ParameterEditor;
class QFormLayout;
class QPushButton;
class QStandardItem;
class QTableWidget;
class Workspace;
struct ParameterVariant;

// Base of the forms of Standards that have one table of rows instead of tabs: name and protocol, the fields
// of the connection, the trigger and the table, with "Save" and "Cancel" below. No tab opens such a form, so
// that it connects "Save" itself.
class StandardTableForm : public EditForm
{
    Q_OBJECT
public:
    ~StandardTableForm() override;

    // Shows another Standard of the same kind; what was typed and not saved is overwritten.
    void replaceItem(QStandardItem *item);

    void addParameter();
    // Removes the current row, whichever row's button was pressed.
    void removeParameter();
    void removeAllParameters();
    // Replaces the rows; a reporting method or node type may be given in English or as it is shown.
    void loadParameters(const QList<QVariantList> &rows);

    QLineEdit *nameEdit() const;
    QPushButton *saveButton() const { return m_save; }

public slots:
    // Writes the fields and the rows into the item and tells the workspace.
    void saveChanges();
    virtual void clearData();
    // Clears a name that another row has, and says so: of an item, and of an editor at each end of editing.
    void validateName(int row, int column);
    void validateNameOnChange(int row, int column, QString newName);
    // The guard against the wheel, which may be called by name here.
    bool eventFilter(QObject *obj, QEvent *event) override;

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
    ParameterEditor *rows() const { return m_rows; }
    // Null once its node has left the tree.
    QStandardItem *item() const { return m_item.item(); }

private:
    // A text in the context of the form's own class.
    QString translated(const char *source) const;
    QWidget *buildContent();
    void log(const char *event) const;

    Kind m_kind;
    ItemRef m_item;
    Workspace *m_workspace; // Not owned; may be null.
    FieldTable m_identity;
    FieldTable m_connection;
    FieldTable m_trigger;
    ParameterEditor *m_rows;
    QFormLayout *m_fieldLayout = nullptr;
    QTableWidget *m_table = nullptr;
    QPushButton *m_save = nullptr;
};

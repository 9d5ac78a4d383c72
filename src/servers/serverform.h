#pragma once

#include "forms/editform.h"
#include "forms/fieldtable.h"
#include "model/itemref.h"

class QStandardItem;
class QVBoxLayout;
class Workspace;

// Base of the forms of a Server: a scrolling page of plain fields, under which a form may put more, with
// "Save" and "Cancel" below. Saving keeps the tab open and checks nothing.
class ServerForm : public EditForm
{
    Q_OBJECT
public:
    ~ServerForm() override;

    // Shows another item of the same kind; what was typed and not saved is overwritten.
    void replaceItem(QStandardItem *item);

public slots:
    // Writes the fields into the item's roles in the order of the table and tells the workspace.
    void saveChanges();
    // Empties the texts and selects first entries.
    virtual void clearData();

protected:
    struct Kind {
        const char *className;    // context of the texts, and what the activity log calls the form
        const char *title;        // source text of the window title
        const char *savedMessage; // source text with the item's name for %1
        // What becomes of a list whose stored text is not among its entries when the form, which is open
        // already, is pointed at another item.
        FieldTable::Unknown unknownOnReplace = FieldTable::Unknown::SelectFallback;
    };

    // The workspace is not owned and may be null. The form's own constructor ends with begin().
    ServerForm(const Kind &kind, const QVector<Field> &fields, QStandardItem *item, Workspace *workspace);
    void begin();

    // What a form does beyond its fields, before these are told or logged; the item is never null.
    virtual void showItem(QStandardItem *item);
    virtual void saveItem(QStandardItem *item);

    const FieldTable &fields() const { return m_fields; }
    // Where a form adds what stands below its fields.
    QVBoxLayout *page() const { return m_page; }
    // Null once its node has left the tree.
    QStandardItem *item() const { return m_item.item(); }
    Workspace *workspace() const { return m_workspace; }
    // A text in the context of the form's own class.
    QString translated(const char *source) const;
    void log(const QString &event) const;

private:
    Kind m_kind;
    ItemRef m_item;
    Workspace *m_workspace; // Not owned; may be null.
    FieldTable m_fields;
    QVBoxLayout *m_page;
    FieldTable::Unknown m_unknown = FieldTable::Unknown::SelectFallback;
};

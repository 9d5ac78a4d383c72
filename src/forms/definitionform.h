#pragma once

#include "forms/editform.h"
#include "forms/fieldgroup.h"
#include "model/itemref.h"

class QPushButton;
class QVBoxLayout;
class QuietLine;
class Workspace;

// Base of the forms that edit a definition of the tree: what a form is made of is in its list of parts,
// which show the item, write it and are cleared in this order. A line above them names the project and the
// folder that hold the item. "Save" and "Cancel" are below a page that scrolls. Saving checks nothing and
// leaves the form open.
class DefinitionForm : public EditForm
{
    Q_OBJECT
public:
    ~DefinitionForm() override;

    // Shows another item of the same kind; what was typed and not saved is overwritten. The line above it
    // shows for a moment that it is another one.
    virtual void replaceItem(QStandardItem *item);
    // Connected by the form, or by whoever opens it.
    QPushButton *saveButton() const { return m_save; }

public slots:
    // Writes what the parts show into the item and tells the workspace. Without effect once the item has left
    // its tree.
    virtual void saveChanges();
    virtual void clearData();

protected:
    struct Names {
        const char *className;           // context of the texts, and what the activity log calls the form
        const char *savedMessage;        // source text with the item's name for %1
        const char *savedAs = className; // what the activity log calls the form when it is saved
    };

    // The item is not owned, must not be null, and may be deleted before the form.
    // The workspace, not owned, may be null.
    DefinitionForm(const Names &names, QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);

    // Lays out the content with the buttons below it and shows the item in the parts, which belong to the
    // form or to its members. A form's constructor calls it once, when all that they show is made.
    void setContent(QWidget *content, const QVector<FormPart *> &parts);
    // What "Cancel" does: emits rejected().
    virtual void cancel();

    // The layout of the form, for what does not scroll.
    QVBoxLayout *column() const { return m_column; }
    // Null once its node has left the tree.
    QStandardItem *item() const { return m_item.item(); }
    Workspace *workspace() const { return m_workspace; }
    // Appends a line to the "Message" dock, if there is one.
    void appendMessage(const QString &line) const;
    // A text of the form's own class.
    QString translated(const char *source) const;
    void log(const char *event) const;

private:
    void followOwner();
    void showOwner();

    Names m_names;
    ItemRef m_item;
    Workspace *m_workspace;
    QVBoxLayout *m_column;
    QuietLine *m_owner;                // objectName "owner"
    QMetaObject::Connection m_renames; // of the project among them
    QPushButton *m_save = nullptr;
    QVector<FormPart *> m_parts;
};

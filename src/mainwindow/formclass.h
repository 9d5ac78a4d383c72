#pragma once

#include "mainwindow/editortabs.h"

#include <QDialog>
#include <QString>

class QStandardItem;
class Workspace;

// A form class with which definitions of a kind are edited.
class FormClass
{
public:
    // The sub-kind is the value of the kind's role; empty for a kind with one form.
    explicit FormClass(const QString &subKind)
        : m_subKind(subKind)
    {
    }
    virtual ~FormClass() = default;
    Q_DISABLE_COPY(FormClass)

    const QString &subKind() const { return m_subKind; }

    // A new form that shows the item; no parent yet.
    virtual QDialog *make(QStandardItem *item, Workspace *workspace) const = 0;
    // Whether the widget of a tab is of exactly this class.
    virtual bool isOpen(const QWidget *open) const = 0;
    // Points the open form, which is of this class, at another item.
    virtual void rebind(QWidget *open, QStandardItem *item) const = 0;
    // Connections of a new form for the item beyond those that close its tab; its warnings are shown over the
    // window.
    virtual void connectTab(QDialog *, QStandardItem *, ads::CDockWidget *, QWidget *) const {}

private:
    QString m_subKind;
};

// The FormClass of a class with a constructor (QStandardItem *, Workspace *) and replaceItem().
template <typename Form> class FormOf : public FormClass
{
public:
    using FormClass::FormClass;

    QDialog *make(QStandardItem *item, Workspace *workspace) const override
    {
        return new Form(item, workspace);
    }
    bool isOpen(const QWidget *open) const override
    {
        return open && open->metaObject() == &Form::staticMetaObject;
    }
    void rebind(QWidget *open, QStandardItem *item) const override
    {
        static_cast<Form *>(open)->replaceItem(item);
    }
};

// The FormClass of a class that has, in addition, nameEdit(), saveButton() and saveChanges(): its name field
// renames the item.
template <typename Form> class RenamingFormOf : public FormOf<Form>
{
public:
    using FormOf<Form>::FormOf;

    void connectTab(QDialog *form, QStandardItem *item, ads::CDockWidget *tab, QWidget *window) const override
    {
        auto *typed = static_cast<Form *>(form);
        EditorTabs::renameOnSave(
            {typed, typed->nameEdit(), typed->saveButton(), [typed] { typed->saveChanges(); }}, item, tab,
            window);
    }
};

#pragma once

#include "mainwindow/formclass.h"
#include "model/projecttree.h"

#include <QString>
#include <QVector>

#include <functional>

class QStandardItem;
class QWidget;

// A kind of what can lie in a project's folders: how it is added and with which forms it is edited. The flows
// are in ResourceActions.
class ResourceKind
{
public:
    static constexpr int noSubKind = -1;

    // What an input dialog gave for a new definition.
    struct New {
        QString name;
        QString icon; // resource; empty for none
        ProjectTree::Roles roles;
    };
    using Take = std::function<void(const New &)>;

    struct Description {
        EditorTab tab;
        int subKindRole;                  // chooses the form, or noSubKind
        QVector<const FormClass *> forms; // not owned; a sub-kind that is not here opens an empty tab
        const char *emptyName = nullptr;  // warnings, source texts; a kind that is never added has none
        const char *duplicateName = nullptr;
        QVector<ProjectTree::FolderRow> comparedFolders = {}; // none: names are compared in the target folder
    };

    virtual ~ResourceKind();
    Q_DISABLE_COPY(ResourceKind)

    static const ResourceKind &box();
    static const ResourceKind &plc();
    static const ResourceKind &standard();
    static const ResourceKind &service();
    static const ResourceKind &server();

    // Runs the input dialog over the window and, if it was accepted, hands on what it gave.
    // Compat: the dialog lives until that has returned, so its end is logged after the form's beginning.
    virtual void ask(QWidget *window, const QStandardItem *folder, const Take &take) const;

    const Description &description() const { return m_description; }
    // The form of the item's sub-kind, or null.
    const FormClass *formFor(const QStandardItem *item) const;
    // Whether a new definition in the folder may not have this name.
    bool isNameTaken(QStandardItem *folder, const QString &name) const;

protected:
    explicit ResourceKind(const Description &description);

private:
    Description m_description;
};

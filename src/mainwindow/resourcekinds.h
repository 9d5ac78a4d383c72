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
struct ResourceKind {
    static constexpr int noSubKind = -1;

    // What an input dialog gave for a new definition.
    struct New {
        QString name;
        QString icon; // resource; empty for none
        ProjectTree::Roles roles;
    };
    using Take = std::function<void(const New &)>;
    // Runs the input dialog over the window and, if it was accepted, hands on what it gave.
    // Compat: the dialog lives until that has returned, so its end is logged after the form's beginning.
    using Ask = void (*)(QWidget *window, const QStandardItem *folder, const Take &take);

    EditorTab tab;
    int subKindRole;                  // chooses the form, or noSubKind
    QVector<const FormClass *> forms; // not owned; a sub-kind that is not here opens an empty tab
    // A kind that is never added has none of these.
    Ask ask = nullptr;
    const char *emptyName = nullptr; // warnings, source texts
    const char *duplicateName = nullptr;
    QVector<ProjectTree::FolderRow> comparedFolders = {}; // none: names are compared in the target folder

    static const ResourceKind &box();
    static const ResourceKind &plc();
    static const ResourceKind &standard();
    static const ResourceKind &service();
    static const ResourceKind &server();

    // The form of the item's sub-kind, or null.
    const FormClass *formFor(const QStandardItem *item) const;
    // Whether a new definition in the folder may not have this name.
    bool isNameTaken(QStandardItem *folder, const QString &name) const;
};

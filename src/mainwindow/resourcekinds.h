#pragma once

#include "model/projecttree.h"

#include <QString>
#include <QVector>

#include <functional>

class CMainWindow;
class QDialog;
class QStandardItem;
class QWidget;
class Workspace;

namespace ads {
class CDockWidget;
}

// The tables of what can lie in a project's folders: how each kind is added and with which forms it is
// edited. A new kind or form is a row here; the flows are in ResourceActions.
namespace ResourceKinds {

// One form class of a kind.
struct FormClass {
    QString subKind; // value of the kind's sub-kind role; empty for a kind with one form
    // A new form that shows the item; no parent yet.
    QDialog *(*make)(QStandardItem *item, Workspace *workspace);
    // Whether the open tab's widget is of exactly this class.
    bool (*isOpen)(const QWidget *open);
    // Points the open form, which is of this class, at another item.
    void (*rebind)(QWidget *open, QStandardItem *item);
    // Connections beyond closing the tab; null if there are none.
    void (*connectTab)(QDialog *form, QStandardItem *item, ads::CDockWidget *tab, CMainWindow *window);
};

struct EditKind {
    static constexpr int noSubKind = -1;

    const char *title;                // of the tab, a source text
    int subKindRole;                  // role that chooses the form, or noSubKind
    QVector<FormClass> forms;         // a sub-kind that is not here opens an empty tab
    QVector<const char *> neighbours; // titles beside which the tab goes, source texts

    // The form of the item's sub-kind, or null.
    const FormClass *formFor(const QStandardItem *item) const;
};

// What an input dialog gave for a new definition.
struct NewResource {
    QString name;
    QString icon; // resource; empty for none
    ProjectTree::Roles roles;
};

struct AddKind {
    using Take = std::function<void(const NewResource &)>;

    // Runs the input dialog over the window and, if it was accepted, hands on what it gave.
    // Compat: the dialog lives until that has returned, so its end is logged after the form's beginning.
    void (*ask)(QWidget *window, const QStandardItem *folder, const Take &take);
    const char *emptyName; // warnings, source texts
    const char *duplicateName;
    QVector<int> comparedRows; // folders of the project whose names are taken; none: the target folder's are
    const EditKind &(*editKind)();
};

const EditKind &editBox();
const EditKind &editPlc();
const EditKind &editStandard();
const EditKind &editService();
const EditKind &editServer();

const AddKind &addBox();
const AddKind &addPlc();
const AddKind &addStandard();
const AddKind &addServer();

} // namespace ResourceKinds

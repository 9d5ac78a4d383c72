#pragma once

#include <QJsonObject>
#include <QString>

class QItemSelectionModel;
class QStandardItem;

// What a form needs of the main window, so that no form knows the main window itself. A form takes a
// Workspace pointer that may be null, meaning that there is no main window; it is not owned.
class Workspace
{
public:
    virtual ~Workspace();

    // Appends a line to the "Message" dock.
    virtual void appendMessage(const QString &text) = 0;
    // The project tree's current item, or null.
    virtual QStandardItem *currentItem() const = 0;
    // The selection of the project tree, which tells when another item becomes the current one and makes one
    // current; null without a tree. Its model tells of changes in the tree.
    virtual QItemSelectionModel *selection() const = 0;
    // The document of a project, given its top-level item: what is saved and what is pushed to a Box.
    virtual QJsonObject buildProjectJson(QStandardItem *project) const = 0;
    // Opens the window in which points of the current project are picked for the current server form.
    virtual void openImportDataDialog() = 0;

protected:
    Workspace() = default;
    Workspace(const Workspace &) = default;
    Workspace &operator=(const Workspace &) = default;
};

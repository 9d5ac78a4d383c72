#pragma once

#include <QObject>
#include <QPointer>

class QStandardItem;
class QStandardItemModel;
class QTreeView;
class QWidget;

// Saving and loading of projects as the user meets it: the file dialog, the messages and the tree view around
// the project document. Success is told, failure is a line of the debug log alone.
class ProjectFiles : public QObject
{
    Q_OBJECT
public:
    // Messages and dialogs open over dialogParent, which owns this object too if it is not null. The view may
    // die first.
    ProjectFiles(QWidget *dialogParent, QStandardItemModel *model, QTreeView *view);

    // Saves the document of this item, taken for a project whatever its level. Null is a log line.
    void saveProject(QStandardItem *project);
    // Saves every project of the model in row order, each with its own message; a failure stops none of the
    // rest.
    void saveAll();

    // Asks for a file and loads it.
    void load();
    // Loads a file into the model: into the open project of the same name, or as a new one.
    void loadFile(const QString &path);

private:
    void inform(const QString &title, const QString &text);

    QWidget *m_dialogParent;
    QStandardItemModel *m_model;
    QPointer<QTreeView> m_view;
};

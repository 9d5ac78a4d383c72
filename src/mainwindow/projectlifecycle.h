#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>

class EditProjectDialog;
class EditorTabs;
class ProjectFiles;
class QStandardItem;
class QStandardItemModel;
class QTreeView;

// Brings projects into the tree, edits and closes them. There is no modified flag: each question whether to
// save is asked regardless.
class ProjectLifecycle : public QObject
{
    Q_OBJECT
public:
    enum class Exit {
        Stay,         // the user cancelled
        Leave,        // asked, and saved where wanted
        LeaveUnasked, // there was no project to ask about
    };

    // Questions are shown over the window, which owns this. The tree may die first.
    ProjectLifecycle(QStandardItemModel *model, QTreeView *tree, EditorTabs *tabs, ProjectFiles *files,
                     QWidget *window);

    // Appends a project with its folders and its one service. Warns, and leaves no trace, if its file is on
    // the disk or a project of the name is open. Writes no file.
    void create(const QString &name, const QString &path, const QString &description);
    // Opens the "Edit Project" tab for the current item; one that is open is replaced, unsaved input
    // included.
    void edit();
    // Asks, saves if wanted and removes the current project; closes all edit tabs of all projects.
    void close();
    // Asks and saves all projects if wanted. Removes none.
    void saveAllIfWanted();
    // Asks before the program ends and saves all projects if wanted.
    Exit confirmExit() const;

signals:
    // A line for the "Message" dock.
    void message(const QString &text);

private:
    QStandardItem *currentItem() const;
    void connectForm(EditProjectDialog *form, QStandardItem *project);
    void modify(QStandardItem *project, const QString &name, const QString &path, const QString &description);
    void warn(const QString &text);
    QMessageBox::StandardButton offerToSaveAll(QMessageBox::StandardButtons answers) const;

    QStandardItemModel *m_model;
    QPointer<QTreeView> m_tree;
    EditorTabs *m_tabs;
    ProjectFiles *m_files;
    QWidget *m_window;
};

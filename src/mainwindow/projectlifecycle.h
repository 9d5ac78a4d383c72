#pragma once

class CMainWindow;
class EditProjectDialog;
class EditorTabs;
class QStandardItem;
class QString;

// Brings projects into the tree, edits and closes them. There is no modified flag: each question whether to
// save is asked regardless.
class ProjectLifecycle
{
public:
    enum class Exit {
        Stay,         // the user cancelled
        Leave,        // asked, and saved where wanted
        LeaveUnasked, // there was no project to ask about
    };

    // Neither is owned; both must outlive this.
    ProjectLifecycle(CMainWindow *window, EditorTabs *tabs);

    // Appends a project with its folders and its one service. Warns, and leaves no trace, if its file is on
    // the disk or a project of the name is open. Writes no file.
    void create(const QString &name, const QString &path, const QString &description) const;
    // Opens the "Edit Project" tab for the current item; one that is open is replaced, unsaved input
    // included.
    void edit() const;
    // Asks, saves if wanted and removes the current project; closes all edit tabs of all projects.
    void close() const;
    // Asks and saves all projects if wanted. Removes none.
    void saveAllIfWanted() const;
    // Asks before the program ends and saves all projects if wanted.
    Exit confirmExit() const;

private:
    void connectForm(EditProjectDialog *form, QStandardItem *project) const;
    void modify(QStandardItem *project, const QString &name, const QString &path,
                const QString &description) const;
    void warn(const QString &text) const;

    CMainWindow *m_window;
    EditorTabs *m_tabs;
};

#include "mainwindow/projecttreemenu.h"

#include "mainwindow/cmainwindow.h"
#include "model/projecttree.h"
#include "monitoring/monitoringview.h"

#include <QMenu>
#include <QStandardItemModel>
#include <QTreeView>

namespace {

using ProjectTree::Level;
using Slot = void (CMainWindow::*)();

// A kind of node; the folder is empty for a project.
struct Node {
    Level level;
    QString folder;

    bool operator==(const Node &other) const { return level == other.level && folder == other.folder; }
};

Node nodeOf(const QStandardItem *item)
{
    switch (ProjectTree::levelOf(item)) {
    case Level::Project:
        return {Level::Project, QString()};
    case Level::Folder:
        return {Level::Folder, item->text()};
    case Level::Definition:
        break;
    }
    return {Level::Definition, item->parent()->text()};
}

struct MenuEntry {
    Node node;
    const char *text;
    Slot slot;
};

const QVector<MenuEntry> &menuEntries()
{
    using namespace ProjectTree;
    static const QVector<MenuEntry> entries = {
        {{Level::Project, {}},
         QT_TRANSLATE_NOOP("CMainWindow", "Edit Project"),
         &CMainWindow::slotEditProject},
        {{Level::Project, {}},
         QT_TRANSLATE_NOOP("CMainWindow", "Close Project"),
         &CMainWindow::slotDeleteProject},
        {{Level::Project, {}},
         QT_TRANSLATE_NOOP("CMainWindow", "Save Project"),
         &CMainWindow::saveProjectFile},
        {{Level::Folder, standardFolder},
         QT_TRANSLATE_NOOP("CMainWindow", "Add Standard"),
         &CMainWindow::standardAddFile},
        {{Level::Folder, boxFolder}, QT_TRANSLATE_NOOP("CMainWindow", "Add Box"), &CMainWindow::boxAddFile},
        {{Level::Folder, boxFolder},
         QT_TRANSLATE_NOOP("CMainWindow", "Search Box"),
         &CMainWindow::boxSearchFile},
        {{Level::Folder, dataFolder},
         QT_TRANSLATE_NOOP("CMainWindow", "Delete All"),
         &CMainWindow::slotDeleteAllFile},
        {{Level::Definition, standardFolder},
         QT_TRANSLATE_NOOP("CMainWindow", "Editing Standard"),
         &CMainWindow::slotstandardEditFile},
        {{Level::Definition, standardFolder},
         QT_TRANSLATE_NOOP("CMainWindow", "Delete"),
         &CMainWindow::slotDeleteFile},
        {{Level::Definition, serviceFolder},
         QT_TRANSLATE_NOOP("CMainWindow", "Editing Service"),
         &CMainWindow::slotServiceEditFile},
        {{Level::Definition, boxFolder},
         QT_TRANSLATE_NOOP("CMainWindow", "Editing Box"),
         &CMainWindow::slotBoxEditFile},
        {{Level::Definition, boxFolder},
         QT_TRANSLATE_NOOP("CMainWindow", "Delete"),
         &CMainWindow::slotDeleteFile},
        {{Level::Definition, dataFolder},
         QT_TRANSLATE_NOOP("CMainWindow", "Delete"),
         &CMainWindow::slotDeleteFile},
    };
    return entries;
}

struct ClickAction {
    Node node;
    Slot slot;
};

const QVector<ClickAction> &clickActions()
{
    using namespace ProjectTree;
    static const QVector<ClickAction> actions = {
        {{Level::Project, {}}, &CMainWindow::slotEditProject},
        {{Level::Definition, standardFolder}, &CMainWindow::slotstandardEditFile},
        {{Level::Definition, serviceFolder}, &CMainWindow::slotServiceEditFile},
        {{Level::Definition, boxFolder}, &CMainWindow::slotBoxEditFile},
    };
    return actions;
}

} // namespace

ProjectTreeMenu::ProjectTreeMenu(CMainWindow *window, MonitoringView *monitoring)
    : m_window(window)
    , m_monitoring(monitoring)
{
}

void ProjectTreeMenu::popUp(const QPoint &position)
{
    // On purpose: every second request is swallowed, wherever it was made.
    if (m_skipNext) {
        m_skipNext = false;
        return;
    }
    const QTreeView *tree = m_window->projectTree();
    const QStandardItem *item =
        tree ? m_window->projectModel()->itemFromIndex(tree->indexAt(position)) : nullptr;
    if (!item) {
        return;
    }
    QMenu menu;
    const Node node = nodeOf(item);
    for (const MenuEntry &entry : menuEntries()) {
        if (entry.node == node) {
            QObject::connect(menu.addAction(CMainWindow::tr(entry.text)), &QAction::triggered, m_window,
                             entry.slot);
        }
    }
    m_skipNext = true;
    menu.exec(QCursor::pos());
}

void ProjectTreeMenu::click(const QModelIndex &index) const
{
    const QStandardItem *item = m_window->projectModel()->itemFromIndex(index);
    if (!item) {
        return;
    }
    const Node node = nodeOf(item);
    if (node == Node{Level::Definition, ProjectTree::dataFolder}) {
        m_monitoring->showTab(item->text());
        return;
    }
    for (const ClickAction &action : clickActions()) {
        if (action.node == node) {
            (m_window->*action.slot)();
            return;
        }
    }
}

#include "mainwindow/projecttreemenu.h"

#include "mainwindow/windowtext.h"
#include "model/projecttree.h"

#include <QApplication>
#include <QMenu>
#include <QStandardItem>
#include <QTreeView>

namespace {

using ProjectTree::Level;
using Menu = ProjectTreeMenu;
using Command = void (Menu::*)();

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

struct Entry {
    Node node;
    const char *text; // source text
    Command command;
    bool isClick = false; // whether a click on the node does the same
};

const QVector<Entry> &entries()
{
    using namespace ProjectTree;
    static const Node project{Level::Project, {}};
    static const Node standard{Level::Definition, standardFolder};
    static const Node service{Level::Definition, serviceFolder};
    static const Node box{Level::Definition, boxFolder};
    static const Node data{Level::Definition, dataFolder};
    static const QVector<Entry> rows = {
        {project, QT_TRANSLATE_NOOP("CMainWindow", "Edit Project"), &Menu::editProject, true},
        {project, QT_TRANSLATE_NOOP("CMainWindow", "Close Project"), &Menu::closeProject},
        {project, QT_TRANSLATE_NOOP("CMainWindow", "Save Project"), &Menu::saveProject},
        {{Level::Folder, standardFolder},
         QT_TRANSLATE_NOOP("CMainWindow", "Add Standard"),
         &Menu::addStandard},
        {{Level::Folder, boxFolder}, QT_TRANSLATE_NOOP("CMainWindow", "Add Box"), &Menu::addBox},
        {{Level::Folder, boxFolder}, QT_TRANSLATE_NOOP("CMainWindow", "Search Box"), &Menu::searchBoxes},
        {{Level::Folder, dataFolder}, QT_TRANSLATE_NOOP("CMainWindow", "Delete All"), &Menu::deleteAll},
        {standard, QT_TRANSLATE_NOOP("CMainWindow", "Editing Standard"), &Menu::editStandard, true},
        {standard, QT_TRANSLATE_NOOP("CMainWindow", "Delete"), &Menu::deleteDefinition},
        {service, QT_TRANSLATE_NOOP("CMainWindow", "Editing Service"), &Menu::editService, true},
        {box, QT_TRANSLATE_NOOP("CMainWindow", "Editing Box"), &Menu::editBox, true},
        {box, QT_TRANSLATE_NOOP("CMainWindow", "Delete"), &Menu::deleteDefinition},
        {data, QT_TRANSLATE_NOOP("CMainWindow", "Delete"), &Menu::deleteDefinition},
    };
    return rows;
}

} // namespace

ProjectTreeMenu::ProjectTreeMenu(QTreeView *tree, QObject *parent)
    : QObject(parent)
    , m_tree(tree)
{
}

void ProjectTreeMenu::popUp(const QPoint &position)
{
    // Compat: every second request is swallowed, wherever it was made.
    if (m_skipNext) {
        m_skipNext = false;
        return;
    }
    const QStandardItem *item = m_tree ? ProjectTree::itemAt(m_tree->indexAt(position)) : nullptr;
    if (!item) {
        return;
    }
    QMenu menu;
    const Node node = nodeOf(item);
    for (const Entry &entry : entries()) {
        if (entry.node == node) {
            connect(menu.addAction(WindowText::tr(entry.text)), &QAction::triggered, this, entry.command);
        }
    }
    m_skipNext = true;
    menu.exec(QCursor::pos());
}

void ProjectTreeMenu::click(const QModelIndex &index)
{
    const QStandardItem *item = ProjectTree::itemAt(index);
    if (!item) {
        return;
    }
    const Node node = nodeOf(item);
    if (node == Node{Level::Definition, ProjectTree::dataFolder}) {
        emit showData(item->text());
    } else {
        openForm(index);
    }
}

void ProjectTreeMenu::openForm(const QModelIndex &index)
{
    const QStandardItem *item = ProjectTree::itemAt(index);
    if (!item) {
        return;
    }
    const bool hadFocus = m_tree && m_tree->hasFocus();
    const Node node = nodeOf(item);
    for (const Entry &entry : entries()) {
        if (entry.isClick && entry.node == node) {
            emit(this->*entry.command)();
            break;
        }
    }
    // A new area for the form moves the tree, which then has lost the focus to nothing.
    if (hadFocus && m_tree && !QApplication::focusWidget()) {
        m_tree->setFocus();
    }
}

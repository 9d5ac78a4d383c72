#pragma once

#include "dockareas.h"
#include "mainwindow/docklayout.h"
#include "model/projecttree.h"
#include "modelwatch.h"

#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTreeView>
#include <QtTest>

// What the collaborators of the program's main window work on, in a shown window that is not the program's.
class DocksUnderTest : public QMainWindow
{
    // No Q_OBJECT: it adds no signals.
public:
    DocksUnderTest()
        : m_layout(new DockLayout(this))
    {
        watchModel(&m_model);
        m_layout->createDocks(&m_model, &m_viewMenu);
        m_layout->setFirstGeometry();
        show();
    }
    ~DocksUnderTest() override { delete m_layout->manager(); } // as long as the model is there

    DockLayout *layout() const { return m_layout; }
    ads::CDockManager *dockManager() const { return m_layout->manager(); }
    QTreeView *projectTree() const { return m_layout->projectTree(); }
    QTabWidget *monitoringTabs() const { return m_layout->monitoringTabs(); }
    QStandardItemModel *projectModel() { return &m_model; }
    QMenu *viewMenu() { return &m_viewMenu; }

    // A new project with its folders.
    QStandardItem *addProject(const QString &name)
    {
        QStandardItem *project = ProjectTree::makeProject(name, "/nowhere", QString());
        ProjectTree::appendMissingFolders(project);
        m_model.appendRow(project);
        return project;
    }
    static QStandardItem *addBox(const QStandardItem *project, const QString &name)
    {
        return ProjectTree::appendDefinition(ProjectTree::childNamed(project, ProjectTree::boxFolder), name,
                                             QString());
    }
    void select(const QStandardItem *item) { projectTree()->setCurrentIndex(item->index()); }

    QList<QStringList> areas() const { return DockAreas::titles(dockManager()); }
    int countOf(const QString &title) const { return DockAreas::countOf(dockManager(), title); }

private:
    QStandardItemModel m_model;
    QMenu m_viewMenu;
    DockLayout *m_layout;
};

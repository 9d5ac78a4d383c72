#pragma once

#include "dockareas.h"
#include "mainwindow/cmainwindow.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "modelwatch.h"
#include "run.h"

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTextEdit>
#include <QTreeView>
#include <QtTest>

// The shown main window with English texts, and the ways in which a user reaches things in it.
class WindowUnderTest : public CMainWindow
{
    // No Q_OBJECT: its class and translations are those of the main window.
public:
    WindowUnderTest()
    {
        watchModel(projectModel());
        CESwitching();
        show();
    }

    // A new project below the path, by default one that is not there.
    QStandardItem *addProject(const QString &name, const QString &path = "/nowhere")
    {
        handleProjectCreated(name, path, "about " + name);
        return projectModel()->item(projectModel()->rowCount() - 1);
    }
    static QStandardItem *folder(const QStandardItem *project, const QString &text)
    {
        return ProjectTree::childNamed(project, text);
    }
    static QStandardItem *addBox(const QStandardItem *project, const QString &name, const QString &ip)
    {
        QStandardItem *box =
            ProjectTree::appendDefinition(folder(project, ProjectTree::boxFolder), name, QString());
        box->setData(ip, boxIpRole);
        return box;
    }
    static QStandardItem *addStandard(const QStandardItem *project, const QString &name,
                                      const QString &protocol)
    {
        QStandardItem *standard =
            ProjectTree::appendDefinition(folder(project, ProjectTree::standardFolder), name, QString());
        standard->setData(protocol, standardProtocolRole);
        return standard;
    }

    void select(const QStandardItem *item) { projectTree()->setCurrentIndex(item->index()); }
    void click(const QStandardItem *item)
    {
        QTest::mouseClick(projectTree()->viewport(), Qt::LeftButton, Qt::NoModifier, centreOf(item));
    }
    QPoint centreOf(const QStandardItem *item)
    {
        projectTree()->expandAll();
        projectTree()->scrollTo(item->index());
        return projectTree()->visualRect(item->index()).center();
    }

    // The open tabs of the title by the "View" menu.
    QList<ads::CDockWidget *> tabs(const QString &title) const
    {
        QList<ads::CDockWidget *> found;
        for (const QAction *action : viewMenu()->actions()) {
            if (action->text() == title) {
                found.append(qobject_cast<ads::CDockWidget *>(action->parent()));
            }
        }
        return found;
    }
    ads::CDockWidget *tab(const QString &title) const { return tabs(title).value(0); }
    // The form in the tab of the title, or null.
    QDialog *form(const QString &title) const
    {
        return tab(title) ? qobject_cast<QDialog *>(tab(title)->widget()) : nullptr;
    }
    QList<QStringList> areas() const { return DockAreas::titles(dockManager()); }
    int countOf(const QString &title) const { return DockAreas::countOf(dockManager(), title); }
    QStringList messages() const
    {
        return messageEditor()->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    // So many empty tabs of the title stand in areas, and none that has a form.
    void compareEmptyTabs(const QString &title, int count) const
    {
        QCOMPARE(countOf(title), count);
        QCOMPARE(tabs(title).size(), 0);
        const QList<ads::CDockWidget *> docks = dockManager()->findChildren<ads::CDockWidget *>();
        for (const ads::CDockWidget *dock : docks) {
            if (dock->windowTitle() == title) {
                QVERIFY(!dock->widget());
                QVERIFY(dock->icon().isNull());
                QVERIFY(!dock->features().testFlag(ads::CDockWidget::DockWidgetDeleteOnClose));
            }
        }
    }

    static void settle() { DockAreas::settle(); }

    template <typename Widget> static Widget *input(const QWidget *form, const char *name)
    {
        return form->findChild<Widget *>(QLatin1String(name));
    }
    static void press(const QWidget *form, const char *button) { input<QPushButton>(form, button)->click(); }
};

#include "mainwindow/resourceactions.h"

#include "mainwindow/cmainwindow.h"
#include "mainwindow/docking.h"
#include "mainwindow/editortabs.h"
#include "model/projecttree.h"
#include "monitoring/monitoringview.h"
#include "widgets/tell.h"

#include <QDialog>
#include <QStandardItemModel>
#include <QTreeView>

#include <algorithm>

ResourceActions::ResourceActions(CMainWindow *window, EditorTabs *tabs, MonitoringView *monitoring)
    : m_window(window)
    , m_tabs(tabs)
    , m_monitoring(monitoring)
{
}

void ResourceActions::add(const ResourceKinds::AddKind &kind)
{
    if (QStandardItem *folder = m_window->currentItem()) {
        kind.ask(m_window, folder, [this, &kind, folder](const ResourceKinds::NewResource &resource) {
            append(kind, folder, resource);
        });
    }
}

void ResourceActions::append(const ResourceKinds::AddKind &kind, QStandardItem *folder,
                             const ResourceKinds::NewResource &resource)
{
    const bool isNamed = !resource.name.isEmpty();
    if (!isNamed || isNameTaken(kind, folder, resource.name)) {
        Tell::warning(m_window, CMainWindow::tr("Warning"),
                      CMainWindow::tr(isNamed ? kind.duplicateName : kind.emptyName));
        return;
    }
    const QStandardItem *item =
        ProjectTree::appendDefinition(folder, resource.name, resource.icon, resource.roles);
    m_window->projectTree()->setCurrentIndex(item->index());
    edit(kind.editKind());
}

bool ResourceActions::isNameTaken(const ResourceKinds::AddKind &kind, QStandardItem *folder,
                                  const QString &name) const
{
    if (kind.comparedRows.isEmpty()) {
        return ProjectTree::childNamed(folder, name);
    }
    const QStandardItem *project = ProjectTree::projectOf(folder);
    return std::any_of(kind.comparedRows.begin(), kind.comparedRows.end(),
                       [&](int row) { return ProjectTree::childNamed(project->child(row), name); });
}

void ResourceActions::edit(const ResourceKinds::EditKind &kind)
{
    QStandardItem *item = m_window->currentItem();
    if (!item) {
        return;
    }
    const ResourceKinds::FormClass *form = kind.formFor(item);
    if (ads::CDockWidget *tab = m_tabs->find(EditorTabs::titleOf(kind.title))) {
        if (form && form->isOpen(tab->widget())) {
            form->rebind(tab->widget(), item);
            m_tabs->show(tab, EditorTabs::titlesOf(kind.neighbours));
            return;
        }
        if (kind.subKindRole == ResourceKinds::EditKind::noSubKind) {
            return; // a tab of this title with something else in it is left alone
        }
        tab->closeDockWidget();
    }
    open(kind, form, item);
}

void ResourceActions::open(const ResourceKinds::EditKind &kind, const ResourceKinds::FormClass *form,
                           QStandardItem *item)
{
    const QString title = EditorTabs::titleOf(kind.title);
    ads::CDockWidget *tab = nullptr;
    if (form) {
        QDialog *dialog = form->make(item, m_window);
        tab = m_tabs->make(title, dialog);
        QObject::connect(dialog, &QDialog::accepted, tab, [tab] { tab->closeDockWidget(); });
        QObject::connect(dialog, &QDialog::rejected, tab, [tab] { tab->closeDockWidget(); });
        if (form->connectTab) {
            form->connectTab(dialog, item, tab, m_window);
        }
    } else {
        // Not registered, so that each further opening of such an item adds one more empty tab. On purpose:
        // there is nothing in it that could be pointed at another item.
        tab = m_tabs->makeEmpty(title);
    }
    m_tabs->place(tab, EditorTabs::titlesOf(kind.neighbours));
}

void ResourceActions::remove() const
{
    const QStandardItem *item = m_window->currentItem();
    if (!item || ProjectTree::levelOf(item) != ProjectTree::Level::Definition) {
        return;
    }
    const struct {
        QString folder;
        const char *title;
    } editTabs[] = {
        {ProjectTree::serviceFolder, EditorTabs::serviceTitle},
        {ProjectTree::boxFolder, EditorTabs::boxTitle},
        {ProjectTree::standardFolder, EditorTabs::standardTitle},
    };
    const QString name = item->text();
    const QString folder = item->parent()->text();
    item->parent()->removeRow(item->row());
    m_monitoring->closeTab(name);
    for (const auto &editTab : editTabs) {
        if (folder == editTab.folder) {
            m_tabs->closeFirst(EditorTabs::titleOf(editTab.title));
        }
    }
}

void ResourceActions::removeAll() const
{
    QStandardItem *item = m_window->currentItem();
    if (!item) {
        return;
    }
    if (item->rowCount() > 0) {
        for (int row = 0; row < item->rowCount(); ++row) {
            if (const QStandardItem *child = item->child(row)) {
                m_monitoring->closeTab(child->text());
            }
        }
        item->removeRows(0, item->rowCount());
    } else if (ProjectTree::levelOf(item) == ProjectTree::Level::Definition) {
        const QString name = item->text();
        item->parent()->removeRow(item->row());
        m_monitoring->closeTab(name);
    }
}

#include "mainwindow/resourceactions.h"

#include "mainwindow/docking.h"
#include "mainwindow/windowtext.h"
#include "widgets/tell.h"

#include <QDialog>
#include <QPushButton>
#include <QStandardItem>
#include <QTreeView>

ResourceActions::ResourceActions(QTreeView *tree, EditorTabs *tabs, Workspace *workspace, QWidget *window)
    : QObject(window)
    , m_tree(tree)
    , m_tabs(tabs)
    , m_workspace(workspace)
    , m_window(window)
{
}

QStandardItem *ResourceActions::currentItem() const
{
    return m_tree ? ProjectTree::itemAt(m_tree->currentIndex()) : nullptr;
}

void ResourceActions::add(const ResourceKind &kind)
{
    if (QStandardItem *folder = currentItem()) {
        kind.ask(m_window, folder, [this, &kind, folder](const ResourceKind::New &resource) {
            append(kind, folder, resource);
        });
    }
}

void ResourceActions::append(const ResourceKind &kind, QStandardItem *folder,
                             const ResourceKind::New &resource)
{
    const bool isNamed = !resource.name.isEmpty();
    if (!isNamed || kind.isNameTaken(folder, resource.name)) {
        Tell::warning(m_window, WindowText::tr("Warning"),
                      WindowText::tr(isNamed ? kind.duplicateName : kind.emptyName));
        return;
    }
    const QStandardItem *item =
        ProjectTree::appendDefinition(folder, resource.name, resource.icon, resource.roles);
    m_tree->setCurrentIndex(item->index());
    edit(kind);
}

void ResourceActions::edit(const ResourceKind &kind)
{
    QStandardItem *item = currentItem();
    if (!item) {
        return;
    }
    const FormClass *form = kind.formFor(item);
    if (ads::CDockWidget *tab = m_tabs->find(kind.tab)) {
        if (form && form->isOpen(tab->widget())) {
            remember(kind.tab, item);
            form->rebind(tab->widget(), item);
            m_tabs->show(tab, kind.tab);
            return;
        }
        if (kind.subKindRole == ResourceKind::noSubKind) {
            return; // a tab of this title with something else in it is left alone
        }
        tab->closeDockWidget();
    }
    open(kind, form, item);
}

void ResourceActions::open(const ResourceKind &kind, const FormClass *form, QStandardItem *item)
{
    ads::CDockWidget *tab = nullptr;
    if (form) {
        QDialog *dialog = form->make(item, m_workspace);
        emit formMade(dialog);
        tab = m_tabs->make(kind.tab, dialog);
        connect(dialog, &QDialog::accepted, tab, [tab] { tab->closeDockWidget(); });
        connect(dialog, &QDialog::rejected, tab, [tab] { tab->closeDockWidget(); });
        form->connectTab(dialog, item, tab, m_window);
        remember(kind.tab, item);
        returnToTree(dialog, tab, kind.tab);
    } else {
        // Compat: not registered, so that each further opening of such an item adds one more empty tab.
        tab = m_tabs->makeEmpty(kind.tab);
    }
    m_tabs->place(tab, kind.tab);
}

void ResourceActions::remember(EditorTab kind, QStandardItem *item)
{
    m_shown.insert_or_assign(kind, ItemRef(item));
}

// Connected behind all that "Save" does.
void ResourceActions::returnToTree(const QDialog *form, const ads::CDockWidget *tab, EditorTab kind)
{
    const auto *save = form->findChild<QPushButton *>(QStringLiteral("saveButton"));
    if (!save) {
        return;
    }
    connect(save, &QPushButton::clicked, tab, [this, tab, kind] {
        const QStandardItem *item = m_shown.at(kind).item();
        if (m_tree && item && tab->isClosed()) {
            m_tree->setCurrentIndex(item->index());
            m_tree->activateWindow(); // the form may have been in a window of its own
            m_tree->setFocus();
        }
    });
}

void ResourceActions::remove()
{
    const QStandardItem *item = currentItem();
    if (!item || ProjectTree::levelOf(item) != ProjectTree::Level::Definition) {
        return;
    }
    const struct {
        QString folder;
        EditorTab tab;
    } editTabs[] = {
        {ProjectTree::serviceFolder, EditorTab::Service},
        {ProjectTree::boxFolder, EditorTab::Box},
        {ProjectTree::standardFolder, EditorTab::Standard},
    };
    const QString name = item->text();
    const QString folder = item->parent()->text();
    item->parent()->removeRow(item->row());
    emit removed(name);
    for (const auto &editTab : editTabs) {
        if (folder == editTab.folder) {
            m_tabs->closeFirst(editTab.tab);
        }
    }
}

void ResourceActions::removeAll()
{
    QStandardItem *item = currentItem();
    if (!item) {
        return;
    }
    if (item->rowCount() > 0) {
        for (int row = 0; row < item->rowCount(); ++row) {
            if (const QStandardItem *child = item->child(row)) {
                emit removed(child->text());
            }
        }
        item->removeRows(0, item->rowCount());
    } else if (ProjectTree::levelOf(item) == ProjectTree::Level::Definition) {
        const QString name = item->text();
        item->parent()->removeRow(item->row());
        emit removed(name);
    }
}

#include "mainwindow/editortabs.h"

#include "mainwindow/docking.h"
#include "mainwindow/windowtext.h"
#include "model/itemref.h"
#include "model/projecttree.h"
#include "widgets/svgicon.h"
#include "widgets/tell.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QStandardItem>
#include <QStringList>

#include <algorithm>

namespace {

const struct {
    EditorTab kind;
    const char *title; // source text
} titles[] = {
    {EditorTab::Box, QT_TRANSLATE_NOOP("CMainWindow", "Edit Box")},
    {EditorTab::Plc, QT_TRANSLATE_NOOP("CMainWindow", "Edit PLC")},
    {EditorTab::Server, QT_TRANSLATE_NOOP("CMainWindow", "Edit Server")},
    {EditorTab::Standard, QT_TRANSLATE_NOOP("CMainWindow", "Edit Standard")},
    {EditorTab::Service, QT_TRANSLATE_NOOP("CMainWindow", "Edit Service")},
    {EditorTab::Project, QT_TRANSLATE_NOOP("CMainWindow", "Edit Project")},
};

bool isNeighbour(EditorTab kind, EditorTab other)
{
    return kind == EditorTab::Project
        ? other == EditorTab::Box || other == EditorTab::Plc || other == EditorTab::Server
        : other != kind;
}

QStringList neighbourTitles(EditorTab kind)
{
    QStringList neighbours;
    for (const auto &row : titles) {
        if (isNeighbour(kind, row.kind)) {
            neighbours.append(WindowText::tr(row.title));
        }
    }
    return neighbours;
}

// What a new area for forms gets: enough to show them whole, yet never most of a small window.
constexpr int formWidth = 520;
constexpr int formPercentage = 42;

// The item is null once its node has left the tree, which leaves it without a folder to be found.
void renameAndSave(const RenamingForm &form, QStandardItem *item, ads::CDockWidget *tab, QWidget *window)
{
    const QString name = form.name->text();
    if (name.isEmpty()) {
        Tell::warning(window, WindowText::tr("invalid name"), WindowText::tr("Name cannot be null"));
    } else if (!item || !item->parent()) {
        Tell::warning(window, WindowText::tr("error"), WindowText::tr("Unable to find parent directory"));
    } else if (ProjectTree::childNamed(item->parent(), name, item)) {
        Tell::warning(window, WindowText::tr("Duplicate name"),
                      WindowText::tr("The name\"%1\"already exists, please change the name.").arg(name));
    } else {
        item->setText(name);
        form.saveChanges();
        tab->closeDockWidget();
    }
}

} // namespace

QString EditorTabs::titleOf(EditorTab kind)
{
    const auto *row = std::find_if(std::begin(titles), std::end(titles),
                                   [kind](const auto &title) { return title.kind == kind; });
    return WindowText::tr(row->title);
}

EditorTabs::EditorTabs(ads::CDockManager *docks, QMenu *viewMenu, QObject *parent)
    : QObject(parent)
    , m_docks(docks)
    , m_viewMenu(viewMenu)
{
    // A closed tab lives on until the event loop comes round; it must not be found again until then.
    connect(docks, &ads::CDockManager::dockWidgetAboutToBeRemoved, this, &EditorTabs::unregister);
}

ads::CDockWidget *EditorTabs::find(EditorTab kind) const
{
    const QString title = titleOf(kind);
    const QList<QAction *> actions = m_viewMenu ? m_viewMenu->actions() : QList<QAction *>();
    for (const QAction *action : actions) {
        if (action->text() == title) {
            return qobject_cast<ads::CDockWidget *>(action->parent());
        }
    }
    return nullptr;
}

ads::CDockWidget *EditorTabs::make(EditorTab kind, QDialog *form)
{
    ads::CDockWidget *tab = makeEmpty(kind);
    tab->setIcon(svgIcon(QStringLiteral(":/adsdemo/images/edit-1.svg")));
    tab->setWidget(form);
    m_viewMenu->addAction(tab->toggleViewAction());
    tab->setFeature(ads::CDockWidget::DockWidgetDeleteOnClose, true);
    return tab;
}

ads::CDockWidget *EditorTabs::makeEmpty(EditorTab kind)
{
    ads::CDockWidget *tab = Docking::makeDock(m_docks, titleOf(kind));
    Docking::setPinnable(tab, false);
    return tab;
}

ads::CDockAreaWidget *EditorTabs::neighbourArea(EditorTab kind) const
{
    const QStringList neighbours = neighbourTitles(kind);
    const QList<ads::CDockWidget *> docks = m_docks->findChildren<ads::CDockWidget *>();
    for (const ads::CDockWidget *dock : docks) {
        if (dock->dockManager() && neighbours.contains(dock->windowTitle())) {
            if (ads::CDockAreaWidget *area = dock->dockAreaWidget()) {
                return area;
            }
            break;
        }
    }
    return nullptr;
}

void EditorTabs::place(ads::CDockWidget *tab, EditorTab kind)
{
    if (ads::CDockAreaWidget *area = neighbourArea(kind)) {
        m_docks->addDockWidget(ads::CenterDockWidgetArea, tab, area);
    } else {
        widen(m_docks->addDockWidget(ads::RightDockWidgetArea, tab));
    }
    emit shown(tab);
}

void EditorTabs::widen(ads::CDockAreaWidget *area)
{
    QList<int> sizes = m_docks->splitterSizes(area);
    if (sizes.size() < 2) {
        return;
    }
    if (sizes == QList<int>({0, 0})) {
        sizes.first() = m_docks->width(); // the splitter was made for this area and is not laid out yet
    }
    const int wanted = qMin(formWidth, m_docks->width() * formPercentage / 100);
    const auto widest = std::max_element(sizes.begin(), sizes.end() - 1);
    const int taken = qMin(wanted - sizes.last(), (*widest - sizes.last()) / 2);
    if (taken > 0) {
        *widest -= taken;
        sizes.last() += taken;
        m_docks->setSplitterSizes(area, sizes);
    }
}

void EditorTabs::show(ads::CDockWidget *tab, EditorTab kind)
{
    if (!tab->dockAreaWidget()) {
        place(tab, kind);
    }
    if (tab->isClosed()) {
        tab->toggleView();
    }
    tab->raise();
    emit shown(tab);
}

void EditorTabs::closeFirst(EditorTab kind)
{
    if (ads::CDockWidget *tab = find(kind)) {
        tab->closeDockWidget();
        tab->deleteLater();
    }
}

void EditorTabs::closeAll()
{
    QStringList all;
    for (const auto &row : titles) {
        all.append(WindowText::tr(row.title));
    }
    const QList<QAction *> actions = m_viewMenu ? m_viewMenu->actions() : QList<QAction *>();
    for (const QAction *action : actions) {
        if (!all.contains(action->text())) {
            continue;
        }
        if (auto *tab = qobject_cast<ads::CDockWidget *>(action->parent())) {
            tab->closeDockWidget();
            tab->deleteLater();
        }
    }
}

void EditorTabs::renameOnSave(const RenamingForm &form, QStandardItem *item, ads::CDockWidget *tab,
                              QWidget *window)
{
    // Compat: the item stays that of the first opening. A tab that was re-bound to a sibling meets that
    // sibling's own name as a duplicate, and is to be closed and opened anew before it can be saved.
    connect(form.save, &QAbstractButton::clicked, form.form,
            [form, first = ItemRef(item), tab, window] { renameAndSave(form, first.item(), tab, window); });
}

void EditorTabs::unregister(const ads::CDockWidget *tab)
{
    if (m_viewMenu) {
        m_viewMenu->removeAction(tab->toggleViewAction());
    }
}

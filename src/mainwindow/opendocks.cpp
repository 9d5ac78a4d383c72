#include "mainwindow/opendocks.h"

#include <QApplication>
#include <QEvent>
#include <QSplitter>

#include <algorithm>
#include <utility>

namespace {

QSplitter *splitterOf(const ads::CDockAreaWidget *area)
{
    return qobject_cast<QSplitter *>(area->parentWidget());
}

// Any dock of what stands at the index, which may hold several areas.
ads::CDockWidget *dockAt(const QSplitter *splitter, int index)
{
    QWidget *widget = splitter->widget(index);
    auto *area = qobject_cast<ads::CDockAreaWidget *>(widget);
    if (!area && widget) {
        area = widget->findChild<ads::CDockAreaWidget *>();
    }
    return area ? area->dockWidget(0) : nullptr;
}

bool isForm(const ads::CDockWidget *dock)
{
    return dock->features().testFlag(ads::CDockWidget::DockWidgetDeleteOnClose);
}

} // namespace

OpenDocks::OpenDocks(ads::CDockManager *manager)
    : QObject(manager)
    , m_manager(manager)
{
    manager->installEventFilter(this);
    connect(manager, &ads::CDockManager::restoringState, this, &OpenDocks::remember);
    connect(manager, &ads::CDockManager::stateRestored, this, &OpenDocks::bringBack);
}

// The manager hides before it tells that it restores, and then the focus has gone elsewhere.
bool OpenDocks::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_manager && event->type() == QEvent::Hide && !event->spontaneous()) {
        m_focus = QApplication::focusWidget();
    }
    return false;
}

// The first part stands before the second one, all others behind the one before them.
OpenDocks::Side OpenDocks::sideOf(const QSplitter *splitter, QWidget *part)
{
    const int index = splitter->indexOf(part);
    const int extent = splitter->sizes().at(index);
    if (splitter->orientation() == Qt::Horizontal) {
        return {index > 0 ? ads::RightDockWidgetArea : ads::LeftDockWidgetArea, extent};
    }
    return {index > 0 ? ads::BottomDockWidgetArea : ads::TopDockWidgetArea, extent};
}

OpenDocks::Place OpenDocks::placeOf(ads::CDockAreaWidget *area)
{
    Place place;
    const ads::CDockContainerWidget *container = area->dockContainer();
    if (const ads::CFloatingDockContainer *window = container->floatingWidget()) {
        place.window = window->geometry();
    }
    const QSplitter *splitter = splitterOf(area);
    if (!splitter || splitter->count() < 2) {
        return place;
    }
    const int index = splitter->indexOf(area);
    place.beside = sideOf(splitter, area);
    const bool isOutermost = splitter->parentWidget() == container && place.window.isNull();
    if (!isOutermost || (index > 0 && index < splitter->count() - 1)) {
        place.neighbour = dockAt(splitter, index > 0 ? index - 1 : 1);
    }
    QWidget *part = area;
    while (part->parentWidget()->parentWidget() != container) {
        part = part->parentWidget();
    }
    place.edge = sideOf(qobject_cast<QSplitter *>(part->parentWidget()), part);
    return place;
}

void OpenDocks::remember()
{
    m_open.clear();
    const auto containers = m_manager->dockContainers();
    for (const ads::CDockContainerWidget *container : containers) {
        for (int i = 0; i < container->dockAreaCount(); ++i) {
            ads::CDockAreaWidget *area = container->dockArea(i);
            QList<QPointer<ads::CDockWidget>> companions;
            const auto docks = area->openedDockWidgets();
            for (ads::CDockWidget *dock : docks) {
                companions.append(dock);
            }
            for (ads::CDockWidget *dock : docks) {
                m_open.append({dock, companions, dock == area->currentDockWidget(), placeOf(area)});
            }
        }
    }
    takeOutUnregistered();
}

// The library knows one dock a name. Others of it would stay in areas that it is about to delete.
void OpenDocks::takeOutUnregistered()
{
    const auto registered = m_manager->dockWidgetsMap();
    for (const OpenDock &open : qAsConst(m_open)) {
        if (registered.value(open.dock->objectName()) == open.dock) {
            continue;
        }
        ads::CDockContainerWidget *container = open.dock->dockContainer();
        const QPointer<QWidget> window = container->floatingWidget();
        container->removeDockWidget(open.dock);
        if (window) { // an empty one would be taken for the next restored window
            QApplication::sendPostedEvents(window, QEvent::DeferredDelete);
        }
    }
}

void OpenDocks::bringBack()
{
    const QList<OpenDock> all = std::exchange(m_open, {});
    QList<OpenDock> back;
    for (const OpenDock &open : all) {
        if (!open.dock) {
            continue;
        }
        const bool isUnknown = !open.dock->dockAreaWidget();
        if (isUnknown) {
            put(open);
            back.append(open);
        }
        if (open.dock->isClosed() && (isUnknown || isForm(open.dock))) {
            open.dock->toggleView(true);
        }
    }
    for (const OpenDock &open : qAsConst(back)) {
        if (open.isCurrent) {
            open.dock->setAsCurrentTab();
        }
    }
    if (m_focus && m_focus->isVisible()) {
        m_focus->setFocus();
    }
}

void OpenDocks::put(const OpenDock &open)
{
    const Place &place = open.place;
    const auto companion =
        std::find_if(open.companions.begin(), open.companions.end(), [&place](ads::CDockWidget *dock) {
            return dock && dock->dockAreaWidget() && placeOf(dock->dockAreaWidget()) == place;
        });
    if (companion != open.companions.end()) {
        m_manager->addDockWidgetTabToArea(open.dock, (*companion)->dockAreaWidget());
        return;
    }
    ads::CDockAreaWidget *neighbour = place.neighbour ? place.neighbour->dockAreaWidget() : nullptr;
    if (!neighbour && !place.window.isNull()) {
        m_manager->addDockWidgetFloating(open.dock)->setGeometry(place.window);
        return;
    }
    const Side &side = neighbour ? place.beside : place.edge;
    ads::CDockAreaWidget *area = m_manager->addDockWidget(side.side, open.dock, neighbour);
    open.dock->toggleView(true); // it has no size before
    resize(area, side.extent);
}

// At the cost of the widest other area of the splitter, which keeps half of what it has.
void OpenDocks::resize(ads::CDockAreaWidget *area, int extent)
{
    QList<int> sizes = m_manager->splitterSizes(area);
    const QSplitter *splitter = splitterOf(area);
    if (sizes.size() < 2 || !splitter) {
        return;
    }
    const int own = splitter->indexOf(area);

    int widest = own == 0 ? 1 : 0;
    for (int i = 0; i < sizes.size(); ++i) {
        widest = i != own && sizes.at(i) > sizes.at(widest) ? i : widest;
    }
    const int taken = qMin(extent - sizes.at(own), sizes.at(widest) / 2);
    sizes[widest] -= taken;
    sizes[own] += taken;
    m_manager->setSplitterSizes(area, sizes);
}

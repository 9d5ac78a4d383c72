#include "mainwindow/opendocks.h"

#include <QApplication>
#include <QEvent>
#include <QSplitter>

#include <algorithm>
#include <utility>

using ads::CDockAreaWidget;
using ads::CDockWidget;

namespace {

QSplitter *splitterOf(const QWidget *part)
{
    return qobject_cast<QSplitter *>(part->parentWidget());
}

// Of the part that is the widget or holds it.
int indexIn(const QSplitter *splitter, const QWidget *widget)
{
    int index = 0;
    while (splitter->widget(index) != widget && !splitter->widget(index)->isAncestorOf(widget)) {
        ++index;
    }
    return index;
}

ads::DockWidgetArea sideOf(Qt::Orientation orientation, bool before)
{
    if (orientation == Qt::Horizontal) {
        return before ? ads::LeftDockWidgetArea : ads::RightDockWidgetArea;
    }
    return before ? ads::TopDockWidgetArea : ads::BottomDockWidgetArea;
}

// At which side of the other one the area stands.
ads::DockWidgetArea sideOf(const CDockAreaWidget *area, const CDockAreaWidget *other)
{
    const QSplitter *splitter = splitterOf(area);
    while (splitter && !splitter->isAncestorOf(other)) {
        splitter = splitterOf(splitter);
    }
    if (!splitter || area == other) {
        return ads::CenterDockWidgetArea;
    }
    return sideOf(splitter->orientation(), indexIn(splitter, area) < indexIn(splitter, other));
}

bool isForm(const CDockWidget *dock)
{
    return dock->features().testFlag(CDockWidget::DockWidgetDeleteOnClose);
}

// The first dock of the part that has no place, or null.
template <class Docks> CDockWidget *homeless(const Docks &docks)
{
    const auto found = std::find_if(docks.begin(), docks.end(),
                                    [](const CDockWidget *dock) { return dock && !dock->dockAreaWidget(); });
    return found != docks.end() ? found->data() : nullptr;
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

OpenDocks::Place OpenDocks::placeOf(const CDockAreaWidget *area) const
{
    if (const ads::CFloatingDockContainer *window = area->dockContainer()->floatingWidget()) {
        return {window->geometry(), {}};
    }
    Place place;
    const auto docks = m_manager->dockWidgetsMap();
    for (const CDockWidget *dock : docks) {
        if (!dock->features().testFlag(CDockWidget::DockWidgetMovable) && dock->dockAreaWidget()) {
            place.sides.append(sideOf(area, dock->dockAreaWidget()));
        }
    }
    return place;
}

void OpenDocks::remember()
{
    m_places.clear();
    m_areas.clear();
    m_rows.clear();
    m_back.clear();
    const auto containers = m_manager->dockContainers();
    for (const ads::CDockContainerWidget *container : containers) {
        if (container->dockAreaCount() == 0) {
            continue;
        }
        const QSplitter *root = splitterOf(container->dockArea(0));
        while (const QSplitter *outer = splitterOf(root)) {
            root = outer;
        }
        const QWidget *window = container->floatingWidget();
        rememberRow(root, window ? window->geometry() : QRect());
    }
    takeOutUnregistered();
}

OpenDocks::Docks OpenDocks::rememberArea(const CDockAreaWidget *area)
{
    Docks docks;
    const auto open = area->openedDockWidgets();
    for (CDockWidget *dock : open) {
        docks.append(dock);
        m_places.insert(dock, placeOf(area));
    }
    m_areas.append({docks, area->currentDockWidget()});
    return docks;
}

OpenDocks::Docks OpenDocks::rememberRow(const QSplitter *splitter, const QRect &window)
{
    Docks all;
    Row row{splitter->orientation(), window, {}};
    const QList<int> extents = splitter->sizes();
    for (int i = 0; i < splitter->count(); ++i) {
        const QWidget *part = splitter->widget(i);
        Docks docks;
        if (const auto *inner = qobject_cast<const QSplitter *>(part)) {
            docks = rememberRow(inner, window);
        } else if (const auto *area = qobject_cast<const CDockAreaWidget *>(part)) {
            docks = rememberArea(area);
        }
        row.parts.append({docks, extents.at(i)});
        all.append(docks);
    }
    m_rows.append(row);
    return all;
}

// The library knows one dock a name. Others of it would stay in areas that it is about to delete.
void OpenDocks::takeOutUnregistered()
{
    const auto registered = m_manager->dockWidgetsMap();
    for (const Area &area : qAsConst(m_areas)) {
        for (CDockWidget *dock : area.docks) {
            if (registered.value(dock->objectName()) == dock) {
                continue;
            }
            ads::CDockContainerWidget *container = dock->dockContainer();
            const QPointer<QWidget> window = container->floatingWidget();
            container->removeDockWidget(dock);
            if (window) { // an empty one would be taken for the next restored window
                QApplication::sendPostedEvents(window, QEvent::DeferredDelete);
            }
        }
    }
}

void OpenDocks::bringBack()
{
    for (const Area &area : qAsConst(m_areas)) {
        for (CDockWidget *dock : area.docks) {
            if (dock && dock->dockAreaWidget() && dock->isClosed() && isForm(dock)) {
                dock->toggleView(true);
            }
        }
    }
    // From the inside to the edges of what was restored, then from the outside to what stands there.
    for (const Row &row : qAsConst(m_rows)) {
        if (std::any_of(row.parts.begin(), row.parts.end(),
                        [this](const Part &part) { return stands(part); })) {
            putBack(row, Where::AtEdges);
        }
    }
    std::for_each(m_rows.crbegin(), m_rows.crend(),
                  [this](const Row &row) { putBack(row, Where::Everywhere); });
    for (const Area &area : qAsConst(m_areas)) {
        putTabs(area);
    }
    std::for_each(m_rows.crbegin(), m_rows.crend(), [this](const Row &row) { resize(row); });
    if (m_focus && m_focus->isVisible()) {
        m_focus->setFocus();
    }
}

// The dock is back where it was, or still is.
bool OpenDocks::stands(const CDockWidget *dock) const
{
    return dock && dock->dockAreaWidget()
        && (m_back.contains(dock) || placeOf(dock->dockAreaWidget()) == m_places.value(dock));
}

bool OpenDocks::stands(const Part &part) const
{
    return std::any_of(part.docks.begin(), part.docks.end(),
                       [this](const CDockWidget *dock) { return stands(dock); });
}

// Nothing stands in the main window but what is in the row.
bool OpenDocks::isWhole(const Row &row) const
{
    Docks outside;
    for (const Area &area : m_areas) {
        outside.append(area.docks);
    }
    for (const Part &part : row.parts) {
        for (const auto &dock : part.docks) {
            outside.removeOne(dock);
        }
    }
    return row.window.isNull()
        && std::none_of(outside.begin(), outside.end(), [this](const CDockWidget *dock) {
               return stands(dock) && !dock->isInFloatingContainer();
           });
}

void OpenDocks::putBack(const Row &row, Where where)
{
    const int count = row.parts.size();
    int first = 0;
    while (first < count && !stands(row.parts.at(first))) {
        ++first;
    }
    if (first == count) {
        first = 0;
        if (!row.window.isNull()) {
            first = floatFirst(row);
        }
    }
    for (int i = first - 1; i >= 0; --i) {
        putBeside(row, i, true, where);
    }
    for (int i = first; i < count; ++i) {
        putBeside(row, i, false, where);
    }
}

int OpenDocks::floatFirst(const Row &row)
{
    for (int i = 0; i < row.parts.size(); ++i) {
        if (CDockWidget *dock = homeless(row.parts.at(i).docks)) {
            m_manager->addDockWidgetFloating(dock)->setGeometry(row.window);
            dock->toggleView(true);
            m_back.insert(dock);
            return i;
        }
    }
    return 0;
}

// At the edge of the whole if all that stands is on one side of it, else beside the nearest dock there.
void OpenDocks::putBeside(const Row &row, int index, bool before, Where where)
{
    CDockWidget *dock = homeless(row.parts.at(index).docks);
    if (!dock || stands(row.parts.at(index))) {
        return;
    }
    const int step = before ? 1 : -1;
    int next = index + step;
    while (next >= 0 && next < row.parts.size() && !stands(row.parts.at(next))) {
        next += step;
    }
    const bool isLast = std::none_of(row.parts.begin() + index, row.parts.end(),
                                     [this](const Part &part) { return stands(part); });
    CDockAreaWidget *neighbour = nullptr;
    if (next >= 0 && next < row.parts.size() && !((before || isLast) && isWhole(row))) {
        Docks docks = row.parts.at(next).docks;
        if (!before) {
            std::reverse(docks.begin(), docks.end());
        }
        neighbour = (*std::find_if(docks.begin(), docks.end(), [this](const CDockWidget *other) {
                        return stands(other);
                    }))->dockAreaWidget();
    }
    if (neighbour && where == Where::AtEdges) {
        return;
    }
    CDockAreaWidget *area = m_manager->addDockWidget(sideOf(row.orientation, before), dock, neighbour);
    m_back.insert(dock);
    dock->toggleView(true); // it has no size before
    resize(area, row.parts.at(index).extent);
}

void OpenDocks::putTabs(const Area &area)
{
    const auto first = std::find_if(area.docks.begin(), area.docks.end(),
                                    [this](const CDockWidget *dock) { return stands(dock); });
    if (first == area.docks.end()) {
        return;
    }
    CDockAreaWidget *place = (*first)->dockAreaWidget();
    while (CDockWidget *dock = homeless(area.docks)) {
        m_manager->addDockWidgetTabToArea(dock, place);
        dock->toggleView(true);
        m_back.insert(dock);
    }
    if (m_back.contains(area.current)) {
        area.current->setAsCurrentTab();
    }
}

// Gives each part the extent that it had, if the row is the same again.
void OpenDocks::resize(const Row &row)
{
    QList<const QWidget *> areas;
    QList<int> extents;
    bool hasBack = false;
    for (const Part &part : row.parts) {
        extents.append(part.extent);
        for (const CDockWidget *dock : part.docks) {
            hasBack = hasBack || m_back.contains(dock);
            if (stands(dock)) {
                areas.append(dock->dockAreaWidget());
            }
        }
    }
    QSplitter *splitter = hasBack ? splitterOf(areas.first()) : nullptr;
    while (splitter && !std::all_of(areas.begin(), areas.end(), [splitter](const QWidget *area) {
               return splitter->isAncestorOf(area);
           })) {
        splitter = splitterOf(splitter);
    }
    if (splitter && splitter->orientation() == row.orientation && splitter->count() == extents.size()) {
        splitter->setSizes(extents);
    }
}

// At the cost of the widest other area of the splitter, which keeps half of what it has.
void OpenDocks::resize(CDockAreaWidget *area, int extent)
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

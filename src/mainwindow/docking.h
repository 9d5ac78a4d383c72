#pragma once

// The one header that includes the docking library, and the one place that knows which of its generations is
// installed. 3.8 has no auto-hide, no pinning and no tool-bar style of the manager; from 4.4 on a dock takes
// its manager at construction. What is there is found out at compile time. No dock of ours can be pinned, so
// the generations behave alike. The names ending in Of are templates so that a test can give them either
// kind.

#include <DockAreaWidget.h>
#include <DockManager.h>
#include <DockOverlay.h>
#include <DockWidget.h>
#include <FloatingDockContainer.h>

#include <QFlag>
#include <QString>

#include <type_traits>
#include <utility>

namespace Docking {

// AutoHideFeatureEnabled, DockAreaHasAutoHideButton and AutoHideHasMinimizeButton.
constexpr int autoHideFlags = 0x103;

template <class Manager, class = void> struct HasAutoHide : std::false_type {
};
template <class Manager>
struct HasAutoHide<
    Manager,
    std::void_t<decltype(Manager::setAutoHideConfigFlags(std::declval<typename Manager::AutoHideFlags>()))>>
    : std::true_type {
};

template <class Dock, class = void> struct HasPinning : std::false_type {
};
template <class Dock>
struct HasPinning<Dock, std::void_t<decltype(Dock::DockWidgetPinnable)>> : std::true_type {
};

template <class Manager, class Dock, class = void> struct HasToolBarStyle : std::false_type {
};
template <class Manager, class Dock>
struct HasToolBarStyle<Manager, Dock,
                       std::void_t<decltype(std::declval<Manager &>().setDockWidgetToolBarStyle(
                           Qt::ToolButtonIconOnly, Dock::StateFloating))>> : std::true_type {
};

template <class Manager> void configureOf()
{
    Manager::setConfigFlag(Manager::FocusHighlighting, true);
    if constexpr (HasAutoHide<Manager>::value) {
        Manager::setAutoHideConfigFlags(typename Manager::AutoHideFlags(QFlag(autoHideFlags)));
    }
}

template <class Dock, class Manager> Dock *makeDockOf(Manager *manager, const QString &title)
{
    if constexpr (std::is_constructible_v<Dock, Manager *, const QString &>) {
        return new Dock(manager, title);
    } else {
        auto *dock = new Dock(title);
        if constexpr (!HasToolBarStyle<Manager, Dock>::value) {
            dock->setToolBarStyle(Qt::ToolButtonIconOnly, Dock::StateFloating);
        }
        return dock;
    }
}

template <class Dock> void setPinnableOf([[maybe_unused]] Dock *dock, [[maybe_unused]] bool on)
{
    if constexpr (HasPinning<Dock>::value) {
        dock->setFeature(Dock::DockWidgetPinnable, on);
    }
}

template <class Dock, class Manager> void setFloatingToolBarStyleOf([[maybe_unused]] Manager *manager)
{
    if constexpr (HasToolBarStyle<Manager, Dock>::value) {
        manager->setDockWidgetToolBarStyle(Qt::ToolButtonIconOnly, Dock::StateFloating);
    }
}

// Sets the library's process-wide flags; call before a dock manager exists. The others stay at its defaults.
inline void configureDocking()
{
    configureOf<ads::CDockManager>();
}

// A new dock of this title and object name, not yet placed; the manager that it is placed in will own it.
inline ads::CDockWidget *makeDock(ads::CDockManager *manager, const QString &title)
{
    return makeDockOf<ads::CDockWidget>(manager, title);
}

// Whether the user may pin the dock to the window's edge; without effect where nothing can be pinned.
inline void setPinnable(ads::CDockWidget *dock, bool on)
{
    setPinnableOf(dock, on);
}

// Floating docks show their tool bars as icons alone. Where the manager has no such setting, makeDock() gives
// it to each dock instead.
inline void setFloatingToolBarStyle(ads::CDockManager *manager)
{
    setFloatingToolBarStyleOf<ads::CDockWidget>(manager);
}

} // namespace Docking

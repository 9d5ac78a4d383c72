#include "mainwindow/windowkeys.h"

#include "mainwindow/docking.h"
#include "widgets/scrollintosight.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTabWidget>

namespace {

// Brings the dock around the widget to the front of its area.
void showDockOf(QWidget *widget)
{
    for (QWidget *at = widget; at; at = at->parentWidget()) {
        if (auto *dock = qobject_cast<ads::CDockWidget *>(at)) {
            dock->setAsCurrentTab();
            return;
        }
    }
}

// The dock that has the focus in it, or in its title bar.
ads::CDockWidget *focusedDock()
{
    QWidget *at = QApplication::focusWidget() ? QApplication::focusWidget() : QApplication::activeWindow();
    for (; at; at = at->parentWidget()) {
        if (auto *dock = qobject_cast<ads::CDockWidget *>(at)) {
            return dock;
        }
        if (const auto *area = qobject_cast<const ads::CDockAreaWidget *>(at)) {
            return area->currentDockWidget();
        }
        if (const auto *window = qobject_cast<const ads::CFloatingDockContainer *>(at)) {
            return window->topLevelDockWidget();
        }
    }
    return nullptr;
}

// The first one of this name that can be seen, as far as it need not be scrolled to.
template <class Widget> Widget *visibleChild(const QWidget *parent, const char *name)
{
    const auto named = parent ? parent->findChildren<Widget *>(QLatin1String(name)) : QList<Widget *>();
    for (Widget *widget : named) {
        if (widget->isVisible() && widget->isEnabled()) {
            return widget;
        }
    }
    return nullptr;
}

// Moves the focus, which ends what is being typed and checks it; false if a message came up over that.
bool endEditing(QWidget *next)
{
    bool isQuiet = true;
    const auto watch = QObject::connect(qApp, &QApplication::focusChanged, next,
                                        [&isQuiet, next](const QWidget *, const QWidget *now) {
                                            isQuiet = isQuiet && (!now || now->window() == next->window());
                                        });
    const QPointer<QWidget> alive(next);
    next->setFocus(Qt::ShortcutFocusReason);
    QObject::disconnect(watch);
    return isQuiet && alive;
}

} // namespace

WindowKeys::WindowKeys(QMainWindow *window, ads::CDockManager *docks, QTabWidget *livePages,
                       const QList<QAction *> &actions)
    : QObject(window)
    , m_livePages(livePages)
{
    QList<QAction *> everywhere = actions;
    everywhere.append(makeAction(window, QKeySequence::Save, &WindowKeys::saveForm));
    everywhere.append(makeAction(window, QKeySequence::Find, &WindowKeys::goToFilter));
    connect(docks, &ads::CDockManager::floatingWidgetCreated, this,
            [everywhere](ads::CFloatingDockContainer *floating) { floating->addActions(everywhere); });
}

QAction *WindowKeys::makeAction(QMainWindow *window, const QKeySequence &key, void (WindowKeys::*command)())
{
    auto *action = new QAction(this);
    action->setShortcut(key);
    action->setAutoRepeat(false);
    connect(action, &QAction::triggered, this, command);
    window->addAction(action);
    return action;
}

void WindowKeys::saveForm()
{
    const ads::CDockWidget *dock = focusedDock();
    auto *save = dock ? visibleChild<QPushButton>(dock->widget(), "saveButton") : nullptr;
    if (!save) {
        return;
    }
    const QPointer<QWidget> before(QApplication::focusWidget());
    const QPointer<QPushButton> button(save);
    if (endEditing(save)) {
        save->click();
    }
    if (before && button && button->hasFocus()) {
        before->setFocus();
    }
}

void WindowKeys::goToFilter()
{
    const ads::CDockWidget *dock = focusedDock();
    auto *filter = dock ? visibleChild<QLineEdit>(dock->widget(), "filter") : nullptr;
    const QWidget *page = m_livePages ? m_livePages->currentWidget() : nullptr;
    if (!filter && page && page->findChild<QLineEdit *>(QStringLiteral("filter"))) {
        showDockOf(m_livePages);
        filter = visibleChild<QLineEdit>(page, "filter");
    }
    if (!filter) {
        return;
    }
    scrollIntoSight(filter);
    filter->window()->activateWindow();
    filter->setFocus(Qt::ShortcutFocusReason);
    filter->selectAll();
}

#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QAction;
class QMainWindow;
class QTabWidget;

namespace ads {
class CDockManager;
class CDockWidget;
} // namespace ads

// The keys of the window that work in its floating docks too, which are windows of their own: those of the
// actions that it is given, Ctrl+S for the form that has the focus, Ctrl+F for a filter. While a modal dialog
// is open none of them does anything.
class WindowKeys : public QObject
{
    Q_OBJECT
public:
    // The window owns this; the manager and the tabs with the live pages may die first.
    WindowKeys(QMainWindow *window, ads::CDockManager *docks, QTabWidget *livePages,
               const QList<QAction *> &actions);

private:
    QAction *makeAction(QMainWindow *window, const QKeySequence &key, void (WindowKeys::*command)());
    // Presses "Save" of the form with the focus; one that stays open keeps the focus where it was.
    void saveForm();
    // Puts the cursor into the filter of the form or page that has the focus, or else of the live page.
    void goToFilter();

    QPointer<QTabWidget> m_livePages;
};

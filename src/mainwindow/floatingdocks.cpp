#include "mainwindow/floatingdocks.h"

#include "mainwindow/docking.h"

#include <QApplication>
#include <QDialog>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <algorithm>

namespace {

// The library moves a window that was dragged out once more after it is shown, and the window manager may,
// too.
constexpr int settleTime = 200; // ms

QMargins frameOf(const QWidget *window)
{
    const QRect outside = window->frameGeometry();
    const QRect inside = window->geometry();
    return {inside.left() - outside.left(), inside.top() - outside.top(), outside.right() - inside.right(),
            outside.bottom() - inside.bottom()};
}

QRect screenOf(const QRect &window, const QWidget *main)
{
    const QScreen *best = main->screen();
    int most = 0;
    const auto screens = QGuiApplication::screens();
    for (const QScreen *screen : screens) {
        const QRect common = window & screen->availableGeometry();
        if (common.width() * common.height() > most) {
            most = common.width() * common.height();
            best = screen;
        }
    }
    return best->availableGeometry();
}

// Docks that are no forms come up in the size that they were made in.
bool holdsForm(const ads::CFloatingDockContainer *floating)
{
    const auto docks = floating->dockWidgets();
    return std::any_of(docks.begin(), docks.end(), [](const ads::CDockWidget *dock) {
        return qobject_cast<const QDialog *>(dock->widget());
    });
}

// One that is larger than the screen and keeps its size stands at the upper left.
void bringOntoScreen(ads::CFloatingDockContainer *floating, const QWidget *main)
{
    // Its own is known only once the window manager has made it.
    const QMargins own = frameOf(floating);
    const QMargins common = frameOf(main);
    const QMargins frame(qMax(own.left(), common.left()), qMax(own.top(), common.top()),
                         qMax(own.right(), common.right()), qMax(own.bottom(), common.bottom()));
    const QRect free = screenOf(floating->geometry(), main).marginsRemoved(frame);
    QRect place = floating->geometry();
    if (holdsForm(floating)) {
        place.setSize(place.size().boundedTo(free.size()));
    }
    place.moveLeft(qBound(free.left(), place.left(), free.right() + 1 - place.width()));
    place.moveTop(qBound(free.top(), place.top(), free.bottom() + 1 - place.height()));
    if (place != floating->geometry()) {
        floating->setGeometry(place);
    }
}

// Waits for a floating window to be shown for the first time: it has its place only then.
class FirstShow : public QObject
{
    Q_OBJECT
public:
    FirstShow(ads::CFloatingDockContainer *floating, const QWidget *main)
        : QObject(floating)
        , m_floating(floating)
        , m_main(main)
    {
        floating->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show) {
            watched->removeEventFilter(this);
            for (const int delay : {0, settleTime}) {
                QTimer::singleShot(delay, this, [this] { bringOntoScreen(m_floating, m_main); });
            }
        }
        return false;
    }

private:
    ads::CFloatingDockContainer *m_floating;
    const QWidget *m_main;
};

// Sees the main window lose the focus, as the library does.
class FocusLoss : public QObject
{
    Q_OBJECT
public:
    explicit FocusLoss(QWidget *main)
        : QObject(main)
        , m_main(main)
    {
        main->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_main && event->type() == QEvent::WindowDeactivate) {
            QTimer::singleShot(0, this, &FocusLoss::raiseNext); // once the library is done
        }
        return false;
    }

private:
    void raiseNext()
    {
        QWidget *modal = QApplication::activeModalWidget();
        QWidget *next = modal ? modal : QApplication::activeWindow();
        if (next && next != m_main) {
            next->raise();
        }
    }

    QWidget *m_main;
};

} // namespace

void FloatingDocks::keepOnScreen(ads::CDockManager *manager)
{
    QObject::connect(
        manager, &ads::CDockManager::floatingWidgetCreated, manager,
        [manager](ads::CFloatingDockContainer *floating) { new FirstShow(floating, manager->window()); });
}

void FloatingDocks::keepBelowDialogs(ads::CDockManager *manager)
{
    new FocusLoss(manager->window());
}

#include "floatingdocks.moc"

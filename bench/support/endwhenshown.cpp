// Linked into a program, ends it once its first window is shown and the events of that are done.

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWindow>

#include <unistd.h>

namespace {

class EndWhenShown : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *window = qobject_cast<QWindow *>(watched);
        if (window && event->type() == QEvent::Expose && window->isExposed()) {
            // Behind what the window still has to lay out and to paint. Without the program's clean-up.
            QTimer::singleShot(0, [] { _exit(0); });
        }
        return QObject::eventFilter(watched, event);
    }
};

void watch()
{
    qApp->installEventFilter(new EndWhenShown(qApp));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch)

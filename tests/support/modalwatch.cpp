#include "modalwatch.h"

#include <QApplication>
#include <QEvent>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

namespace {

QList<ModalAnswerer *> answerers; // the last one asks first
int unwatched = 0;

QString described(const QWidget *modal)
{
    QStringList parts{QString::fromLatin1(modal->metaObject()->className()), modal->windowTitle()};
    if (const auto *message = qobject_cast<const QMessageBox *>(modal)) {
        parts.append(message->text());
    }
    return parts.join(QLatin1Char('|'));
}

void close(QWidget *modal)
{
    // A message without a way to cancel doesn't close.
    if (auto *message = qobject_cast<QMessageBox *>(modal)) {
        message->reject();
    } else {
        modal->close();
    }
}

void startWatch()
{
    new ModalWatch(QCoreApplication::instance());
}
Q_COREAPP_STARTUP_FUNCTION(startWatch)

} // namespace

ModalAnswerer::ModalAnswerer()
{
    answerers.append(this);
}

ModalAnswerer::~ModalAnswerer()
{
    answerers.removeOne(this);
}

UnwatchedModals::UnwatchedModals()
{
    ++unwatched;
}

UnwatchedModals::~UnwatchedModals()
{
    --unwatched;
}

ModalWatch::ModalWatch(QObject *parent)
    : QObject(parent)
{
    parent->installEventFilter(this);
}

bool ModalWatch::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        const auto *widget = static_cast<QWidget *>(watched);
        const bool isModal = qobject_cast<const QDialog *>(widget) && widget->isModal();
        if (isModal || qobject_cast<const QMessageBox *>(widget) || qobject_cast<const QMenu *>(widget)) {
            // Met in its own event loop, once it stands.
            QTimer::singleShot(0, widget, [this, guarded = QPointer<QWidget>(const_cast<QWidget *>(widget))] {
                if (guarded && guarded->isVisible() && unwatched == 0) {
                    meet(guarded);
                }
            });
        }
    }
    return QObject::eventFilter(watched, event);
}

void ModalWatch::meet(QWidget *modal)
{
    const QString which = described(modal);
    const QPointer<QWidget> guarded(modal);
    const auto found =
        std::find_if(answerers.crbegin(), answerers.crend(),
                     [modal](const ModalAnswerer *answerer) { return answerer->isFor(modal); });
    const bool isExpected = found != answerers.crend() && (*found)->answer(modal);
    // Also where a check ended the answer early.
    if (guarded && guarded->isVisible()) {
        close(guarded);
    }
    if (!isExpected) {
        const QByteArray text = "unexpected: " + which.toUtf8();
        if (!QTest::currentTestFunction()) {
            qFatal("%s", text.constData());
        }
        QTest::qFail(text.constData(), __FILE__, __LINE__);
    }
}

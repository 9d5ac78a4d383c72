#include "support/modaldialogs.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

ModalDialogs::ModalDialogs(QObject *parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
}

ModalDialogs::~ModalDialogs()
{
    qApp->removeEventFilter(this);
}

void ModalDialogs::expect(Step step)
{
    m_steps.append(std::move(step));
}

bool ModalDialogs::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        const auto *dialog = qobject_cast<QDialog *>(watched);
        const bool isModal = dialog && dialog->isModal() && !qobject_cast<QMessageBox *>(watched);
        if (isModal || qobject_cast<QMenu *>(watched)) {
            QPointer<QWidget> guarded(static_cast<QWidget *>(watched));
            QTimer::singleShot(0, this, [this, guarded] {
                if (guarded && guarded->isVisible()) {
                    drive(guarded);
                }
            });
        }
    }
    return QObject::eventFilter(watched, event);
}

void ModalDialogs::drive(QWidget *dialog)
{
    const QPointer<QWidget> guarded(dialog);
    const QString which =
        QString::fromLatin1(dialog->metaObject()->className()) + QLatin1Char('|') + dialog->windowTitle();
    if (!m_steps.isEmpty()) {
        m_steps.takeFirst()(dialog);
    }
    // Without a step, or when a check ended the step early.
    if (guarded && guarded->isVisible()) {
        m_unexpected.append(which);
        guarded->close();
    }
}

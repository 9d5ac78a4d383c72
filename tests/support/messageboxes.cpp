#include "support/messageboxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>

MessageBoxes::MessageBoxes(QObject *parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
}

MessageBoxes::~MessageBoxes()
{
    qApp->removeEventFilter(this);
}

void MessageBoxes::expect(QMessageBox::StandardButton button)
{
    m_expected.append(button);
}

bool MessageBoxes::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        if (auto *box = qobject_cast<QMessageBox *>(watched)) {
            // Answered from the box's own event loop, once it stands.
            QPointer<QMessageBox> guarded(box);
            QTimer::singleShot(0, this, [this, guarded] {
                if (guarded) {
                    answer(guarded);
                }
            });
        }
    }
    return QObject::eventFilter(watched, event);
}

void MessageBoxes::answer(QMessageBox *box)
{
    const QString told = box->windowTitle() + QLatin1Char('|') + box->text();
    m_told.append(told);
    if (m_expected.isEmpty()) {
        m_unexpected.append(told);
        box->reject();
        return;
    }
    QAbstractButton *button = box->button(m_expected.takeFirst());
    if (button) {
        button->click();
    } else {
        m_unexpected.append(told + "|no such button");
        box->reject();
    }
}

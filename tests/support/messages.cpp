#include "messages.h"

#include <QAbstractButton>

void Messages::expect(QMessageBox::StandardButton button)
{
    m_expected.append(button);
}

bool Messages::isFor(const QWidget *modal) const
{
    return qobject_cast<const QMessageBox *>(modal);
}

bool Messages::answer(QWidget *modal)
{
    auto *message = static_cast<QMessageBox *>(modal);
    m_told.append(message->windowTitle() + QLatin1Char('|') + message->text());
    if (m_expected.isEmpty()) {
        return m_allowsOthers;
    }
    QAbstractButton *button = message->button(m_expected.takeFirst());
    if (button) {
        button->click();
    }
    return button;
}

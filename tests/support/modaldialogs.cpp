#include "modaldialogs.h"

#include <QMessageBox>
#include <QPointer>

void ModalDialogs::expect(Step step)
{
    m_steps.append(std::move(step));
}

bool ModalDialogs::isFor(const QWidget *modal) const
{
    return !qobject_cast<const QMessageBox *>(modal);
}

bool ModalDialogs::answer(QWidget *modal)
{
    if (m_steps.isEmpty()) {
        m_others.append(QString::fromLatin1(modal->metaObject()->className()) + QLatin1Char('|')
                        + modal->windowTitle());
        return m_allowsOthers;
    }
    const QPointer<QWidget> guarded(modal);
    m_steps.takeFirst()(modal);
    return !guarded || !guarded->isVisible();
}

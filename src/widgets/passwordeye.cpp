#include "widgets/passwordeye.h"

#include <QAction>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

PasswordEye::PasswordEye(const QString &toolTip, QLineEdit *edit)
    : QObject(edit)
    , m_edit(edit)
{
    QAction *eye =
        edit->addAction(QIcon(QStringLiteral(":/adsdemo/images/eye.svg")), QLineEdit::TrailingPosition);
    eye->setText(toolTip);
    const auto *button = edit->findChild<QToolButton *>();
    connect(button, &QToolButton::pressed, this, &PasswordEye::reveal);
    connect(button, &QToolButton::released, this, &PasswordEye::hide);
    edit->installEventFilter(this);
    hide();
}

void PasswordEye::hide()
{
    m_edit->setEchoMode(QLineEdit::Password);
}

void PasswordEye::reveal()
{
    m_edit->setFocus(Qt::MouseFocusReason); // so that it is hidden when the user turns to something else
    m_edit->setEchoMode(QLineEdit::Normal);
}

bool PasswordEye::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut) {
        hide();
        return false;
    }
    const bool isOfKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease
        || event->type() == QEvent::ShortcutOverride;
    const auto *key = isOfKey ? static_cast<QKeyEvent *>(event) : nullptr;
    if (!key || key->key() != Qt::Key_F8 || key->modifiers() != Qt::NoModifier) {
        return QObject::eventFilter(watched, event);
    }
    event->accept();
    if (event->type() == QEvent::KeyPress) {
        reveal();
    } else if (event->type() == QEvent::KeyRelease && !key->isAutoRepeat()) {
        hide();
    }
    return true;
}

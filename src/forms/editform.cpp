#include "forms/editform.h"

#include <QComboBox>
#include <QKeyEvent>

EditForm::EditForm(QWidget *parent)
    : QDialog(parent)
{
    setWindowFlags(Qt::Widget); // which the base's constructor would take for "no flags" and make a dialog
}

bool EditForm::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Wheel && qobject_cast<QComboBox *>(watched)) {
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void EditForm::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->ignore();
        break;
    default:
        QDialog::keyPressEvent(event);
    }
}

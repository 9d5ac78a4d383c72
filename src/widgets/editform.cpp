#include "widgets/editform.h"

#include <QKeyEvent>

EditForm::EditForm(QWidget *parent)
    : QDialog(parent, Qt::Widget)
{
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

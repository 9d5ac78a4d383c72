#include "widgets/tell.h"

#include <QPointer>

namespace {

QMessageBox::StandardButton tell(QMessageBox::Icon icon, QWidget *parent, const QString &title,
                                 const QString &text, QMessageBox::StandardButtons buttons)
{
    QPointer<QMessageBox> box = new QMessageBox(icon, title, text, buttons, parent);
    box->setTextFormat(Qt::PlainText); // names and codes come from files and Boxes: they are no mark-up
    const int pressed = box->exec();
    if (!box) {
        return QMessageBox::NoButton;
    }
    box->deleteLater();
    return static_cast<QMessageBox::StandardButton>(pressed);
}

} // namespace

QMessageBox::StandardButton Tell::information(QWidget *parent, const QString &title, const QString &text)
{
    return tell(QMessageBox::Information, parent, title, text, QMessageBox::Ok);
}

QMessageBox::StandardButton Tell::warning(QWidget *parent, const QString &title, const QString &text)
{
    return tell(QMessageBox::Warning, parent, title, text, QMessageBox::Ok);
}

QMessageBox::StandardButton Tell::question(QWidget *parent, const QString &title, const QString &text,
                                           QMessageBox::StandardButtons buttons)
{
    return tell(QMessageBox::Question, parent, title, text, buttons);
}

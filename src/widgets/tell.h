#pragma once

#include <QMessageBox>

// Modal messages with their text as it is, that survive their parent: code may close the form below while a
// message is open, and QMessageBox's own static functions would then free an object on the stack.
namespace Tell {

// Each returns the button pressed, or NoButton if the message went with its parent.
QMessageBox::StandardButton information(QWidget *parent, const QString &title, const QString &text);
QMessageBox::StandardButton warning(QWidget *parent, const QString &title, const QString &text);
QMessageBox::StandardButton question(QWidget *parent, const QString &title, const QString &text,
                                     QMessageBox::StandardButtons buttons);

} // namespace Tell

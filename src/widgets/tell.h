#pragma once

#include <QMessageBox>

// Modal message boxes, with their text as it stands, that survive their parent: the form below a box may be
// closed by code while the box stands, and QMessageBox's own static functions would then free a box on the
// stack.
namespace Tell {

// Each returns the button pressed, or NoButton if the box died with its parent.
QMessageBox::StandardButton information(QWidget *parent, const QString &title, const QString &text);
QMessageBox::StandardButton warning(QWidget *parent, const QString &title, const QString &text);
QMessageBox::StandardButton question(QWidget *parent, const QString &title, const QString &text,
                                     QMessageBox::StandardButtons buttons);

} // namespace Tell

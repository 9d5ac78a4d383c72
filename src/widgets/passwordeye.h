#pragma once

#include <QObject>

class QLineEdit;

// Hides what stands in a line edit, but while the eye in it is held down by the mouse, or F8 is in the edit.
// The eye is no stop of the Tab key. What is shown is hidden again when the edit loses the focus.
class PasswordEye : public QObject
{
    Q_OBJECT
public:
    // Belongs to the edit. The tool tip is already translated.
    PasswordEye(const QString &toolTip, QLineEdit *edit);

    void hide();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void reveal();

    QLineEdit *m_edit;
};

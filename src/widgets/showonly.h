#pragma once

#include <QObject>

class QLineEdit;

// Keeps the ground of a field that only shows that of the window, on each desktop: it does not look as if one
// could type into it.
class ShowOnly : public QObject
{
    Q_OBJECT
public:
    // Makes the field read-only. The field owns what is made.
    static void make(QLineEdit *field);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit ShowOnly(QLineEdit *field);
    void setGround();

    QLineEdit *m_field;
};

#pragma once

#include <QWidget>

class QLineEdit;

// A unit in a field, at its right end, where the text leaves room for it. It is no part of the text.
class UnitMark : public QWidget
{
    Q_OBJECT
public:
    UnitMark(const QString &unit, QLineEdit *edit);

    const QString &unit() const { return m_unit; }

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();

    QLineEdit *m_edit;
    QString m_unit;
};

#pragma once

#include <QStyledItemDelegate>

// Draws live values: rows that are not valid have a colour of their own, all rows are grey once they are out
// of date, and a value that has just changed is marked for a moment. A text's colour comes with its
// background's, whatever the desktop's.
class LiveDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    static constexpr int markTime = 600; // ms

    using QStyledItemDelegate::QStyledItemDelegate;

    // What is drawn from now on; the time is of the clock by which the values have changed.
    void setState(qint64 now, bool outOfDate);

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    qint64 m_now = 0; // ms
    bool m_outOfDate = false;
};

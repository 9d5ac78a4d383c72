#pragma once

#include <QObject>

class QTableView;

// Tells the text of a cell that is cut short in a tool tip, in full.
class CellTips : public QObject
{
    Q_OBJECT
public:
    static void install(QTableView *table);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit CellTips(QTableView *table);

    QTableView *m_table;
};

#pragma once

#include <QTableWidget>

// The table of a live page. What is selected can be dragged out of it and is only copied thereby; a drag from
// elsewhere selects.
class LiveTable : public QTableWidget
{
    Q_OBJECT
public:
    explicit LiveTable(QWidget *parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;
};

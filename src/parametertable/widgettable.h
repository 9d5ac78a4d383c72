#pragma once

#include <QPersistentModelIndex>
#include <QPointer>
#include <QTableWidget>
#include <QVector>

// A table with widgets in its cells, each a CellWidget. A cell keeps its widget from the beginning. Those of
// the rows in sight are in the viewport; the others wait below a hidden parent, neither shown nor styled, so
// that what a step of scrolling costs does not grow with the table.
class WidgetTable : public QTableWidget
{
    Q_OBJECT
public:
    explicit WidgetTable(QWidget *parent);

protected:
    // The widget comes last of all cells as the Tab key goes. It is out of sight until the next layout.
    void putWidget(int row, int column, QWidget *widget);

    void updateEditorGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // A widget in the viewport; null when it is deleted.
    struct Cell {
        QPointer<QWidget> widget;
        QPersistentModelIndex index;
    };

    QWidget *lastWidget();
    void placeWidgets(bool placeAgain);
    void placeWidget(QWidget *widget, const QModelIndex &index, bool again);
    void moveTo(QWidget *widget, QWidget *parent);
    QVector<int> rowsInSight() const;
    int rowInUse() const;

    QWidget *m_waiting; // hidden parent of the widgets out of sight
    QVector<Cell> m_placed;
    QPointer<QWidget> m_lastPut; // behind which the next widget comes in the tab order
    bool m_moves = false;        // a widget, from one parent to another
};

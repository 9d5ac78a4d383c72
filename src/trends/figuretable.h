#pragma once

#include <QSize>
#include <QTableView>

class FigureModel;

// The table below a plot: a row a curve. Delete takes the curves of the selected rows away.
class FigureTable : public QTableView
{
    Q_OBJECT
public:
    explicit FigureTable(QWidget *parent = nullptr);

    FigureModel *figures() const { return m_figures; }
    // Columns that say nothing now are hidden.
    void showColumns(bool markers, bool skipped);

    QSize sizeHint() const override;

signals:
    // Rows, the greatest first.
    void removeAsked(const QVector<int> &rows);

private:
    void setUpColumns();
    void askToRemove();

    FigureModel *m_figures;
};

#pragma once

#include "history/samplesource.h"
#include "trends/curve.h"

#include <QAbstractTableModel>
#include <QHash>

class QWidget;

// The curves of a window, a row each, with their figures over what is on screen. Checks show and hide a curve
// and choose its scale.
class FigureModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column {
        Name, // with the check that shows the curve
        Type,
        Current,
        Least,
        Greatest,
        Mean,
        Skipped,
        AtA,
        AtB,
        Difference,
        RightScale,
        ColumnCount
    };

    // The list, not owned, gives the colours of the pieces of lines beside the names.
    FigureModel(QWidget *list, QObject *parent);

    const QVector<Curve> &curves() const { return m_curves; }
    QVector<Point> points() const;
    // Those that are there already stay as they are. Returns those that are new.
    QVector<PointId> add(const QVector<Point> &points);
    // Rows, the greatest first.
    QVector<PointId> remove(const QVector<int> &rows);
    // Types and addresses may have changed.
    void describe(const QVector<Point> &points);
    // An answer an element; of points that are not here nothing is taken.
    void setAnswers(const SampleSource::Request &request, const QVector<Thinned> &answers);
    // The plot now shows that range. Figures of another one are not told.
    void setScreen(const TimeRange &range);
    // What the points are at a mark. Those that are not among them have no value there.
    void setValues(Mark mark, const SampleSource::Moment &moment, const QVector<ValueAt> &values);

    bool hasSkipped() const;
    // Whether a curve that is shown is on the scale on the right.
    bool hasRightScale() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

signals:
    // Curves came or went, or one is shown otherwise than before.
    void curvesChanged();

private:
    void suggestSides();
    void takeEnds();
    void relabel();
    int freeStyle() const;

    QWidget *m_list;
    QVector<Curve> m_curves;
    TimeRange m_screen{0, -1};

    struct End {
        qint64 time;
        QHash<PointId, ValueAt> values;
    };
    QVector<End> m_ends; // told last, the newest at the end; that of the answers need not be the newest
};

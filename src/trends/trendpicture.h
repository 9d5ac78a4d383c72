#pragma once

#include "trends/curve.h"
#include "trends/markerlines.h"
#include "trends/timeview.h"

#include <QCoreApplication>
#include <QImage>
#include <QPalette>

class FigureModel;
class QPainter;

// A trend as a picture: title, time, sources, plot and the figures of the curves that are shown.
class TrendPicture
{
    Q_DECLARE_TR_FUNCTIONS(TrendPicture)
public:
    struct Head {
        QString title;
        QString sources; // whose values they are; may be empty
    };

    TrendPicture(const FigureModel *figures, const TimeView &view, const Markers &markers, Head head);

    // With twice as many pixels as the size has on screen, in the colours of the desktop.
    QImage image(const QSize &size, const QPalette &desktop) const;
    // A page of A4 across, in the colours of paper. False if it could not be written.
    bool saveSvg(const QString &path) const;
    // The figures, with a tab between columns and a line a curve below a line of titles.
    QString text() const;

private:
    struct Sheet {
        QSizeF size;
        QPalette colours;
        QFont font;
    };

    void paint(QPainter *painter, const Sheet &sheet) const;
    qreal paintHead(QPainter *painter, const QRectF &area) const;
    void paintFigures(QPainter *painter, const QRectF &area, const QPalette &colours) const;
    struct Column {
        int number; // in the table
        qreal left;
        qreal width;
    };
    QVector<Column> placed(const QPainter *painter, const QRectF &area) const;
    QString cell(int row, int column) const;
    void paintRow(QPainter *painter, const QRectF &place, const QVector<Column> &columns, int row) const;
    void paintPlot(QPainter *painter, const QRectF &area, const Sheet &sheet) const;
    bool hasSkipped() const;
    QVector<int> columns() const;
    // Of the table; a negative one, the titles, before them.
    QVector<int> rows() const { return QVector<int>{-1} + m_rows; }
    int figureRows(qreal height, qreal line) const;

    const FigureModel *m_figures;
    QVector<int> m_rows; // of the curves that are shown
    TimeView m_view;
    Markers m_markers;
    Head m_head;
};

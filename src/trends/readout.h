#pragma once

#include "trends/curve.h"

#include <QWidget>

#include <optional>

// Lies over the canvas of a plot and tells what each curve says of the time at the pointer, beside a line
// there.
class Readout : public QWidget
{
    Q_OBJECT
public:
    explicit Readout(QWidget *canvas);

    // The time is that of the values at the pointer, the place in pixels of the canvas. Only curves that are
    // shown are told.
    void show(qint64 time, int x, const QVector<Curve> &curves);
    void clear();

    // The line of the time and one a curve, as they are shown.
    QStringList lines() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Row {
        QString label;
        QString value;
        int style;
    };

    QRect place(int labelWidth, int valueWidth, int rows) const;
    void drawBox(QPainter *painter) const;

    int m_x = -1; // negative: nothing is shown
    QString m_time;
    QVector<Row> m_rows;
};

#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>

#include <functional>

class QMouseEvent;
class QRubberBand;
class QWidget;

// What the mouse does on the canvas of a plot. All places are in pixels of the canvas.
class PlotMouse : public QObject
{
    Q_OBJECT
public:
    // The function tells which marker is at a place, -1 for none.
    PlotMouse(QWidget *canvas, std::function<int(int x)> markerAt);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void zoomed(int x, double factor); // by the wheel
    void framed(const QRect &rectangle);
    void dragged(const QPoint &by); // since the signal before
    void markerDragged(int marker, int x);
    void doubleClicked();
    void pointed(int x);
    void left();

private:
    enum class Job { None, Frame, Pan, Marker };

    bool press(const QMouseEvent *event);
    void move(const QMouseEvent *event);
    void release();
    void showShape(int x);

    QWidget *m_canvas;
    std::function<int(int x)> m_markerAt;
    QRubberBand *m_band;
    Job m_job = Job::None;
    int m_marker = -1;
    QPoint m_from;
};

#include "trends/plotmouse.h"

#include <QMouseEvent>
#include <QRubberBand>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr double wheelStep = 0.8; // of the span, for one step of a wheel
constexpr int leastFrame = 5;     // pixels: less is a click

} // namespace

PlotMouse::PlotMouse(QWidget *canvas, std::function<int(int x)> markerAt)
    : QObject(canvas)
    , m_canvas(canvas)
    , m_markerAt(std::move(markerAt))
    , m_band(new QRubberBand(QRubberBand::Rectangle, canvas))
{
    canvas->setMouseTracking(true);
    canvas->installEventFilter(this);
}

bool PlotMouse::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Wheel: {
        const auto *wheel = static_cast<QWheelEvent *>(event);
        if (const int turned = wheel->angleDelta().y()) { // not sideways
            emit zoomed(int(wheel->position().x()), std::pow(wheelStep, turned / 120.0));
        }
        return true;
    }
    case QEvent::MouseButtonPress:
        return press(static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        move(static_cast<QMouseEvent *>(event));
        break;
    case QEvent::MouseButtonRelease:
        release();
        break;
    case QEvent::MouseButtonDblClick:
        emit doubleClicked();
        return true;
    case QEvent::Leave:
        emit left();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool PlotMouse::press(const QMouseEvent *event)
{
    m_from = event->pos();
    m_marker = m_markerAt(m_from.x());
    const bool isLeft = event->button() == Qt::LeftButton;
    const bool isShifted = (event->modifiers() & Qt::ShiftModifier) != 0;
    if (event->button() == Qt::MiddleButton || (isLeft && isShifted)) {
        m_job = Job::Pan;
        m_canvas->setCursor(Qt::ClosedHandCursor);
    } else if (isLeft) {
        m_job = m_marker >= 0 ? Job::Marker : Job::Frame;
    }
    return false; // the canvas takes the focus
}

void PlotMouse::move(const QMouseEvent *event)
{
    const QPoint place = event->pos();
    switch (m_job) {
    case Job::None:
        showShape(place.x());
        break;
    case Job::Frame:
        m_band->setGeometry(QRect(m_from, place).normalized() & m_canvas->rect());
        m_band->show();
        break;
    case Job::Pan:
        emit dragged(place - m_from);
        m_from = place;
        break;
    case Job::Marker:
        emit markerDragged(m_marker, place.x());
        break;
    }
    emit pointed(place.x());
}

void PlotMouse::release()
{
    const Job done = m_job;
    m_job = Job::None;
    m_canvas->unsetCursor();
    if (done == Job::Frame && m_band->isVisible()) {
        m_band->hide();
        if (m_band->width() >= leastFrame) {
            emit framed(m_band->geometry());
        }
    }
}

void PlotMouse::showShape(int x)
{
    if (m_markerAt(x) >= 0) {
        m_canvas->setCursor(Qt::SizeHorCursor);
    } else {
        m_canvas->unsetCursor();
    }
}

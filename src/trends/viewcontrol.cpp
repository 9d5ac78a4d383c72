#include "trends/viewcontrol.h"

#include "trends/plotmouse.h"
#include "trends/trendmarks.h"
#include "trends/trendplot.h"

#include <QShortcut>

namespace {

constexpr double zoomStep = 0.5; // of the span, for a key or a tool
constexpr double panStep = 0.1;  // of the span
constexpr int markerReach = 5;   // pixels beside a marker that take hold of it

} // namespace

ViewControl::ViewControl(TrendPlot *plot, TrendMarks *marks, std::function<TimeRange()> extent)
    : QObject(plot)
    , m_plot(plot)
    , m_marks(marks)
    , m_extent(std::move(extent))
{
    listenTo(new PlotMouse(plot->canvas(), [this](int x) { return markerAt(x); }));
    addViewKeys();
    addMarkKeys();
}

void ViewControl::listenTo(PlotMouse *mouse)
{
    connect(mouse, &PlotMouse::zoomed, this, [this](int x, double factor) {
        m_view.zoom(m_plot->timeAt(x), factor);
        changed();
    });
    connect(mouse, &PlotMouse::framed, this, [this](const QRect &frame) {
        const auto values = [&](Side side) -> std::optional<ValueRange> {
            constexpr int leastHeight = 5; // pixels: less is a frame of time alone
            if (!m_plot->hasScale(side) || frame.height() < leastHeight) {
                return std::nullopt;
            }
            return m_plot->valuesBetween(side, frame.top(), frame.bottom());
        };
        m_view.zoomInto({m_plot->timeAt(frame.left()), m_plot->timeAt(frame.right())}, values(Side::Left),
                        values(Side::Right));
        changed();
    });
    connect(mouse, &PlotMouse::dragged, this, [this](const QPoint &by) {
        const double columns = m_plot->columns();
        pan(-by.x() / columns, double(by.y()) / qMax(1, m_plot->canvas()->height()));
    });
    connect(mouse, &PlotMouse::doubleClicked, this, [this] {
        m_view.fitValues();
        changed();
    });
    connect(mouse, &PlotMouse::markerDragged, this,
            [this](int marker, int x) { m_marks->setMarker(marker, m_plot->timeAt(x)); });
    connect(mouse, &PlotMouse::pointed, this, [this](int x) { m_marks->setCursor(m_plot->timeAt(x)); });
    connect(mouse, &PlotMouse::left, this, [this] { m_marks->setCursor(std::nullopt); });
}

void ViewControl::addKeys(const QVector<Key> &keys)
{
    for (const Key &key : keys) {
        auto *shortcut = new QShortcut(QKeySequence(key.key), m_plot);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, key.work);
    }
}

void ViewControl::addViewKeys()
{
    addKeys({
        {Qt::Key_Left, [this] { pan(-panStep); }},
        {Qt::Key_Right, [this] { pan(panStep); }},
        {Qt::Key_Up, [this] { pan(0, panStep); }},
        {Qt::Key_Down, [this] { pan(0, -panStep); }},
        {int(Qt::SHIFT) + Qt::Key_Up, [this] { zoomValues(zoomStep); }},
        {int(Qt::SHIFT) + Qt::Key_Down, [this] { zoomValues(1 / zoomStep); }},
        {Qt::Key_PageUp, [this] { pan(-1); }},
        {Qt::Key_PageDown, [this] { pan(1); }},
        {Qt::Key_Home, [this] { goTo(false); }},
        {Qt::Key_End, [this] { goTo(true); }},
        {Qt::Key_Plus, [this] { zoomIn(); }},
        {Qt::Key_Equal, [this] { zoomIn(); }}, // the same key without Shift
        {Qt::Key_Minus, [this] { zoomOut(); }},
        {Qt::Key_Escape, [this] { back(); }},
        {Qt::Key_Backspace, [this] { back(); }},
        {Qt::Key_Space, [this] { toggleFollowing(); }},
        {Qt::Key_F,
         [this] {
             m_view.fitValues();
             changed();
         }},
    });
    const QVector<qint64> spans = TimeView::spans();
    for (int index = 0; index < spans.size(); ++index) {
        addKeys({{Qt::Key_0 + (index + 1) % 10, [this, span = spans.at(index)] { setSpan(span); }}});
    }
}

void ViewControl::addMarkKeys()
{
    const auto step = [this](int pixels) {
        const qint64 column = qMax<qint64>(1, m_view.span() / m_plot->columns());
        m_marks->moveCursor(pixels * column, m_view.range());
    };
    constexpr int wide = 20; // pixels
    constexpr int ctrl = Qt::CTRL;
    constexpr int ctrlShift = ctrl + int(Qt::SHIFT);
    addKeys({
        {ctrl + Qt::Key_Left, [step] { step(-wide); }},
        {ctrl + Qt::Key_Right, [step] { step(wide); }},
        {ctrlShift + Qt::Key_Left, [step] { step(-1); }},
        {ctrlShift + Qt::Key_Right, [step] { step(1); }},
        {Qt::Key_A, [this] { m_marks->setMarkerAtCursor(0, m_view.range()); }},
        {Qt::Key_B, [this] { m_marks->setMarkerAtCursor(1, m_view.range()); }},
        {Qt::Key_M, [this] { toggleMarkers(); }},
    });
}

void ViewControl::setView(const TimeView &view)
{
    m_view = view;
    changed();
}

void ViewControl::setPresent(qint64 time)
{
    m_view.setPresent(time);
    if (m_view.isFollowing()) {
        emit viewWentOn();
    }
}

void ViewControl::setSpan(qint64 span)
{
    m_view.setSpan(span);
    changed();
}

void ViewControl::zoomIn()
{
    zoomAboutCursor(zoomStep);
}

void ViewControl::zoomOut()
{
    zoomAboutCursor(1 / zoomStep);
}

// While following about the present, so that it goes on.
void ViewControl::zoomAboutCursor(double factor)
{
    const TimeRange range = m_view.range();
    const qint64 middle = range.from + (range.to - range.from) / 2;
    m_view.zoom(m_view.isFollowing() ? range.to : m_marks->cursor().value_or(middle), factor);
    changed();
}

void ViewControl::back()
{
    m_view.back();
    changed();
}

void ViewControl::toggleFollowing()
{
    if (m_view.isFollowing()) {
        m_view.pause();
    } else {
        m_view.follow();
    }
    changed();
}

void ViewControl::toggleMarkers()
{
    m_marks->toggle(m_view.range());
}

int ViewControl::markerAt(int x) const
{
    for (int marker = 0; marker < 2; ++marker) {
        const std::optional<qint64> time = m_marks->markers().times[marker];
        if (time && qAbs(m_plot->placeOf(*time) - x) <= markerReach) {
            return marker;
        }
    }
    return -1;
}

void ViewControl::zoomValues(double factor)
{
    const auto zoomed = [&](Side side) -> std::optional<ValueRange> {
        if (!m_plot->hasScale(side)) {
            return std::nullopt;
        }
        return ValueScale::zoomed(m_view.values(side).value_or(m_plot->values(side)), factor);
    };
    m_view.setValues(zoomed(Side::Left), zoomed(Side::Right));
    changed();
}

void ViewControl::pan(double share, double height)
{
    m_view.pan(qRound64(share * double(m_view.span())), height);
    changed();
}

void ViewControl::goTo(bool end)
{
    const TimeRange extent = m_extent();
    if (extent.from > extent.to) {
        return;
    }
    const qint64 from = end ? extent.to - m_view.span() : extent.from;
    m_view.setRange({from, from + m_view.span()});
    changed();
}

void ViewControl::changed()
{
    emit viewChanged();
}

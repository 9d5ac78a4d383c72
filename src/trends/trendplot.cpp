#include "trends/trendplot.h"

#include "trends/eventlabels.h"
#include "trends/gapbands.h"
#include "trends/timescaledraw.h"
#include "trends/trendcurve.h"
#include "trends/trendtexts.h"
#include "trends/valuescaledraw.h"

#include <QEvent>
#include <QFontMetrics>

#include <qwt_date_scale_engine.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

namespace {

constexpr int tickDistance = 110; // pixels at least between the times of two labels

int axisOf(Side side)
{
    return side == Side::Left ? QwtPlot::yLeft : QwtPlot::yRight;
}

} // namespace

TrendPlot::TrendPlot(QWidget *parent)
    : QwtPlot(parent)
    , m_grid(new QwtPlotGrid)
    , m_gaps(new GapBands)
    , m_events(new EventLabels)
    , m_markers(new MarkerLines)
{
    setAutoReplot(false);
    auto *own = new QwtPlotCanvas(this);
    own->setFrameShape(QFrame::Box);
    own->setFrameShadow(QFrame::Plain);
    own->setLineWidth(1);
    own->setFocusIndicator(QwtPlotCanvas::CanvasFocusIndicator);
    own->setFocusPolicy(Qt::StrongFocus);
    own->setAccessibleName(tr("Curves"));
    own->setObjectName(QStringLiteral("curves"));
    setCanvas(own);
    for (QwtPlotItem *item : {static_cast<QwtPlotItem *>(m_grid), static_cast<QwtPlotItem *>(m_gaps),
                              static_cast<QwtPlotItem *>(m_events), static_cast<QwtPlotItem *>(m_markers)}) {
        item->attach(this);
    }
    setUpAxes();
    applyColours();
}

void TrendPlot::setUpAxes()
{
    setAxisScaleEngine(xBottom, new QwtDateScaleEngine(Qt::LocalTime));
    setAxisScaleDraw(xBottom, new TimeScaleDraw);
    setAxisScaleDraw(yLeft, new ValueScaleDraw);
    setAxisScaleDraw(yRight, new ValueScaleDraw);
    plotLayout()->setAlignCanvasToScales(true);
    for (const int axis : {int(xBottom), int(yLeft), int(yRight)}) {
        setAxisMaxMinor(axis, 5);
    }
    applyFont();
}

void TrendPlot::applyFont()
{
    for (const int axis : {int(xBottom), int(yLeft), int(yRight)}) {
        setAxisFont(axis, font());
    }
    showZone();
    // So that the plot keeps its width while labels move along, the widest at an end of the scale too.
    const int half = QFontMetrics(font()).horizontalAdvance(QStringLiteral("0000-00-00")) / 2 + 2;
    axisWidget(xBottom)->setMinBorderDist(half, half);
}

// A picture may be looked at in another zone, or in another half of the year.
void TrendPlot::showZone()
{
    QwtText title(QStringLiteral("%1 (%2)").arg(tr("Time of arrival at this computer"),
                                                TrendTexts::ofZones(m_view.range())));
    title.setFont(font());
    setAxisTitle(xBottom, title);
}

void TrendPlot::setCurves(const QVector<Curve> &curves)
{
    while (m_items.size() > curves.size()) {
        auto *item = m_items.takeLast();
        item->detach();
        delete item; // an item that is attached to no plot is nobody's
    }
    while (m_items.size() < curves.size()) {
        m_items.append(new TrendCurve);
        m_items.last()->attach(this);
    }
    QVector<Thinned::Gap> gaps;
    bool hasRight = false;
    for (int index = 0; index < curves.size(); ++index) {
        const Curve &curve = curves.at(index);
        m_items.at(index)->setCurve(curve, palette());
        gaps += curve.shown ? curve.data.gaps : QVector<Thinned::Gap>();
        hasRight |= curve.shown && curve.side == Side::Right;
    }
    m_gaps->setGaps(gaps);
    m_events->setCurves(curves, palette());
    m_curves = curves;
    enableAxis(yRight, hasRight);
}

void TrendPlot::setView(const TimeView &view)
{
    m_view = view;
    showZone();
    setAxisScale(xBottom, double(view.range().from), double(view.range().to));
    for (const Side side : {Side::Left, Side::Right}) {
        QVector<Statistics> shown;
        for (const Curve &curve : qAsConst(m_curves)) {
            if (curve.shown && curve.side == side) {
                shown.append(curve.data.statistics);
            }
        }
        const ValueRange range = view.values(side).value_or(ValueScale::around(shown));
        setAxisScale(axisOf(side), range.least, range.greatest);
    }
}

void TrendPlot::setMarkers(const Markers &markers)
{
    m_markers->setMarkers(markers);
}

int TrendPlot::columns() const
{
    return qMax(1, canvas()->contentsRect().width());
}

qint64 TrendPlot::timeAt(double x) const
{
    return qRound64(canvasMap(xBottom).invTransform(x));
}

double TrendPlot::placeOf(qint64 time) const
{
    return canvasMap(xBottom).transform(double(time));
}

ValueRange TrendPlot::valuesBetween(Side side, double top, double bottom) const
{
    const QwtScaleMap map = canvasMap(axisOf(side));
    return {map.invTransform(bottom), map.invTransform(top)};
}

bool TrendPlot::hasScale(Side side) const
{
    return axisEnabled(axisOf(side));
}

ValueRange TrendPlot::values(Side side) const
{
    const QwtInterval shown = axisInterval(axisOf(side));
    return {shown.minValue(), shown.maxValue()};
}

void TrendPlot::changeEvent(QEvent *event)
{
    QwtPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        applyColours();
        setCurves(m_curves);
        replot();
    } else if (event->type() == QEvent::FontChange) {
        applyFont();
    }
}

void TrendPlot::resizeEvent(QResizeEvent *event)
{
    fitTicks();
    QwtPlot::resizeEvent(event);
}

void TrendPlot::applyColours()
{
    const QColor text = palette().color(QPalette::Text);
    const QColor base = palette().color(QPalette::Base);
    setCanvasBackground(base);
    QColor faint = text;
    faint.setAlpha(40);
    m_grid->setMajorPen(faint, 0, Qt::SolidLine);
    m_gaps->setColours(text, base);
    m_markers->setColours(text, base);
}

void TrendPlot::fitTicks()
{
    setAxisMaxMajor(xBottom, qBound(2, width() / tickDistance, 12));
    const int lines = qBound(2, height() / 40, 10);
    setAxisMaxMajor(yLeft, lines);
    setAxisMaxMajor(yRight, lines);
}

#pragma once

#include <QColor>

#include <qwt_plot_item.h>

#include <optional>

// The two markers that the user sets, times in ms since 1970 UTC.
struct Markers {
    std::optional<qint64> times[2]; // A and B

    static QString name(int marker) { return marker == 0 ? QStringLiteral("A") : QStringLiteral("B"); }
    bool areBothSet() const { return times[0] && times[1]; }
    bool isAnySet() const { return times[0] || times[1]; }
};

// Draws each marker as a line with a flag.
class MarkerLines : public QwtPlotItem
{
public:
    MarkerLines();

    void setMarkers(const Markers &markers) { m_markers = markers; }
    const Markers &markers() const { return m_markers; }
    void setColours(const QColor &line, const QColor &ground);

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    Markers m_markers;
    QColor m_line;
    QColor m_ground;
};

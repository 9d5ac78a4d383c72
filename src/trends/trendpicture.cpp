#include "trends/trendpicture.h"

#include "trends/curvestyle.h"
#include "trends/figuremodel.h"
#include "trends/trendplot.h"
#include "trends/trendtexts.h"

#include <QApplication>
#include <QBuffer>
#include <QPainter>
#include <QSaveFile>
#include <QStyle>
#include <QSvgGenerator>

#include <qwt_plot_renderer.h>

#include <algorithm>

namespace {

constexpr qreal margin = 12;
constexpr int pixelsPerInch = 96;
constexpr QSizeF page{297 / 25.4 * pixelsPerInch, 210 / 25.4 * pixelsPerInch}; // A4 across
constexpr qreal figuresShare = 0.4;                                            // of the height at most
constexpr qreal nameShare = 3;                                                 // widths of the other columns
constexpr qreal swatch = CurveStyle::sampleSize.width() + 4;

QPalette paper()
{
    QPalette colours(Qt::white);
    for (const auto role : {QPalette::Base, QPalette::Window}) {
        colours.setColor(role, Qt::white);
    }
    for (const auto role : {QPalette::Text, QPalette::WindowText}) {
        colours.setColor(role, Qt::black);
    }
    return colours;
}

qreal lineHeight(const QPainter *painter)
{
    return painter->fontMetrics().height() + 3;
}

} // namespace

TrendPicture::TrendPicture(const FigureModel *figures, const TimeView &view, const Markers &markers,
                           Head head)
    : m_figures(figures)
    , m_view(view)
    , m_markers(markers)
    , m_head(std::move(head))
{
    for (int row = 0; row < figures->rowCount(); ++row) {
        if (figures->curves().at(row).shown) {
            m_rows.append(row);
        }
    }
}

QImage TrendPicture::image(const QSize &size, const QPalette &desktop) const
{
    constexpr int scale = 2;
    QImage image(size * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    paint(&painter, {QSizeF(size), desktop, QApplication::font()});
    return image;
}

bool TrendPicture::saveSvg(const QString &path) const
{
    QBuffer bytes;
    QSvgGenerator svg;
    svg.setOutputDevice(&bytes);
    svg.setResolution(pixelsPerInch);
    svg.setSize(page.toSize());
    svg.setViewBox(QRectF(QPointF(0, 0), page));
    svg.setTitle(m_head.title);
    QFont font = QApplication::font();
    font.setPointSizeF(9);
    QPainter painter(&svg);
    paint(&painter, {page, paper(), font});
    painter.end();
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes.data()) == bytes.size() && file.commit();
}

bool TrendPicture::hasSkipped() const
{
    return std::any_of(m_rows.cbegin(), m_rows.cend(), [this](int row) {
        return m_figures->curves().at(row).data.statistics.notNumbers > 0;
    });
}

QVector<int> TrendPicture::columns() const
{
    QVector<int> columns;
    for (int column = 0; column < FigureModel::ColumnCount; ++column) {
        const bool isOfMarkers = column >= FigureModel::AtA && column <= FigureModel::Difference;
        if ((column != FigureModel::Skipped || hasSkipped())
            && (column != FigureModel::RightScale || m_figures->hasRightScale())
            && (!isOfMarkers || m_markers.isAnySet())) {
            columns.append(column);
        }
    }
    return columns;
}

QString TrendPicture::text() const
{
    QStringList lines{m_head.title, TrendTexts::ofRange(m_view.range())};
    if (!m_head.sources.isEmpty()) {
        lines.append(m_head.sources);
    }
    const QVector<int> shown = columns();
    const QVector<int> all = rows();
    for (const int row : all) {
        QStringList cells;
        for (const int column : shown) {
            cells.append(cell(row, column));
        }
        lines.append(cells.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n'));
}

void TrendPicture::paint(QPainter *painter, const Sheet &sheet) const
{
    painter->setFont(sheet.font);
    painter->fillRect(QRectF(QPointF(0, 0), sheet.size), sheet.colours.color(QPalette::Base));
    painter->setPen(sheet.colours.color(QPalette::Text));
    QRectF area = QRectF(QPointF(0, 0), sheet.size).adjusted(margin, margin, -margin, -margin);
    area.setTop(area.top() + paintHead(painter, area));
    const qreal line = lineHeight(painter);
    QRectF figures = area;
    figures.setTop(area.bottom() - (1 + figureRows(area.height(), line)) * line);
    paintPlot(painter, QRectF(area.topLeft(), QPointF(area.right(), figures.top() - margin)), sheet);
    painter->setFont(sheet.font);
    paintFigures(painter, figures, sheet.colours);
}

// As far as there is room; the last row then tells how many more there are.
int TrendPicture::figureRows(qreal height, qreal line) const
{
    return qMin(m_rows.size(), qMax(1, int(height * figuresShare / line) - 1));
}

qreal TrendPicture::paintHead(QPainter *painter, const QRectF &area) const
{
    const qreal line = lineHeight(painter);
    const QRectF head(area.topLeft(), QSizeF(area.width(), line));
    const QString range = TrendTexts::ofRange(m_view.range());
    painter->drawText(head, Qt::AlignRight | Qt::AlignTop, range);
    QFont bold = painter->font();
    bold.setBold(true);
    const QFont plain = painter->font();
    painter->setFont(bold);
    const qreal room = area.width() - painter->fontMetrics().horizontalAdvance(range) - 2 * margin;
    painter->drawText(head, Qt::AlignLeft | Qt::AlignTop,
                      painter->fontMetrics().elidedText(m_head.title, Qt::ElideRight, int(room)));
    painter->setFont(plain);
    if (m_head.sources.isEmpty()) {
        return line + margin / 2;
    }
    painter->drawText(head.translated(0, line), Qt::AlignLeft | Qt::AlignTop,
                      painter->fontMetrics().elidedText(m_head.sources, Qt::ElideMiddle, int(area.width())));
    return 2 * line + margin / 2;
}

void TrendPicture::paintPlot(QPainter *painter, const QRectF &area, const Sheet &sheet) const
{
    TrendPlot plot;
    plot.setPalette(sheet.colours);
    plot.setFont(sheet.font);
    plot.resize(area.size().toSize());
    // Only a plot that is shown has laid its scales out, which is what the renderer goes by.
    plot.setAttribute(Qt::WA_DontShowOnScreen);
    plot.show();
    plot.setCurves(m_figures->curves());
    plot.setView(m_view);
    plot.setMarkers(m_markers);
    plot.replot();
    plot.updateLayout();
    QwtPlotRenderer renderer;
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground);
    painter->save();
    renderer.render(&plot, painter, area);
    painter->restore();
}

void TrendPicture::paintFigures(QPainter *painter, const QRectF &area, const QPalette &colours) const
{
    const qreal line = lineHeight(painter);
    const int rows = qRound(area.height() / line) - 1;
    const int more = m_rows.size() - rows;
    painter->setPen(colours.color(QPalette::Text));
    const QVector<Column> columns = placed(painter, area);
    paintRow(painter, QRectF(area.topLeft(), QSizeF(area.width(), line)), columns, -1);
    for (int row = 0; row < rows; ++row) {
        const QRectF place(area.left(), area.top() + (row + 1) * line, area.width(), line);
        if (more > 0 && row == rows - 1) {
            painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter, tr("%1 more").arg(more + 1));
            break;
        }
        CurveStyle::drawSample(painter, m_figures->curves().at(m_rows.at(row)).style, colours,
                               QPointF(place.left(), place.center().y()));
        paintRow(painter, place, columns, m_rows.at(row));
    }
    painter->setPen(QPen(colours.color(QPalette::Text), 0.5));
    painter->drawLine(QPointF(area.left(), area.top() + line), QPointF(area.right(), area.top() + line));
}

// Each column is as wide as its texts, the name has the rest; equal parts where that is too little.
QVector<TrendPicture::Column> TrendPicture::placed(const QPainter *painter, const QRectF &area) const
{
    constexpr qreal space = 12;
    const QVector<int> shown = columns();
    const QVector<int> rows = this->rows();
    const qreal room = area.width() - swatch;
    const qreal part = room / (nameShare + shown.size() - 1);
    QVector<Column> placed;
    qreal all = 0; // but the name
    for (const int column : shown) {
        qreal width = 0;
        for (const int row : rows) {
            width = qMax<qreal>(width, painter->fontMetrics().horizontalAdvance(cell(row, column)) + space);
        }
        placed.append({column, 0, width});
        all += column == FigureModel::Name ? 0 : width;
    }
    const bool isEnough = all + nameShare * part <= room;
    qreal left = area.left() + swatch;
    for (Column &column : placed) {
        if (column.number == FigureModel::Name) {
            column.width = isEnough ? room - all : nameShare * part;
        } else if (!isEnough) {
            column.width = part;
        }
        column.left = left;
        left += column.width;
    }
    return placed;
}

// The title for a negative row.
QString TrendPicture::cell(int row, int column) const
{
    return row < 0 ? m_figures->headerData(column, Qt::Horizontal).toString()
                   : m_figures->index(row, column).data().toString().simplified();
}

void TrendPicture::paintRow(QPainter *painter, const QRectF &place, const QVector<Column> &columns,
                            int row) const
{
    for (const Column &column : columns) {
        const QRectF box(column.left, place.top(), column.width - 6, place.height());
        const bool isText = column.number == FigureModel::Name || column.number == FigureModel::Type;
        const QString text = cell(row, column.number);
        painter->drawText(box, int(isText ? Qt::AlignLeft : Qt::AlignRight) | int(Qt::AlignVCenter),
                          painter->fontMetrics().elidedText(text, Qt::ElideRight, int(box.width())));
    }
}

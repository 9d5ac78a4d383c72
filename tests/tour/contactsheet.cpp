#include "contactsheet.h"

#include <QPainter>

#include <algorithm>

namespace {

// In pixels of the desktop, which may be several of the picture.
constexpr int columns = 6;
constexpr int columnWidth = 530;
constexpr int gap = 10;
constexpr int nameHeight = 22;

QSize sizeOf(const QPixmap &picture)
{
    return picture.size() / picture.devicePixelRatio();
}

} // namespace

QPixmap ContactSheet::compose() const
{
    QVector<int> bottoms(columns, 0);
    QVector<QPoint> places;
    for (const Picture &picture : m_pictures) {
        // A picture that is wider than a column takes as many as it needs.
        const int span = qMin(columns, (sizeOf(picture.pixmap).width() + columnWidth - 1) / columnWidth);
        int column = 0;
        int top = -1;
        for (int first = 0; first + span <= columns; ++first) {
            const int height = *std::max_element(bottoms.cbegin() + first, bottoms.cbegin() + first + span);
            if (top < 0 || height < top) {
                column = first;
                top = height;
            }
        }
        places.append({column * (columnWidth + gap), top});
        const int bottom = top + nameHeight + sizeOf(picture.pixmap).height() + gap;
        std::fill(bottoms.begin() + column, bottoms.begin() + column + span, bottom);
    }
    const double scale = m_pictures.isEmpty() ? 1 : m_pictures.first().pixmap.devicePixelRatio();
    const int height = *std::max_element(bottoms.cbegin(), bottoms.cend());
    QPixmap sheet(QSize(columns * (columnWidth + gap), height) * scale);
    sheet.setDevicePixelRatio(scale);
    sheet.fill(QColor(0x80, 0xa0, 0xc0));
    QPainter painter(&sheet);
    for (int index = 0; index < m_pictures.size(); ++index) {
        painter.drawText(places.at(index) + QPoint(0, nameHeight - 6), m_pictures.at(index).name);
        painter.drawPixmap(places.at(index) + QPoint(0, nameHeight), m_pictures.at(index).pixmap);
    }
    return sheet;
}

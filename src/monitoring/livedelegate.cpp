#include "monitoring/livedelegate.h"

#include "monitoring/monitoringtable.h"

namespace {

// So much of the first colour, the rest of the second.
QColor mixed(const QColor &first, const QColor &second, double share)
{
    const auto part = [share](int a, int b) { return qRound(a * share + b * (1 - share)); };
    return {part(first.red(), second.red()), part(first.green(), second.green()),
            part(first.blue(), second.blue())};
}

// Each pair reads well on its own: the contrast is above 4.5 to 1.
struct Colours {
    QColor background;
    QColor text;
};
const Colours notValid{{0xf6, 0xe6, 0xc8}, {0x5f, 0x43, 0x0a}};
const Colours notValidOutOfDate{{0xea, 0xe6, 0xdd}, {0x66, 0x5e, 0x4e}};
constexpr double greyShare = 0.6;  // of the text's colour in the grey of what is out of date
constexpr double markShare = 0.18; // of the highlight in the background of what has just changed

} // namespace

void LiveDelegate::setState(qint64 now, bool outOfDate)
{
    m_now = now;
    m_outOfDate = outOfDate;
}

void LiveDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (MonitoringTable::isNumber(index)) { // so that a larger one looks larger
        option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
    }
    // Grey alone is hard to see in bad light. A name that just fits would be cut off.
    option->font.setItalic(m_outOfDate && index.column() == MonitoringTable::Value);
    QPalette &palette = option->palette;
    if (!MonitoringTable::isValid(index)) {
        const Colours &colours = m_outOfDate ? notValidOutOfDate : notValid;
        option->backgroundBrush = colours.background;
        palette.setColor(QPalette::Text, colours.text);
    } else if (m_outOfDate) {
        palette.setColor(QPalette::Text,
                         mixed(palette.color(QPalette::Text), palette.color(QPalette::Base), greyShare));
    }
    const qint64 changedAt = MonitoringTable::changedAt(index);
    if (!m_outOfDate && changedAt >= 0 && m_now - changedAt < markTime) {
        const QColor ground =
            MonitoringTable::isValid(index) ? palette.color(QPalette::Base) : notValid.background;
        option->backgroundBrush = mixed(palette.color(QPalette::Highlight), ground, markShare);
    }
}

#include "monitoring/liveitems.h"

#include "widgets/tooltip.h"

#include <cmath>
#include <limits>

NameItem::NameItem()
    : QTableWidgetItem(itemType)
{
    static qint64 made = 0;
    m_arrival = made++;
}

QVariant NameItem::data(int role) const
{
    return role == Qt::ToolTipRole ? QVariant(plainToolTip(text())) : QTableWidgetItem::data(role);
}

bool NameItem::operator<(const QTableWidgetItem &other) const
{
    if (m_rank != noRank && other.type() == itemType) {
        return m_rank < static_cast<const NameItem &>(other).m_rank;
    }
    return text() < other.text();
}

NumberItem::NumberItem()
    : QTableWidgetItem(itemType)
{
}

QVariant NumberItem::data(int role) const
{
    switch (role) {
    case changedAtRole:
        return m_changedAt;
    case isNumberRole:
        return !std::isnan(number());
    default:
        return QTableWidgetItem::data(role);
    }
}

void NumberItem::setData(int role, const QVariant &value)
{
    m_isRead = false;
    QTableWidgetItem::setData(role, value);
}

double NumberItem::number() const
{
    if (!m_isRead) {
        bool isNumber = false;
        m_number = text().toDouble(&isNumber);
        if (!isNumber) {
            m_number = std::numeric_limits<double>::quiet_NaN();
        }
        m_isRead = true;
    }
    return m_number;
}

bool NumberItem::operator<(const QTableWidgetItem &other) const
{
    const double left = number();
    const double right = other.type() == itemType ? static_cast<const NumberItem &>(other).number()
                                                  : std::numeric_limits<double>::quiet_NaN();
    if (std::isnan(left) != std::isnan(right)) {
        return std::isnan(right);
    }
    if (left < right || left > right) { // neither where there is no number
        return left < right;
    }
    return text() < other.text();
}

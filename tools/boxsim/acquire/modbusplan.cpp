#include "boxsim/acquire/modbusplan.h"

#include "boxsim/acquire/health.h"

#include <algorithm>
#include <tuple>

int ModbusRequest::count() const
{
    int end = 0;
    for (const ModbusItem &item : items) {
        end = qMax(end, item.end());
    }
    return end - first();
}

ModbusPlan::ModbusPlan(const QVector<SimPoint> &points, const QMap<QString, QString> &settings, bool grouping)
    : m_grouping(grouping)
{
    const QString yes = QStringLiteral("1");
    m_order.bytes = settings.value(QStringLiteral("byteOrder"));
    m_order.charReversed = settings.value(QStringLiteral("charReversed")) == yes;
    const bool countsFrom0 = settings.value(QStringLiteral("startAddress0")) == yes;
    for (int i = 0; i < points.size(); ++i) {
        take(i, points.at(i), countsFrom0);
    }
    const auto place = [](const ModbusItem &item) {
        return std::make_tuple(item.address.area, item.address.number, item.count);
    };
    std::stable_sort(m_items.begin(), m_items.end(),
                     [&](const ModbusItem &a, const ModbusItem &b) { return place(a) < place(b); });
    reset();
}

void ModbusPlan::take(int index, const SimPoint &point, bool countsFrom0)
{
    const ModbusType type(point.dataType, point.length);
    ModbusAddress address;
    QString reason;
    if (!type.isValid()) {
        reason = QStringLiteral("there is no type %1 of length %2").arg(point.dataType).arg(point.length);
    } else if (readModbusAddress(point.addr, type.isBool(), countsFrom0, &address, &reason)) {
        const bool bit = isBitArea(address.area);
        const ModbusItem item = {index, address, type, bit ? 1 : type.registers()};
        if (bit && !type.isBool()) {
            reason = QStringLiteral("%1 at %2 is a bit").arg(point.dataType, point.addr);
        } else if (item.end() > 65536) {
            reason = QStringLiteral("it reaches past the last register");
        } else {
            m_items.append(item);
        }
    }
    if (!reason.isEmpty()) {
        m_refusals.append({index, reason});
    }
}

void ModbusPlan::reset()
{
    m_requests.clear();
    int end = 0; // of the request that is being made
    for (const ModbusItem &item : qAsConst(m_items)) {
        const bool joins = m_grouping && !m_requests.isEmpty()
            && m_requests.constLast().area() == item.address.area && item.address.number <= end
            && qMax(end, item.end()) - m_requests.constLast().first() <= mostInRequest(item.address.area);
        if (!joins) {
            m_requests.append(ModbusRequest());
            end = 0;
        }
        m_requests.last().items.append(item);
        end = qMax(end, item.end());
    }
}

bool ModbusPlan::split(int request)
{
    const ModbusRequest whole = m_requests.at(request);
    const int half = whole.items.size() / 2;
    if (half == 0) {
        return false;
    }
    m_requests[request].items = whole.items.mid(0, half);
    m_requests.insert(request + 1, {whole.items.mid(half), whole.failures});
    return true;
}

void ModbusPlan::putLast(int request)
{
    m_requests.append(m_requests.takeAt(request));
}

void ModbusPlan::noteAnswer(int request)
{
    m_requests[request].failures = 0;
}

bool ModbusPlan::noteFailure(int request)
{
    return ++m_requests[request].failures >= Health::patience;
}

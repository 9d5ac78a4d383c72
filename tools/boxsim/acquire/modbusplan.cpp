#include "boxsim/acquire/modbusplan.h"

#include "boxsim/acquire/health.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace {

constexpr int mostTrust = 1000; // readings

// The place in a reading.
int rank(const ModbusRequest &request)
{
    if (request.failures == 0) {
        return 0;
    }
    if (request.items.size() > 1) {
        return 1;
    }
    return request.failures < Health::patience ? 2 : 3;
}

bool comesBefore(const ModbusItem &a, const ModbusItem &b)
{
    const auto place = [](const ModbusItem &item) {
        return std::make_tuple(item.address.area, item.address.number, item.count);
    };
    return place(a) < place(b);
}

} // namespace

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
    std::stable_sort(m_items.begin(), m_items.end(), comesBefore);
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
    m_isInTurn = false;
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

bool ModbusPlan::split(int request, Split split)
{
    ModbusRequest first = m_requests.at(request);
    const int half = first.items.size() / 2;
    if (half == 0) {
        return false;
    }
    if (split == Split::Lasting) {
        // The other parts would have a gap between them.
        for (ModbusRequest &other : m_requests) {
            other.part = other.part == first.part ? 0 : other.part;
        }
        first.part = 0;
    } else if (first.part == 0) {
        first.part = ++m_lastPart;
    }
    first.answers = 0;
    first.failures = qMin(first.failures, Health::patience - 1);
    ModbusRequest second = first;
    second.items = first.items.mid(half);
    first.items = first.items.mid(0, half);
    m_requests[request] = first;
    m_requests.insert(request + 1, second);
    return true;
}

void ModbusPlan::beginReading()
{
    joinAnswered();
    if (!std::exchange(m_isInTurn, false)) {
        std::stable_sort(m_requests.begin(), m_requests.end(),
                         [](const auto &a, const auto &b) { return rank(a) < rank(b); });
    }
}

void ModbusPlan::joinAnswered()
{
    for (const ModbusRequest &request : qAsConst(m_requests)) {
        const auto isSettled = [&](const ModbusRequest &other) {
            return other.part != request.part || other.answers >= other.trust;
        };
        if (request.part != 0 && std::all_of(m_requests.cbegin(), m_requests.cend(), isSettled)) {
            join(request.part);
            return;
        }
    }
}

void ModbusPlan::join(int part)
{
    const auto isPart = [part](const ModbusRequest &request) { return request.part == part; };
    ModbusRequest whole;
    for (const ModbusRequest &request : qAsConst(m_requests)) {
        if (isPart(request)) {
            whole.items += request.items;
            whole.trust = qMin(2 * request.trust, mostTrust);
        }
    }
    std::stable_sort(whole.items.begin(), whole.items.end(), comesBefore);
    whole.failures = Health::patience - 1;
    m_requests.erase(std::remove_if(m_requests.begin(), m_requests.end(), isPart), m_requests.end());
    m_requests.append(whole);
}

void ModbusPlan::putLast(int request)
{
    m_requests.append(m_requests.takeAt(request));
}

void ModbusPlan::putFirst(int request)
{
    m_isInTurn = true;
    std::rotate(m_requests.begin(), m_requests.begin() + request, m_requests.end());
}

void ModbusPlan::noteAnswer(int request)
{
    ModbusRequest &answered = m_requests[request];
    answered.failures = 0;
    answered.answers = qMin(answered.answers + 1, mostTrust);
}

bool ModbusPlan::noteFailure(int request)
{
    m_requests[request].answers = 0;
    return ++m_requests[request].failures >= Health::patience;
}

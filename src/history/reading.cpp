#include "history/reading.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QVariantMap>

#include <cmath>
#include <limits>

namespace {

// A wall clock that lags by so much is not set back but put right, bit by bit.
constexpr qint64 tolerance = 1000; // ms
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// NaN where the text is no finite number.
double numberOf(const QString &text, const QString &type)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    if (ok && std::isfinite(number)) {
        return number;
    }
    if (type.startsWith(QLatin1String("bool"), Qt::CaseInsensitive)) {
        if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) {
            return 1;
        }
        if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) {
            return 0;
        }
    }
    return noNumber;
}

// Whether it is an integer that the number does not give back.
bool isRounded(double number, const QString &text, const QString &type)
{
    constexpr double exactUpTo = 9007199254740992; // 2^53
    return std::fabs(number) >= exactUpTo && shapeOf(type) == Shape::Step
        && QString::number(number, 'f', 0) != text.trimmed();
}

} // namespace

Reading Reading::fromRow(const QVariantMap &row)
{
    Reading reading;
    QString value;
    QString valid;
    const struct {
        QLatin1String key;
        QString &text;
    } texts[] = {{QLatin1String("name"), reading.name},
                 {QLatin1String("addr"), reading.address},
                 {QLatin1String("dataType"), reading.type},
                 {QLatin1String("value"), value},
                 {QLatin1String("valid"), valid}};
    // One walk over the map costs less than five searches in it.
    for (auto it = row.begin(); it != row.end(); ++it) {
        for (const auto &entry : texts) {
            if (it.key() == entry.key) {
                entry.text = it->toString();
                break;
            }
        }
    }
    reading.number = noNumber;
    if (valid != QLatin1String("1")) {
        reading.text = value;
        return reading;
    }
    reading.state = SampleState::Valid;
    if (shapeOf(reading.type) == Shape::Event) {
        reading.text = value;
        return reading;
    }
    reading.number = numberOf(value, reading.type);
    if (std::isnan(reading.number)) {
        reading.state = SampleState::NoNumber;
        reading.text = value;
    } else if (isRounded(reading.number, value, reading.type)) {
        reading.text = value;
    }
    return reading;
}

QVector<Reading> readRows(const QVariantList &rows, const QVector<Reading> &before)
{
    QVector<Reading> readings;
    readings.reserve(rows.size());
    for (int i = 0; i < rows.size(); ++i) {
        Reading reading = Reading::fromRow(rows.at(i).toMap());
        if (i < before.size()) {
            const Reading &other = before.at(i);
            for (QString Reading::*const text :
                 {&Reading::name, &Reading::address, &Reading::type, &Reading::text}) {
                if (reading.*text == other.*text) {
                    reading.*text = other.*text;
                }
            }
        }
        readings.append(std::move(reading));
    }
    return readings;
}

qint64 ArrivalClock::at(qint64 monotonic, qint64 wall)
{
    const qint64 goneOn = m_followed + monotonic - m_monotonic;
    const bool isSetBack = m_isStarted && wall < goneOn - tolerance;
    if (!isSetBack) {
        m_followed = wall;
        m_monotonic = monotonic;
    }
    const qint64 time = m_isStarted ? qMax(m_last + 1, isSetBack ? goneOn : wall) : wall;
    m_ahead = time - wall > tolerance ? time - wall : 0;
    m_isStarted = true;
    m_last = time;
    return time;
}

ArrivalClock::Present ArrivalClock::presentAt(qint64 monotonic, qint64 wall) const
{
    ArrivalClock copy(*this);
    const qint64 time = copy.at(monotonic, wall);
    return {time, copy.ahead()};
}

ArrivalClock::Present ArrivalClock::present() const
{
    QElapsedTimer monotonic;
    monotonic.start();
    return presentAt(monotonic.msecsSinceReference(), QDateTime::currentMSecsSinceEpoch());
}

qint64 ArrivalClock::now()
{
    QElapsedTimer monotonic;
    monotonic.start();
    return at(monotonic.msecsSinceReference(), QDateTime::currentMSecsSinceEpoch());
}

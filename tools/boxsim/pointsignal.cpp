#include "boxsim/pointsignal.h"

#include <QRegularExpression>
#include <QVector>

#include <cmath>

namespace {

using Motion = PointSignal::Motion;

struct Course {
    const char *word; // part of the name in lower case, or start of the data identifier
    Motion motion;
    double base;
    double swing;
};

// The first row whose word stands in the name wins: the longer terms come before those they contain.
const Course coursesByName[] = {
    {"power factor", Motion::Wander, 0.95, 0.04},
    {"功率因数", Motion::Wander, 0.95, 0.04},
    {"voltage", Motion::Wander, 230, 5},
    {"电压", Motion::Wander, 230, 5},
    {"current", Motion::Wander, 12, 4},
    {"电流", Motion::Wander, 12, 4},
    {"frequency", Motion::Wander, 50, 0.05},
    {"频率", Motion::Wander, 50, 0.05},
    {"reactive power", Motion::Wander, 620, 180},
    {"无功功率", Motion::Wander, 620, 180},
    {"power", Motion::Wander, 2700, 650},
    {"功率", Motion::Wander, 2700, 650},
    {"energy", Motion::Grow, 12000, 0.4},
    {"电能", Motion::Grow, 12000, 0.4},
    {"电量", Motion::Grow, 12000, 0.4},
    {"hours", Motion::Grow, 8000, 0.1},
    {"count", Motion::Grow, 100, 1},
    {"import", Motion::Grow, 12000, 0.4},
    {"export", Motion::Grow, 800, 0.1},
    {"temperature", Motion::Wander, 48, 6},
    {"温度", Motion::Wander, 48, 6},
    {"humidity", Motion::Wander, 55, 8},
    {"湿度", Motion::Wander, 55, 8},
    {"pressure", Motion::Wander, 6, 0.5},
    {"压力", Motion::Wander, 6, 0.5},
    {"level", Motion::Wander, 60, 12},
    {"flow", Motion::Wander, 18, 4},
    {"speed", Motion::Wander, 1480, 15},
    {"position", Motion::Wander, 9, 2},
    {"load", Motion::Wander, 62, 15},
};

// DL/T 645-2007 and -1997 data identifiers; kW, kvar, kVA and kWh.
const Course coursesByIdentifier[] = {
    {"0201", Motion::Wander, 230, 5},     {"B61", Motion::Wander, 230, 5},
    {"0202", Motion::Wander, 12, 4},      {"B62", Motion::Wander, 12, 4},
    {"0203", Motion::Wander, 2.7, 0.65},  {"B63", Motion::Wander, 2.7, 0.65},
    {"0204", Motion::Wander, 0.62, 0.18}, {"B64", Motion::Wander, 0.62, 0.18},
    {"0205", Motion::Wander, 2.8, 0.65},  {"0206", Motion::Wander, 0.95, 0.04},
    {"B65", Motion::Wander, 0.95, 0.04},  {"040004", Motion::Steady, 1600, 0},
    {"C03", Motion::Steady, 1600, 0},     {"00", Motion::Grow, 12000, 0.4},
    {"90", Motion::Grow, 12000, 0.4},     {"91", Motion::Grow, 900, 0.1},
};

constexpr double fullTurn = 6.283185307179586;

const Course usualCourse = {"", Motion::Wander, 50, 20};

struct Type {
    const char *name;
    double low;
    double high;
    int decimals;
};

// 64-bit and floating types are held to what a double counts exactly.
const Type types[] = {
    {"int8", -128, 127, 0},
    {"uint8", 0, 255, 0},
    {"int16", -32768, 32767, 0},
    {"uint16", 0, 65535, 0},
    {"int32", -2147483648.0, 2147483647, 0},
    {"uint32", 0, 4294967295.0, 0},
    {"int64", -9e15, 9e15, 0},
    {"uint64", 0, 9e15, 0},
    {"float", -9e15, 9e15, 2},
    {"double", -9e15, 9e15, 3},
};

const Type usualType = {"", -9e15, 9e15, 2};

// FNV-1a: the same on every machine, as qHash is not.
quint64 stirred(quint64 hash, const QByteArray &bytes)
{
    for (const char c : bytes) {
        hash = (hash ^ static_cast<quint8>(c)) * 0x100000001b3ULL;
    }
    return hash;
}

quint64 mixed(quint64 x)
{
    x += 0x9e3779b97f4a7c15ULL;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
    return x ^ (x >> 31);
}

const Course &courseOf(const SimPoint &point, bool meter)
{
    const QByteArray name = point.name.toLower().toUtf8();
    if (meter) {
        for (const Course &course : coursesByIdentifier) {
            if (point.addr.startsWith(QLatin1String(course.word), Qt::CaseInsensitive)) {
                return course;
            }
        }
    }
    for (const Course &course : coursesByName) {
        if (name.contains(course.word)) {
            return course;
        }
    }
    return usualCourse;
}

// A meter's format such as "XXX.X" or "NNNNNN": so many digits before and behind the point, no sign.
Type meterType(const QString &format)
{
    const int whole = format.indexOf(QLatin1Char('.'));
    const int decimals = whole < 0 ? 0 : format.size() - whole - 1;
    const int digits = whole < 0 ? format.size() : whole;
    return {"", 0, std::pow(10.0, qMin(digits, 12)) - std::pow(10.0, -decimals), qMin(decimals, 6)};
}

Type typeOf(const QString &dataType)
{
    for (const Type &type : types) {
        if (dataType.compare(QLatin1String(type.name), Qt::CaseInsensitive) == 0) {
            return type;
        }
    }
    return usualType;
}

} // namespace

PointSignal::PointSignal(const SimPoint &point, quint32 seed)
{
    static const QRegularExpression meterFormat(QStringLiteral("\\A[XN]+(\\.[XN]+)?\\z"));
    const QString dataType = point.dataType.trimmed();
    const bool meter = meterFormat.match(dataType).hasMatch();
    const Course &course = courseOf(point, meter);
    const Type type = meter ? meterType(dataType) : typeOf(dataType);
    const QByteArray identity = (point.name + QLatin1Char('\n') + point.addr).toUtf8();
    m_key = mixed(stirred(0xcbf29ce484222325ULL, identity) + seed);
    m_motion = course.motion;
    m_base = course.base;
    m_swing = course.swing;
    m_low = type.low;
    m_high = type.high;
    m_decimals = type.decimals;
    if (dataType.compare(QLatin1String("bool"), Qt::CaseInsensitive) == 0
        || dataType.compare(QLatin1String("boolean"), Qt::CaseInsensitive) == 0) {
        m_motion = Motion::Flip;
    } else if (dataType.compare(QLatin1String("string"), Qt::CaseInsensitive) == 0) {
        m_motion = Motion::Text;
        m_text = QStringLiteral("SIM-%1").arg(m_key % 1000000, 6, 10, QLatin1Char('0'));
        m_text = point.length > 0 ? m_text.left(point.length) : m_text;
    } else if (m_motion == Motion::Grow) {
        // Twice the last digit, so that rounding never hides a step.
        m_swing = qMax(m_swing, 2 * std::pow(10.0, -m_decimals));
    } else if (m_motion == Motion::Wander && m_decimals == 0) {
        m_swing = qMax(m_swing, 2.0);
    }
}

// From 0 up to, not including, 1.
double PointSignal::noise(quint64 step) const
{
    return static_cast<double>(mixed(m_key + step) >> 11) / 9007199254740992.0;
}

QString PointSignal::number(double value) const
{
    return QString::number(qBound(m_low, value, m_high), 'f', m_decimals);
}

QString PointSignal::value(quint64 step) const
{
    const auto at = static_cast<double>(step);
    const double own = static_cast<double>(m_key % 1000) / 1000; // sets points of one kind apart
    switch (m_motion) {
    case Motion::Flip:
        return (step + m_key % 16) / (2 + m_key % 5) % 2 == 0 ? QStringLiteral("0") : QStringLiteral("1");
    case Motion::Text:
        return m_text;
    case Motion::Steady:
        return number(m_base);
    case Motion::Grow: {
        const double grown = m_base * (0.5 + own) + m_swing * (at + 0.5 * noise(step));
        return number(std::fmod(grown, m_high + 1));
    }
    case Motion::Wander:
        break;
    }
    const double turn = fullTurn * (at / static_cast<double>(24 + m_key % 40) + own);
    return number(m_base + m_swing * (0.7 * std::sin(turn) + 0.6 * (noise(step) - 0.5)));
}

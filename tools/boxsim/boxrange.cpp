#include "boxsim/boxrange.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

QString serialNumberAt(const QString &first, int place)
{
    // No more digits than an int can hold; those before them stay as they are.
    static const QRegularExpression ending(QStringLiteral("[0-9]{1,9}\\z"));
    const QString digits = ending.match(first).captured();
    if (digits.isEmpty()) {
        return first + QString::number(place + 1);
    }
    return first.chopped(digits.size())
        + QStringLiteral("%1").arg(digits.toInt() + place, digits.size(), 10, QLatin1Char('0'));
}

} // namespace

BoxRange::BoxRange(const BoxSimOptions &options, int count, QObject *parent)
    : QObject(parent)
{
    for (int place = 0; place < count; ++place) {
        m_boxes.push_back(std::make_unique<BoxSim>(count == 1 ? options : optionsAt(options, place)));
        connect(m_boxes.back().get(), &BoxSim::connectionClosed, this, &BoxRange::connectionClosed);
    }
}

BoxSimOptions BoxRange::optionsAt(const BoxSimOptions &options, int place)
{
    BoxSimOptions own = options;
    own.address = QHostAddress(options.address.toIPv4Address() + static_cast<quint32>(place));
    own.serialNumber = serialNumberAt(options.serialNumber, place);
    own.seed = options.seed + static_cast<quint32>(place);
    return own;
}

bool BoxRange::start()
{
    m_error.clear();
    for (const auto &box : m_boxes) {
        if (!box->start()) {
            m_error = box->errorString();
            stop();
            return false;
        }
    }
    return true;
}

void BoxRange::stop()
{
    for (const auto &box : m_boxes) {
        box->interrupt(); // all at once, since each takes a while to end
    }
    for (const auto &box : m_boxes) {
        box->stop();
    }
}

bool BoxRange::isConnected() const
{
    return std::any_of(m_boxes.begin(), m_boxes.end(),
                       [](const auto &box) { return box->connectionCount() > 0; });
}

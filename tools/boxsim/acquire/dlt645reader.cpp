#include "boxsim/acquire/dlt645reader.h"

#include "boxsim/acquire/health.h"
#include "boxsim/acquire/stopflag.h"
#include "boxsim/simproject.h"

#include <QElapsedTimer>

#include <algorithm>

namespace {

constexpr int timeToOpen = 1000; // milliseconds, far more than a device file takes

SerialSettings usualSettings()
{
    SerialSettings usual;
    usual.baudRate = 2400;
    usual.parity = 'E';
    return usual;
}

} // namespace

Dlt645Reader::Dlt645Reader(const ReaderSetup &setup)
    : m_setup(setup)
    , m_line(setup.serialPath, serialSettings(setup.standard->parameters, usualSettings()), setup.stop,
             setup.silence, [log = setup.tell, standard = setup.standard->name](const QString &text) {
                 log(QStringLiteral("\"%1\": %2").arg(standard, text));
             })
{
    for (const SimDevice &device : setup.standard->devices) {
        m_meters.push_back(meterOf(device));
    }
}

Dlt645Reader::Meter Dlt645Reader::meterOf(const SimDevice &device) const
{
    Meter meter;
    meter.address = device.settings.value(QStringLiteral("slaveAddress"));
    Dlt645Query query;
    query.edition = device.settings.value(QStringLiteral("protocolVersion")) == QLatin1String("1")
        ? Dlt645Edition::Of2007
        : Dlt645Edition::Of1997;
    query.address = dlt645Address(meter.address);
    if (query.address.isEmpty()) {
        tell(QStringLiteral("meter \"%1\"").arg(meter.address), QStringLiteral("there is no such address"));
        return meter;
    }
    for (int at = 0; at < device.pointCount; ++at) {
        Item item;
        item.reading = at;
        if (takeItem(m_setup.standard->points.at(device.firstPoint + at), query, &item)) {
            meter.items.push_back(item);
        }
    }
    return meter;
}

bool Dlt645Reader::takeItem(const SimPoint &point, Dlt645Query query, Item *item) const
{
    query.item = dlt645Item(query.edition, point.addr);
    item->name = point.name;
    item->query = query;
    item->format = Dlt645Format::of(point.addr, point.dataType);
    if (query.item.isEmpty()) {
        tell(point.name,
             QStringLiteral("\"%1\" is no data identifier of DL/T 645-%2")
                 .arg(point.addr,
                      query.edition == Dlt645Edition::Of2007 ? QStringLiteral("2007")
                                                             : QStringLiteral("1997")));
        return false;
    }
    if (!item->format.isKnown()) {
        tell(point.name, QStringLiteral("\"%1\" is no format of a value").arg(point.dataType));
        return false;
    }
    return true;
}

void Dlt645Reader::tell(const QString &name, const QString &why) const
{
    m_setup.tell(QStringLiteral("\"%1\": %2 is not read, %3").arg(m_setup.standard->name, name, why));
}

bool Dlt645Reader::hasWork(int device) const
{
    return !m_meters[static_cast<size_t>(device)].items.empty();
}

QString Dlt645Reader::deviceName(int device) const
{
    return QStringLiteral("meter %1").arg(m_meters[static_cast<size_t>(device)].address);
}

int Dlt645Reader::openTimeout() const
{
    return timeToOpen;
}

bool Dlt645Reader::open(int /*timeout*/, QString *reason)
{
    return m_setup.mayOpen(reason) && m_line.open(reason);
}

DeviceReader::Result Dlt645Reader::read(int device, int timeout, PointReading *readings)
{
    const QString wrongChecksums = QStringLiteral("wrong checksums");
    Meter &meter = m_meters[static_cast<size_t>(device)];
    bool answered = false;
    qint64 damaged = 0; // milliseconds
    for (auto item = meter.items.begin(); item != meter.items.end() && !m_setup.stop->isSet(); ++item) {
        Dlt645Answer answer;
        QElapsedTimer clock;
        clock.start();
        switch (m_line.ask(item->query, timeout, &answer)) {
        case Dlt645Line::Exchange::HungUp:
            return {Outcome::Closed, QStringLiteral("the line hung up")};
        case Dlt645Line::Exchange::Restless:
            return {Outcome::LineLost, QStringLiteral("the line is never silent")};
        case Dlt645Line::Exchange::Silent:
            // Some meters do not answer to items that they lack: the others have their turn first next time.
            if (answered && !m_setup.stop->isSet()) {
                takeSilence(meter, &*item);
            }
            std::rotate(item, item + 1, meter.items.end());
            return {answered ? Outcome::Answered : Outcome::Silent, QStringLiteral("no answer")};
        case Dlt645Line::Exchange::Damaged:
            damaged += clock.elapsed();
            if (damaged >= timeout) {
                // The next reading begins with the items that had no turn.
                std::rotate(meter.items.begin(), item + 1, meter.items.end());
                return {answered ? Outcome::Answered : Outcome::Silent, wrongChecksums};
            }
            break;
        case Dlt645Line::Exchange::Answered:
            answered = true;
            item->failures = 0;
            take(meter, &*item, answer, &readings[item->reading]);
        }
    }
    return answered ? Result() : Result{Outcome::Silent, wrongChecksums};
}

void Dlt645Reader::takeSilence(const Meter &meter, Item *item) const
{
    if (++item->failures >= Health::patience && !item->told) {
        item->told = true;
        tell(item->name, QStringLiteral("meter %1 gives no answer to it").arg(meter.address));
    }
}

void Dlt645Reader::take(const Meter &meter, Item *item, const Dlt645Answer &answer, PointReading *reading)
{
    const bool refused = answer.kind == Dlt645Answer::Kind::Refused;
    const QString text = refused || answer.more ? QString() : item->format.text(answer.value);
    if (!text.isNull()) {
        *reading = {text, true};
        item->told = false;
        return;
    }
    if (item->told) {
        return;
    }
    item->told = true;
    if (refused) {
        tell(item->name,
             QStringLiteral("meter %1 refuses it: %2")
                 .arg(meter.address, item->query.errorText(answer.error)));
    } else if (answer.more) {
        tell(item->name, QStringLiteral("its value at meter %1 has more than one frame").arg(meter.address));
    } else {
        tell(item->name,
             QStringLiteral("meter %1 gives the bytes %2, which do not fit its format")
                 .arg(meter.address, QString::fromLatin1(answer.value.toHex())));
    }
}

std::unique_ptr<DeviceReader> makeDlt645Reader(const ReaderSetup &setup)
{
    return std::make_unique<Dlt645Reader>(setup);
}

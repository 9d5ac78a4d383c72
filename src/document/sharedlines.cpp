#include "document/sharedlines.h"

#include "document/checkedobject.h"
#include "document/checktext.h"

#include <QStringList>

using namespace Definitions;

namespace {

// Numbers are the same with and without zeros in front.
QString comparable(const QString &address, bool isMeter)
{
    if (isMeter) {
        constexpr int digits = 12;
        return address.trimmed().toUpper().rightJustified(digits, QLatin1Char('0'));
    }
    bool isNumber = false;
    const int number = address.trimmed().toInt(&isNumber);
    return isNumber ? QString::number(number) : address.trimmed();
}

} // namespace

void SharedLines::addStandard(CheckedObject *standard, unsigned kind)
{
    m_line.clear();
    if (kind == ModbusTcp) {
        const QString ip = standard->text("ip", Place::Parameter).trimmed();
        const QString port = comparable(standard->text("port", Place::Parameter), false);
        if (ip.isEmpty() || port.isEmpty()) {
            return;
        }
        m_line = ip + QLatin1Char(':') + port;
        const auto first = m_networks.constFind(m_line);
        if (first == m_networks.constEnd()) {
            m_networks.insert(m_line, standard->name());
        } else {
            standard->warning(CheckText::tr("'%1' has the same IP address and port, %2.")
                                  .arg(CheckText::shortened(*first), CheckText::shortened(m_line)));
        }
    } else if (kind & (ModbusRtu | Meter | CustomPoll)) {
        m_line = standard->text("serialport", Place::Parameter);
        if (!m_line.isEmpty()) {
            compareSettings(standard, m_line);
        }
    }
}

void SharedLines::compareSettings(CheckedObject *standard, const QString &port)
{
    const auto first = m_ports.constFind(port);
    if (first == m_ports.constEnd()) {
        m_ports.insert(port, *standard);
        return;
    }
    QStringList different;
    for (const char *key : {"baudRate", "dataBit", "stopBit", "parityBit", "rtsEnable"}) {
        const QString own = standard->text(key, Place::Parameter);
        const QString other = first->text(key, Place::Parameter);
        if (own != other) {
            different.append(CheckText::tr("%1: %2, not %3")
                                 .arg(CheckText::labelOf(QLatin1String(key)), CheckText::shortened(other),
                                      CheckText::shortened(own)));
        }
    }
    if (!different.isEmpty()) {
        standard->error(CheckText::tr("'%1' uses %2 with other settings (%3).")
                            .arg(CheckText::shortened(first->name()), CheckText::shortened(port),
                                 different.join(QLatin1String("; "))));
    }
}

void SharedLines::addStation(CheckedObject *standard, const PointCheck::Tab &tab, bool isMeter)
{
    const QString address = comparable(tab.address(), isMeter);
    if (m_line.isEmpty() || tab.address().trimmed().isEmpty()) {
        return;
    }
    const QString key = m_line + (isMeter ? QLatin1String("|meter|") : QLatin1String("|station|")) + address;
    const auto first = m_stations.constFind(key);
    if (first == m_stations.constEnd()) {
        m_stations.insert(
            key, CheckText::tr("tab %1 of '%2'").arg(tab.number).arg(CheckText::shortened(standard->name())));
    } else {
        standard->warning(tab.place()
                          + CheckText::tr("the same device as %1, on the same line.").arg(*first));
    }
}

#pragma once

#include "document/pointcheck.h"

#include <QHash>

// The lines that the Standards of a project are on, a serial port or a network address each, and who is on
// them twice.
class SharedLines
{
public:
    // Remarks on a Standard that shares its line with an earlier one, as far as that matters. What is added
    // next is on that line.
    void addStandard(CheckedObject *standard, unsigned kind);
    // Remarks on a slave or meter that is on the line already.
    void addStation(CheckedObject *standard, const PointCheck::Tab &tab, bool isMeter);

private:
    void compareSettings(CheckedObject *standard, const QString &port);

    QHash<QString, QString> m_networks;    // line to the first Standard's name
    QHash<QString, CheckedObject> m_ports; // serial port to the first Standard
    QHash<QString, QString> m_stations;    // line and station to the place of the first
    QString m_line;                        // of the Standard that was added last; empty for none
};

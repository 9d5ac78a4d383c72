#pragma once

#include "servers/pointtableform.h"

// The form of a Server of protocol "SL651": the telemetry connection of a hydrological station, and the
// points that are reported, each with the code of an element of the standard.
class ServerSL651EditDialog : public PointTableForm
{
    Q_OBJECT
public:
    // The item is not owned; a null workspace takes no messages and imports nothing.
    ServerSL651EditDialog(QStandardItem *item, Workspace *workspace);

public slots:
    // Clears a central station address that is not 1 to 255, in hexadecimal digits, and tells so.
    void validateCentralStationAddress();

protected:
    QWidget *makeCodeCell(const QString &code, QWidget *parent) override;
    QString codeOf(const QWidget *cell) const override;

private:
    void addConnection();

    TextField *m_centralStation = nullptr;
};

#pragma once

#include "boxsim/acquire/devicereader.h"
#include "boxsim/acquire/modbusline.h"
#include "boxsim/acquire/modbusplan.h"

#include <QDeadlineTimer>

#include <memory>
#include <vector>

// Reads the slaves of one Modbus Standard over any line.
class ModbusReader : public DeviceReader
{
public:
    ModbusReader(const ReaderSetup &setup, std::unique_ptr<ModbusLine> line);

    bool hasWork(int device) const override;
    QString deviceName(int device) const override;
    QString lineName() const override { return m_line->name(); }
    int openTimeout() const override { return m_line->openTimeout(); }
    int requestTimeout() const override { return m_line->requestTimeout(); }
    int quietTime() const override { return m_line->quietTime(); }
    int leastTimeout() const override { return m_line->leastTimeout(); }
    bool open(int timeout, QString *reason) override;
    void close() override { m_line->close(); }
    void settle() override { m_line->settle(); }
    bool isOpen() const override { return m_line->isOpen(); }
    Result read(int device, int timeout, PointReading *readings) override;
    void forget(int device) override;

private:
    struct Slave {
        int station;
        ModbusPlan plan;
        QVector<bool> told; // points that were told as refused or not answered since they were last read
        bool toldException = false; // that it answered with one that refuses no point
        bool isFoundFirst = false;  // whether no request was answered since it was lost
        int single = 0;             // number of the value that it is found by
    };

    // One read().
    struct Turn {
        int device;
        int timeout;
        bool answered;            // whether the device answered anything
        QDeadlineTimer reopening; // until when a line that was closed is opened anew; forever if none was
    };

    void tell(const QString &name, const QString &text) const;
    void tellRefusals(const Slave &slave, const SimDevice &device) const;
    ModbusAnswer ask(const Slave &slave, const ModbusRequest &request, Turn *turn, quint16 *words);
    bool reopen(Turn *turn);
    Result find(Slave *slave, Turn *turn, PointReading *readings);
    void takeValues(Slave *slave, const ModbusRequest &request, const QVector<quint16> &words,
                    PointReading *readings);
    void takeException(Slave *slave, int device, const ModbusRequest &request, const ModbusAnswer &answer);
    void takeFailure(Slave *slave, const Turn &turn, int request, Outcome outcome);
    void tellOnce(Slave *slave, int device, const ModbusItem &item, const QString &what);

    ReaderSetup m_setup;
    std::unique_ptr<ModbusLine> m_line;
    std::vector<Slave> m_slaves;
};

// Null, with the reason told, for a Standard whose parameters name no line.
std::unique_ptr<DeviceReader> makeModbusTcpReader(const ReaderSetup &setup);
std::unique_ptr<DeviceReader> makeModbusRtuReader(const ReaderSetup &setup);

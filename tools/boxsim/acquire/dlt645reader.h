#pragma once

#include "boxsim/acquire/devicereader.h"
#include "boxsim/acquire/dlt645line.h"
#include "boxsim/acquire/dlt645query.h"
#include "boxsim/acquire/dlt645value.h"

#include <memory>
#include <vector>

struct SimDevice;
struct SimPoint;

// Reads DL/T 645 meters over a serial line, one item a request.
class Dlt645Reader : public DeviceReader
{
public:
    explicit Dlt645Reader(const ReaderSetup &setup);

    bool hasWork(int device) const override;
    QString deviceName(int device) const override;
    QString lineName() const override { return m_line.name(); }
    int openTimeout() const override;
    int requestTimeout() const override { return m_line.requestTimeout(); }
    int quietTime() const override { return m_line.requestTimeout(); }
    int leastTimeout() const override { return m_line.leastTimeout(); }

    bool open(int timeout, QString *reason) override;
    void close() override { m_line.close(); }
    bool isOpen() const override { return m_line.isOpen(); }
    void settle() override { m_line.settle(); }
    Result read(int device, int timeout, PointReading *readings) override;

private:
    struct Item {
        QString name;
        int reading = 0; // its place among the points of the meter
        Dlt645Query query;
        Dlt645Format format;
        bool told = false; // why it cannot be read, since it was last read
        int failures = 0;  // times running that it was not answered, though others were
    };
    struct Meter {
        QString address; // as the project has it
        std::vector<Item> items;
    };

    Meter meterOf(const SimDevice &device) const;
    bool takeItem(const SimPoint &point, Dlt645Query query, Item *item) const;
    void tell(const QString &name, const QString &why) const;
    void takeSilence(const Meter &meter, Item *item) const;
    void take(const Meter &meter, Item *item, const Dlt645Answer &answer, PointReading *reading);

    ReaderSetup m_setup;
    Dlt645Line m_line;
    std::vector<Meter> m_meters;
};

std::unique_ptr<DeviceReader> makeDlt645Reader(const ReaderSetup &setup);

#pragma once

#include "boxsim/acquire/devicereader.h"
#include "boxsim/acquire/dlt645query.h"
#include "boxsim/acquire/dlt645value.h"
#include "boxsim/acquire/serialsettings.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>

#include <memory>
#include <vector>

class QSerialPort;
struct SimDevice;
struct SimPoint;

// Reads DL/T 645 meters over a serial line, one item a request.
class Dlt645Reader : public DeviceReader
{
public:
    explicit Dlt645Reader(const ReaderSetup &setup);
    ~Dlt645Reader() override;

    bool hasWork(int device) const override;
    QString deviceName(int device) const override;
    QString lineName() const override;
    int openTimeout() const override;
    int requestTimeout() const override;
    int leastTimeout() const override;

    bool open(int timeout, QString *reason) override;
    void close() override;
    void settle() override;
    bool isOpen() const override;
    Result read(int device, int timeout, PointReading *readings) override;

private:
    struct Item {
        QString name;
        int reading = 0; // its place among the points of the meter
        Dlt645Query query;
        Dlt645Format format;
        bool told = false; // why it cannot be read, since it was last read
    };
    struct Meter {
        QString address; // as the project has it
        std::vector<Item> items;
    };
    enum class Exchange {
        Answered,
        Silent,
        Damaged,  // there was an answer, with a wrong checksum
        HungUp,   // the line has failed
        Restless, // somebody else talks on the line without an end
    };

    Meter meterOf(const SimDevice &device) const;
    bool takeItem(const SimPoint &point, Dlt645Query query, Item *item) const;
    void tell(const QString &name, const QString &why) const;
    void tellLack(bool lacks, const char *what, bool *told) const;

    Exchange ask(const Dlt645Query &query, int timeout, Dlt645Answer *answer);
    Exchange waitForSilence();
    void waitForGap();
    bool send(const QByteArray &request, const QDeadlineTimer &deadline);
    Exchange receive(const Dlt645Query &query, const QDeadlineTimer &deadline, Dlt645Answer *answer);
    void take(const Meter &meter, Item *item, const Dlt645Answer &answer, PointReading *reading);

    ReaderSetup m_setup;
    SerialSettings m_settings;
    std::vector<Meter> m_meters;
    std::unique_ptr<QSerialPort> m_port; // lives in the thread of its line
    QElapsedTimer m_lastByte;            // when one came or went
    int m_silence = 0; // how long the line must be silent before the next request, as an answer may be late
    bool m_switchesRts = false;
    bool m_toldParity = false;
    bool m_toldRts = false;
};

std::unique_ptr<DeviceReader> makeDlt645Reader(const ReaderSetup &setup);

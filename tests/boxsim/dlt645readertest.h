#pragma once

#include "boxsim/acquire/dlt645reader.h"
#include "boxsim/acquire/stopflag.h"
#include "boxsim/simproject.h"
#include "metersim.h"
#include "run.h"

#include <QtTest>

#include <memory>

// What the tests of reading meters share: a simulated meter, and a reader of it.
class Dlt645ReaderTest : public QObject
{
    Q_OBJECT

public:
    static constexpr int patience = 5000; // milliseconds; no answer of the meter takes so long
    static constexpr int impatience = 50;

private slots:
    void initTestCase()
    {
        if (!MeterSim::whyNot().isEmpty()) {
            QSKIP(qPrintable(MeterSim::whyNot()));
        }
        QVERIFY(m_meter.start());
    }
    void init()
    {
        m_standard = SimStandard();
        m_standard.name = "Meters";
        m_standard.parameters = {{"baudRate", "115200"}, {"parityBit", "NONE"}, {"communicationGap", "0"}};
        m_standard.parameters["communicationTimeout"] =
            QString::number(impatience); // and the silence after it
        m_silence = std::make_shared<LineSilence>();
        m_stop = std::make_unique<StopFlag>();
        m_told.clear();
        QVERIFY(m_meter.tell("sound"));
        m_meter.takeRequests();
    }
    void cleanup() { m_reader.reset(); }

protected:
    // A meter with voltages of the phases A and B unless told otherwise.
    void addMeter(const QString &address,
                  const QVector<SimPoint> &points = {{"ua", "02010100", "XXX.X"},
                                                     {"ub", "02010200", "XXX.X"}})
    {
        SimDevice device;
        device.settings = {{"slaveAddress", address}, {"protocolVersion", "1"}};
        device.firstPoint = m_standard.points.size();
        device.pointCount = points.size();
        m_standard.devices.append(device);
        m_standard.points += points;
    }
    void makeReader(const QString &path = MeterSim::path())
    {
        ReaderSetup setup;
        setup.standard = &m_standard;
        setup.serialPath = path;
        setup.stop = m_stop.get();
        setup.silence = m_silence;
        setup.tell = [this](const QString &text) { m_told.append(text); };
        m_reader = std::make_unique<Dlt645Reader>(setup);
    }
    void open()
    {
        makeReader();
        QString reason;
        QVERIFY2(m_reader->open(patience, &reason), qPrintable(reason));
    }
    // The texts of a meter's values, "-" for what is not valid, and at last the reason if it has not
    // answered.
    QStringList read(int device = 0, int timeout = patience)
    {
        QVector<PointReading> readings(m_standard.devices.at(device).pointCount);
        const DeviceReader::Result result = m_reader->read(device, timeout, readings.data());
        QStringList texts;
        for (const PointReading &reading : qAsConst(readings)) {
            texts.append(reading.valid ? reading.value : "-");
        }
        if (result.outcome != DeviceReader::Outcome::Answered) {
            const bool lost = result.outcome >= DeviceReader::Outcome::Closed;
            texts.append((lost ? QString("lost: ") : QString("silent: ")) + result.reason);
        }
        return texts;
    }

    MeterSim m_meter;
    SimStandard m_standard;
    std::unique_ptr<StopFlag> m_stop;
    std::shared_ptr<LineSilence> m_silence;
    std::unique_ptr<Dlt645Reader> m_reader;
    QStringList m_told;
};

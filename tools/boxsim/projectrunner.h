#pragma once

#include "boxsim/acquire/acquisition.h"
#include "boxsim/pointsignal.h"
#include "boxsim/simproject.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

#include <memory>
#include <vector>

// Runs one project: a stream of reports for each Standard that has points, each with values one step on, or
// with those that are acquired.
class ProjectRunner : public QObject
{
    Q_OBJECT

public:
    // How reports are paced and spoiled. Times in milliseconds.
    struct Pace {
        int interval = -1;       // -1: each Standard's own; 0: no report by itself
        int flood = 0;           // reports a second in place of the interval; 0 for none
        bool interleave = false; // every Standard reports whenever one does
        int invalidEvery = 0;    // every so-manieth point is not valid; 0 for none
    };

    explicit ProjectRunner(QObject *parent = nullptr);

    // Runs project from step 0 in place of the one before; its first reports come at once.
    void run(const SimProject &project, quint32 seed, const QString &serialNumber);
    // Forgets the project.
    void clear();
    // Ends what clear() waits for; returns at once. clear() is to follow.
    void interrupt() { m_acquisition.interrupt(); }
    // Holds and resumes the reports without losing the project or its steps.
    void pause();
    void resume();
    void setPace(const Pace &pace);
    // Reads the devices of the project from now on, in place of making their values up.
    void setAcquisition(const AcquireOptions &options) { m_acquire = options; }
    // One report of each Standard, now.
    void reportNow();

    QString projectName() const { return m_project.name; }
    QStringList standardNames() const;

signals:
    // The JSON texts of reports that are due together: one, or all Standards' where they interleave.
    void reportsDue(const QVector<QByteArray> &reports);
    // A line for the log about what is acquired.
    void acquisitionTold(const QString &text);

private:
    struct Stream {
        SimStandard standard;
        std::vector<PointSignal> points; // empty before the first report
        quint64 step = 0;
        QVector<PointReading> acquired; // in place of points, one a point of the Standard
        std::unique_ptr<QTimer> timer;
    };

    void addStream(const SimStandard &standard);
    void acquire();
    void due(Stream &stream);
    void report(Stream &stream);
    void floodTick();
    PointReading value(const Stream &stream, int point) const;
    QByteArray nextReport(Stream &stream);

    SimProject m_project;
    quint32 m_seed = 0;
    QString m_serialNumber;
    std::vector<std::unique_ptr<Stream>> m_streams;
    Pace m_pace;
    AcquireOptions m_acquire;
    Acquisition m_acquisition;
    bool m_paused = false;
    QTimer m_floodTimer;
    QElapsedTimer m_floodClock;
    qint64 m_flooded = 0; // reports since m_floodClock started
    size_t m_floodNext = 0;
};

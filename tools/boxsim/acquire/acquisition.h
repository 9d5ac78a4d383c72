#pragma once

#include "boxsim/acquire/reading.h"
#include "boxsim/simproject.h"

#include <QObject>

#include <memory>
#include <vector>

class LineSilence;
class Link;

// How a Box in software reads real devices.
struct AcquireOptions {
    bool on = false;
    QMap<QString, QString> serialLines; // a project's "COM1" to the device file that stands for it
    bool grouping = true;               // whether neighbouring addresses may be joined in one request
};

// Reads the devices of a project, each line in a thread of its own.
class Acquisition : public QObject
{
    Q_OBJECT

public:
    // The serial line of a Standard, its path and file empty if it has none.
    struct SerialName {
        QString path;
        QString file; // when the project began
        int timeout;  // milliseconds
    };

    explicit Acquisition(QObject *parent = nullptr);
    ~Acquisition() override;

    // Reads these Standards in place of those before, each at its own interval, or all at the one given if
    // that is above 0. The first reading begins at once.
    void start(const QVector<SimStandard> &standards, const AcquireOptions &options, int interval);
    // Ends what is being waited for, and reads no more; returns at once. stop() is to follow.
    void interrupt();
    // Ends what is being waited for and closes all lines. Nothing is told any more when it returns, which it
    // does within 2 s.
    void stop();

signals:
    // A beat's reading of a Standard, counted as in start(): one row a point. What could not be read has its
    // last value, and is not valid. A thread that cannot keep up gets the last reading only.
    void readingOver(int standard, const QVector<PointReading> &readings);
    // A line for the log.
    void told(const QString &text);

private:
    Link *newLink();
    Link *sharedLink(const QString &file);
    void noteLines(const QVector<SerialName> &names);

    QVector<SimStandard> m_standards; // which the readers refer to
    std::vector<std::unique_ptr<Link>> m_links;
    QMap<QString, Link *> m_sharedLinks; // by the file of the line; empty for Standards that cannot be read
    QMap<QString, std::shared_ptr<LineSilence>> m_silences; // by the file, also for the next start()
    QMap<QString, QString> m_files;                         // of the lines of this project, by path
    int m_longest = 0;                                      // time-out of these lines
    int m_longestSilence = 0; // that a line may owe, also because of the project before
    int m_generation = 0;     // of the links: what older ones have told comes too late
};

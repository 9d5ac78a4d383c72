#pragma once

#include "history/recorder.h"
#include "history/samplesource.h"

#include <QProcess>
#include <QSignalSpy>
#include <QtTest>

#include <limits>

Q_DECLARE_METATYPE(SampleSource::Request)
Q_DECLARE_METATYPE(QVector<Thinned>)

// What the tests of recordings share.
namespace Recordings {

constexpr qint64 start = 1700000000000; // ms since 1970 UTC
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// For a QTemporaryDir: where no file waits for a disk, if there is such a place.
inline QString folderTemplate()
{
    const QString memory = "/dev/shm";
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + "/recordings-XXXXXX";
}

inline Reading reading(const QString &name, const QString &value, const QString &type = "float",
                       const QString &valid = "1")
{
    return Reading::fromRow(
        {{"name", name}, {"addr", "40001"}, {"dataType", type}, {"value", value}, {"valid", valid}});
}

inline Readings report(qint64 time, const QVector<Reading> &rows)
{
    return {start + time, "192.168.1.80", "plant", "meters", rows};
}

inline PointId id(const QString &name)
{
    return {"192.168.1.80", "plant", "meters", name};
}

inline RecordingTarget file(const QString &path)
{
    QString error;
    const RecordingTarget target = RecordingTarget::fromText(path, &error);
    if (target.kind != RecordingTarget::Kind::File) {
        qFatal("%s", qPrintable(error));
    }
    return target;
}

// For signal spies.
inline void registerAnswers()
{
    qRegisterMetaType<const void *>("const void*");
    qRegisterMetaType<SampleSource::Request>("SampleSource::Request");
    qRegisterMetaType<QVector<Thinned>>("QVector<Thinned>");
}

// Quick tries, for databases that fail.
inline Recorder::Limits quick()
{
    Recorder::Limits limits;
    limits.interval = 20;
    limits.retry = 50;
    limits.patience = 50;
    return limits;
}

// False if it takes longer than 20 s.
inline bool stopAndWait(Recorder *recorder)
{
    QSignalSpy stopped(recorder, &Recorder::stopped);
    recorder->stop();
    return !stopped.isEmpty() || stopped.wait(20000);
}

// Begins a recording with a report. False if that is not written within 5 s.
inline bool begin(Recorder *recorder, const RecordingTarget &target, const Readings &report)
{
    recorder->setLimits(quick());
    recorder->start(target, {});
    recorder->add(report);
    return QTest::qWaitFor([&] { return recorder->status().samples == report.rows.size(); });
}

// A whole recording; gives what its status was at the end.
inline Recorder::Status record(const RecordingTarget &target, const QVector<Readings> &reports,
                               const QSet<PointId> &points = {})
{
    Recorder recorder;
    recorder.setLimits(quick());
    recorder.start(target, points);
    for (const Readings &each : reports) {
        recorder.add(each);
    }
    if (!stopAndWait(&recorder)) {
        qFatal("The recorder does not stop.");
    }
    return recorder.status();
}

// What the program sqlite3 answers: a line a row, the cells with "|" between them.
inline QStringList asked(const QString &path, const QString &sql)
{
    QProcess sqlite;
    sqlite.setProcessChannelMode(QProcess::MergedChannels);
    sqlite.start("sqlite3", {"-cmd", ".timeout 10000", path, sql});
    if (!sqlite.waitForFinished()) {
        return {"sqlite3: " + sqlite.errorString()};
    }
    return QString::fromUtf8(sqlite.readAll()).split('\n', Qt::SkipEmptyParts);
}

// Another program that has locked the file.
class Lock
{
public:
    explicit Lock(const QString &path)
    {
        m_program.start("sqlite3", {path});
        m_program.write("BEGIN EXCLUSIVE;\nSELECT 'locked';\n");
        m_isHeld = m_program.waitForReadyRead();
    }
    bool isHeld() const { return m_isHeld; }
    bool release()
    {
        m_program.write("COMMIT;\n.quit\n");
        return m_program.waitForFinished();
    }

private:
    QProcess m_program;
    bool m_isHeld = false;
};

// The samples: name, time after the start, number, text, validity.
inline QStringList samples(const QString &path)
{
    return asked(
        path,
        QString("SELECT name, time - %1, coalesce(number, '-'), coalesce(text, '-'), validity FROM sample "
                "JOIN point ON point = id ORDER BY name, time, type")
            .arg(start));
}

} // namespace Recordings

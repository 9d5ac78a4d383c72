#pragma once

#include "history/recorder.h"

// One recording under way: what it takes, and how it goes, in words.
class Recording : public QObject
{
    Q_OBJECT
public:
    struct Subject {
        QString name;         // of what is recorded, for the user
        QString standard;     // all points of its reports, unless there are points
        QSet<PointId> points; // just these
    };

    Recording(const Subject &subject, const RecordingTarget &target, QObject *parent);

    // A report has come; that of another Standard is left out.
    void add(const Readings &report);
    void endSession(const QString &box, qint64 time);
    // What is under way is still written; stopped() tells the end.
    void stop();
    bool isStopping() const { return m_isStopping; }

    // Never empty.
    QString line() const;

signals:
    void lineChanged();
    // The text tells what could not be written, and is empty otherwise.
    void stopped(const QString &error);

private:
    Subject m_subject;
    Recorder *m_recorder;
    bool m_isStopping = false;
};

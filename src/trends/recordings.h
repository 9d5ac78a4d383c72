#pragma once

#include "trends/recording.h"

#include <QPointer>
#include <QVector>
#include <QWidget>

// The recordings that are under way, one a page or window at most.
class Recordings : public QObject
{
    Q_OBJECT
public:
    // Over the window stands what is told of a page or window that has gone.
    explicit Recordings(QWidget *window, QObject *parent = nullptr);

    // Stops what is recorded for the owner, or else asks over it where to and starts. The file name is what
    // is offered. The recording of an owner that dies stops.
    void toggle(QWidget *owner, const Recording::Subject &subject, const QString &fileName);
    void start(QWidget *owner, const Recording::Subject &subject, const RecordingTarget &target);
    void stop(const QWidget *owner);
    void stopAll();
    // Null for none.
    const Recording *of(const QWidget *owner) const;

    void add(const Readings &report);
    void endSession(const QString &box, qint64 time);

signals:
    // Something else is to be said of the owner's recording, or it has begun or ended.
    void changed(QWidget *owner);

private:
    struct Entry {
        QPointer<QWidget> owner;
        Recording *recording;
    };

    void end(const Recording *recording, const QString &error);

    QPointer<QWidget> m_window;
    QVector<Entry> m_entries;
};

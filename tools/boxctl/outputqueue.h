#pragma once

#include <QByteArray>
#include <QMutex>
#include <QThread>
#include <QWaitCondition>

// Writes to the standard output in a thread of its own, so that who reads it slowly holds up nothing else.
// What is not read waits, up to a limit; what comes beyond is dropped and counted.
class OutputQueue : public QThread
{
    Q_OBJECT
public:
    static constexpr int limit = 16 * 1024 * 1024; // bytes

    explicit OutputQueue(QObject *parent = nullptr);
    ~OutputQueue() override;

    // False if it is dropped, whole. What is added is written at once, if somebody reads.
    bool add(const QByteArray &lines);
    int dropped() const { return m_dropped; }
    // Ends once all is written. False if nobody reads for some seconds: the thread then hangs in its write,
    // and the program can only end by std::_Exit().
    bool finish();

signals:
    // No more can be written.
    void failed();

protected:
    void run() override;

private:
    QMutex m_mutex; // for all but the last
    QWaitCondition m_changed;
    QByteArray m_waiting;
    qint64 m_unwritten = 0; // bytes, those included that are being written
    bool m_isEnding = false;
    bool m_hasFailed = false;
    int m_dropped = 0;
};

#pragma once

#include "history/recordingcurvereader.h"
#include "history/recordingdatabase.h"
#include "history/recordinghelpers.h"

#include <QElapsedTimer>
#include <QMutex>
#include <QTimer>
#include <QVariant>

#include <atomic>
#include <memory>

// The reader of a recording, in its thread. All but its slots may be called from another one.
class RecordingSession : public QObject
{
    Q_OBJECT
public:
    struct Asked {
        quint64 number = 0; // counts requests
        const void *asker = nullptr;
        SampleSource::Request request;
        int failures = 0; // that were no lock
    };

    struct Answer {
        Asked asked;
        QVector<Thinned> thinned; // by the points of the request
    };

    struct AskedAt {
        const void *asker = nullptr;
        SampleSource::Moment moment;
        QVector<ValueAt> values; // the answer, by the points
    };

    RecordingSession(const RecordingTarget &target, int pollInterval);

    // These replace what the same asker has asked before.
    void ask(const Asked &asked);
    void askAt(const AskedAt &asked);
    // What is under way is given up.
    void abandon() { m_isAbandoned = true; }

public slots:
    void open();
    void answerAll();

signals:
    void opened(const std::shared_ptr<const RecordingPoints> &points);
    void grown(const std::shared_ptr<const RecordingPoints> &points);
    void answered(const RecordingSession::Answer &answer);
    void answeredAt(const RecordingSession::AskedAt &asked);
    void failed(const QString &why);

private:
    using Result = RecordingCurveReader::Result;

    void poll();
    bool openDatabase();
    bool readVersion();
    bool isWanted(const Asked &asked);
    bool answerMoments();
    Result thinAll(Answer *answer);
    Result thin(RecordingDatabase *database, const PointId &id, const Asked &asked, Thinned *thinned);
    void tryAgain(Asked asked);
    void recover();
    void tellFailure();

    const bool m_isFile;
    const int m_pollInterval; // ms
    RecordingDatabase m_database;
    RecordingHelpers m_helpers;
    std::shared_ptr<const RecordingPoints> m_points;
    QTimer m_timer;
    QElapsedTimer m_clock;
    QVariant m_version; // of what has been read
    QString m_told;     // failure told last; empty after what went well
    std::atomic<bool> m_isAbandoned{false};
    std::atomic<bool> m_hasFailed{false}; // the thinning that is under way

    QMutex m_mutex; // for the requests
    QVector<Asked> m_asked;
    QVector<AskedAt> m_askedAt;
};

// What its signals carry from one thread to the other.
Q_DECLARE_METATYPE(std::shared_ptr<const RecordingPoints>)
Q_DECLARE_METATYPE(RecordingSession::Answer)
Q_DECLARE_METATYPE(RecordingSession::AskedAt)

#pragma once

#include "boxsim/acquire/dlt645query.h"
#include "boxsim/acquire/linesilence.h"
#include "boxsim/acquire/serialfile.h"
#include "boxsim/acquire/seriallacks.h"
#include "boxsim/acquire/serialsettings.h"

#include <QDeadlineTimer>

#include <memory>

class QSerialPort;
class StopFlag;

// A serial line with DL/T 645 meters. It is used in one thread; it blocks, but ends soon after the stop flag
// is set. After a request without an answer nothing is sent until the line has been silent for one more
// time-out, however short the request waited.
class Dlt645Line
{
public:
    enum class Exchange {
        Answered,
        Silent,
        Damaged,  // there was an answer, with a wrong checksum
        HungUp,   // the line has failed
        Restless, // somebody else talks on the line without an end
    };

    // silence is that of the line. tell is called once for each thing that the line cannot do, with the
    // words for it.
    Dlt645Line(const QString &path, const SerialSettings &settings, StopFlag *stop,
               std::shared_ptr<LineSilence> silence, const std::function<void(const QString &)> &tell);
    ~Dlt645Line();

    QString name() const { return m_path; }
    int requestTimeout() const { return m_settings.timeout; }
    int leastTimeout() const;

    // False with the reason for the log.
    bool open(QString *reason);
    void close();
    bool isOpen() const;
    // Waits for the silence that the line still needs. One that is never silent is told by the next request.
    void settle();
    // Asks a meter, once more if its answer was damaged. The time-out, in milliseconds, is that of each
    // request.
    Exchange ask(const Dlt645Query &query, int timeout, Dlt645Answer *answer);

private:
    bool openPort(QString *reason);
    bool usesParity() const;
    LineSilence::Ending waitForSilence();
    int listen(qint64 time);
    Exchange askOnce(const Dlt645Query &query, int timeout, Dlt645Answer *answer);
    void waitForGap();
    bool send(const QByteArray &request, const QDeadlineTimer &deadline);
    Exchange receive(const Dlt645Query &query, const QDeadlineTimer &deadline, Dlt645Answer *answer);

    QString m_path;
    SerialSettings m_settings;
    StopFlag *m_stop;
    SerialLacks m_lacks;
    SerialFile m_file;
    std::shared_ptr<LineSilence> m_silence;
    std::unique_ptr<QSerialPort> m_port; // lives in the thread of its line
    bool m_switchesRts = false;
};

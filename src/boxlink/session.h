#pragma once

#include "boxlink/boxsettings.h"
#include "boxlink/frameassembler.h"
#include "boxlink/heartbeat.h"
#include "boxlink/jsoncommand.h"
#include "boxlink/monitoringaccumulator.h"
#include "boxlink/monitoringreport.h"

#include <QHostAddress>
#include <QObject>
#include <QTcpSocket>
#include <QTimer>

// The tool's end of one TCP link to one Box: connects, sends the heartbeat, watches for silence, and turns
// what the Box sends into signals. Requests are neither queued nor repeated, and answers are not matched to
// them: the "type" of an answer alone decides. Nothing waits here.
//
// May be deleted at any time, also while connected, but not from a slot that one of its own signals calls:
// dispose() may. Tells nothing while it is deleted.
class Session : public QObject
{
    Q_OBJECT
public:
    enum class Status {
        Connecting,
        Waiting,      // for a moment, since the socket was under way or bound and had to be cut
        Reconnecting, // after that
        Connected,    // a heartbeat answer has come
        Disconnected,
        HeartbeatLost, // one was due while the link is not open
        RequestLost,   // one was made while the link is not open
        EmptyAnswer,   // a heartbeat answer without a byte
    };
    Q_ENUM(Status)

    explicit Session(QObject *parent = nullptr);
    ~Session() override;

    // Joins its reports apart from those of all other sessions, so that many may report at the same time. To
    // be called before the connect.
    void joinReportsApart();

    // Binds the socket to a local address and keeps the address for later connects, whether or not the bind
    // succeeds; a failure is told by bindingFailed.
    void bindToAddress(const QHostAddress &address);
    // Connects by the state of the socket: an unconnected one at once, one that is under way or bound after
    // it was cut and 2000 ms have passed, a connected one not at all.
    void connectToBox(const QString &ip);
    // Connects without looking at the state.
    void openConnection(const QString &ip);
    void closeConnection();
    // Closes the link, of which whoever listens hears as of any disconnection, and deletes the object: at
    // once, or, while a call that goes on after its signal is on the stack, when that has returned. Until
    // then it has no parent, takes nothing in, and lets no signal out but destroyed.
    void dispose();

    // Requests. On a link that is not open the status tells so and the request is lost.
    void read(SettingsGroup group);
    void write(const BoxSettings &settings);
    void reboot();

    // What the socket and the timers set off.
    void sendHeartbeat();
    void receive();
    void handleDisconnected();

    // Takes the next bytes of the stream, cut anywhere, and dispatches each frame that they complete.
    void assemble(const char *data, unsigned length);
    // Hands one whole frame to the function of its command; drops what none takes.
    void dispatch(const QByteArray &frame);
    // These two take the whole frame.
    void takeHeartbeat(const QByteArray &frame);
    void takeSegment(const QByteArray &frame);
    // Takes the JSON text of the answer to a command.
    void takeAnswer(Frame::JsonType command, const QByteArray &text);

signals:
    void statusChanged(Session::Status status);
    // The TCP connection stands; the Box has said nothing yet.
    void linkOpened();
    // What the system says of a connection that could not be made, or of the end of one, before Disconnected.
    void socketFailed(const QString &errorString);
    // A heartbeat answer that can be read has come.
    void identified(const HeartbeatAnswer &answer);
    // 30 seconds have passed without a heartbeat answer; comes once until the next answer or disconnection.
    void offlineOccurred();
    // The keys are those whose values were no texts and read as empty ones.
    void settingsReceived(const BoxSettings &settings, const QStringList &keysWithoutText);
    void commandAnswered(const CommandResult &result);
    void reportReceived(const MonitoringReport &report);
    void bindingFailed(const QHostAddress &address);

private:
    class Hold;

    MonitoringAccumulator &accumulator();
    bool isLinkOpen() const;
    void sendRequest(const QJsonObject &request);
    void dispatchJson(const QByteArray &text);

    QTcpSocket m_socket;
    QTimer m_heartbeatTimer; // repeating, 5000 ms
    QTimer m_offlineTimer;   // single shot, 30000 ms
    FrameAssembler m_assembler;
    std::optional<MonitoringAccumulator> m_ownAccumulator;
    QHostAddress m_boundAddress; // null: any
    int m_holds = 0;             // calls on the stack that go on after a signal
    int m_receives = 0;          // on the stack; the second is below a message that the first one set off
    QList<QByteArray> m_waiting; // frames of answers that came below it
    bool m_disposed = false;
};

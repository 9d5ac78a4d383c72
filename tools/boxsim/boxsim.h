#pragma once

#include "boxsim/boxconnection.h"
#include "boxsim/framedescription.h"
#include "boxsim/options.h"
#include "boxsim/projectrunner.h"
#include "boxsim/settingsmemory.h"

#include <QObject>
#include <QTcpServer>
#include <QVector>

class DiscoveryResponder;

// A Box in software: serves sessions, transfers and searches on the wire as a Box does, keeps settings, runs
// the project that is pushed to it and reports its values, and misbehaves where it is told to. Needs an event
// loop. Before start() it may be moved to another thread, which serves tools that block their own; from then
// on it is called in that thread only.
class BoxSim : public QObject
{
    Q_OBJECT

public:
    explicit BoxSim(const BoxSimOptions &options = BoxSimOptions(), QObject *parent = nullptr);
    ~BoxSim() override;

    // Opens TCP and, unless switched off, UDP, and runs the options' project. False, with the reason in
    // errorString() and nothing left open, if an option is not usable or an address is taken.
    bool start();
    // Ends every connection, closes both ports and forgets the project. A later start() finds the settings as
    // they were left, but for those that the options set.
    void stop();
    // Begins what stop() does and waits for; returns at once. stop() is to follow.
    void interrupt() { m_runner.interrupt(); }
    QString errorString() const { return m_error; }
    // Whether the Box is on the network: from start() to stop() but for the time of a reboot, and but for a
    // closed door under the fault refuseSecond.
    bool isListening() const { return m_server.isListening(); }
    quint16 port() const { return m_port; }

    const BoxSimOptions &options() const { return m_options; }
    const BoxSimFaults &faults() const { return m_faults; }
    // Takes effect at once, on connections that are open as well.
    void setFaults(const BoxSimFaults &faults);
    // One fault as on the command line, "name" or "name=value". False, with the reason in error (null
    // allowed), if there is no such fault or value.
    bool setFault(const QString &text, QString *error = nullptr);

    // Runs a project document in place of the one before. False, with the reason in error (null allowed), if
    // it is none; the one before then goes on.
    bool runProject(const QByteArray &document, QString *error = nullptr);
    void stopProject() { m_runner.clear(); }
    // Name of the project that runs, empty for none, and of its Standards that report.
    QString projectName() const { return m_runner.projectName(); }
    QStringList standardNames() const { return m_runner.standardNames(); }
    // One report of each Standard to each session, now.
    void reportNow() { m_runner.reportNow(); }

    // A setting by its wire key, such as "lanIp"; setSetting is false for an unknown key.
    QString setting(const QString &key) const { return m_settings.value(key); }
    bool setSetting(const QString &key, const QString &value) { return m_settings.setValue(key, value); }

    int connectionCount() const { return m_connections.size(); }
    int sessionCount() const;
    int connectionsSeen() const { return m_seen; } // since construction

    // Bytes as they are to every open connection that is not a transfer's, past every fault.
    void sendRaw(const QByteArray &bytes);
    // Ends every open connection that is not a transfer's, or every one.
    void closeSessions();
    void closeConnections();

signals:
    void connectionOpened(const QString &peer);
    void connectionClosed(const QString &peer);
    void frameReceived(const BoxSimFrame &frame);
    // A frame on its way out; faults may still hold it up, cut it or lose it.
    void frameSent(const BoxSimFrame &frame);
    // The peer did something that a Box does not expect.
    void violation(const QString &peer, const QString &text);
    // A file has come whole, its digest is right.
    void projectAccepted(const QByteArray &document);
    void programAccepted(const QByteArray &program);
    // A project runs from now on.
    void projectStarted(const QString &name, const QStringList &standards);
    // A line about the devices that the project's values are acquired from.
    void acquisitionTold(const QString &text);
    void searched(const QString &peer);
    void rebooting();
    void backFromReboot();

private:
    QVector<BoxConnection *> connections(bool (*wanted)(BoxConnection::Role)) const;
    bool checkOptions();
    bool listen();
    bool startDiscovery();
    void updateDoor();
    void acceptConnections();
    void adopt(QTcpSocket *socket);
    void forget(BoxConnection *connection);
    void takeFile(const QString &peer, int command, const QByteArray &file);
    void planReboot(int delay);
    void pushReports(const QVector<QByteArray> &reports);
    void goDown();
    void comeBack();
    QByteArray searchAnswer() const;

    BoxSimOptions m_options;
    BoxSimFaults m_faults;
    SettingsMemory m_settings;
    ProjectRunner m_runner;
    QTcpServer m_server;
    DiscoveryResponder *m_discovery;
    QVector<BoxConnection *> m_connections;
    QTimer m_rebootTimer;
    QString m_error;
    quint16 m_port = 0;
    int m_seen = 0;
    bool m_running = false; // between start() and stop()
    bool m_down = false;    // in a reboot
};

#pragma once

#include "boxsim/boxsim.h"
#include "rawtool.h"
#include "run.h"

#include <QSignalSpy>

#include <memory>

// What the tests of the simulated Box share: a Box on the program's own address, a tool that is connected to
// it, and what the Box says against what it gets.
class BoxSimTest : public QObject
{
    // No Q_OBJECT: the slots are those of the test.
protected:
    explicit BoxSimTest(const QString &address)
        : m_address(address)
    {
    }

    QHostAddress address() const { return m_address; }
    BoxSimOptions options(const QString &fault = QString()) const { return Raw::quietBox(m_address, fault); }
    BoxSimOptions withProject(const QByteArray &project, const QString &fault = QString()) const
    {
        BoxSimOptions own = options(fault);
        own.project = project;
        return own;
    }

    // The Box, without a tool.
    void startBox(const BoxSimOptions &options)
    {
        stop();
        m_box = std::make_unique<BoxSim>(options);
        connect(m_box.get(), &BoxSim::violation, this,
                [this](const QString &, const QString &text) { m_violations.append(text); });
        QVERIFY2(m_box->start(), qPrintable(m_box->errorString()));
    }
    void start(const BoxSimOptions &options)
    {
        RUN(startBox(options));
        m_tool = std::make_unique<RawTool>();
        QVERIFY(m_tool->connectTo(m_address));
    }
    void start(const QString &fault = QString()) { start(options(fault)); }
    // With a session, for the reports.
    void startSession(const BoxSimOptions &options)
    {
        RUN(start(options));
        m_tool->send(Raw::heartbeat);
        QCOMPARE(m_tool->takeFrame().size(), 38);
    }
    void startSession(const QString &fault = QString()) { startSession(options(fault)); }
    void stop()
    {
        m_tool.reset();
        m_box.reset();
        m_violations.clear();
    }

    std::unique_ptr<BoxSim> m_box;
    std::unique_ptr<RawTool> m_tool;
    QStringList m_violations;

private:
    QHostAddress m_address;
};

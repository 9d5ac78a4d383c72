#include "boxctl/reportlink.h"

namespace {

constexpr int firstPause = 1000;    // ms
constexpr int longestPause = 60000; // ms

} // namespace

ReportLink::ReportLink(const QString &address, int timeout, QObject *parent)
    : QObject(parent)
    , m_address(address)
    , m_timeout(timeout)
    , m_answerTimer(this)
    , m_pauseTimer(this)
    , m_pause(firstPause)
{
    m_answerTimer.setSingleShot(true);
    connect(&m_answerTimer, &QTimer::timeout, this,
            [this] { lose(QStringLiteral("No %1 in %2 s").arg(m_awaited).arg(m_timeout / 1000.0)); });
    m_pauseTimer.setObjectName(QStringLiteral("pauseTimer"));
    m_pauseTimer.setSingleShot(true);
    connect(&m_pauseTimer, &QTimer::timeout, this, &ReportLink::connectToBox);
}

ReportLink::~ReportLink()
{
    if (m_session) {
        m_session->disconnect(this);
        m_session->dispose(); // one of its signals may be on the stack
    }
}

void ReportLink::start()
{
    m_pauseTimer.start(0);
}

void ReportLink::connectToBox()
{
    m_session = new Session(this);
    m_session->joinReportsApart();
    m_socketError.clear();
    connect(m_session, &Session::linkOpened, this, [this] {
        m_awaited = QStringLiteral("answer");
        m_answerTimer.start(m_timeout);
    });
    connect(m_session, &Session::socketFailed, this, [this](const QString &error) {
        m_socketError = error;
        if (!m_isUp) {
            lose(error);
        }
    });
    connect(m_session, &Session::statusChanged, this, [this](Session::Status status) {
        if (status == Session::Status::Connected) {
            takeUp();
        } else if (status == Session::Status::Disconnected) {
            lose(m_socketError.isEmpty() ? QStringLiteral("The link is closed") : m_socketError);
        }
    });
    connect(m_session, &Session::offlineOccurred, this,
            [this] { lose(QStringLiteral("No answer to a heartbeat in 30 s")); });
    connect(m_session, &Session::reportReceived, this, [this](const MonitoringReport &report) {
        takeUp();
        emit reported(report);
    });
    m_awaited = QStringLiteral("connection");
    m_answerTimer.start(m_timeout);
    m_session->connectToBox(m_address);
}

void ReportLink::takeUp()
{
    if (m_isUp) {
        return;
    }
    m_answerTimer.stop();
    m_pause = firstPause;
    m_isUp = true;
    m_error.clear();
    emit opened();
}

void ReportLink::lose(const QString &error)
{
    const bool wasUp = m_isUp;
    m_isUp = false;
    m_error = error;
    m_answerTimer.stop();
    m_pauseTimer.start(m_pause);
    m_pause = qMin(2 * m_pause, longestPause);
    m_session->disconnect(this);
    m_session->dispose();
    emit lost(error, wasUp);
}

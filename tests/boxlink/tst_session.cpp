// A session without a form: what it tells a program that has no display, and its end at any moment.

#include "boxlink/monitoringaccumulator.h"
#include "boxlink/session.h"
#include "fakebox.h"
#include "handframes.h"

#include <QJsonDocument>
#include <QPointer>
#include <QtTest>

#include <memory>

using namespace HandFrames;

namespace {

const QString address = "127.0.20.32";

const QByteArray heartbeatAnswer = hex("12 34 02 00 0c 00 01 31 00 00 56 78"); // version "1"
// A whole report: "{}".
const QByteArray report = hex("12 34 06 00 15 00 01 02 00 00 00 02 00 01 00 00 00 7b 7d 56 78");

// Everything that a session tells, in order.
class Told : public QObject
{
public:
    explicit Told(Session *session)
    {
        connect(session, &Session::statusChanged, this,
                [this](Session::Status status) { lines.append(QVariant::fromValue(status).toString()); });
        connect(session, &Session::identified, this,
                [this](const HeartbeatAnswer &answer) { lines.append("version " + answer.version); });
        connect(session, &Session::offlineOccurred, this, [this] { lines.append("offline"); });
        connect(session, &Session::settingsReceived, this, [this](const BoxSettings &settings) {
            BoxSettings record = settings;
            const QVector<SettingsText> texts = textsOf(record);
            for (const SettingsText &text : texts) {
                lines.append(QLatin1String(text.key) + QLatin1Char('=') + *text.text);
            }
        });
        connect(session, &Session::commandAnswered, this, [this](const CommandResult &result) {
            lines.append(QString("%1: %2").arg(result.command).arg(result.code));
        });
        connect(session, &Session::reportReceived, this, [this] { lines.append("report"); });
        connect(session, &Session::bindingFailed, this,
                [this](const QHostAddress &local) { lines.append("binding " + local.toString()); });
        connect(session, &QObject::destroyed, this, [this] { lines.append("destroyed"); });
    }

    QStringList lines;
};

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char('|'));
}

} // namespace

class TestSession : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_box.reset(); }

    void tellsStatusesAndVersion();
    void tellsAFailedBind();
    void asksAndHearsAnswers();
    void writesWithoutAMessage();
    void resultsOfCommandsAreTold_data();
    void resultsOfCommandsAreTold();
    void answersWaitBelowAMessage();
    void requestOnAClosedLinkIsLost();
    void reportsAreJoinedApartWhereAsked_data();
    void reportsAreJoinedApartWhereAsked();

    void endsInItsOwnSignals_data();
    void endsInItsOwnSignals();
    void disposedSessionTakesNothingIn();
    void disposedSessionDoesNotConnect();
    void disposedSessionOutlivesItsParent();
    void deletedSessionTellsNothing();

private:
    std::unique_ptr<FakeBox> m_box;
};

void TestSession::init()
{
    m_box = std::make_unique<FakeBox>(address);
    QVERIFY(m_box->isListening());
    MonitoringAccumulator::shared().reset();
}

void TestSession::tellsStatusesAndVersion()
{
    Session session;
    Told told(&session);
    session.connectToBox(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    m_box->send(heartbeatAnswer);
    QTRY_COMPARE(told.lines, words("Connecting|Connected|version 1"));
    m_box->close();
    QTRY_COMPARE(told.lines, words("Connecting|Connected|version 1|Disconnected"));
}

void TestSession::tellsAFailedBind()
{
    Session session;
    Told told(&session);
    session.bindToAddress(QHostAddress("203.0.113.9")); // not of this machine
    QCOMPARE(told.lines, words("binding 203.0.113.9"));
}

void TestSession::asksAndHearsAnswers()
{
    Session session;
    Told told(&session);
    session.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    m_box->forgetReceived();
    session.read(SettingsGroup::Ntp);
    QTRY_COMPARE(m_box->received(),
                 hex("12 34 05 00 34 00 2a 00") + "{\n    \"pares\": {\n    },\n    \"type\": \"8\"\n}\n"
                     + hex("56 78"));
    m_box->send(json(R"({"type":"8","pares":{"NTP":"10.0.0.9"}})") + report);
    QTRY_COMPARE(told.lines, words("NTP=10.0.0.9|report"));
}

void TestSession::writesWithoutAMessage()
{
    Session session;
    Told told(&session);
    session.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    m_box->forgetReceived();
    session.write(NtpSettings{"10.0.0.9"});
    QTRY_COMPARE(m_box->received(),
                 hex("12 34 05 00 4e 00 44 00")
                     + "{\n    \"pares\": {\n        \"NTP\": \"10.0.0.9\"\n    },\n    \"type\": 108\n}\n"
                     + hex("56 78"));
    m_box->forgetReceived();
    session.reboot();
    QTRY_VERIFY(m_box->received().contains("\"reboot\": \"reboot\""));
    m_box->send(json(R"({"type":"108","code":"200"})") + json(R"({"type":"6","code":"busy"})"));
    QTRY_COMPARE(told.lines, words("108: 200|6: busy"));
}

void TestSession::resultsOfCommandsAreTold_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("success") << QByteArray(R"({"type":"102","code":"200"})") << words("102: 200");
    QTest::newRow("refusal") << QByteArray(R"({"type":"105","code":"500"})") << words("105: 500");
    QTest::newRow("code a number") << QByteArray(R"({"type":"102","code":200})") << QStringList();
    QTest::newRow("type a number") << QByteArray(R"({"type":102,"code":"200"})") << QStringList();
}

void TestSession::resultsOfCommandsAreTold()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, lines);
    Session session;
    Told told(&session);
    session.dispatch(json(text));
    QCOMPARE(told.lines, lines);
}

// Each answer may open a message: the next one opens when that is closed. Reports do not wait.
void TestSession::answersWaitBelowAMessage()
{
    Session session;
    Told told(&session);
    connect(&session, &Session::commandAnswered, this, [&](const CommandResult &result) {
        told.lines.append(QString("open %1").arg(result.command));
        m_box->send(json(R"({"type":"103","code":"200"})") + json(R"({"type":"104","code":"200"})") + report);
        if (!QTest::qWaitFor([&] { return told.lines.endsWith("report"); }, 2000)) {
            told.lines.append("nothing");
        }
        told.lines.append(QString("close %1").arg(result.command));
        disconnect(&session, &Session::commandAnswered, this, nullptr);
    });
    session.connectToBox(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    m_box->send(json(R"({"type":"102","code":"200"})"));
    QTRY_COMPARE(told.lines, words("Connecting|102: 200|open 102|report|close 102|103: 200|104: 200"));
}

void TestSession::requestOnAClosedLinkIsLost()
{
    Session session;
    Told told(&session);
    session.read(SettingsGroup::Lan);
    session.write(LanSettings());
    session.reboot();
    session.sendHeartbeat();
    QCOMPARE(told.lines, words("RequestLost|RequestLost|RequestLost|HeartbeatLost"));
}

void TestSession::reportsAreJoinedApartWhereAsked_data()
{
    QTest::addColumn<bool>("isApart");
    QTest::addColumn<QStringList>("first");
    QTest::addColumn<QStringList>("second");
    QTest::newRow("joined with all") << false << QStringList() << QStringList();
    QTest::newRow("apart") << true << words("{\"sn\":\"1\"}") << words("{\"sn\":\"22\"}");
}

// Two reports of two segments each, which come by turns.
void TestSession::reportsAreJoinedApartWhereAsked()
{
    QFETCH(bool, isApart);
    QFETCH(QStringList, first);
    QFETCH(QStringList, second);
    const auto segment = [](int number, int total, int size, const QByteArray &text) {
        return frame("06 00",
                     hex("01") + little(quint32(total), 4) + little(quint32(size), 2)
                         + little(quint32(number), 4) + text);
    };
    Session one;
    Session other;
    QStringList ofOne;
    QStringList ofOther;
    const auto listTo = [](QStringList *list) {
        return [list](const MonitoringReport &whole) {
            list->append(QString::fromUtf8(QJsonDocument(whole.json).toJson(QJsonDocument::Compact)));
        };
    };
    connect(&one, &Session::reportReceived, this, listTo(&ofOne));
    connect(&other, &Session::reportReceived, this, listTo(&ofOther));
    if (isApart) {
        one.joinReportsApart();
        other.joinReportsApart();
    }
    one.dispatch(segment(1, 1027, 1024, QByteArray(1016, ' ') + "{\"sn\": \""));
    other.dispatch(segment(1, 1028, 1024, QByteArray(1016, ' ') + "{\"sn\": \""));
    one.dispatch(segment(2, 1027, 3, "1\"}"));
    other.dispatch(segment(2, 1028, 4, "22\"}"));
    QCOMPARE(ofOne, first);
    QCOMPARE(ofOther, second);
}

void TestSession::endsInItsOwnSignals_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("heartbeat answer") << heartbeatAnswer << words("Connected|Disconnected|destroyed");
    QTest::newRow("settings") << json(R"({"type":"8","pares":{"NTP":"n"}})")
                              << words("NTP=n|Disconnected|destroyed");
    QTest::newRow("result") << json(R"({"type":"108","code":"200"})")
                            << words("108: 200|Disconnected|destroyed");
    QTest::newRow("report") << report << words("report|Disconnected|destroyed");
}

// The first thing that it tells ends it, while the socket's signal is on the stack.
void TestSession::endsInItsOwnSignals()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, lines);
    const QPointer<Session> session = new Session;
    Told told(session);
    const auto end = [&] {
        session->dispose();
        QVERIFY(session);
    };
    connect(session, &Session::statusChanged, this, [&](Session::Status status) {
        if (status == Session::Status::Connected) {
            end();
        }
    });
    connect(session, &Session::settingsReceived, this, end);
    connect(session, &Session::commandAnswered, this, end);
    connect(session, &Session::reportReceived, this, end);
    session->openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    m_box->send(frame + frame);
    QTRY_VERIFY(!session);
    QCOMPARE(told.lines, lines);
    QTRY_VERIFY(!m_box->isLinked());
}

// What came with the same chunk does not reach what other sessions share.
void TestSession::disposedSessionTakesNothingIn()
{
    const QPointer<Session> session = new Session;
    connect(session, &Session::statusChanged, this, [&](Session::Status status) {
        if (status == Session::Status::Connected) {
            session->dispose();
        }
    });
    // The first segment of a report of 1026 bytes.
    const QByteArray half = hex("12 34 06 00 14 00 01 02 04 00 00 00 04 01 00 00 00 7b 56 78");
    session->openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    m_box->send(heartbeatAnswer + half);
    QTRY_VERIFY(!session);

    Session next;
    Told told(&next);
    next.dispatch(report);
    QCOMPARE(told.lines, words("report"));
}

void TestSession::disposedSessionDoesNotConnect()
{
    const QPointer<Session> session = new Session;
    connect(session, &Session::statusChanged, this, [&](Session::Status status) {
        if (status == Session::Status::Connected) {
            session->dispose();
            session->connectToBox(address);
            session->openConnection(address);
        }
    });
    session->openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    m_box->send(heartbeatAnswer);
    QTRY_VERIFY(!session);

    // One that connects later marks the time at which it would have been there.
    m_box->forgetReceived();
    Session next;
    next.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    QCOMPARE(m_box->count(), 2);
}

void TestSession::disposedSessionOutlivesItsParent()
{
    auto parent = std::make_unique<QObject>();
    const QPointer<Session> session = new Session(parent.get());
    Told told(session);
    connect(session, &Session::commandAnswered, this, [&] {
        session->dispose();
        parent.reset();
        QVERIFY(session);
    });
    session->openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    m_box->send(json(R"({"type":"6","code":"200"})"));
    QTRY_VERIFY(!session);
    QCOMPARE(told.lines, words("6: 200|Disconnected|destroyed"));
}

// Who listens may be on the way out, too.
void TestSession::deletedSessionTellsNothing()
{
    auto session = std::make_unique<Session>();
    Told told(session.get());
    session->openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    session.reset();
    QCOMPARE(told.lines, words("destroyed"));
    QTRY_VERIFY(!m_box->isLinked());
}

QTEST_GUILESS_MAIN(TestSession)
#include "fakebox.h"
#include "handframes.h"
#include "tst_session.moc"

#include "boxlink/boxclient.h"

#include "fakebox.h"
#include "handframes.h"

#include <QtTest>

#include <memory>

using namespace HandFrames;

namespace {

const QString address = "127.0.40.2";
const QByteArray heartbeatAnswer = hex("12 34 02 00 0e 00 01 31 01 53 01 4d 56 78"); // "1", "S", "M"
const QByteArray ntpAnswer = json(R"({"type":"8","pares":{"NTP":"10.0.0.9"}})");

} // namespace

// Requests of a script: each with its answer, or with the reason why it has none.
class TestBoxClient : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void tellsWhoTheBoxIs();
    void readsWritesAndReboots();
    void answersThatNobodyAwaitsAreLeft();
    void valueThatIsNoTextIsAnError();
    void noBoxAtTheAddress();
    void answerThatStaysAway();
    void twoOfOneTypeAreNotMixedUp();
    void lateAnswerIsNotTakenForANewOne();
    void linkThatBreaks();
    void mayBeDeletedInACallback();

private:
    void connectIt(int timeout = 5000)
    {
        m_client = std::make_unique<BoxClient>(timeout);
        QStringList told;
        m_client->connectTo(
            address, [&told](const BoxClient::Reply<bool> &reply) { told = QStringList{reply.error}; });
        QTRY_COMPARE(told, QStringList{QString()});
        QTRY_VERIFY(m_box->isLinked());
    }
    void readNtp()
    {
        m_client->read(SettingsGroup::Ntp, [this](const BoxClient::Reply<BoxSettings> &reply) {
            m_told += reply.value ? "NTP " + std::get<NtpSettings>(*reply.value).NTP : reply.error;
        });
    }

    std::unique_ptr<FakeBox> m_box;
    std::unique_ptr<BoxClient> m_client;
    QStringList m_told;
};

void TestBoxClient::init()
{
    m_box = std::make_unique<FakeBox>(address);
    QVERIFY(m_box->isListening());
    m_told.clear();
}

void TestBoxClient::cleanup()
{
    m_client.reset();
    m_box.reset();
}

void TestBoxClient::tellsWhoTheBoxIs()
{
    connectIt();
    const auto tell = [this](const BoxClient::Reply<HeartbeatAnswer> &reply) {
        m_told += reply.value->version + reply.value->serialNumber + reply.value->model;
    };
    m_client->identify(tell);
    m_box->send(heartbeatAnswer);
    QTRY_COMPARE(m_told, QStringList{"1SM"});
    m_client->identify(tell); // it has said it
    QCOMPARE(m_told.size(), 1);
    QTRY_COMPARE(m_told, (QStringList{"1SM", "1SM"}));
}

void TestBoxClient::readsWritesAndReboots()
{
    connectIt();
    const auto tell = [this](const BoxClient::Reply<CommandResult> &reply) {
        m_told += QString("%1: %2").arg(reply.value->command).arg(reply.value->code);
    };
    readNtp();
    m_client->write(NtpSettings{"10.0.0.1"}, tell);
    m_client->reboot(tell);
    m_box->send(json(R"({"type":"6","code":"200"})") + ntpAnswer + json(R"({"type":"108","code":"500"})"));
    QTRY_COMPARE(m_told, (QStringList{"6: 200", "NTP 10.0.0.9", "108: 500"}));
}

void TestBoxClient::answersThatNobodyAwaitsAreLeft()
{
    connectIt();
    m_box->send(json(R"({"type":"8","pares":{"NTP":"old"}})") + json(R"({"type":"108","code":"500"})"));
    m_client->identify([this](const BoxClient::Reply<HeartbeatAnswer> &) { readNtp(); });
    m_box->send(heartbeatAnswer);
    QTRY_VERIFY(m_box->received().contains(R"("8")"));
    m_box->send(ntpAnswer);
    QTRY_COMPARE(m_told, QStringList{"NTP 10.0.0.9"});
}

void TestBoxClient::valueThatIsNoTextIsAnError()
{
    connectIt();
    const auto tell = [this](const BoxClient::Reply<BoxSettings> &reply) {
        QVERIFY(!reply.value);
        m_told += reply.error;
    };
    m_client->read(SettingsGroup::Ntp, tell);
    m_client->read(SettingsGroup::Lan, tell);
    m_box->send(
        json(R"({"type":"8","pares":{"NTP":null}})")
        + json(
            R"({"type":"2","pares":{"lanIp":"a","lanMask":24,"lanGateway":"","lanDns1":{},"lanDns2":"b"}})"));
    QTRY_COMPARE(m_told, (QStringList{"NTP is no text", "lanMask, lanDns1 are no texts"}));
}

void TestBoxClient::noBoxAtTheAddress()
{
    m_box.reset();
    BoxClient client(5000);
    client.connectTo(address, [this](const BoxClient::Reply<bool> &reply) { m_told += reply.error; });
    QTRY_COMPARE(m_told, QStringList{"Connection refused"});
}

void TestBoxClient::answerThatStaysAway()
{
    connectIt(50);
    readNtp();
    m_client->identify([this](const BoxClient::Reply<HeartbeatAnswer> &reply) { m_told += reply.error; });
    QTRY_COMPARE(m_told, (QStringList{"No answer in 0.05 s", "No answer in 0.05 s"}));
    // The next heartbeat answer will do, whichever it belongs to.
    m_client->identify(
        [this](const BoxClient::Reply<HeartbeatAnswer> &reply) { m_told += reply.value->version; });
    m_box->send(heartbeatAnswer);
    QTRY_COMPARE(m_told.last(), "1");
}

void TestBoxClient::twoOfOneTypeAreNotMixedUp()
{
    connectIt();
    readNtp();
    readNtp();
    QTRY_COMPARE(
        m_told,
        QStringList{"A request of this type is under way, and its answer could be taken for this one's"});
    m_box->send(ntpAnswer);
    QTRY_COMPARE(m_told.last(), "NTP 10.0.0.9");
    readNtp();
    m_box->send(ntpAnswer);
    QTRY_COMPARE(m_told.size(), 3);
    QCOMPARE(m_told.last(), "NTP 10.0.0.9");
    m_told.clear();
    const auto tell = [this](const BoxClient::Reply<HeartbeatAnswer> &reply) {
        m_told += reply.value ? reply.value->version : reply.error.left(36);
    };
    m_client->identify(tell);
    m_client->identify(tell);
    QTRY_COMPARE(m_told, QStringList{"A request of this type is under way,"});
    m_box->send(heartbeatAnswer);
    QTRY_COMPARE(m_told.last(), "1");
}

void TestBoxClient::lateAnswerIsNotTakenForANewOne()
{
    connectIt(200);
    readNtp();
    QTRY_COMPARE(m_told, QStringList{"No answer in 0.2 s"});
    m_told.clear();
    readNtp();
    QTRY_COMPARE(
        m_told,
        QStringList{
            "The answer to an earlier request of this type may still come and be taken for this one's"});
    m_told.clear();
    // Once it has come, the next one is free.
    m_client->identify([this](const BoxClient::Reply<HeartbeatAnswer> &) { readNtp(); });
    m_box->send(json(R"({"type":"8","pares":{"NTP":"late"}})") + heartbeatAnswer);
    QTRY_COMPARE(m_box->received().count(R"("8")"), 2);
    m_box->send(ntpAnswer);
    QTRY_COMPARE(m_told, QStringList{"NTP 10.0.0.9"});
}

void TestBoxClient::linkThatBreaks()
{
    connectIt();
    QSignalSpy lost(m_client.get(), &BoxClient::linkLost);
    readNtp();
    QTRY_VERIFY(m_box->received().contains(R"("8")"));
    m_box->close();
    QTRY_COMPARE(m_told, QStringList{"The remote host closed the connection"});
    QCOMPARE(lost.count(), 1);
    readNtp();
    QTRY_COMPARE(m_told.last(), "The link is closed");
    m_told.clear();
    m_client->identify([this](const BoxClient::Reply<HeartbeatAnswer> &reply) { m_told += reply.error; });
    QTRY_COMPARE(m_told, QStringList{"The link is closed"});
}

void TestBoxClient::mayBeDeletedInACallback()
{
    connectIt();
    m_client->read(SettingsGroup::Ntp, [this](const BoxClient::Reply<BoxSettings> &) {
        m_told += "told";
        m_client.reset();
    });
    m_box->send(ntpAnswer);
    QTRY_COMPARE(m_told, QStringList{"told"});
    QVERIFY(!m_client);
    QTRY_VERIFY(!m_box->isLinked());
}

QTEST_GUILESS_MAIN(TestBoxClient)
#include "tst_boxclient.moc"

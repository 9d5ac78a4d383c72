#include "boxformtest.h"

#include "boxes/requestline.h"
#include "logtail.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QSignalSpy>
#include <QtTest>

// The settings that a Box form asks for, sends and shows.
class TestBoxEditAllocation : public BoxFormTest
{
    Q_OBJECT
public:
    TestBoxEditAllocation()
        : BoxFormTest("127.0.11.5")
    {
    }

private slots:
    void requests_data();
    void requests();
    void answers_data();
    void answers();
    void answersLeaveTheItemAlone();
    void unknownDhcpFlagLeavesTheList();
    void unknownSwitchChecksNeitherButton();
    void pageTellsWhereItsValuesComeFrom();
    void answerToNoRequestTellsNothing();
    void requestWithoutAnAnswerIsTold_data();
    void requestWithoutAnAnswerIsTold();
    void requestThatNeverWentOutIsTold_data();
    void requestThatNeverWentOutIsTold();
    void answerToOneRequestIsNotThatToAnother();
    void lostWriteIsToldBehindARead();
    void lostAnswerDoesNotHideThoseBehindIt();
    void anotherItemTakesTheLineOfTheRebootBefore();
    void refusedWriteStaysToldOnItsPage();

private:
    // What the page's line says, without the time.
    QString told(const char *line) const;
};

QString TestBoxEditAllocation::told(const char *line) const
{
    static const QRegularExpression time("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d: ");
    return find<QLabel>(line)->text().remove(time);
}

void TestBoxEditAllocation::requests_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QString>("logged");
    const struct {
        const char *button;
        QByteArray expected;
        const char *logged;
    } rows[] = {
        {"rebootButton", R"({"type":"6","pares":{"reboot":"reboot"}})", "rebooting"},
        {"lanReadButton", R"({"type":"2","pares":{}})", "read Lan"},
        {"wanReadButton", R"({"type":"3","pares":{}})", "read Wan"},
        {"wifiReadButton", R"({"type":"4","pares":{}})", "read Wifi"},
        {"lteReadButton", R"({"type":"5","pares":{}})", "read Lte"},
        {"ntpReadButton", R"({"type":"8","pares":{}})", "read NTP"},
        {"timeReadButton", R"({"type":"9","pares":{}})", "read Time"},
        {"lanWriteButton",
         R"({"type":102,"pares":{"lanIp":"10.0.1.1","lanMask":"10.0.1.2","lanGateway":"10.0.1.3",
             "lanDns1":"10.0.1.4","lanDns2":"10.0.1.5"}})",
         "write Lan"},
        {"wanWriteButton",
         R"({"type":103,"pares":{"wanDhcp":"1","wanIp":"10.0.2.1","wanMask":"10.0.2.2",
             "wanGateway":"10.0.2.3","wanDns1":"10.0.2.4","wanDns2":"10.0.2.5"}})",
         "write Wan"},
        {"wifiWriteButton",
         R"({"type":104,"pares":{"wifiOnOff":"on","wifiMode":"station","ssid":"yard","password":"secret",
             "wifiDhcp":"1","wifiIp":"10.0.3.1","wifiMask":"10.0.3.2","wifiGateway":"10.0.3.3",
             "wifiDns1":"10.0.3.4","wifiDns2":"10.0.3.5"}})",
         "write Wifi"},
        {"lteWriteButton",
         R"({"type":105,"pares":{"lteOnOff":"off","AT1":"AT+A","AT2":"AT+B","AT3":"AT+C","AT4":"AT+D",
             "AT5":"AT+E"}})",
         "write Lte"},
        {"ntpWriteButton", R"({"type":108,"pares":{"NTP":"10.0.4.1"}})", "write NTP"},
        {"timeWriteButton", R"({"type":109,"pares":{"date":"2020-02-03 04:05:06"}})", "write Time"},
    };
    for (const auto &row : rows) {
        QTest::newRow(row.button) << QString::fromLatin1(row.button) << row.expected
                                  << "BoxEditDialog: " + QLatin1String(row.logged);
    }
}

void TestBoxEditAllocation::requests()
{
    QFETCH(QString, button);
    QFETCH(QByteArray, expected);
    QFETCH(QString, logged);
    open();
    find<QRadioButton>("lteOnOffOff")->setChecked(true);
    QVERIFY(connected());
    find<QLineEdit>("localTime")->setText("2020-02-03 04:05:06");
    const LogTail log("BoxEditDialog");
    m_form->findChild<QPushButton *>(button)->click();
    QCOMPARE(log.events(), QStringList(logged));
    QTRY_COMPARE(requestsIn(m_box->received(0)).size(), 1);
    QCOMPARE(requestsIn(m_box->received(0)).first(), QJsonDocument::fromJson(expected).object());
}

void TestBoxEditAllocation::answers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("fields"); // name, text
    QTest::addColumn<QString>("logged");
    QTest::addColumn<QString>("told");
    const auto pairs = [](const char *words) { return QString::fromLatin1(words).split(QLatin1Char(' ')); };
    QTest::newRow("lan") << QByteArray(R"({"type":"2","pares":{"lanIp":"1.1.1.1","lanMask":"1.1.1.2",
            "lanGateway":"1.1.1.3","lanDns1":"1.1.1.4","lanDns2":"1.1.1.5"}})")
                         << pairs("lanIp 1.1.1.1 lanMask 1.1.1.2 lanGateway 1.1.1.3 lanDns1 1.1.1.4 "
                                  "lanDns2 1.1.1.5")
                         << "update Lan"
                         << "LAN Configuration|LAN configuration updated successfully.";
    QTest::newRow("wan") << QByteArray(R"({"type":"3","pares":{"wanDhcp":"0","wanIp":"2.1.1.1",
            "wanMask":"2.1.1.2","wanGateway":"2.1.1.3","wanDns1":"2.1.1.4","wanDns2":"2.1.1.5"}})")
                         << pairs("wanDhcp Disabled wanIp 2.1.1.1 wanMask 2.1.1.2 wanGateway 2.1.1.3 "
                                  "wanDns1 2.1.1.4 wanDns2 2.1.1.5")
                         << "update Wan"
                         << "Wan Configuration|Wan configuration updated successfully.";
    QTest::newRow("wifi") << QByteArray(R"({"type":"4","pares":{"wifiOnOff":"OFF","wifiMode":"bridge",
            "ssid":"net","password":"word","wifiDhcp":"0","wifiIp":"3.1.1.1","wifiMask":"3.1.1.2",
            "wifiGateway":"3.1.1.3","wifiDns1":"3.1.1.4","wifiDns2":"3.1.1.5"}})")
                          << pairs("wifiOnOff off wifiMode station wifissid net wifipassword word "
                                   "wifiDhcp Disabled wifiIp 3.1.1.1 wifiMask 3.1.1.2 wifiGateway 3.1.1.3 "
                                   "wifiDns1 3.1.1.4 wifiDns2 3.1.1.5")
                          << "update Wifi"
                          << "Wifi Configuration|Wifi configuration updated successfully.";
    QTest::newRow("lte") << QByteArray(R"({"type":"5","pares":{"lteOnOff":"Off","AT1":"a","AT2":"b",
            "AT3":"c","AT4":"d","AT5":"e"}})")
                         << pairs("lteOnOff off at1 a at2 b at3 c at4 d at5 e") << "update Lte"
                         << "Lte Configuration|Lte configuration updated successfully.";
    QTest::newRow("ntp") << QByteArray(R"({"type":"8","pares":{"NTP":"4.1.1.1"}})")
                         << pairs("ntpServer 4.1.1.1") << "update NTP"
                         << "NTP Configuration|NTP configuration updated successfully.";
    // Compat: the clock's update is logged as NTP.
    QTest::newRow("time") << QByteArray(R"({"type":"9","pares":{"date":"noon"}})") << pairs("time noon")
                          << "update NTP"
                          << "time Configuration|time configuration updated successfully.";
}

void TestBoxEditAllocation::answers()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, fields);
    QFETCH(QString, logged);
    QFETCH(QString, told);
    open();
    QVERIFY(connected());
    QMap<int, QVariant> expected = fullRoles();
    for (const BoxInput &input : boxInputs()) {
        const int at = fields.indexOf(QLatin1String(input.name));
        if (at >= 0) {
            expected[input.role] = fields.at(at + 1);
        }
    }
    const LogTail log("BoxEditDialog");
    m_messages->expect();
    answer(jsonAnswer(text));
    QTRY_COMPARE(m_messages->told(), QStringList(told));
    QCOMPARE(shownRoles(), expected);
    QCOMPARE(log.events(), QStringList("BoxEditDialog: " + logged));
}

void TestBoxEditAllocation::answersLeaveTheItemAlone()
{
    open();
    m_messages->expect();
    emit m_form->protocol()->NTPAllocationDataReceived({"9.9.9.9"});
    QCOMPARE(shown("ntpServer"), "9.9.9.9");
    QCOMPARE(inputRolesOf(*m_item), fullRoles());
}

void TestBoxEditAllocation::unknownDhcpFlagLeavesTheList()
{
    open();
    m_messages->expect();
    Protocol::WanAllocationData wan;
    wan.wanDhcp = "2";
    emit m_form->protocol()->wanAllocationDataReceived(wan);
    QCOMPARE(shown("wanDhcp"), "Enable");
    m_messages->expect();
    wan.wanDhcp = "Disabled";
    emit m_form->protocol()->wanAllocationDataReceived(wan);
    QCOMPARE(shown("wanDhcp"), "Enable");
}

void TestBoxEditAllocation::unknownSwitchChecksNeitherButton()
{
    open();
    m_messages->expect();
    emit m_form->protocol()->lteAllocationDataReceived({});
    QCOMPARE(shown("lteOnOff"), "neither");
}

void TestBoxEditAllocation::pageTellsWhereItsValuesComeFrom()
{
    const QString notRead = "Nothing on this page has been read from the Box.";
    open();
    QVERIFY(connected());
    QCOMPARE(told("ntpRequestLine"), notRead);
    click("ntpReadButton");
    QCOMPARE(told("ntpRequestLine"), "reading from 127.0.11.5, no answer yet.");
    m_messages->expect();
    answer(jsonAnswer(R"({"type":"8","pares":{"NTP":"10.9.9.9"}})"));
    QTRY_COMPARE(m_messages->told().size(), 1);
    QCOMPARE(told("ntpRequestLine"), "read from 127.0.11.5.");
    click("ntpWriteButton");
    QCOMPARE(told("ntpRequestLine"), "writing to 127.0.11.5, no answer yet.");
    m_messages->expect();
    answer(jsonAnswer(R"({"type":"108","code":"200"})"));
    QTRY_COMPARE(m_messages->told().size(), 2);
    QCOMPARE(told("ntpRequestLine"), "written to 127.0.11.5.");
    QCOMPARE(told("lanRequestLine"), notRead);
    m_form->replaceItem(m_item);
    QCOMPARE(told("ntpRequestLine"), notRead);
}

// Such as one that comes late, after the form has turned to another Box.
void TestBoxEditAllocation::answerToNoRequestTellsNothing()
{
    open();
    QVERIFY(connected());
    click("ntpWriteButton");
    m_form->replaceItem(m_item);
    m_messages->expect();
    answer(jsonAnswer(R"({"type":"108","code":"200"})"));
    QTRY_COMPARE(m_messages->told().size(), 1);
    QCOMPARE(told("ntpRequestLine"), "Nothing on this page has been read from the Box.");
}

void TestBoxEditAllocation::requestWithoutAnAnswerIsTold_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("doubt");     // once the link has ended
    QTest::addColumn<QString>("lateDoubt"); // after ten seconds
    QTest::newRow("read") << QByteArray("lanReadButton") << QByteArray("lanRequestLine") << ""
                          << "";
    QTest::newRow("write") << QByteArray("wanWriteButton") << QByteArray("wanRequestLine")
                           << " Nobody knows whether 127.0.11.5 was written to."
                           << " Nobody knows whether all was written to 127.0.11.5.";
    QTest::newRow("reboot") << QByteArray("rebootButton") << QByteArray("rebootLine")
                            << " Nobody knows whether 127.0.11.5 restarts."
                            << " Nobody knows whether 127.0.11.5 restarts.";
}

void TestBoxEditAllocation::requestWithoutAnAnswerIsTold()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, line);
    QFETCH(QString, doubt);
    QFETCH(QString, lateDoubt);
    open();
    QVERIFY(connected());
    {
        const QScopedValueRollback<int> patience(RequestLine::patience, 50);
        click(button);
    }
    QVERIFY(told(line).endsWith("no answer yet."));
    QTRY_COMPARE(told(line), "NO ANSWER from 127.0.11.5 within ten seconds." + lateDoubt);
    click(button);
    QVERIFY(told(line).endsWith("no answer yet."));
    m_box->link(0)->abort();
    QTRY_COMPARE(told(line), "NO ANSWER: the link to 127.0.11.5 ended before it." + doubt);
    click(button);
    QCOMPARE(told(line), "FAILED: nothing was sent, there is no link to 127.0.11.5.");
}

void TestBoxEditAllocation::requestThatNeverWentOutIsTold_data()
{
    QTest::addColumn<bool>("byUser");
    QTest::newRow("heartbeat finds no link") << false;
    QTest::newRow("disconnected") << true;
}

void TestBoxEditAllocation::requestThatNeverWentOutIsTold()
{
    QFETCH(bool, byUser);
    open();
    QVERIFY(connected());
    click("disconnectButton");
    find<QLineEdit>("ip")->setText("127.0.11.9"); // nobody listens there
    click("lanWriteButton");
    QCOMPARE(told("lanRequestLine"), "writing to 127.0.11.9, no answer yet.");
    QSignalSpy refused(m_form->protocol()->session(), &Session::socketFailed);
    QVERIFY(!refused.isEmpty() || refused.wait());
    if (byUser) {
        click("disconnectButton");
    } else {
        m_form->protocol()->sendHeartbeat();
    }
    QCOMPARE(told("lanRequestLine"), "FAILED: nothing was sent, there is no link to 127.0.11.9.");
}

void TestBoxEditAllocation::answerToOneRequestIsNotThatToAnother()
{
    open();
    QVERIFY(connected());
    click("ntpReadButton");
    click("ntpWriteButton");
    m_messages->expect();
    answer(jsonAnswer(R"({"type":"8","pares":{"NTP":"10.9.9.9"}})"));
    QTRY_COMPARE(m_messages->told().size(), 1);
    QCOMPARE(told("ntpRequestLine"), "writing to 127.0.11.5, no answer yet.");
    click("ntpWriteButton");
    m_messages->expect();
    answer(jsonAnswer(R"({"type":"108","code":"200"})"));
    QTRY_COMPARE(m_messages->told().size(), 2);
    QCOMPARE(told("ntpRequestLine"), "writing to 127.0.11.5, no answer yet.");
    // What was read since leaves the write as it is.
    click("ntpReadButton");
    m_messages->expect();
    answer(jsonAnswer(R"({"type":"8","pares":{"NTP":"10.9.9.9"}})"));
    QTRY_COMPARE(m_messages->told().size(), 3);
    QCOMPARE(told("ntpRequestLine"), "read from 127.0.11.5.");
    m_box->link(0)->abort();
    QTRY_COMPARE(told("ntpRequestLine"),
                 "NO ANSWER: the link to 127.0.11.5 ended before it. "
                 "Nobody knows whether 127.0.11.5 was written to.");
}

void TestBoxEditAllocation::lostWriteIsToldBehindARead()
{
    const QScopedValueRollback<int> patience(RequestLine::patience, 200);
    open();
    QVERIFY(connected());
    click("ntpWriteButton");
    click("ntpReadButton");
    m_messages->expect();
    answer(jsonAnswer(R"({"type":"8","pares":{"NTP":"10.9.9.9"}})"));
    QTRY_COMPARE(m_messages->told().size(), 1);
    QTRY_COMPARE(told("ntpRequestLine"),
                 "NO ANSWER from 127.0.11.5 within ten seconds. "
                 "Nobody knows whether all was written to 127.0.11.5.");
}

void TestBoxEditAllocation::lostAnswerDoesNotHideThoseBehindIt()
{
    const QByteArray written = jsonAnswer(R"({"type":"108","code":"200"})");
    const QString doubt = "NO ANSWER from 127.0.11.5 within ten seconds. "
                          "Nobody knows whether all was written to 127.0.11.5.";
    const QScopedValueRollback<int> patience(RequestLine::patience, 200);
    open();
    QVERIFY(connected());
    click("ntpWriteButton");
    click("ntpWriteButton");
    m_messages->expect();
    answer(written);
    QTRY_COMPARE(m_messages->told().size(), 1);
    QCOMPARE(told("ntpRequestLine"), "writing to 127.0.11.5, no answer yet.");
    QTRY_COMPARE(told("ntpRequestLine"), doubt);
    click("ntpWriteButton");
    m_messages->expect();
    answer(written);
    QTRY_COMPARE(m_messages->told().size(), 2);
    QCOMPARE(told("ntpRequestLine"), "written to 127.0.11.5.");
    // One that is late.
    click("ntpWriteButton");
    QTRY_COMPARE(told("ntpRequestLine"), doubt);
    m_messages->expect();
    answer(written);
    QTRY_COMPARE(m_messages->told().size(), 3);
    QCOMPARE(told("ntpRequestLine"), "written to 127.0.11.5.");
}

void TestBoxEditAllocation::anotherItemTakesTheLineOfTheRebootBefore()
{
    open();
    QVERIFY(connected());
    click("rebootButton");
    QVERIFY(!find<QLabel>("rebootLine")->isHidden());
    m_form->replaceItem(m_item);
    QVERIFY(find<QLabel>("rebootLine")->isHidden());
}

void TestBoxEditAllocation::refusedWriteStaysToldOnItsPage()
{
    open();
    QVERIFY(connected());
    click("lanWriteButton");
    QString below; // what the page says below the message
    actBelowTheNextMessage([&] { below = told("lanRequestLine"); });
    answer(jsonAnswer(R"({"type":"102","code":"417"})"));
    QTRY_COMPARE(below, "FAILED: 127.0.11.5 refused, error code 417.");
}

QTEST_MAIN(TestBoxEditAllocation)
#include "tst_boxeditallocation.moc"

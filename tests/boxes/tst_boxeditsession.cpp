#include "boxformtest.h"

#include "boxes/hostaddressdialog.h"
#include "logtail.h"

#include <QApplication>
#include <QComboBox>
#include <QHostAddress>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

// The session that a Box form holds, and the local address that it goes out from.
class TestBoxEditSession : public BoxFormTest
{
    Q_OBJECT
public:
    TestBoxEditSession()
        : BoxFormTest("127.0.11.4")
    {
    }

private slots:
    void connectsAtOnceAndHeartbeats();
    void showsStatusAndVersion();
    void connectTwiceReplacesTheSession();
    void returnInTheAddressConnects();
    void disconnectDropsTheSessionOnce();
    void endOfTheSessionIsHeard_data();
    void endOfTheSessionIsHeard();
    void listenerMayConnectAnew();
    void readAfterDisconnectMakesASession();
    void cancelDisconnectsBeforeItRejects();
    void offlineIsToldInTheMessageDock();
    void reportsArePassedOn();
    void reportsComeWithTheBoxAndItsAddress();
    void endOfTheSessionIsTold_data();
    void endOfTheSessionIsTold();
    void silenceIsNoEndOfTheSession();
    void projectThatIsNotOpenIsTold();
    void requestOnADeadLinkIsToldInTheLabel();
    void hostAddressChoices();
    void hostAddressDialogOffersTheAddressesOfThisMachine();
    void anyHostAddressStartsANewSession();
    void chosenHostAddressIsBoundAndRemembered();
    void cancelledHostAddressChangesNothing();
    void bindingFailureIsToldForTheSessionOfThatMoment();
    void linkGoesOnBelowAMessage_data();
    void linkGoesOnBelowAMessage();
    void sessionMayBeDroppedBelowItsOwnBox_data();
    void sessionMayBeDroppedBelowItsOwnBox();
};

void TestBoxEditSession::connectsAtOnceAndHeartbeats()
{
    open();
    QVERIFY(connected());
    QCOMPARE(m_box->received(0).toHex(), QByteArray("1234010008005678"));
}

void TestBoxEditSession::showsStatusAndVersion()
{
    open();
    QVERIFY(connected());
    // Version "2.1.0", serial number "S1", model "M".
    answer(QByteArray::fromHex("12340200 1300 05 322e312e30 02 5331 01 4d 5678"));
    QTRY_COMPARE(status(), "Connection status: Connected");
    QCOMPARE(find<QLabel>("versionLabel")->text(), "Program version: 2.1.0");
    m_box->link(0)->abort();
    QTRY_COMPARE(status(), "Connection status: Disconnected");
}

void TestBoxEditSession::connectTwiceReplacesTheSession()
{
    open();
    QVERIFY(connected());
    const QPointer<Protocol> first(m_form->protocol());
    const LogTail log("BoxEditDialog");
    QStringList labels;
    for (int press = 0; press < 2; ++press) {
        click("connectButton");
        labels.append(status());
    }
    QVERIFY(!first);
    QCOMPARE(labels, (QStringList{"Connection status: connecting..", "Connection status: connecting.."}));
    const QString disconnected = "BoxEditDialog: disconnect";
    const QString connectedLine = "BoxEditDialog: connect";
    QCOMPARE(log.events(), (QStringList{disconnected, connectedLine, disconnected, connectedLine}));
    QTRY_COMPARE(m_box->link(0)->state(), QAbstractSocket::UnconnectedState);
    QVERIFY(connected());
}

void TestBoxEditSession::returnInTheAddressConnects()
{
    open();
    QVERIFY(connected());
    const LogTail log("BoxEditDialog");
    auto *address = find<QLineEdit>("ip");
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        const QPointer<Protocol> before(m_form->protocol());
        QTest::keyClick(address, key);
        QVERIFY(!before);
        QCOMPARE(status(), "Connection status: connecting..");
        QVERIFY(connected());
    }
    QCOMPARE(log.events().count("BoxEditDialog: connect"), 2);
    // An address that is not complete leaves the session as it is.
    const QPointer<Protocol> last(m_form->protocol());
    address->setText("127.0.");
    QTest::keyClick(address, Qt::Key_Return);
    QCOMPARE(m_form->protocol(), last.data());
}

void TestBoxEditSession::disconnectDropsTheSessionOnce()
{
    open();
    QVERIFY(connected());
    const QPointer<Protocol> session(m_form->protocol());
    const LogTail log("BoxEditDialog");
    click("disconnectButton");
    QVERIFY(!session);
    QCOMPARE(m_form->protocol(), nullptr);
    QCOMPARE(status(), "Connection status: Not connected");
    find<QLabel>("statusLabel")->setText("untouched");
    click("disconnectButton");
    QCOMPARE(status(), "untouched");
    QCOMPARE(log.events(), QStringList("BoxEditDialog: disconnect"));
    QTRY_COMPARE(m_box->link(0)->state(), QAbstractSocket::UnconnectedState);
}

void TestBoxEditSession::endOfTheSessionIsHeard_data()
{
    QTest::addColumn<QByteArray>("end");
    for (const char *end : {"disconnectButton", "connectButton", "cancelButton", "form deleted"}) {
        QTest::newRow(end) << QByteArray(end);
    }
}

void TestBoxEditSession::endOfTheSessionIsHeard()
{
    QFETCH(QByteArray, end);
    open();
    QVERIFY(connected());
    QStringList heard;
    connect(m_form->protocol(), &Protocol::connectionStatusChanged, m_box.get(),
            [&](const QString &told) { heard.append(told); });
    connect(m_form->protocol(), &QObject::destroyed, m_box.get(), [&] { heard.append("destroyed"); });
    if (end == "form deleted") {
        delete m_form;
    } else {
        click(end.constData());
    }
    QCOMPARE(heard, (QStringList{"Connection status: Disconnected", "destroyed"}));
    QTRY_COMPARE(m_box->link(0)->state(), QAbstractSocket::UnconnectedState);
}

void TestBoxEditSession::listenerMayConnectAnew()
{
    open();
    QVERIFY(connected());
    connect(m_form->protocol(), &Protocol::connectionStatusChanged, m_form,
            [this] { m_form->connectToServer(); });
    click("connectButton");
    QCOMPARE(m_form->findChildren<Protocol *>(), QList<Protocol *>{m_form->protocol()});
    QTRY_COMPARE(m_box->count(), 2);
}

void TestBoxEditSession::readAfterDisconnectMakesASession()
{
    open();
    QVERIFY(connected());
    m_form->disconnectFromServer();
    const LogTail log("BoxEditDialog");
    click("lanReadButton");
    QVERIFY(m_form->protocol());
    QCOMPARE(log.events(), (QStringList{"BoxEditDialog: connect", "BoxEditDialog: read Lan"}));
    QTRY_COMPARE(m_box->count(), 2);
    QTRY_COMPARE(requestsIn(m_box->received(1)).size(), 1);
    QCOMPARE(requestsIn(m_box->received(1)).first().value(QLatin1String("type")).toString(), "2");
}

void TestBoxEditSession::cancelDisconnectsBeforeItRejects()
{
    open();
    QString statusAtRejection;
    connect(m_form, &QDialog::rejected, this, [&] { statusAtRejection = status(); });
    click("cancelButton");
    QCOMPARE(statusAtRejection, "Connection status: Not connected");
    QCOMPARE(m_form->protocol(), nullptr);
}

void TestBoxEditSession::offlineIsToldInTheMessageDock()
{
    open();
    emit m_form->protocol()->offlineOccurred();
    QCOMPARE(m_workspace->messages,
             QStringList("!!!No communication for 30 seconds. Connection may be lost.!!!"));
    delete m_form;
    m_form = new BoxEditDialog(m_item, nullptr);
    emit m_form->protocol()->offlineOccurred();
}

void TestBoxEditSession::reportsArePassedOn()
{
    qRegisterMetaType<Protocol::dataMonitoringData>();
    open();
    const QSignalSpy passed(m_form, &BoxEditDialog::sendDataToMainWindow);
    const LogTail log("BoxEditDialog");
    Protocol::dataMonitoringData report;
    report.projectName = "plant";
    report.plcName = "meter";
    QTest::ignoreMessage(QtDebugMsg, "\"plant\"");
    emit m_form->protocol()->dataReceived(report);
    QCOMPARE(passed.size(), 1);
    QCOMPARE(passed.first().first().value<Protocol::dataMonitoringData>().plcName, "meter");
    QCOMPARE(log.events(), QStringList("BoxEditDialog: Data"));
}

void TestBoxEditSession::reportsComeWithTheBoxAndItsAddress()
{
    open();
    QStringList heard;
    connect(m_form, &BoxEditDialog::reporting, this,
            [&](const QString &box, const QString &address) { heard.append(box + '|' + address); });
    connect(m_form, &BoxEditDialog::sendDataToMainWindow, this, [&] { heard.append("report"); });
    const QString typed = "127.0.11.9"; // nobody is there
    find<QLineEdit>("name")->setText("half typed");
    find<QLineEdit>("ip")->setText(typed);
    emit m_form->protocol()->dataReceived({});
    m_form->connectToServer();
    emit m_form->protocol()->dataReceived({});
    QCOMPARE(heard, (QStringList{"Gate 1|" + boxAddress(), "report", "Gate 1|" + typed, "report"}));
}

void TestBoxEditSession::endOfTheSessionIsTold_data()
{
    QTest::addColumn<QByteArray>("end");
    for (const char *end :
         {"disconnectButton", "connectButton", "cancelButton", "form deleted", "closed by the Box"}) {
        QTest::newRow(end) << QByteArray(end);
    }
}

void TestBoxEditSession::endOfTheSessionIsTold()
{
    QFETCH(QByteArray, end);
    open();
    QVERIFY(connected());
    QSignalSpy ended(m_form, &BoxEditDialog::sessionEnded);
    m_form->showReported("Hillside", false);
    if (end == "form deleted") {
        delete m_form;
    } else if (end == "closed by the Box") {
        m_box->close();
        QVERIFY(ended.wait());
    } else {
        click(end.constData());
    }
    QCOMPARE(ended, (QList<QVariantList>{{"127.0.11.4"}}));
    QVERIFY(!m_form || find<QLabel>("projectNotice")->isHidden());
}

void TestBoxEditSession::silenceIsNoEndOfTheSession()
{
    open();
    QVERIFY(connected());
    const QSignalSpy ended(m_form, &BoxEditDialog::sessionEnded);
    QSignalSpy answering(m_form, &BoxEditDialog::answering);
    m_form->showReported("Hillside", false);
    emit m_form->protocol()->offlineOccurred();
    QCOMPARE(answering, (QList<QVariantList>{{false}}));
    QVERIFY(find<QLabel>("projectNotice")->isHidden());
    answer(QByteArray::fromHex("12340200 1300 05 322e312e30 02 5331 01 4d 5678"));
    QTRY_COMPARE(answering, (QList<QVariantList>{{false}, {true}}));
    QCOMPARE(ended.size(), 0);
}

void TestBoxEditSession::projectThatIsNotOpenIsTold()
{
    open();
    m_form->show();
    const auto *notice = find<QLabel>("projectNotice");
    QVERIFY(!notice->isVisible());
    m_form->showReported("<b>Hillside</b>", false);
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->textFormat(), Qt::PlainText);
    QCOMPARE(
        notice->text(),
        "The Box reports values of the project '<b>Hillside</b>', which is not open: they are not shown.");
    m_form->showReported("Hillside", true);
    QVERIFY(!notice->isVisible());
}

void TestBoxEditSession::requestOnADeadLinkIsToldInTheLabel()
{
    open();
    QVERIFY(connected());
    m_box->link(0)->abort();
    QTRY_COMPARE(status(), "Connection status: Disconnected");
    click("lanReadButton");
    QCOMPARE(status(), "Not connected to server.");
}

void TestBoxEditSession::hostAddressChoices()
{
    const QList<QHostAddress> addresses{
        QHostAddress("127.0.0.1"), QHostAddress("10.1.2.3"),  QHostAddress("::1"),
        QHostAddress("fe80::1"),   QHostAddress("127.9.9.9"), QHostAddress("192.168.1.5"),
    };
    QCOMPARE(HostAddressDialog::choices(addresses), (QStringList{"0.0.0.0", "10.1.2.3", "192.168.1.5"}));
}

void TestBoxEditSession::hostAddressDialogOffersTheAddressesOfThisMachine()
{
    open();
    m_dialogs->expect([](QWidget *dialog) {
        QCOMPARE(dialog->windowTitle(), "Select Host Address");
        QCOMPARE(dialog->minimumSize(), QSize(350, 100));
        QCOMPARE(dialog->findChild<QLabel *>()->text(), "Please select the host address:");
        const auto *list = dialog->findChild<QComboBox *>("hostAddress");
        QCOMPARE(list->itemText(0), "0.0.0.0");
        QCOMPARE(list->currentIndex(), 0);
        dialog->close();
    });
    click("changeHostButton");
    // It stays a child of the form.
    QVERIFY(m_form->findChild<HostAddressDialog *>());
}

void TestBoxEditSession::anyHostAddressStartsANewSession()
{
    open();
    QVERIFY(connected());
    const QPointer<Protocol> first(m_form->protocol());
    m_dialogs->expect([](QWidget *dialog) { dialog->findChild<QPushButton *>("okButton")->click(); });
    m_form->showChangeHostAddressDialog();
    QVERIFY(!first);
    QCOMPARE(m_form->findChild<HostAddressDialog *>()->result(), int(QDialog::Accepted));
    QCOMPARE(m_workspace->messages, QStringList("Selected address: 0.0.0.0 (No binding)"));
    QCOMPARE(status(), "Connection status: connecting..");
    QTRY_COMPARE(m_box->count(), 2);
}

void TestBoxEditSession::chosenHostAddressIsBoundAndRemembered()
{
    open();
    QVERIFY(connected());
    chooseHostAddress("127.0.11.7");
    QCOMPARE(m_form->hostAddress(), "127.0.11.7");
    QCOMPARE(m_workspace->messages, QStringList("Selected host address: 127.0.11.7"));
    QCOMPARE(status(), "Connection status: Waiting for connection.");
    QTRY_COMPARE(m_box->count(), 2);
    QCOMPARE(status(), "Connection status: Reconnecting...");
    QCOMPARE(m_box->link(1)->peerAddress(), QHostAddress("127.0.11.7"));
}

void TestBoxEditSession::cancelledHostAddressChangesNothing()
{
    open();
    const Protocol *session = m_form->protocol();
    m_dialogs->expect([](QWidget *dialog) {
        auto *list = dialog->findChild<QComboBox *>("hostAddress");
        list->addItem("127.0.11.7");
        list->setCurrentIndex(list->count() - 1);
        dialog->findChild<QPushButton *>("cancelButton")->click();
    });
    m_form->showChangeHostAddressDialog();
    QCOMPARE(m_form->hostAddress(), "0.0.0.0");
    QCOMPARE(m_form->protocol(), session);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestBoxEditSession::bindingFailureIsToldForTheSessionOfThatMoment()
{
    open();
    const QString told = "Binding Failed|Failed to bind to IP address: 192.0.2.1";
    // Twice, and still one box a failure.
    for (int time = 0; time < 2; ++time) {
        m_dialogs->expect([](QWidget *dialog) { dialog->close(); });
        m_form->showChangeHostAddressDialog();
    }
    m_form->protocol()->closeConnection();
    m_messages->expect();
    m_form->protocol()->bindToAddress(QHostAddress("192.0.2.1"));
    QCOMPARE(m_messages->told(), QStringList(told));

    // The session that "OK" starts has nobody listening.
    chooseHostAddress("192.0.2.1");
    QCOMPARE(m_messages->told(), QStringList(told));
}

void TestBoxEditSession::linkGoesOnBelowAMessage_data()
{
    QTest::addColumn<QByteArray>("told");
    QTest::newRow("an update's") << jsonAnswer(R"({"type":"8","pares":{"NTP":"4.1.1.1"}})");
    QTest::newRow("a write's") << jsonAnswer(R"({"type":"108","code":"200"})");
}

// Somebody who went away from the message finds all that was reported meanwhile.
void TestBoxEditSession::linkGoesOnBelowAMessage()
{
    QFETCH(QByteArray, told);
    open();
    QVERIFY(connected());
    QString below;
    actBelowTheNextMessage([&] {
        answer(QByteArray::fromHex("12340200 1300 05 322e312e30 02 5331 01 4d 5678"));
        const auto version = [this] { return find<QLabel>("versionLabel")->text(); };
        below = QTest::qWaitFor([&] { return version().endsWith("2.1.0"); }, 2000) ? version() : "nothing";
    });
    answer(told);
    QTRY_COMPARE(below, "Program version: 2.1.0");
}

void TestBoxEditSession::sessionMayBeDroppedBelowItsOwnBox_data()
{
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<bool>("again");
    const QByteArray read = jsonAnswer(R"({"type":"8","pares":{"NTP":"4.1.1.1"}})");
    const QByteArray written = jsonAnswer(R"({"type":"108","code":"200"})");
    QTest::newRow("an update's, disconnected") << read + read << false;
    QTest::newRow("an update's, connected anew") << read + read << true;
    QTest::newRow("a write's, disconnected") << written + written << false;
    QTest::newRow("a write's, connected anew") << written + written << true;
}

// What the dropped session still had in hand is not told any more.
void TestBoxEditSession::sessionMayBeDroppedBelowItsOwnBox()
{
    QFETCH(QByteArray, stream);
    QFETCH(bool, again);
    open();
    QVERIFY(connected());
    const QPointer<Protocol> dropped(m_form->protocol());
    actBelowTheNextMessage([&] {
        if (again) {
            m_form->connectToServer();
        } else {
            m_form->disconnectFromServer();
        }
    });
    answer(stream);
    QTRY_VERIFY(!dropped);
    QTRY_COMPARE(m_box->link(0)->state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(bool(m_form->protocol()), again);
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

QTEST_MAIN(TestBoxEditSession)
#include "tst_boxeditsession.moc"

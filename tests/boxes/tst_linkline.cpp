#include "boxformtest.h"

#include "boxes/linkline.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

// What a Box form tells beside the status: when the Box told its program version last, and that buttons stay
// where they are meanwhile.
class TestLinkLine : public BoxFormTest
{
    Q_OBJECT
public:
    TestLinkLine()
        : BoxFormTest("127.0.11.21")
    {
    }

private slots:
    void lastAnswerStandsBesideTheStatus();
    void anotherBoxHasNotAnsweredYet();
    void heartbeatThatIsDueFindsNoLink();
    void linkLineBelievesASocketThatWasBound();
    void buttonsStayWhereTheyAre();
    void addressThatWasNotConnectedIsTold();
};

// Status and version stay what the last answer made them, so the line beside them has to tell of its age.
void TestLinkLine::lastAnswerStandsBesideTheStatus()
{
    const QByteArray heartbeatAnswer = QByteArray::fromHex("12340200 1300 05 322e312e30 02 5331 01 4d 5678");
    static const QRegularExpression time("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d");
    open();
    const auto *line = find<LinkLine>("linkLine");
    const auto told = [&] { return QString(line->text()).replace(time, "TIME"); };
    QCOMPARE(told(), "127.0.11.21 has not told its program version yet.");
    QVERIFY(!line->isAmiss());
    QVERIFY(connected());
    emit m_form->protocol()->offlineOccurred();
    QCOMPARE(told(), "127.0.11.21 has NOT told its program version.");
    QVERIFY(line->isAmiss());
    answer(heartbeatAnswer);
    QTRY_COMPARE(told(), "127.0.11.21 told its program version last at TIME.");
    QVERIFY(!line->isAmiss());
    emit m_form->protocol()->offlineOccurred();
    QCOMPARE(status(), "Connection status: Connected");
    QCOMPARE(told(), "127.0.11.21 has NOT told its program version since TIME.");
    QVERIFY(line->isAmiss());
    answer(heartbeatAnswer);
    QTRY_COMPARE(told(), "127.0.11.21 told its program version last at TIME.");
    QVERIFY(!line->isAmiss());
    m_box->link(0)->abort();
    QTRY_COMPARE(told(), "NO link to 127.0.11.21. It told its program version last at TIME.");
    QVERIFY(line->isAmiss());
}

void TestLinkLine::anotherBoxHasNotAnsweredYet()
{
    open();
    QVERIFY(connected());
    answer(QByteArray::fromHex("12340200 1300 05 322e312e30 02 5331 01 4d 5678"));
    QTRY_COMPARE(find<QLabel>("versionLabel")->text(), "Program version: 2.1.0");
    find<QLineEdit>("ip")->setText("127.0.11.9"); // nobody listens there
    click("connectButton");
    QSignalSpy refused(m_form->protocol()->session(), &Session::socketFailed);
    QCOMPARE(find<QLabel>("versionLabel")->text(), "Program version: 2.1.0");
    const auto *line = find<LinkLine>("linkLine");
    QCOMPARE(line->text(), "127.0.11.9 has not told its program version yet.");
    QVERIFY(!refused.isEmpty() || refused.wait()); // after that no disconnection comes
    click("disconnectButton");
    QCOMPARE(line->text(), "NO link to 127.0.11.9. It has not told its program version.");
    QVERIFY(line->isAmiss());
}

void TestLinkLine::heartbeatThatIsDueFindsNoLink()
{
    open();
    QVERIFY(connected());
    find<QLineEdit>("ip")->setText("127.0.11.9"); // nobody listens there
    click("connectButton");
    QSignalSpy refused(m_form->protocol()->session(), &Session::socketFailed);
    QVERIFY(!refused.isEmpty() || refused.wait());
    m_form->protocol()->sendHeartbeat();
    QCOMPARE(find<LinkLine>("linkLine")->text(),
             "NO link to 127.0.11.9. It has not told its program version.");
}

void TestLinkLine::linkLineBelievesASocketThatWasBound()
{
    open();
    QVERIFY(connected());
    chooseHostAddress("127.0.11.7");
    const auto *line = find<LinkLine>("linkLine");
    QCOMPARE(status(), "Connection status: Waiting for connection.");
    QCOMPARE(line->text(), "127.0.11.21 has not told its program version yet.");
    QVERIFY(!line->isAmiss());
}

void TestLinkLine::buttonsStayWhereTheyAre()
{
    open();
    m_form->show();
    QVERIFY(connected());
    answer(QByteArray::fromHex("12340200 1300 05 322e312e30 02 5331 01 4d 5678"));
    QTRY_COMPARE(status(), "Connection status: Connected");
    const auto places = [this] {
        QCoreApplication::processEvents();
        QVector<int> tops;
        for (const char *name : {"connectButton", "updateProjectButton", "rebootButton", "lanReadButton"}) {
            tops.append(find<QPushButton>(name)->y());
        }
        return tops;
    };
    const QVector<int> before = places();
    click("rebootButton");
    QCOMPARE(places(), before);
    m_box->link(0)->abort();
    QTRY_COMPARE(status(), "Connection status: Disconnected");
}

void TestLinkLine::addressThatWasNotConnectedIsTold()
{
    open();
    QVERIFY(connected());
    const auto *line = find<LinkLine>("linkLine");
    find<QLineEdit>("ip")->setText("127.0.11.9");
    QCOMPARE(line->text(),
             "127.0.11.21 has not told its program version yet. The address above is ANOTHER one.");
    QVERIFY(line->isAmiss());
    find<QLineEdit>("ip")->setText(boxAddress());
    QVERIFY(!line->isAmiss());
}

QTEST_MAIN(TestLinkLine)
#include "tst_linkline.moc"

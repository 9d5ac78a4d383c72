#include "widgets/passwordeye.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QToolButton>
#include <QWindow>
#include <QtTest>

// A password is seen while someone holds the eye or the key, and never longer.
class TestPasswordEye : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_form.reset(); }

    void showsWhileTheEyeIsHeld();
    void showsWhileTheKeyIsHeld();
    void repeatedKeyDoesNotFlicker();
    void otherKeysShowNothing();
    void hidesWhenTheFocusLeaves_data();
    void hidesWhenTheFocusLeaves();
    void hidesWhenDisabled();
    void hidesOnRequest();
    void isNoStopOfTheTabKey();
    void keepsTheKeyFromShortcuts();

private:
    QLineEdit *password() const { return m_form->findChild<QLineEdit *>("password"); }
    QToolButton *eye() const { return password()->findChild<QToolButton *>(); }
    bool isShown() const { return password()->displayText() == "secret"; }

    std::unique_ptr<QWidget> m_form;
};

void TestPasswordEye::init()
{
    m_form = std::make_unique<QWidget>();
    auto *layout = new QHBoxLayout(m_form.get());
    for (const char *name : {"password", "other"}) {
        auto *edit = new QLineEdit("secret", m_form.get());
        edit->setObjectName(QLatin1String(name));
        layout->addWidget(edit);
    }
    new PasswordEye("Show", password());
    m_form->show();
    QApplication::setActiveWindow(m_form.get());
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    QVERIFY(!isShown());
    QCOMPARE(password()->echoMode(), QLineEdit::Password);
}

void TestPasswordEye::showsWhileTheEyeIsHeld()
{
    m_form->findChild<QLineEdit *>("other")->setFocus();
    QTest::mousePress(eye(), Qt::LeftButton);
    QVERIFY(isShown());
    QTest::mouseRelease(eye(), Qt::LeftButton);
    QVERIFY(!isShown());
    QCOMPARE(password()->echoMode(), QLineEdit::Password);
    QCOMPARE(password()->text(), "secret");
}

void TestPasswordEye::showsWhileTheKeyIsHeld()
{
    password()->setFocus();
    QTest::keyPress(password(), Qt::Key_F8);
    QVERIFY(isShown());
    QTest::keyRelease(password(), Qt::Key_F8);
    QVERIFY(!isShown());
}

// Which comes as pairs of release and press.
void TestPasswordEye::repeatedKeyDoesNotFlicker()
{
    password()->setFocus();
    QTest::keyPress(password(), Qt::Key_F8);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_F8, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(password(), &release);
    QVERIFY(isShown());
    QKeyEvent press(QEvent::KeyPress, Qt::Key_F8, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(password(), &press);
    QTest::keyRelease(password(), Qt::Key_F8);
    QVERIFY(!isShown());
}

void TestPasswordEye::otherKeysShowNothing()
{
    password()->setFocus();
    QTest::keyClick(password(), Qt::Key_F7);
    QVERIFY(!isShown());
    QTest::keyPress(password(), Qt::Key_F8, Qt::ControlModifier);
    QVERIFY(!isShown());
    QCOMPARE(password()->text(), "secret");
}

void TestPasswordEye::hidesWhenTheFocusLeaves_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("eye") << false;
    QTest::newRow("key") << true;
}

void TestPasswordEye::hidesWhenTheFocusLeaves()
{
    QFETCH(bool, byKey);
    password()->setFocus();
    if (byKey) {
        QTest::keyPress(password(), Qt::Key_F8);
    } else {
        QTest::mousePress(eye(), Qt::LeftButton);
    }
    QVERIFY(isShown());
    m_form->findChild<QLineEdit *>("other")->setFocus();
    QVERIFY(!isShown());
}

void TestPasswordEye::hidesWhenDisabled()
{
    QTest::mousePress(eye(), Qt::LeftButton);
    QVERIFY(isShown());
    password()->setEnabled(false);
    QVERIFY(!isShown());
}

void TestPasswordEye::hidesOnRequest()
{
    QTest::mousePress(eye(), Qt::LeftButton);
    QVERIFY(isShown());
    password()->findChild<PasswordEye *>()->hide();
    QVERIFY(!isShown());
}

void TestPasswordEye::isNoStopOfTheTabKey()
{
    password()->setFocus();
    QTest::keyClick(password(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), "other");
    QCOMPARE(eye()->toolTip(), "Show");
    QVERIFY(!eye()->icon().isNull());
}

void TestPasswordEye::keepsTheKeyFromShortcuts()
{
    QAction action;
    action.setShortcut(Qt::Key_F8);
    m_form->addAction(&action);
    const QSignalSpy triggered(&action, &QAction::triggered);
    password()->setFocus();
    QTest::keyPress(m_form->windowHandle(), Qt::Key_F8);
    QVERIFY(isShown());
    QCOMPARE(triggered.size(), 0);
}

QTEST_MAIN(TestPasswordEye)
#include "tst_passwordeye.moc"

#include "boxes/boxeditdialog.h"
#include "boxsim/boxsim.h"
#include "document/projectreader.h"
#include "logtail.h"
#include "messages.h"
#include "windowundertest.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QTemporaryDir>

using Window = WindowUnderTest;

static const QString editBox = "Edit Box";
static const QString firstAddress = "127.0.21.1";
static const QString secondAddress = "127.0.21.2";

// The Box's tab in the real window against Boxes that answer: what ends its session, and what may happen to
// its node, its tab and the window meanwhile.
class TestBoxTab : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QGuiApplication::setQuitOnLastWindowClosed(false); }
    void init();
    void cleanup();

    void endOfTheTabEndsTheSessionFirst_data();
    void endOfTheTabEndsTheSessionFirst();
    void clickOnAnotherBoxMovesTheSession();
    void pageFollowsTheTree();
    void formOutlivesItsNode();
    void reboundFormOutlivesItsNode();
    void loadingMergesBelowTheForm();
    void waitForTheVerdictMayBeCutShort_data();
    void waitForTheVerdictMayBeCutShort();
    void programMayEndDuringTheWaitForTheVerdict();
    void outcomeIsToldInTheLanguageOfTheWindow_data();
    void outcomeIsToldInTheLanguageOfTheWindow();

private:
    void startSim(std::unique_ptr<BoxSim> &sim, const QString &address);
    BoxEditDialog *boxForm() const { return qobject_cast<BoxEditDialog *>(m_window->form(editBox)); }
    // Opens the form of the first Box and waits for its session.
    BoxEditDialog *open();
    void act(const QByteArray &ending);

    std::unique_ptr<BoxSim> m_firstSim;
    std::unique_ptr<BoxSim> m_secondSim;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Window> m_window;
    std::unique_ptr<Messages> m_messages;
    QStandardItem *m_project = nullptr;
    QStandardItem *m_first = nullptr;
    QStandardItem *m_second = nullptr;
};

void TestBoxTab::startSim(std::unique_ptr<BoxSim> &sim, const QString &address)
{
    BoxSimOptions options;
    options.address = QHostAddress(address);
    options.discovery = false;
    options.reportInterval = 0;
    sim = std::make_unique<BoxSim>(options);
    QVERIFY2(sim->start(), qPrintable(sim->errorString()));
}

void TestBoxTab::init()
{
    RUN(startSim(m_firstSim, firstAddress));
    RUN(startSim(m_secondSim, secondAddress));
    m_folder = std::make_unique<QTemporaryDir>();
    m_window = std::make_unique<Window>();
    m_messages = std::make_unique<Messages>();
    m_project = m_window->addProject("plant", m_folder->path());
    m_first = Window::addBox(m_project, "a", firstAddress);
    m_second = Window::addBox(m_project, "b", secondAddress);
}

void TestBoxTab::cleanup()
{
    m_window.reset();
    QCOMPARE(m_messages->pending(), 0);
}

BoxEditDialog *TestBoxTab::open()
{
    m_window->click(m_first);
    if (!QTest::qWaitFor([this] { return m_firstSim->sessionCount() == 1; })) {
        qWarning("no session");
    }
    return boxForm();
}

void TestBoxTab::act(const QByteArray &ending)
{
    if (ending == "tab closed") {
        m_window->tab(editBox)->closeDockWidget();
    } else if (ending == "cancelled") {
        Window::press(boxForm(), "cancelButton");
    } else if (ending == "saved") {
        Window::press(boxForm(), "saveButton");
    } else if (ending == "Box deleted") {
        m_window->select(m_first);
        m_window->slotDeleteFile();
    } else if (ending == "other Box deleted") {
        m_window->select(m_second);
        m_window->slotDeleteFile();
    } else if (ending == "project closed") {
        m_window->select(m_project);
        m_messages->expect(QMessageBox::No);
        m_window->slotDeleteProject();
    } else if (ending == "project nearly closed") {
        m_window->select(m_project);
        m_messages->expect(QMessageBox::Cancel);
        m_window->slotDeleteProject();
    } else if (ending == "window destroyed") {
        m_window.reset();
    }
}

void TestBoxTab::endOfTheTabEndsTheSessionFirst_data()
{
    QTest::addColumn<QByteArray>("ending");
    QTest::addColumn<bool>("saves");
    for (const char *ending : {"tab closed", "cancelled", "saved", "Box deleted", "other Box deleted",
                               "project closed", "project nearly closed", "window destroyed"}) {
        QTest::newRow(ending) << QByteArray(ending) << (qstrcmp(ending, "saved") == 0);
    }
}

void TestBoxTab::endOfTheTabEndsTheSessionFirst()
{
    QFETCH(QByteArray, ending);
    QFETCH(bool, saves);
    const QPointer<BoxEditDialog> form = open();
    const LogTail log("BoxEditDialog");
    act(ending);
    Window::settle();
    QVERIFY(!form);
    QStringList expected{"BoxEditDialog: disconnect", "BoxEditDialog: destroyed"};
    if (saves) {
        expected.prepend("BoxEditDialog: save");
    }
    QCOMPARE(log.events(), expected);
    QTRY_COMPARE(m_firstSim->connectionCount(), 0);
}

void TestBoxTab::clickOnAnotherBoxMovesTheSession()
{
    const BoxEditDialog *form = open();
    const LogTail log("BoxEditDialog");
    m_window->click(m_second);
    QCOMPARE(boxForm(), form);
    QCOMPARE(log.events(),
             (QStringList{"BoxEditDialog: replace", "BoxEditDialog: disconnect", "BoxEditDialog: connect"}));
    QTRY_COMPARE(m_secondSim->sessionCount(), 1);
    QTRY_COMPARE(m_firstSim->connectionCount(), 0);
    QTRY_COMPARE(form->findChild<QLabel *>("statusLabel")->text(), "Connection status: Connected");
    QCOMPARE(m_firstSim->connectionsSeen(), 1);
}

// No command of the tree's menu empties the "Box" folder below an open form, but the slot can be called.
void TestBoxTab::pageFollowsTheTree()
{
    const QPointer<BoxEditDialog> form = open();
    const auto *target = Window::input<QLabel>(form, "pushTarget");
    QTRY_COMPARE(target->text(), "Update project pushes 'plant' to 127.0.21.1.");
    QStandardItem *other = m_window->addProject("other");
    Window::addBox(other, "b", QString());
    const QStandardItem *box = Window::addBox(other, "c", QString());
    m_window->select(other);
    QTRY_COMPARE(
        target->text(),
        "Update project pushes 'other' to 127.0.21.1. The Box of this form is in ANOTHER project, 'plant'.");
    // Its Boxes have no address.
    const auto *button = Window::input<QPushButton>(form, "remarksButton");
    QTRY_COMPARE(button->text(), "2 remarks on this project");
    Window::press(form, "remarksButton");
    auto *list = Window::input<QListWidget>(form, "remarks");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(1)).center());
    QCOMPARE(m_window->currentItem(), box);
    QVERIFY(form && m_window->tabs(editBox).size() == 1);
    QCOMPARE(form->nameEdit()->text(), "a");
}

void TestBoxTab::formOutlivesItsNode()
{
    BoxEditDialog *form = open();
    m_window->select(Window::folder(m_project, ProjectTree::boxFolder));
    m_window->slotDeleteAllFile();
    QCOMPARE(boxForm(), form);
    form->saveChanges();
    m_messages->expect();
    form->saveButton()->click();
    QCOMPARE(m_messages->told(), QStringList("error|Unable to find parent directory"));
    QCOMPARE(m_window->messages(), QStringList());
    QCOMPARE(boxForm(), form);
}

void TestBoxTab::reboundFormOutlivesItsNode()
{
    BoxEditDialog *form = open();
    m_window->click(m_second);
    m_window->select(m_second);
    m_window->slotDeleteAllFile();
    form->nameEdit()->setText("c");
    form->saveButton()->click();
    QCOMPARE(m_window->messages(), QStringList());
    QCOMPARE(m_first->text(), "c");
    QCOMPARE(m_first->data(boxIpRole).toString(), firstAddress);
}

void TestBoxTab::loadingMergesBelowTheForm()
{
    BoxEditDialog *form = open();
    const QJsonObject document = m_window->buildProjectJson(m_project);
    m_first->setData("10.1.1.1", boxLanIpRole);
    QCOMPARE(loadProject(*m_window->projectModel(), document, m_folder->path()), m_project);
    QCOMPARE(m_first->data(boxLanIpRole).toString(), QString());
    Window::input<QLineEdit>(form, "lanIp")->setText("10.1.1.2");
    form->saveButton()->click();
    QCOMPARE(m_first->data(boxLanIpRole).toString(), "10.1.1.2");
    QCOMPARE(m_window->messages(), QStringList("The box 'a' is saved successfully."));
}

void TestBoxTab::waitForTheVerdictMayBeCutShort_data()
{
    QTest::addColumn<QByteArray>("ending");
    for (const char *ending : {"tab closed", "cancelled", "Box deleted", "project closed"}) {
        QTest::newRow(ending) << QByteArray(ending);
    }
}

void TestBoxTab::waitForTheVerdictMayBeCutShort()
{
    QFETCH(QByteArray, ending);
    const QPointer<BoxEditDialog> form = open();
    BoxSimFaults faults;
    faults.verdict = BoxSimVerdict::None;
    m_firstSim->setFaults(faults);
    // Events flow during the wait alone.
    QTimer::singleShot(0, this, [&] { act(ending); });
    QElapsedTimer clock;
    clock.start();
    Window::press(form, "updateProjectButton");
    QVERIFY2(clock.elapsed() < 4000, "the wait went on without its form");
    QVERIFY(!form);
    QCOMPARE(m_window->messages(), QStringList());
    QVERIFY(!QFile::exists(m_folder->filePath("temp.json")));
    QTRY_COMPARE(m_firstSim->connectionCount(), 0);
}

void TestBoxTab::programMayEndDuringTheWaitForTheVerdict()
{
    const QPointer<BoxEditDialog> form = open();
    BoxSimFaults faults;
    faults.verdict = BoxSimVerdict::None;
    m_firstSim->setFaults(faults);
    QGuiApplication::setQuitOnLastWindowClosed(true);
    m_messages->expect(QMessageBox::No);
    QTimer::singleShot(0, this, [&] {
        QTimer::singleShot(0, this, [&] { m_window->close(); });
        Window::press(form, "updateProjectButton");
    });
    QElapsedTimer clock;
    clock.start();
    QCoreApplication::exec();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QVERIFY2(clock.elapsed() < 4000, "the wait outlived the program");
    m_window.reset();
    QVERIFY(!form);
    QTRY_COMPARE(m_firstSim->connectionCount(), 0);
}

void TestBoxTab::outcomeIsToldInTheLanguageOfTheWindow_data()
{
    QTest::addColumn<int>("verdict");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("chinese");
    QTest::addColumn<QString>("englishBox");
    QTest::addColumn<QString>("chineseBox");
    const auto row = [](const char *name, BoxSimVerdict verdict, const char *english, const char *chinese,
                        const char *englishBox = "", const char *chineseBox = "") {
        QTest::newRow(name) << int(verdict) << QString::fromUtf8(english) << QString::fromUtf8(chinese)
                            << QString::fromUtf8(englishBox) << QString::fromUtf8(chineseBox);
    };
    row("success", BoxSimVerdict::Honest, "Checksum Result:Checksum successful.", "校验结果：校验成功。");
    row("failure", BoxSimVerdict::Bad, "Checksum Result:Checksum failed.", "校验结果：校验失败。");
    row("other command", BoxSimVerdict::WrongCommand, "Checksum Result:Command type error.",
        "校验结果：命令类型错误。");
    row("other sub-type", BoxSimVerdict::WrongSubType,
        "Checksum Result:Verification data return value error.", "校验结果：校验数据返回值错误。");
    row("part of a verdict", BoxSimVerdict::Partial, "", "");
    row("no verdict", BoxSimVerdict::None, "Timeout:Timeout while waiting for checksum result.",
        "超时：等待校验结果超时。", "Timeout|Timeout while waiting for checksum result.",
        "超时|等待校验结果超时。");
}

void TestBoxTab::outcomeIsToldInTheLanguageOfTheWindow()
{
    QFETCH(int, verdict);
    QFETCH(QString, english);
    QFETCH(QString, chinese);
    QFETCH(QString, englishBox);
    QFETCH(QString, chineseBox);
    BoxEditDialog *form = open();
    TransferTimeouts timeouts;
    timeouts.verdict = verdict == int(BoxSimVerdict::None) ? 50 : timeouts.verdict;
    form->setTransferTimeouts(timeouts);
    BoxSimFaults faults;
    faults.verdict = BoxSimVerdict(verdict);
    m_firstSim->setFaults(faults);
    QStringList lines{english, chinese};
    QStringList told{englishBox, chineseBox};
    lines.removeAll(QString());
    told.removeAll(QString());
    for (int time = 0; time < told.size(); ++time) {
        m_messages->expect();
    }
    Window::press(form, "updateProjectButton");
    m_window->CESwitching();
    Window::press(form, "updateProjectButton");
    m_window->CESwitching();
    QCOMPARE(m_window->messages(), lines);
    QCOMPARE(m_messages->told(), told);
}

QTEST_MAIN(TestBoxTab)
#include "tst_boxtab.moc"

#include "../mainwindow/windowundertest.h"
#include "boxes/boxeditdialog.h"
#include "boxsim/boxsim.h"
#include "boxsim/wire.h"
#include "modalwatch.h"
#include "rehearsals.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTemporaryDir>

#include <functional>

using Window = WindowUnderTest;

namespace {

const QString editBox = "Edit Box";
const QString firstAddress = "127.0.30.1";
const QString secondAddress = "127.0.30.2";

// The first of a report's two segments.
QByteArray firstSegment()
{
    return Wire::segments(QByteArray(1500, ' '), 1024, -1, -1).first();
}

int segmentsSeen = 0;

void countSegments(QtMsgType, const QMessageLogContext &, const QString &message)
{
    segmentsSeen += message.startsWith("data长度::") ? 1 : 0;
}

// Acts once when a message box stands, and from then on closes every box that is open.
class BoxWatch : public QObject
{
public:
    explicit BoxWatch(std::function<void()> act)
        : m_act(std::move(act))
    {
        connect(&m_watch, &QTimer::timeout, this, [this] {
            if (standing()) {
                m_watch.stop();
                m_close.start(0);
                m_act();
            }
        });
        connect(&m_close, &QTimer::timeout, this, [] {
            if (QMessageBox *box = standing()) {
                QAbstractButton *no = box->button(QMessageBox::No);
                (no ? no : box->buttons().first())->click();
            }
        });
        m_watch.start(0);
    }
    bool hasActed() const { return !m_watch.isActive(); }

private:
    static QMessageBox *standing() { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()); }

    UnwatchedModals m_unwatched;
    std::function<void()> m_act;
    QTimer m_watch;
    QTimer m_close;
};

} // namespace

// Whatever the link is doing, the form, its session or the whole window may go at that very moment, and
// nothing touches them afterwards: meant for the address sanitizer, which sees what does.
class TestDeaths : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QGuiApplication::setQuitOnLastWindowClosed(false); }
    void init();
    void cleanup();

    void anythingMayGoAtAnyMoment_data();
    void anythingMayGoAtAnyMoment();
    void connectAHundredTimes();
    void boxThatDropsTheLinkAHundredTimes();

private:
    void open();
    BoxEditDialog *form() const { return qobject_cast<BoxEditDialog *>(m_window->form(editBox)); }
    void reach(const QByteArray &moment, const std::function<void()> &then);
    void strike(const QByteArray &death);
    void rehearse(const QByteArray &moment, const QByteArray &death);

    std::unique_ptr<BoxSim> m_firstSim;
    std::unique_ptr<BoxSim> m_secondSim;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Window> m_window;
    QStandardItem *m_project = nullptr;
    QStandardItem *m_first = nullptr;
    QStandardItem *m_second = nullptr;
};

void TestDeaths::init()
{
    for (const auto &sim : {qMakePair(&m_firstSim, firstAddress), qMakePair(&m_secondSim, secondAddress)}) {
        BoxSimOptions options;
        options.address = QHostAddress(sim.second);
        options.discovery = false;
        options.reportInterval = 0;
        *sim.first = std::make_unique<BoxSim>(options);
        QVERIFY2((*sim.first)->start(), qPrintable((*sim.first)->errorString()));
    }
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestDeaths::cleanup()
{
    qInstallMessageHandler(nullptr);
    m_window.reset();
    m_firstSim.reset();
    m_secondSim.reset();
}

void TestDeaths::open()
{
    m_window = std::make_unique<Window>();
    m_project = m_window->addProject("plant", m_folder->path());
    m_first = Window::addBox(m_project, "a", firstAddress);
    m_second = Window::addBox(m_project, "b", secondAddress);
    m_window->click(m_first);
}

// Brings the link to the moment and runs the function there.
void TestDeaths::reach(const QByteArray &moment, const std::function<void()> &then)
{
    if (moment == "connecting") {
        then();
        return;
    }
    QTRY_COMPARE(m_firstSim->sessionCount(), 1);
    if (moment == "connected") {
        then();
    } else if (moment == "answer told") {
        const BoxWatch watch(then);
        Window::press(form(), "lanWriteButton");
        QTRY_VERIFY(watch.hasActed());
        Window::settle();
    } else if (moment == "verdict awaited") {
        BoxSimFaults faults;
        faults.verdict = BoxSimVerdict::None;
        m_firstSim->setFaults(faults);
        TransferTimeouts timeouts;
        timeouts.verdict = 100;
        form()->setTransferTimeouts(timeouts);
        const BoxWatch timeoutBox([] {}); // where the form lives on
        QTimer::singleShot(0, this, then);
        Window::press(form(), "updateProjectButton");
        m_firstSim->setFaults(BoxSimFaults());
    } else if (moment == "report half in") {
        segmentsSeen = 0;
        qInstallMessageHandler(countSegments);
        m_firstSim->sendRaw(firstSegment());
        QTRY_COMPARE(segmentsSeen, 1);
        qInstallMessageHandler(nullptr);
        then();
    }
}

void TestDeaths::strike(const QByteArray &death)
{
    const BoxWatch questions([] {});
    if (death == "tab closed") {
        m_window->tab(editBox)->closeDockWidget();
    } else if (death == "Box deleted") {
        m_window->select(m_first);
        m_window->slotDeleteFile();
    } else if (death == "project closed") {
        m_window->select(m_project);
        m_window->slotDeleteProject();
    } else if (death == "other Box clicked") {
        m_window->select(m_second);
        m_window->slotBoxEditFile();
    } else if (death == "connected again") {
        Window::press(form(), "connectButton");
    } else if (death == "disconnected") {
        Window::press(form(), "disconnectButton");
    } else if (death == "link cut by the Box") {
        m_firstSim->closeConnections();
    } else if (death == "window destroyed") {
        m_window.reset();
    }
}

void TestDeaths::anythingMayGoAtAnyMoment_data()
{
    QTest::addColumn<QByteArray>("moment");
    QTest::addColumn<QByteArray>("death");
    for (const char *moment :
         {"connecting", "connected", "answer told", "verdict awaited", "report half in"}) {
        for (const char *death :
             {"tab closed", "Box deleted", "project closed", "other Box clicked", "connected again",
              "disconnected", "link cut by the Box", "window destroyed"}) {
            // A window that stands below a modal box or a running wait is ended by closing it, which
            // tst_boxtab does; destroying it there is what no user can do. And a Box can't cut a link that
            // it does not have yet.
            const bool nested =
                qstrcmp(moment, "answer told") == 0 || qstrcmp(moment, "verdict awaited") == 0;
            const bool skipped = (nested && qstrcmp(death, "window destroyed") == 0)
                || (qstrcmp(moment, "connecting") == 0 && qstrcmp(death, "link cut by the Box") == 0);
            if (!skipped) {
                QTest::addRow("%s, %s", moment, death) << QByteArray(moment) << QByteArray(death);
            }
        }
    }
}

void TestDeaths::anythingMayGoAtAnyMoment()
{
    QFETCH(QByteArray, moment);
    QFETCH(QByteArray, death);
    for (int time = 0; time < rehearsals(1); ++time) {
        RUN(rehearse(moment, death));
    }
}

void TestDeaths::rehearse(const QByteArray &moment, const QByteArray &death)
{
    open();
    const QPointer<BoxEditDialog> before = form();
    RUN(reach(moment, [this, death] { strike(death); }));
    Window::settle();
    const bool survives = death == "other Box clicked" || death == "connected again"
        || death == "disconnected" || death == "link cut by the Box";
    QCOMPARE(!before.isNull(), survives);
    if (death == "other Box clicked") {
        QTRY_COMPARE(m_secondSim->sessionCount(), 1);
        QTRY_COMPARE(m_firstSim->connectionCount(), 0);
    } else if (death == "connected again") {
        QTRY_COMPARE(m_firstSim->sessionCount(), 1);
        QTRY_COMPARE(m_firstSim->connectionCount(), 1);
    } else {
        QTRY_COMPARE(m_firstSim->connectionCount(), 0);
    }
    m_window.reset();
    Window::settle();
    QTRY_COMPARE(m_firstSim->connectionCount() + m_secondSim->connectionCount(), 0);
}

void TestDeaths::connectAHundredTimes()
{
    open();
    for (int time = 0; time < rehearsals(100); ++time) {
        Window::press(form(), "connectButton");
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(m_firstSim->connectionCount(), 1);
    QTRY_COMPARE(form()->findChild<QLabel *>("statusLabel")->text(), "Connection status: Connected");
    QCOMPARE(form()->findChildren<Protocol *>().size(), 1);
}

void TestDeaths::boxThatDropsTheLinkAHundredTimes()
{
    open();
    for (int time = 0; time < rehearsals(100); ++time) {
        QTRY_COMPARE(m_firstSim->sessionCount(), 1);
        m_firstSim->closeConnections();
        QTRY_COMPARE(form()->findChild<QLabel *>("statusLabel")->text(), "Connection status: Disconnected");
        Window::press(form(), "connectButton");
    }
    QTRY_COMPARE(m_firstSim->connectionCount(), 1);
    QCOMPARE(form()->findChildren<Protocol *>().size(), 1);
}

QTEST_MAIN(TestDeaths)
#include "tst_deaths.moc"

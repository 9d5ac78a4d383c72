#include "boxes/boxeditdialog.h"
#include "boxsim/wire.h"
#include "fakebox.h"
#include "messages.h"
#include "windowundertest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTableWidget>

using Window = WindowUnderTest;

static const QString northAddress = "127.0.21.11";
static const QString southAddress = "127.0.21.12";

// What the real window says of live values while their Box lives, and when it is gone.
class TestLiveValues : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QGuiApplication::setQuitOnLastWindowClosed(false); }
    void init();
    void cleanup();

    void deadBoxMakesItsValuesGrey_data();
    void deadBoxMakesItsValuesGrey();
    void nextReportMakesThemCurrent();
    void nextAnswerMakesThemCurrent();
    void otherBoxTakesThePageOver();
    void formTellsThatTheProjectIsNotOpen();
    void allColumnsAreSeenOnASmallScreen_data();
    void allColumnsAreSeenOnASmallScreen();

private:
    void send(const FakeBox &box, const QString &project = "Riverside");
    // Opens the form of the first Box, which reports until its page is there.
    void open();
    BoxEditDialog *form() const { return qobject_cast<BoxEditDialog *>(m_window->form("Edit Box")); }
    QWidget *page() const { return m_window->monitoringTabs()->widget(0); }
    // Without the age, which goes by the real clock.
    QString line() const
    {
        static const QRegularExpression age(" · \\d+ s ago");
        return page()->findChild<QLabel *>("source")->text().remove(age);
    }
    // The name of the first point as it is drawn.
    QImage drawn() const
    {
        auto *table = page()->findChild<QTableWidget *>();
        return table->viewport()->grab(table->visualItemRect(table->item(0, 0))).toImage();
    }

    std::unique_ptr<FakeBox> m_north;
    std::unique_ptr<FakeBox> m_south;
    std::unique_ptr<Window> m_window;
    std::unique_ptr<Messages> m_messages;
    QStandardItem *m_project = nullptr;
    QStandardItem *m_northItem = nullptr;
    QStandardItem *m_southItem = nullptr;
};

void TestLiveValues::init()
{
    m_north = std::make_unique<FakeBox>(northAddress);
    m_south = std::make_unique<FakeBox>(southAddress);
    QVERIFY(m_north->isListening() && m_south->isListening());
    m_messages = std::make_unique<Messages>();
    m_window = std::make_unique<Window>();
    m_project = m_window->addProject("Riverside");
    m_northItem = Window::addBox(m_project, "north", northAddress);
    m_southItem = Window::addBox(m_project, "south", southAddress);
}

void TestLiveValues::cleanup()
{
    m_window.reset();
    m_messages.reset();
    m_north.reset();
    m_south.reset();
}

void TestLiveValues::send(const FakeBox &box, const QString &project)
{
    QJsonArray datas;
    for (int feeder = 1; feeder <= 40; ++feeder) {
        datas.append(QJsonObject{{"name", QString("Feeder %1 voltage").arg(feeder)},
                                 {"addr", QString::number(feeder)},
                                 {"dataType", "float"},
                                 {"value", "231.95"},
                                 {"valid", "1"}});
    }
    const QJsonObject report{{"projectName", project}, {"plcName", "Feeder meters"}, {"datas", datas}};
    const QByteArray text = QJsonDocument(report).toJson(QJsonDocument::Compact);
    for (const QByteArray &segment : Wire::segments(text, 1024, -1, -1)) {
        box.send(segment);
    }
}

void TestLiveValues::open()
{
    m_window->click(m_northItem);
    QTRY_VERIFY(m_north->isLinked());
    send(*m_north); // makes the node only
    send(*m_north);
    QTRY_VERIFY(page());
    QCOMPARE(line(), "Riverside · north 127.0.21.11");
}

void TestLiveValues::deadBoxMakesItsValuesGrey_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<QString>("told");
    QTest::newRow("silence") << QByteArray("silence") << "Out of date: the Box does not answer";
    for (const char *end :
         {"Box dies", "disconnected", "cancelled", "tab closed", "Box deleted", "another Box opened"}) {
        QTest::newRow(end) << QByteArray(end) << "Out of date: not connected";
    }
}

void TestLiveValues::deadBoxMakesItsValuesGrey()
{
    QFETCH(QByteArray, end);
    QFETCH(QString, told);
    RUN(open());
    const QImage current = drawn();
    if (end == "Box dies") {
        m_north->link()->abort();
    } else if (end == "silence") {
        emit form()->protocol()->offlineOccurred();
    } else if (end == "disconnected") {
        Window::press(form(), "disconnectButton");
    } else if (end == "cancelled") {
        Window::press(form(), "cancelButton");
    } else if (end == "tab closed") {
        m_window->tab("Edit Box")->closeDockWidget();
    } else if (end == "Box deleted") {
        m_window->select(m_northItem);
        m_window->slotDeleteFile();
    } else {
        m_window->click(m_southItem);
    }
    QTRY_COMPARE(line(), told + " · Riverside · north 127.0.21.11");
    QVERIFY(drawn() != current);
    QCOMPARE(page()->findChild<QTableWidget *>()->item(0, 4)->text(), "Effective");
}

void TestLiveValues::nextReportMakesThemCurrent()
{
    RUN(open());
    m_north->link()->abort();
    QTRY_VERIFY(line().startsWith("Out of date: not connected"));
    Window::press(form(), "connectButton");
    QTRY_VERIFY(m_north->isLinked());
    QVERIFY(line().startsWith("Out of date: not connected")); // they are still the old ones
    send(*m_north);
    QTRY_COMPARE(line(), "Riverside · north 127.0.21.11");
}

void TestLiveValues::nextAnswerMakesThemCurrent()
{
    RUN(open());
    const QString current = line();
    emit form()->protocol()->offlineOccurred();
    QVERIFY(line() != current);
    m_north->send(Wire::heartbeatAnswer("2.1.0", "S1", "M"));
    QTRY_COMPARE(line(), current);
}

void TestLiveValues::otherBoxTakesThePageOver()
{
    RUN(open());
    m_window->click(m_southItem);
    QTRY_VERIFY(m_south->isLinked());
    send(*m_south);
    QTRY_COMPARE(line(), "Riverside · south 127.0.21.12");
}

void TestLiveValues::formTellsThatTheProjectIsNotOpen()
{
    RUN(open());
    const auto *notice = form()->findChild<QLabel *>("projectNotice");
    QVERIFY(!notice->isVisible());
    send(*m_north, "Hillside");
    QTRY_VERIFY(notice->isVisible());
    QCOMPARE(notice->text(),
             "The Box reports values of the project 'Hillside', which is not open: they are not shown.");
    m_window->addProject("Hillside");
    send(*m_north, "Hillside");
    QTRY_VERIFY(!notice->isVisible());
    QCOMPARE(m_window->messages(), QStringList());
}

void TestLiveValues::allColumnsAreSeenOnASmallScreen_data()
{
    QTest::addColumn<bool>("formFirst");
    QTest::newRow("page beside the form") << true;
    QTest::newRow("form beside the page") << false;
}

void TestLiveValues::allColumnsAreSeenOnASmallScreen()
{
    QFETCH(bool, formFirst);
    QFont font = QApplication::font();
    const QFont before = font;
    font.setPointSize(9); // as on a common desktop; the platform without a screen has a larger one
    QApplication::setFont(font);
    const auto restore = qScopeGuard([&before] { QApplication::setFont(before); });
    m_window->resize(1366, 768);
    RUN(open());
    if (!formFirst) {
        m_window->tab("Edit Box")->closeDockWidget();
        Window::settle();
        m_window->click(m_northItem);
    }
    const auto *table = page()->findChild<QTableWidget *>();
    QTRY_VERIFY(table->width() < 600);
    QTRY_COMPARE(table->horizontalScrollBar()->maximum(), 0);
    QVERIFY(table->verticalScrollBar()->maximum() > 0);
    QCOMPARE(table->columnCount(), 6);
    const QString name = "Feeder 40 voltage";
    QVERIFY(table->columnWidth(0) > table->fontMetrics().horizontalAdvance(name));
}

QTEST_MAIN(TestLiveValues)
#include "tst_livevalues.moc"

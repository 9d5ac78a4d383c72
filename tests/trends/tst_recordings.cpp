#include "trendstest.h"

#include "files.h"
#include "history/recordingreader.h"
#include "trends/recordingline.h"
#include "trends/recordingopener.h"
#include "widgets/quietline.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QScopeGuard>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Live pages and windows that are recorded, and recordings that are opened.
class TestRecordings : public TrendsTest
{
    Q_OBJECT
private slots:
    void initTestCase() { QGuiApplication::setQuitOnLastWindowClosed(false); }
    void init();
    void cleanup() { tearDown(); }

    void pageIsRecordedUntilItIsStopped();
    void fileIsNamedAfterStandardAndDay();
    void pointsThatComeLaterAreRecordedToo();
    void windowRecordsItsPoints();
    void windowWithoutPointsHasNothingToRecord();
    void severalPagesAreRecordedAtOnce();
    void cancelledDialogRecordsNothing();
    void endOfTheSessionIsRecorded();
    void closedPageStopsItsRecording();
    void closedWindowStopsItsRecording();
    void programThatEndsFinishesItsRecordings();
    void troubleIsToldWhileLiveValuesGoOn();
    void openedRecordingIsShown();
    void anotherRecordingIsAskedForOverTheWindow();
    void liveRowsAreNotAddedToARecording();
    void whatIsNoRecordingIsTold();
    void recordingWithoutPointsIsTold();
    void slowOpeningIsTold_data();
    void slowOpeningIsTold();

private:
    // Answers the next dialog with the file.
    void giveFile(const QString &path);
    // The line that tells of the recording, empty while there is none.
    static QString line(const MonitoringPage *page)
    {
        const auto *shown = page->findChild<RecordingLine *>();
        return shown->isVisible() ? shown->text() : QString();
    }
    // Presses "Stop Recording" and waits for the end.
    static void stop(const MonitoringPage *page)
    {
        press(page, "recordTool");
        QTRY_COMPARE(line(page), QString());
    }
    // "name: samples" of each point in the file.
    QStringList recorded(const QString &path) const;
    QString path(const char *name = "recorded.sqlite") const
    {
        return QDir::current().filePath(QLatin1String(name));
    }
};

void TestRecordings::init()
{
    setUp();
    const QStringList old = QDir::current().entryList({"*.sqlite*"}, QDir::Files);
    for (const QString &file : old) {
        QVERIFY(QFile::remove(file));
    }
}

void TestRecordings::giveFile(const QString &path)
{
    m_dialogs->expect([path](QWidget *dialog) {
        dialog->findChild<QLineEdit *>("file")->setText(path);
        dialog->findChild<QPushButton *>("okButton")->click();
    });
}

QStringList TestRecordings::recorded(const QString &path) const
{
    RecordingReader reader;
    const QSignalSpy opened(&reader, &RecordingReader::opened);
    QString error;
    reader.open(RecordingTarget::fromText(path, &error));
    QStringList texts;
    if (!QTest::qWaitFor([&opened] { return !opened.isEmpty(); })) {
        return {"could not be opened"};
    }
    const QVector<Point> points = reader.points();
    for (const Point &point : points) {
        texts.append(point.id.standard + QLatin1Char(' ') + point.id.name + ": "
                     + samplesOf(&reader, point.id).join(QLatin1Char(' ')));
    }
    texts.sort();
    return texts;
}

static const QString ended = QString("state %1").arg(int(SampleState::Ended));

void TestRecordings::pageIsRecordedUntilItIsStopped()
{
    const MonitoringPage *shown = openPage({point("Ua", "1"), point("Ub", "2")});
    QCOMPARE(line(shown), QString());
    giveFile(path());
    RUN(press(shown, "recordTool"));
    QVERIFY2(line(shown).startsWith("Recording Meter 1 · "), qPrintable(line(shown)));
    receive({point("Ua", "3"), point("Ub", "4", "0")});
    receive({point("Ua", "5"), point("Ub", "6")});
    QTRY_VERIFY2(line(shown).contains(" · samples: 4 · "), qPrintable(line(shown)));
    QVERIFY2(line(shown).contains(" · since 20"), qPrintable(line(shown)));
    QVERIFY2(line(shown).endsWith(" · " + path()), qPrintable(line(shown)));
    const auto *tool = shown->findChild<QToolButton *>("recordTool");
    QCOMPARE(tool->accessibleName(), "Stop Recording");
    RUN(stop(shown));
    QCOMPARE(tool->accessibleName(), "Record");
    receive({point("Ua", "7"), point("Ub", "8")});
    QCOMPARE(recorded(path()), QStringList({"Meter 1 Ua: 3 5 " + ended, "Meter 1 Ub: state 0 6 " + ended}));
}

void TestRecordings::fileIsNamedAfterStandardAndDay()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")}, "Feeder 1/2");
    const QString day = QDate::currentDate().toString(Qt::ISODate);
    QString offered;
    m_dialogs->expect([&offered](QWidget *dialog) {
        offered = dialog->findChild<QLineEdit *>("file")->text();
        dialog->close();
    });
    RUN(press(shown, "recordTool"));
    QCOMPARE(offered, QDir::current().filePath("Riverside Feeder 1_2 " + day + ".sqlite"));
}

void TestRecordings::pointsThatComeLaterAreRecordedToo()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    giveFile(path());
    RUN(press(shown, "recordTool"));
    receive({point("Ua", "2")});
    receive({point("Ua", "3"), point("New", "4")});
    RUN(stop(shown));
    QCOMPARE(recorded(path()), QStringList({"Meter 1 New: 4 " + ended, "Meter 1 Ua: 2 3 " + ended}));
}

void TestRecordings::windowRecordsItsPoints()
{
    const MonitoringPage *shown = openPage({point("Ua", "1"), point("Ub", "2")});
    const MonitoringPage *other = openPage({point("Ia", "3"), point("Ib", "4")}, "Meter 2");
    select(shown, {1});
    m_trends->showTrend();
    TrendWindow *window = windows().first();
    tabs()->setCurrentIndex(1);
    select(other, {0});
    emit window->dropped(other->table());
    QTRY_COMPARE(window->points().size(), 2);
    giveFile(path());
    emit window->recordAsked();
    receive({point("Ua", "5"), point("Ub", "6")});
    receive({point("Ia", "7"), point("Ib", "8")}, "Meter 2");
    emit window->recordAsked();
    QTRY_COMPARE(recorded(path()), QStringList({"Meter 1 Ub: 6 " + ended, "Meter 2 Ia: 7 " + ended}));
    QCOMPARE(line(shown), QString());
}

void TestRecordings::windowWithoutPointsHasNothingToRecord()
{
    m_trends->showTrend();
    m_messages->expect();
    emit windows().first()->recordAsked();
    QCOMPARE(m_messages->told(), QStringList("Record|There are no points yet that could be recorded."));
}

void TestRecordings::severalPagesAreRecordedAtOnce()
{
    const MonitoringPage *first = openPage({point("Ua", "1")});
    const MonitoringPage *second = openPage({point("Ua", "2")}, "Meter 2");
    for (const MonitoringPage *page : {first, second}) {
        tabs()->setCurrentWidget(const_cast<MonitoringPage *>(page));
        giveFile(path());
        RUN(press(page, "recordTool"));
    }
    receive({point("Ua", "3")});
    receive({point("Ua", "4")}, "Meter 2");
    RUN(stop(second));
    tabs()->setCurrentIndex(0);
    QVERIFY(!line(first).isEmpty());
    RUN(stop(first));
    QCOMPARE(recorded(path()), QStringList({"Meter 1 Ua: 3 " + ended, "Meter 2 Ua: 4 " + ended}));
}

void TestRecordings::cancelledDialogRecordsNothing()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    m_dialogs->expect([](QWidget *dialog) { dialog->close(); });
    RUN(press(shown, "recordTool"));
    QCOMPARE(line(shown), QString());
    QVERIFY(QDir::current().entryList({"*.sqlite*"}).isEmpty());
}

void TestRecordings::endOfTheSessionIsRecorded()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    giveFile(path());
    RUN(press(shown, "recordTool"));
    receive({point("Ua", "2")});
    m_view->endSession("127.0.0.2");
    m_view->setBox("Gateway north", "127.0.0.2");
    receive({point("Ua", "3")});
    RUN(stop(shown));
    QCOMPARE(recorded(path()), QStringList(QString("Meter 1 Ua: 2 %1 3 %1").arg(ended)));
}

void TestRecordings::closedPageStopsItsRecording()
{
    openPage({point("Ua", "1")});
    giveFile(path());
    m_trends->record();
    receive({point("Ua", "2")});
    m_view->closeTab("Meter 1");
    receive({point("Ua", "3")}); // a page of its own
    QTRY_COMPARE(recorded(path()), QStringList("Meter 1 Ua: 2 " + ended));
    QCOMPARE(line(page()), QString());
}

void TestRecordings::closedWindowStopsItsRecording()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    select(shown, {0});
    m_trends->showTrend();
    giveFile(path());
    emit windows().first()->recordAsked();
    receive({point("Ua", "2")});
    windows().first()->close();
    QTRY_VERIFY(windows().isEmpty());
    receive({point("Ua", "3")});
    QTRY_COMPARE(recorded(path()), QStringList("Meter 1 Ua: 2 " + ended));
}

void TestRecordings::programThatEndsFinishesItsRecordings()
{
    openPage({point("Ua", "1")});
    giveFile(path());
    m_trends->record();
    receive({point("Ua", "2")});
    m_window->close();
    m_window.reset();
    QTRY_COMPARE(recorded(path()), QStringList("Meter 1 Ua: 2 " + ended));
}

void TestRecordings::troubleIsToldWhileLiveValuesGoOn()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    // It begins as a database does.
    const QByteArray magic("SQLite format 3", 16);
    giveFile(Files::put(path(), magic + QByteArray(5000, 'x')));
    RUN(press(shown, "recordTool"));
    receive({point("Ua", "2")});
    QTRY_VERIFY2(line(shown).contains("nothing is being written: "), qPrintable(line(shown)));
    receive({point("Ua", "3")});
    QCOMPARE(shown->table()->item(0, 3)->text(), "3");
    m_messages->allowOthers(); // what could not be written
    RUN(stop(shown));
}

void TestRecordings::openedRecordingIsShown()
{
    const MonitoringPage *shown = openPage({point("Ua", "1"), point("Ub", "2")});
    giveFile(path());
    RUN(press(shown, "recordTool"));
    receive({point("Ua", "3"), point("Ub", "4")});
    RUN(stop(shown));
    giveFile(path());
    m_dialogs->expect([](QWidget *dialog) {
        auto *list = dialog->findChild<QListView *>("points");
        QCOMPARE(list->selectionModel()->selectedRows().size(), 2);
        list->setCurrentIndex(list->model()->index(1, 0));
        qobject_cast<QDialog *>(dialog)->accept();
    });
    m_trends->openRecording();
    QTRY_COMPARE(windows().size(), 1);
    const TrendWindow *window = windows().first();
    QCOMPARE(namesOf(window), QStringList("Ub"));
    QCOMPARE(window->findChild<QuietLine *>("sources")->text(), "Riverside · Gateway north 127.0.0.2");
    QVERIFY2(window->windowTitle().contains("recorded.sqlite"), qPrintable(window->windowTitle()));
    QCOMPARE(samplesOf(window->source(), riverside("Ub")), QStringList({"4", ended}));
    QVERIFY(!window->findChild<QToolButton *>("record")->isEnabled()); // nothing comes there
}

void TestRecordings::anotherRecordingIsAskedForOverTheWindow()
{
    RUN(openedRecordingIsShown());
    const QWidget *over = nullptr;
    m_dialogs->expect([&over](QWidget *dialog) {
        over = dialog->parentWidget();
        qobject_cast<QDialog *>(dialog)->reject();
    });
    emit windows().first()->openAsked();
    QCOMPARE(over, windows().first());
}

void TestRecordings::liveRowsAreNotAddedToARecording()
{
    RUN(openedRecordingIsShown());
    select(page(), {0});
    m_messages->expect();
    emit windows().first()->dropped(page()->table());
    QTRY_COMPARE(m_messages->pending(), 0);
    QCOMPARE(namesOf(windows().first()), QStringList("Ub"));
    QCOMPARE(chooseInMenu(page(), QString()).filter("Add to"), QStringList());
}

void TestRecordings::whatIsNoRecordingIsTold()
{
    const QByteArray magic("SQLite format 3", 16);
    giveFile(Files::put(path(), magic + QByteArray(5000, 'x')));
    m_messages->expect();
    m_trends->openRecording();
    QTRY_COMPARE(m_messages->told().size(), 1);
    QVERIFY2(m_messages->told().first().startsWith("Open Recording|"),
             qPrintable(m_messages->told().first()));
    QVERIFY(windows().isEmpty());
}

void TestRecordings::recordingWithoutPointsIsTold()
{
    const MonitoringPage *shown = openPage({});
    giveFile(path());
    RUN(press(shown, "recordTool"));
    RUN(stop(shown));
    giveFile(path());
    m_messages->expect();
    m_trends->openRecording();
    QTRY_COMPARE(m_messages->told(), QStringList("Open Recording|The recording holds no points."));
}

// A pipe that nobody writes to is a file that does not answer.
void TestRecordings::slowOpeningIsTold_data()
{
    QTest::addColumn<bool>("isClosed");
    QTest::newRow("cancelled") << false;
    QTest::newRow("its window closed") << true;
}

void TestRecordings::slowOpeningIsTold()
{
    QFETCH(bool, isClosed);
    const QByteArray pipe = path().toLocal8Bit();
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    auto *over = new QWidget(m_window.get());
    over->show();
    const QPointer<RecordingOpener> opener(new RecordingOpener(over, m_window.get()));
    QString error;
    opener->open(RecordingTarget::fromText(path(), &error));
    const auto *progress = m_window->findChild<QProgressDialog *>();
    QVERIFY(progress && !progress->isVisible());
    // Qt waits for 4 s, unless it is told otherwise.
    QTRY_VERIFY_WITH_TIMEOUT(progress->isVisible(), 3000);
    QCOMPARE(progress->labelText(), "Opening " + path());
    if (isClosed) {
        delete over;
    } else {
        progress->findChild<QPushButton *>()->click();
    }
    QTRY_VERIFY(!opener);
    const int end = open(pipe.constData(), O_WRONLY | O_NONBLOCK); // the thread goes on
    QVERIFY(end >= 0);
    close(end);
    QVERIFY(QFile::remove(path()));
}

QTEST_MAIN(TestRecordings)
#include "tst_recordings.moc"

#include "files.h"
#include "history/history.h"
#include "messages.h"
#include "modaldialogs.h"
#include "trends/eventlabels.h"
#include "trends/recordingline.h"
#include "trends/valuesaver.h"
#include "trendtest.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDateTime>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QPainter>
#include <QProgressDialog>
#include <QPushButton>
#include <QScopeGuard>
#include <QSemaphore>
#include <QSvgRenderer>

#include <qwt_scale_map.h>

// What comes out of the window of a trend, and what becomes of it.
class TestTrendOutput : public TrendTest
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { delete window; }

    void toolsAskOthers();
    void recordingLineStandsBelowTheTools();
    void addsPointsOfTheSource();
    void copiesPictureAndFigures();
    void savesAPicture_data();
    void savesAPicture();
    void pictureTellsScalesAndWholeReasons();
    void pictureLeavesOutHiddenCurves();
    void labelOfATextAfterBlanksShowsTheText();
    void savesValuesOnScreen();
    void savesValuesBesideTheWindow();
    void cancelledValuesLeaveTheFileAsItWas_data();
    void cancelledValuesLeaveTheFileAsItWas();
    void valuesThatCantBeReadAreTold();
    void valuesThatCantBeWrittenAreTold();
    void tellsThatAPictureWasNotSaved();
    void silentSourceKeepsTheWindowAlive();
    void sourceThatDiesIsTold();
    void failureIsToldUntilTheNextAnswer();
    void closesByKey();
    void historyKeepsThePointsOfTheWindow();

private:
    void saveValuesTo(const QString &path);

    PointId voltage;
};

namespace {

// Gives its samples when it is let, in whatever thread, and may fail then.
class SlowSource : public FakeSource
{
public:
    std::unique_ptr<SampleCursor> cursor(const PointId &id, const TimeRange &range) const override
    {
        auto slow = std::make_unique<Slow>();
        slow->samples = FakeSource::cursor(id, range);
        slow->gate = gate;
        slow->failure = failure;
        slow->wait = wait;
        return slow;
    }

    std::shared_ptr<QSemaphore> gate = std::make_shared<QSemaphore>(); // of samples
    QString failure;                                                   // after them
    int wait = -1; // ms for each of them at most; -1 for ever

private:
    struct Slow : SampleCursor {
        bool next(Sample *sample) override
        {
            gate->tryAcquire(1, wait);
            return samples->next(sample);
        }
        QString error() const override { return failure; }

        std::unique_ptr<SampleCursor> samples;
        std::shared_ptr<QSemaphore> gate;
        QString failure;
        int wait = -1;
    };
};

} // namespace

void TestTrendOutput::init()
{
    restart();
    voltage = source->add("Voltage", "float",
                          {valid(0, 230), valid(400, 240), broken(500, SampleState::NotValid),
                           valid(600, 235), valid(1000, 231.5)});
}

void TestTrendOutput::toolsAskOthers()
{
    RUN(open());
    QSignalSpy record(window.data(), &TrendWindow::recordAsked);
    QSignalSpy recording(window.data(), &TrendWindow::openAsked);
    tool("record")->click();
    press(Qt::Key_R, Qt::ControlModifier);
    tool("open")->click();
    press(Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(record.count(), 2);
    QCOMPARE(recording.count(), 2);
    QVERIFY(!tool("record")->isChecked()); // nobody records
}

void TestTrendOutput::recordingLineStandsBelowTheTools()
{
    RUN(open());
    auto *line = window->findChild<RecordingLine *>();
    QVERIFY(!line->isVisible());
    window->setRecordingLine("Since 12:00, 7 samples");
    QVERIFY(line->isVisible());
    QCOMPARE(line->text(), "Since 12:00, 7 samples");
    QVERIFY(tool("record")->isChecked());
    QCOMPARE(tool("record")->text(), "Stop Recording");
    window->setRecordingLine(QString());
    QVERIFY(!line->isVisible());
    QCOMPARE(tool("record")->text(), "Record");
    QVERIFY(!tool("record")->isChecked());
}

void TestTrendOutput::addsPointsOfTheSource()
{
    RUN(open());
    source->add("Current", "float", {valid(0, 1)});
    source->add("Power", "float", {valid(0, 1)});
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *dialog) {
        auto *list = dialog->findChild<QListView *>("points");
        QCOMPARE(list->model()->rowCount(), 3);
        dialog->findChild<QLineEdit *>("filter")->setText("pow");
        QCOMPARE(list->model()->rowCount(), 1);
        list->selectAll();
        qobject_cast<QDialog *>(dialog)->accept();
    });
    press(Qt::Key_Insert);
    QCOMPARE(dialogs.pending(), 0);
    QCOMPARE(window->points().size(), 2);
    QCOMPARE(window->points().last().id.name, "Power");
}

void TestTrendOutput::copiesPictureAndFigures()
{
    RUN(open());
    tool("copyTrend")->click();
    const QMimeData *data = QApplication::clipboard()->mimeData();
    const QStringList lines = data->text().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.at(0), "Trend: Relay");
    QCOMPARE(lines.at(2), "Riverside · 127.0.0.2");
    QCOMPARE(lines.at(3), "Point\tType\tCurrent\tLeast\tGreatest\tMean");
    QCOMPARE(lines.at(4), "Voltage\tfloat\t231.5\t230\t240\t234.125");
    QCOMPARE(qvariant_cast<QImage>(data->imageData()).size(), window->size() * 2);
}

void TestTrendOutput::savesAPicture_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("PNG") << "trend.png";
    QTest::newRow("SVG") << "trend.svg";
}

void TestTrendOutput::savesAPicture()
{
    QFETCH(QString, file);
    source->add("State", "string", {{start, FakeSource::noNumber, SampleState::Valid, "Running"}});
    RUN(open());
    ModalDialogs dialogs;
    dialogs.expect([&file](QWidget *dialog) {
        auto *choosing = qobject_cast<QFileDialog *>(dialog);
        QVERIFY(choosing);
        choosing->selectFile(QDir::current().filePath(file));
        choosing->QDialog::accept();
    });
    press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(dialogs.pending(), 0);
    if (file.endsWith(".png")) {
        QCOMPARE(QImage(file).size(), window->size() * 2);
        return;
    }
    QSvgRenderer page(file);
    QVERIFY(page.isValid());
    QCOMPARE(page.defaultSize(), QSize(1052, 744)); // A4 across, at the 90 pixels an inch of SVG
    QFile svg(file);
    QVERIFY(svg.open(QIODevice::ReadOnly));
    const QByteArray words = svg.readAll();
    for (const char *word : {"Trend: Relay", "Riverside · 127.0.0.2", "Voltage", "234.125", "Running",
                             "not valid", "Time of arrival at this computer"}) {
        QVERIFY2(words.contains(word), word);
    }
}

void TestTrendOutput::pictureTellsScalesAndWholeReasons()
{
    source = std::make_unique<FakeSource>();
    source->add("Voltage", "float", {valid(0, 230), valid(998, 231), broken(1000, SampleState::Ended)});
    source->add("Power factor", "float", {valid(0, 0.95), broken(1, SampleState::NoNumber), valid(9, 0.9)});
    RUN(open());
    press(Qt::Key_M);
    press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    QStringList scales;
    for (const QString &line : lines.mid(3)) {
        scales.append(line.section('\t', -1));
    }
    QCOMPARE(scales, (QStringList{"Scale", "Left", "Right"}));

    ModalDialogs dialogs;
    dialogs.expect([](QWidget *dialog) {
        auto *choosing = qobject_cast<QFileDialog *>(dialog);
        choosing->selectFile(QDir::current().filePath("scales.svg"));
        choosing->QDialog::accept();
    });
    press(Qt::Key_S, Qt::ControlModifier);
    const QByteArray words = Files::contents("scales.svg");
    for (const char *word : {"session ended", "Right", "Scale"}) {
        QVERIFY2(words.contains(word), word);
    }
}

void TestTrendOutput::pictureLeavesOutHiddenCurves()
{
    source->add("Hidden", "float", {valid(0, 1), broken(500, SampleState::NoNumber), valid(1000, 1)});
    source->add("Load", "float", {valid(0, 7), valid(1000, 8)});
    RUN(open());
    figures()->setData(figures()->index(1, FigureModel::Name), Qt::Unchecked, Qt::CheckStateRole);
    redrawn();
    press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    // Nor is there the column of what it alone has skipped.
    QCOMPARE(
        lines.mid(3),
        QStringList({"Point\tType\tCurrent\tLeast\tGreatest\tMean\tScale",
                     "Voltage\tfloat\t231.5\t230\t240\t234.125\tLeft", "Load\tfloat\t8\t7\t8\t7.5\tRight"}));

    ModalDialogs dialogs;
    dialogs.expect([](QWidget *dialog) {
        auto *choosing = qobject_cast<QFileDialog *>(dialog);
        choosing->selectFile(QDir::current().filePath("hidden.svg"));
        choosing->QDialog::accept();
    });
    press(Qt::Key_S, Qt::ControlModifier);
    const QByteArray words = Files::contents("hidden.svg");
    QVERIFY(words.contains("Voltage") && words.contains("Load"));
    QVERIFY(!words.contains("Hidden") && !words.contains("Skipped"));
}

void TestTrendOutput::labelOfATextAfterBlanksShowsTheText()
{
    const auto drawn = [](const QString &text) {
        Curve curve;
        curve.point.type = "string";
        curve.answered = {10000, 20000};
        curve.data.events = {{11000, text}};
        EventLabels labels;
        labels.setCurves({curve}, QPalette(Qt::white));
        QImage image(400, 100, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QwtScaleMap x;
        x.setScaleInterval(10000, 20000);
        x.setPaintInterval(0, 400);
        labels.draw(&painter, x, x, QRectF(0, 0, 400, 100));
        return image;
    };
    QVERIFY(drawn("Running") != drawn(QString()));
    QVERIFY(drawn(QString(200, ' ') + "Running") == drawn("Running"));
}

void TestTrendOutput::savesValuesOnScreen()
{
    source->add("Hidden", "float", {valid(0, 1)});
    RUN(open());
    auto *figures = window->findChild<FigureTable *>()->figures();
    figures->setData(figures->index(1, FigureModel::Name), Qt::Unchecked, Qt::CheckStateRole);
    press(Qt::Key_2); // the five minutes in the middle
    QFile::remove("values.csv");
    RUN(saveValuesTo("values.csv"));
    QTRY_VERIFY(QFile::exists("values.csv"));
    const QList<QByteArray> lines = Files::contents("values.csv").split('\n');
    QVERIFY2(lines.size() >= 4, qPrintable(QString::number(lines.size())));
    QCOMPARE(lines.at(0).trimmed(), "\xef\xbb\xbfTime,127.0.0.2 / Riverside / Relay / Voltage");
    QVERIFY(lines.at(1).trimmed().endsWith(",240"));
    QVERIFY(lines.at(2).trimmed().endsWith(",not valid"));
    QVERIFY(lines.at(3).trimmed().endsWith(",235"));
}

void TestTrendOutput::saveValuesTo(const QString &path)
{
    ModalDialogs dialogs;
    dialogs.expect([&path](QWidget *dialog) {
        auto *choosing = qobject_cast<QFileDialog *>(dialog);
        choosing->selectFile(QDir::current().absoluteFilePath(path));
        choosing->QDialog::accept();
    });
    press(Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(dialogs.pending(), 0);
}

void TestTrendOutput::savesValuesBesideTheWindow()
{
    auto *slow = new SlowSource;
    source.reset(slow);
    const auto letAll = qScopeGuard([gate = slow->gate] { gate->release(1000); });
    source->add("Voltage", "float", {valid(0, 1), valid(500, 2), valid(1000, 3)});
    RUN(open());
    QFile::remove("slow.csv");
    ValueSaver::patience = 0;
    RUN(saveValuesTo("slow.csv"));
    auto *progress = window->findChild<QProgressDialog *>();
    QTRY_VERIFY(progress->isVisible());
    QVERIFY(!progress->isModal());
    slow->gate->release(2);
    QTRY_COMPARE(progress->value(), 49);
    QApplication::setActiveWindow(window);
    press(Qt::Key_2); // the window goes on
    QCOMPARE(screen(), (QVector<double>{350, 650}));
    QVERIFY(!QFile::exists("slow.csv"));
    slow->gate->release(2);
    QTRY_COMPARE(Files::contents("slow.csv").count('\n'), 4); // all that was on screen
    QTRY_VERIFY(!window->findChild<ValueSaver *>() && !window->findChild<QProgressDialog *>());
}

void TestTrendOutput::cancelledValuesLeaveTheFileAsItWas_data()
{
    QTest::addColumn<bool>("closes");
    QTest::newRow("cancelled") << false;
    QTest::newRow("window closed") << true;
}

void TestTrendOutput::cancelledValuesLeaveTheFileAsItWas()
{
    QFETCH(bool, closes);
    auto *slow = new SlowSource;
    source.reset(slow);
    slow->wait = closes ? 500 : -1;
    const auto letAll = qScopeGuard([gate = slow->gate] { gate->release(1000); });
    source->add("Voltage", "float", {valid(0, 1), valid(500, 2), valid(1000, 3)});
    RUN(open());
    Files::put("older.csv", "older");
    ValueSaver::patience = 0;
    RUN(saveValuesTo("older.csv"));
    auto *progress = window->findChild<QProgressDialog *>();
    QTRY_VERIFY(progress->isVisible());
    if (closes) {
        delete window;
    } else {
        progress->findChild<QPushButton *>()->click();
        slow->gate->release(2);
        QTRY_VERIFY(!window->findChild<ValueSaver *>() && !window->findChild<QProgressDialog *>());
    }
    QCOMPARE(Files::contents("older.csv"), "older");
}

void TestTrendOutput::valuesThatCantBeReadAreTold()
{
    auto *slow = new SlowSource;
    source.reset(slow);
    source->add("Voltage", "float", {valid(0, 1), valid(1000, 3)});
    slow->failure = "The file is gone.";
    slow->gate->release(3);
    RUN(open());
    Files::put("older.csv", "older");
    Messages messages;
    messages.expect();
    RUN(saveValuesTo("older.csv"));
    QTRY_COMPARE(messages.told(),
                 QStringList("Save Values|The file " + QDir::current().filePath("older.csv")
                             + " could not be written.\nThe file is gone."));
    QCOMPARE(Files::contents("older.csv"), "older");
}

void TestTrendOutput::valuesThatCantBeWrittenAreTold()
{
    RUN(open());
    Messages messages;
    messages.expect();
    RUN(saveValuesTo("/proc/values.csv"));
    QTRY_COMPARE(messages.pending(), 0);
    const QString told = messages.told().first();
    QVERIFY2(told.startsWith("Save Values|The file /proc/values.csv could not be written.\n"),
             qPrintable(told));
}

void TestTrendOutput::tellsThatAPictureWasNotSaved()
{
    RUN(open());
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *dialog) {
        auto *choosing = qobject_cast<QFileDialog *>(dialog);
        choosing->selectFile("/proc/trend.png");
        choosing->QDialog::accept();
    });
    Messages messages;
    messages.expect();
    tool("savePicture")->click();
    QCOMPARE(messages.told(), QStringList{"Save Picture|The file /proc/trend.png could not be written."});
}

void TestTrendOutput::silentSourceKeepsTheWindowAlive()
{
    source->answers = false;
    RUN(open(true));
    QCOMPARE(cell(0, FigureModel::Current), "…");
    for (const int key : {Qt::Key_3, Qt::Key_Plus, Qt::Key_Left, Qt::Key_A, Qt::Key_Home, Qt::Key_Escape}) {
        press(key);
    }
    QVERIFY(!source->requests.isEmpty());
    source->answers = true;
    press(Qt::Key_Home);
    QCOMPARE(cell(0, FigureModel::Greatest), "240");
    QCOMPARE(cell(0, FigureModel::Current), "(not valid)"); // from the last value on before the break
}

void TestTrendOutput::sourceThatDiesIsTold()
{
    RUN(open(true));
    source.reset();
    auto *note = window->findChild<QLabel *>("note");
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(), "The source of these values is closed");
    press(Qt::Key_Left);
    press(Qt::Key_Home);
    press(Qt::Key_Insert);
    QCOMPARE(window->source(), nullptr);
}

void TestTrendOutput::failureIsToldUntilTheNextAnswer()
{
    RUN(open());
    const auto *note = window->findChild<QLabel *>("note");
    source->answers = false; // the note makes the plot smaller, which asks anew
    emit source->failed("night.sqlite is locked by another program.");
    press(Qt::Key_Minus);
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(), "night.sqlite is locked by another program.");
    source->answers = true;
    press(Qt::Key_Minus);
    QVERIFY(!note->isVisible());
}

void TestTrendOutput::closesByKey()
{
    RUN(open());
    QTest::keyClick(canvas(), Qt::Key_W, Qt::ControlModifier);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTRY_VERIFY(!window);
}

void TestTrendOutput::historyKeepsThePointsOfTheWindow()
{
    History history;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    Readings report{now, "127.0.0.2", "Riverside", "Relay", {}};
    for (const char *name : {"Voltage", "Current"}) {
        report.rows.append({QString::fromLatin1(name), "40001", "float", 230, SampleState::Valid, QString()});
    }
    history.add(report);
    window = new TrendWindow(&history);
    window->show();
    window->addPoints(history.points());
    auto *table = window->findChild<FigureTable *>();
    QTRY_COMPARE(cell(0, FigureModel::Current), "230");
    QCOMPARE(window->findChild<QComboBox *>("span")->currentText(), "15 min");
    history.forget("127.0.0.2", "Riverside", "Relay"); // its page is closed
    QCOMPARE(history.points().size(), 2);
    table->setFocus();
    table->selectRow(1);
    table->findChild<QAction *>("remove")->trigger();
    QCOMPARE(history.points().size(), 1);
    delete window;
    QCOMPARE(history.points().size(), 0);
}

QTEST_MAIN(TestTrendOutput)
#include "tst_trendoutput.moc"

#include "traveller.h"

#include "boxes/boxeditdialog.h"
#include "boxes/boxsearchdialog.h"
#include "boxlink/discovery.h"
#include "boxlink/frame.h"
#include "boxundertest.h"
#include "modbusdevice.h"
#include "recordedhour.h"
#include "run.h"
#include "services/serviceiec61850editdialog.h"
#include "standards/standarddlt645editdialog.h"
#include "standards/standardmodbuseditdialog.h"
#include "trends/figuremodel.h"
#include "trends/trendtexts.h"
#include "trends/trendwindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QStandardItem>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextEdit>
#include <QToolButton>
#include <QUdpSocket>
#include <QtTest>

// The program's main job from end to end, at the real window, against a simulated Box or the real one that
// BOX_ADDRESS names: in the program's own language, or in English where TOUR_LANGUAGE says so.
class TestTour : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();

    void theWindowStands();
    void aProjectIsMade();
    void aModbusDeviceIsDescribed();
    void aMeterIsDescribed();
    void theServiceIsSet();
    void theSearchForBoxesStands();
    void aBoxIsAddedAndConnects();
    void itsSettingsAreRead();
    void itsSettingsAreWritten();
    void theProjectIsPushed();
    void itsValuesComeLive();
    void aTrendIsWatched();
    void aRecordingIsOpened();
    void theProjectIsSaved();
    void aLargeProjectIsLoadedPushedAndWatched();
    void aDeviceOnTheDeskIsDescribed();
    void itsRegistersComeLive();
    void aChangedRegisterIsSeen();

private:
    static QString shown(const char *text) { return CMainWindow::tr(text); }
    void makeProject(const QString &name, const QString &description, const QString &picture = {});
    void pushProject(const QString &name, BoxSim *simulated);
    void watch(const QString &node, const QString &table, int rows);

    std::unique_ptr<BoxUnderTest> m_box;
    QString m_address;
    CMainWindow *m_window = nullptr;
    Traveller *m_user = nullptr;

    const QString m_noDevice = ModbusDevice::whyNot();
    ModbusDevice m_device;
    std::unique_ptr<BoxSim> m_acquiringBox;
};

namespace {

// Ends the test function where no device can be read.
#define SKIP_WITHOUT_DEVICE()                                                                                \
    if (!m_noDevice.isEmpty())                                                                               \
    QSKIP(qPrintable(m_noDevice))

const QString project = "North feeder";
const QString desk = "Desk";
const QString deskAddress = "127.0.54.1";

// In a picture of a trend there is to be something to see.
int worthAPicture(int milliseconds)
{
    return qEnvironmentVariableIsSet("TOUR_DIR") ? milliseconds : 500;
}

// Waits until the first curve is so many milliseconds long.
void watchTrend(const TrendWindow *trend, int time)
{
    const PointId first = trend->points().first().id;
    QTRY_VERIFY_WITH_TIMEOUT(trend->source()->extent(first).to - trend->source()->extent(first).from > time,
                             60000);
}

QString figure(const TrendWindow *trend, int row, FigureModel::Column column)
{
    return trend->findChild<QTableView *>("figures")->model()->index(row, column).data().toString();
}

} // namespace

void TestTour::initTestCase()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    BoxSimOptions options;
    options.address = QHostAddress("127.0.14.1");
    options.reportInterval = 200;
    m_box = std::make_unique<BoxUnderTest>(options);
    QVERIFY(m_box->start());
    m_address = m_box->address().toString();
    m_window = new CMainWindow;
    if (qEnvironmentVariable("TOUR_LANGUAGE") == "english") {
        m_window->CESwitching();
    }
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    m_user = new Traveller(m_window);
}

void TestTour::cleanupTestCase()
{
    m_user->messages().expect(QMessageBox::No);
    m_window->close();
    delete m_user;
    delete m_window;
}

void TestTour::theWindowStands()
{
    QCOMPARE(m_window->windowTitle(), "MRN-IEC61850-Modbus");
    m_user->picture("01-start");
}

void TestTour::makeProject(const QString &name, const QString &description, const QString &picture)
{
    m_user->dialogs().expect([this, name, description, picture](QWidget *dialog) {
        m_user->type(dialog, "name", name);
        m_user->giveFile(QDir::current().absoluteFilePath("projects"));
        m_user->press(dialog, "browseButton");
        QTest::keyClicks(dialog->findChild<QTextEdit *>(), description);
        if (!picture.isEmpty()) {
            m_user->picture(picture, dialog);
        }
        m_user->press(dialog, "okButton");
    });
    m_user->trigger("actionNew_Project");
    QVERIFY(m_user->node(name + "/Service/IEC61850"));
}

void TestTour::aProjectIsMade()
{
    QVERIFY(QDir().mkpath("projects"));
    makeProject(project, "One feeder and its meter.", "02-new-project");
}

void TestTour::aModbusDeviceIsDescribed()
{
    m_user->choose(project + "/Standard", shown("Add Standard"), [this](QWidget *dialog) {
        m_user->type(dialog, "name", "Protection relay");
        dialog->findChild<QComboBox *>("protocol")->setCurrentText("Modbus");
        m_user->picture("03-add-standard", dialog);
        m_user->press(dialog, "okButton");
    });
    auto *form = m_user->form<standardModbusEditDialog>();
    QVERIFY(form);
    m_user->type(form, "ip", "192.168.1.61");
    m_user->press(form, "addTabButton");
    m_user->addPoints(form,
                      {{"0", "Phase A voltage", "float"},
                       {"2", "Phase B voltage", "float"},
                       {"4", "Phase A current", "float"}});
    m_user->picture("04-modbus");
    auto *table = form->findChild<QTableWidget *>();
    table->setColumnWidth(0, 55); // as a user would, who wants to read the names
    table->setColumnWidth(1, 118);
    m_user->scrollTo(table, 80);
    m_user->picture("04-modbus-points");
    m_user->press(form, "saveButton");
}

void TestTour::aMeterIsDescribed()
{
    m_user->choose(project + "/Standard", shown("Add Standard"), [this](QWidget *dialog) {
        m_user->type(dialog, "name", "Tariff meter");
        dialog->findChild<QComboBox *>("protocol")->setCurrentText("DLT645");
        m_user->press(dialog, "okButton");
    });
    auto *form = m_user->form<standardDLT645EditDialog>();
    QVERIFY(form);
    m_user->press(form, "addTabButton");
    m_user->type(form, "slaveAddressEdit", "202611210001");
    auto *table = form->findChild<QTableWidget *>();
    for (const int row : {21, 41, 42, 43}) {
        qobject_cast<QCheckBox *>(table->cellWidget(row, 0))->click();
        table->item(row, 2)->setText(QString("meter value %1").arg(row));
    }
    m_user->picture("05-dlt645");
    table->setColumnWidth(1, 220);
    table->setColumnWidth(2, 130);
    m_user->scrollTo(table, -120);
    table->scrollToBottom();
    m_user->picture("05-dlt645-items");
    m_user->press(form, "saveButton");
}

void TestTour::theServiceIsSet()
{
    m_user->click(project + "/Service/IEC61850");
    auto *form = m_user->form<ServiceIEC61850EditDialog>();
    QVERIFY(form);
    form->findChild<QCheckBox *>("enableSSL")->click();
    m_user->picture("06-service-secured");
    form->findChild<QCheckBox *>("enableSSL")->click();
    form->findChild<QComboBox *>("authentication")->setCurrentText("Password");
    m_user->type(form, "password", "substation");
    m_user->picture("07-service");
    m_user->press(form, "saveButton");
}

// Asks the Box alone: a search would broadcast on the network that the machine is in.
void TestTour::theSearchForBoxesStands()
{
    m_user->choose(project + "/Box", shown("Search Box"));
    const QPointer<BoxSearchDialog> dialog = m_user->form<BoxSearchDialog>();
    QVERIFY(dialog);
    QVERIFY(dialog->isVisible());
    if (m_box->simulated()) {
        auto *socket = dialog->findChild<QUdpSocket *>();
        QVERIFY(socket->bind(QHostAddress(QHostAddress::LocalHost)));
        socket->writeDatagram(Discovery::request(), m_box->address(), Frame::boxPort);
        auto *list = dialog->findChild<QListWidget *>();
        QTRY_COMPARE(list->count(), 1);
        QVERIFY(list->item(0)->text().contains(m_address));
    }
    m_user->picture("08-search", dialog);
    QTest::keyClick(dialog, Qt::Key_Escape);
    QTRY_VERIFY(!dialog);
}

void TestTour::aBoxIsAddedAndConnects()
{
    m_user->choose(project + "/Box", shown("Add Box"), [this](QWidget *dialog) {
        m_user->type(dialog, "name", "Gateway");
        m_user->type(dialog, "ip", m_address);
        m_user->picture("09-add-box", dialog);
        m_user->press(dialog, "okButton");
    });
    auto *form = m_user->form<BoxEditDialog>();
    QVERIFY(form);
    const QString connected = QCoreApplication::translate("Protocol", "Connection status: Connected");
    QTRY_COMPARE(form->findChild<QLabel *>("statusLabel")->text(), connected);
    m_user->picture("10-box-connected");
}

void TestTour::itsSettingsAreRead()
{
    auto *form = m_user->form<BoxEditDialog>();
    form->findChild<QTabWidget *>()->setCurrentIndex(1);
    m_user->messages().expect();
    m_user->press(form, "lanReadButton");
    auto *ip = form->findChild<QLineEdit *>("lanIp");
    QTRY_COMPARE(m_user->messages().pending(), 0);
    QVERIFY(!ip->text().isEmpty());
    m_user->picture("11-box-settings");
    form->findChild<QTabWidget *>()->setCurrentIndex(0);
}

void TestTour::itsSettingsAreWritten()
{
    SKIP_WITHOUT_SIMULATOR("a real Box would leave its network");
    BoxSim *box = m_box->simulated();
    auto *form = m_user->form<BoxEditDialog>();
    QCOMPARE(form->findChild<QLineEdit *>("lanIp")->text(), box->setting("lanIp"));
    form->findChild<QTabWidget *>()->setCurrentIndex(1);
    m_user->type(form, "lanGateway", "192.168.1.254");
    m_user->messages().expect();
    m_user->press(form, "lanWriteButton");
    QTRY_COMPARE(box->setting("lanGateway"), "192.168.1.254");
    QTRY_COMPARE(m_user->messages().pending(), 0);
    form->findChild<QTabWidget *>()->setCurrentIndex(0);
}

// The Box is the one that the form shows; null for a real one.
void TestTour::pushProject(const QString &name, BoxSim *simulated)
{
    const auto accepted =
        simulated ? std::make_unique<QSignalSpy>(simulated, &BoxSim::projectAccepted) : nullptr;
    auto *form = m_user->form<BoxEditDialog>();
    m_user->press(form, "updateProjectButton");
    QCOMPARE(m_user->dockLines().last(),
             QCoreApplication::translate("BoxEditDialog", "Checksum Result:Checksum successful."));
    if (accepted) {
        QCOMPARE(accepted->size(), 1);
        const QJsonDocument pushed(m_window->buildProjectJson(m_user->node(name)));
        QCOMPARE(accepted->first().first().toByteArray(), pushed.toJson());
    }
}

void TestTour::theProjectIsPushed()
{
    SKIP_UNLESS_BOX_MAY_CHANGE();
    RUN(pushProject(project, m_box->simulated()));
    m_user->picture("12-project-pushed");
}

// Waits until the table of the node has that many rows, all of them valid.
void TestTour::watch(const QString &path, const QString &table, int rows)
{
    QTRY_VERIFY_WITH_TIMEOUT(m_user->node(path), 10000);
    QTRY_VERIFY_WITH_TIMEOUT(m_user->liveTable(table) && m_user->liveTable(table)->rowCount() == rows, 10000);
    m_user->click(path);
    const QTabWidget *tabs = m_window->monitoringTabs();
    QCOMPARE(tabs->tabText(tabs->currentIndex()), table);
    for (int row = 0; row < rows; ++row) {
        QCOMPARE(m_user->liveTable(table)->item(row, 4)->text(), shown("Effective"));
        QVERIFY(!m_user->liveTable(table)->item(row, 3)->text().isEmpty());
    }
}

void TestTour::itsValuesComeLive()
{
    SKIP_WITHOUT_SIMULATOR("a real Box has other meters than the tour's");
    watch(project + "/Data/Tariff meter", "Tariff meter", 4);
    watch(project + "/Data/Protection relay", "Protection relay", 3);
    m_user->widenLiveValues();
    m_user->picture("13-live-values");
}

void TestTour::aTrendIsWatched()
{
    SKIP_WITHOUT_SIMULATOR("a real Box has other meters than the tour's");
    TrendWindow *trend = m_user->openTrend();
    QVERIFY(trend);
    QCOMPARE(trend->points().size(), 3);
    RUN(watchTrend(trend, worthAPicture(20000)));
    QTRY_VERIFY(figure(trend, 0, FigureModel::Current).toDouble() > 0);
    m_user->picture("15-trend", trend);
    trend->close();
}

// What the link was down for stays empty, between two curves that do not meet.
void TestTour::aRecordingIsOpened()
{
    const QString path = QDir::current().filePath("North feeder.sqlite");
    QVERIFY(recordHour(path));
    TrendWindow *trend = m_user->openRecording(path);
    QVERIFY(trend);
    QCOMPARE(trend->points().size(), 3);
    QTRY_COMPARE(figure(trend, 0, FigureModel::Least), QString("227.64")); // of all the hour
    QTRY_COMPARE(figure(trend, 1, FigureModel::Current),
                 TrendTexts::ofValue({ValueAt::Kind::Break, 0, {}, SampleState::Ended}));
    m_user->picture("19-recording", trend);
    trend->close();
}

void TestTour::theProjectIsSaved()
{
    m_user->messages().expect();
    m_user->choose(project, shown("Save Project"));
    QCOMPARE(m_user->messages().pending(), 0);
    QVERIFY(QFile::exists("projects/North feeder.json"));
    QVERIFY(!QFile::exists("projects/temp.json"));
}

void TestTour::aLargeProjectIsLoadedPushedAndWatched()
{
    SKIP_WITHOUT_SIMULATOR("a real Box has other meters than the project's");
    QVERIFY(QFile::copy(QString(TEST_DATA_DIR "/riverside-substation.json"), "projects/riverside.json"));
    m_user->giveFile(QDir::current().absoluteFilePath("projects/riverside.json"));
    m_user->messages().expect();
    m_user->trigger("actionLoad_Project");
    const QString riverside = "Riverside substation";
    QVERIFY(m_user->node(riverside));

    m_user->click(riverside + "/Box/Gateway north");
    m_user->press(m_user->form<BoxEditDialog>(), "cancelButton");
    QTRY_VERIFY(!m_user->form<BoxEditDialog>());
    m_user->click(riverside + "/Box/Gateway north");
    auto *form = m_user->form<BoxEditDialog>();
    m_user->type(form, "ip", m_address);
    m_user->press(form, "connectButton");
    const QString connected = QCoreApplication::translate("Protocol", "Connection status: Connected");
    QTRY_COMPARE(form->findChild<QLabel *>("statusLabel")->text(), connected);
    RUN(pushProject(riverside, m_box->simulated()));
    watch(riverside + "/Data/Feeder meters", "Feeder meters", 32);
    m_user->picture("14-riverside-live");
}

// From here on the window is a newcomer's, with nothing of the projects before.
void TestTour::aDeviceOnTheDeskIsDescribed()
{
    SKIP_WITHOUT_SIMULATOR("a real Box is not on this desk");
    SKIP_WITHOUT_DEVICE();
    QVERIFY(m_device.start(deskAddress));
    auto *box = m_user->form<BoxEditDialog>();
    QVERIFY(box);
    m_user->press(box, "cancelButton");
    for (const QString &old : {project, QString("Riverside substation")}) {
        m_user->choose(old + "/Data", shown("Delete All"));
        m_user->messages().expect(QMessageBox::No);
        m_user->choose(old, shown("Close Project"));
        QVERIFY(!m_user->node(old));
    }
    RUN(makeProject(desk, "A device on the desk, before the Box is there."));
    m_user->choose(desk + "/Standard", shown("Add Standard"), [this](QWidget *dialog) {
        m_user->type(dialog, "name", "Pump");
        dialog->findChild<QComboBox *>("protocol")->setCurrentText("Modbus");
        m_user->press(dialog, "okButton");
    });
    auto *form = m_user->form<standardModbusEditDialog>();
    QVERIFY(form);
    m_user->type(form, "ip", deskAddress);
    m_user->type(form, "port", QString::number(ModbusDevice::Port));
    m_user->type(form, "collectionInterval", "200");
    m_user->press(form, "addTabButton");
    m_user->addPoints(form, {{"40001", "Starts", "uint16"}, {"40019", "Voltage", "float"}});
    auto *table = form->findChild<QTableWidget *>();
    table->setColumnWidth(0, 55);
    table->setColumnWidth(1, 118);
    m_user->scrollTo(table, 80);
    m_user->picture("16-desk-points");
    m_user->press(form, "saveButton");
}

void TestTour::itsRegistersComeLive()
{
    SKIP_WITHOUT_SIMULATOR("a real Box is not on this desk");
    SKIP_WITHOUT_DEVICE();
    BoxSimOptions options;
    options.address = QHostAddress(deskAddress);
    options.acquire.on = true;
    m_acquiringBox = std::make_unique<BoxSim>(options);
    QVERIFY2(m_acquiringBox->start(), qPrintable(m_acquiringBox->errorString()));
    m_user->choose(desk + "/Box", shown("Add Box"), [this](QWidget *dialog) {
        m_user->type(dialog, "name", "Notebook");
        m_user->type(dialog, "ip", deskAddress);
        m_user->press(dialog, "okButton");
    });
    auto *form = m_user->form<BoxEditDialog>();
    const QString connected = QCoreApplication::translate("Protocol", "Connection status: Connected");
    QTRY_COMPARE(form->findChild<QLabel *>("statusLabel")->text(), connected);
    RUN(pushProject(desk, m_acquiringBox.get()));
    RUN(watch(desk + "/Data/Pump", "Pump", 2));
    QCOMPARE(m_user->liveTable("Pump")->item(0, 3)->text(), "7");
    QCOMPARE(m_user->liveTable("Pump")->item(1, 3)->text(), "230.1");
    m_user->widenLiveValues();
    m_user->picture("17-desk-values");
}

void TestTour::aChangedRegisterIsSeen()
{
    SKIP_WITHOUT_SIMULATOR("a real Box is not on this desk");
    SKIP_WITHOUT_DEVICE();
    TrendWindow *trend = m_user->openTrend();
    QVERIFY(trend);
    RUN(watchTrend(trend, worthAPicture(8000)));
    QTRY_COMPARE(figure(trend, 0, FigureModel::Current), "7");
    QVERIFY(m_device.set(0, 12));
    QTRY_COMPARE(m_user->liveTable("Pump")->item(0, 3)->text(), "12");
    QTRY_COMPARE(figure(trend, 0, FigureModel::Current), "12");
    QCOMPARE(figure(trend, 0, FigureModel::Least), "7");
    QCOMPARE(figure(trend, 0, FigureModel::Greatest), "12");
    QCOMPARE(figure(trend, 1, FigureModel::Current), "230.1");
    RUN(watchTrend(trend, worthAPicture(20000)));
    m_user->picture("18-desk-trend", trend);
    trend->close();
}

QTEST_MAIN(TestTour)
#include "tst_tour.moc"

#include "boxlink/boxeditdialog.h"

#include "boxlink/hostaddressdialog.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "support/boxpeer.h"
#include "support/logtail.h"
#include "support/messageboxes.h"
#include "support/modaldialogs.h"
#include "support/workspacefake.h"

#include <QComboBox>
#include <QFileDialog>
#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <memory>

namespace {

const auto boxAddress = QStringLiteral("127.0.11.1");
const auto silentAddress = QStringLiteral("127.0.11.9"); // nobody listens there

// One row for each input of the form: its name, its role, and a text of its own for it.
struct Input {
    const char *name;
    int role;
    const char *text;
};

const Input inputs[] = {
    {"name", Qt::DisplayRole, "Gate 1"},
    {"ip", boxIpRole, "127.0.11.1"},
    {"model", boxModelRole, "MRN-GATE-20"},
    {"lanIp", boxLanIpRole, "10.0.1.1"},
    {"lanMask", boxLanMaskRole, "10.0.1.2"},
    {"lanGateway", boxLanGatewayRole, "10.0.1.3"},
    {"lanDns1", boxLanDns1Role, "10.0.1.4"},
    {"lanDns2", boxLanDns2Role, "10.0.1.5"},
    {"wanDhcp", boxWanDhcpRole, "Enable"},
    {"wanIp", boxWanIpRole, "10.0.2.1"},
    {"wanMask", boxWanMaskRole, "10.0.2.2"},
    {"wanGateway", boxWanGatewayRole, "10.0.2.3"},
    {"wanDns1", boxWanDns1Role, "10.0.2.4"},
    {"wanDns2", boxWanDns2Role, "10.0.2.5"},
    {"wifiOnOff", boxWifiOnOffRole, "on"},
    {"wifiMode", boxWifiModeRole, "station"},
    {"wifissid", boxWifiSsidRole, "yard"},
    {"wifipassword", boxWifiPasswordRole, "secret"},
    {"wifiDhcp", boxWifiDhcpRole, "Enable"},
    {"wifiIp", boxWifiIpRole, "10.0.3.1"},
    {"wifiMask", boxWifiMaskRole, "10.0.3.2"},
    {"wifiGateway", boxWifiGatewayRole, "10.0.3.3"},
    {"wifiDns1", boxWifiDns1Role, "10.0.3.4"},
    {"wifiDns2", boxWifiDns2Role, "10.0.3.5"},
    {"lteOnOff", boxLteOnOffRole, "on"},
    {"at1", boxAt1Role, "AT+A"},
    {"at2", boxAt2Role, "AT+B"},
    {"at3", boxAt3Role, "AT+C"},
    {"at4", boxAt4Role, "AT+D"},
    {"at5", boxAt5Role, "AT+E"},
    {"ntpServer", boxNtpServerRole, "10.0.4.1"},
    {"time", boxTimeRole, "2024-05-06 07:08:09"},
};

QMap<int, QVariant> fullRoles()
{
    QMap<int, QVariant> roles;
    for (const Input &input : inputs) {
        roles.insert(input.role, QString::fromLatin1(input.text));
    }
    return roles;
}

QMap<int, QVariant> rolesOf(const QStandardItem &item)
{
    QMap<int, QVariant> roles;
    for (const Input &input : inputs) {
        roles.insert(input.role, item.data(input.role));
    }
    return roles;
}

void setRoles(QStandardItem *item, const QMap<int, QVariant> &roles)
{
    for (auto role = roles.begin(); role != roles.end(); ++role) {
        item->setData(role.value(), role.key());
    }
}

// The frame of a JSON answer.
QByteArray jsonFrame(const QByteArray &text)
{
    const int total = text.size() + 10;
    QByteArray frame("\x12\x34\x05\x00", 4);
    frame += char(total & 0xff);
    frame += char(total >> 8);
    frame += char(text.size() & 0xff);
    frame += char(text.size() >> 8);
    return frame + text + "\x56\x78";
}

// The JSON requests among the frames that a session brought, in order.
QList<QJsonObject> requestsIn(const QByteArray &stream)
{
    QList<QJsonObject> requests;
    int start = 0;
    while (start + 8 <= stream.size()) {
        const int length = uchar(stream[start + 4]) + 256 * uchar(stream[start + 5]);
        if (stream[start + 2] == 5) {
            requests.append(QJsonDocument::fromJson(stream.mid(start + 8, length - 10)).object());
        }
        start += length;
    }
    return requests;
}

} // namespace

// The form of a Box against raw sockets: fields, session, settings, transfers, and its death at bad moments.
class TestBoxEditDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void declaresItsSlotsInOrder();
    void everyInputIsNamedAfterItsKey();
    void showsTabsButNotWifiAndLte();
    void commonPage();
    void buttonsAreNeverDisabledAndNoneTakesEnter();
    void wordsShareOneValidator();
    void addressesTakeDottedNumbersOnly();

    void showsTheItem();
    void opensWithLteOnWhateverTheItemHolds();
    void unknownListTextOpensWithTheFirstEntry();
    void savesAllFieldsAndSaysSo();
    void savesWithoutMainWindow();
    void openingLeavesTheItemAlone();
    void replacedItemIsShownAndLteComesFromIt();
    void replacedItemKeepsListsWithUnknownTexts();
    void switchOfOneItemDoesNotReachTheNext();
    void clearDataEmptiesTheForm();
    void localTimeTicks();
    void logsItsLife();

    void connectsAtOnceAndHeartbeats();
    void showsStatusAndVersion();
    void connectTwiceReplacesTheSession();
    void disconnectDropsTheSessionOnce();
    void readAfterDisconnectMakesASession();
    void cancelDisconnectsBeforeItRejects();
    void offlineIsToldInTheMessageDock();
    void reportsArePassedOn();
    void requestOnADeadLinkIsToldInTheLabel();

    void requests_data();
    void requests();
    void answers_data();
    void answers();
    void answersLeaveTheItemAlone();
    void unknownDhcpFlagLeavesTheList();
    void unknownSwitchChecksNeitherButton();

    void hostAddressChoices();
    void hostAddressDialogOffersTheAddressesOfThisMachine();
    void anyHostAddressStartsANewSession();
    void chosenHostAddressIsBoundAndRemembered();
    void cancelledHostAddressChangesNothing();
    void bindingFailureIsToldForTheSessionOfThatMoment();

    void projectIsPushed();
    void projectPushNeedsAProject();
    void projectPushNeedsATempFile_data();
    void projectPushNeedsATempFile();
    void unreachableBoxIsToldAndTempFileStays();
    void programIsPushed();
    void programPushCanBeCancelled();
    void missingProgramIsTold();
    void timeoutIsToldInABoxAndInTheDock();
    void transferTakesTheHostAddress();
    void sessionLivesOnDuringATransfer();
    void updateProjectAgainDuringTheWait();

    void formMayDie_data();
    void formMayDie();
    void sessionMayBeDroppedBelowItsOwnBox_data();
    void sessionMayBeDroppedBelowItsOwnBox();

private:
    void open();
    template <typename Widget> Widget *find(const char *name) const
    {
        return m_form->findChild<Widget *>(QLatin1String(name));
    }
    QString shown(const char *name) const;
    QMap<int, QVariant> shownRoles() const;
    QString status() const { return find<QLabel>("statusLabel")->text(); }
    // Waits until the last session has said its first heartbeat.
    bool connected() const;
    void answer(const QByteArray &bytes) const { m_box->send(m_box->count() - 1, bytes); }
    // Runs the act in the loop of the next message box, which nobody else answers, then leaves the box.
    void actBelowTheNextBox(std::function<void()> act);
    QStandardItem *addProject();
    void answerTransferWith(const QByteArray &verdict);

    std::unique_ptr<BoxPeer> m_box;
    std::unique_ptr<WorkspaceFake> m_workspace;
    std::unique_ptr<QStandardItem> m_item;
    std::unique_ptr<MessageBoxes> m_boxes;
    std::unique_ptr<ModalDialogs> m_dialogs;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<QStandardItemModel> m_model;
    QPointer<BoxEditDialog> m_form;
};

void TestBoxEditDialog::init()
{
    m_box = std::make_unique<BoxPeer>(boxAddress);
    QVERIFY(m_box->isListening());
    m_workspace = std::make_unique<WorkspaceFake>();
    m_item = std::make_unique<QStandardItem>();
    setRoles(m_item.get(), fullRoles());
    m_boxes = std::make_unique<MessageBoxes>();
    m_dialogs = std::make_unique<ModalDialogs>();
    m_dir = std::make_unique<QTemporaryDir>();
    m_model = std::make_unique<QStandardItemModel>();
}

void TestBoxEditDialog::cleanup()
{
    delete m_form;
    if (m_boxes) {
        QCOMPARE(m_boxes->unexpected(), QStringList());
        QCOMPARE(m_boxes->pending(), 0);
    }
    QCOMPARE(m_dialogs->unexpected(), QStringList());
    QCOMPARE(m_dialogs->pending(), 0);
    m_boxes.reset();
    m_dialogs.reset();
    m_box.reset();
}

void TestBoxEditDialog::open()
{
    m_form = new BoxEditDialog(m_item.get(), m_workspace.get());
}

QString TestBoxEditDialog::shown(const char *name) const
{
    if (const auto *edit = find<QLineEdit>(name)) {
        return edit->text();
    }
    if (const auto *list = find<QComboBox>(name)) {
        return list->currentText();
    }
    const bool on = m_form->findChild<QRadioButton *>(QLatin1String(name) + QLatin1String("On"))->isChecked();
    const bool off
        = m_form->findChild<QRadioButton *>(QLatin1String(name) + QLatin1String("Off"))->isChecked();
    return on == off ? QStringLiteral("neither") : on ? QStringLiteral("on") : QStringLiteral("off");
}

QMap<int, QVariant> TestBoxEditDialog::shownRoles() const
{
    QMap<int, QVariant> roles;
    for (const Input &input : inputs) {
        roles.insert(input.role, shown(input.name));
    }
    return roles;
}

bool TestBoxEditDialog::connected() const
{
    return QTest::qWaitFor([this] {
        return m_box->count() > 0 && m_box->received(m_box->count() - 1).size() >= 8;
    });
}

void TestBoxEditDialog::declaresItsSlotsInOrder()
{
    QStringList slotNames;
    const QMetaObject &meta = BoxEditDialog::staticMetaObject;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        if (method.methodType() == QMetaMethod::Slot) {
            QCOMPARE(method.access(), QMetaMethod::Public);
            slotNames.append(QString::fromLatin1(method.methodSignature()));
        }
    }
    QCOMPARE(slotNames.join(QLatin1Char(' ')),
             QStringLiteral("saveChanges() disconnectFromServer() connectToServer() "
                            "showChangeHostAddressDialog() clearData() rebootDevice() readLanAllocation() "
                            "writeLanAllocation() readWanAllocation() writeWanAllocation() "
                            "readWifiAllocation() writeWifiAllocation() readLteAllocation() "
                            "writeLteAllocation() readNTPAllocation() writeNTPAllocation() "
                            "readTimeAllocation() writeTimeAllocation() replaceItem(QStandardItem*) "
                            "updateProject() updateProgram()"));
    QVERIFY(meta.indexOfSignal("sendDataToMainWindow(Protocol::dataMonitoringData)") >= 0);
}

void TestBoxEditDialog::everyInputIsNamedAfterItsKey()
{
    open();
    QStringList expected{QStringLiteral("localTime"), QStringLiteral("wifiOnOffOn"),
                         QStringLiteral("wifiOnOffOff"), QStringLiteral("lteOnOffOn"),
                         QStringLiteral("lteOnOffOff")};
    for (const Input &input : inputs) {
        if (!QByteArray(input.name).endsWith("OnOff")) {
            expected.append(QLatin1String(input.name));
        }
    }
    QStringList found;
    for (const QWidget *widget : m_form->findChildren<QWidget *>()) {
        if (qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QComboBox *>(widget)
            || qobject_cast<const QRadioButton *>(widget)) {
            found.append(widget->objectName());
        }
    }
    expected.sort();
    found.sort();
    QCOMPARE(found, expected);
    QCOMPARE(m_form->nameEdit()->objectName(), QStringLiteral("name"));
    QCOMPARE(m_form->saveButton()->objectName(), QStringLiteral("saveButton"));
    for (const QPushButton *button : m_form->findChildren<QPushButton *>()) {
        QVERIFY2(!button->objectName().isEmpty(), qPrintable(button->text()));
    }
}

void TestBoxEditDialog::showsTabsButNotWifiAndLte()
{
    open();
    m_form->show();
    QCOMPARE(m_form->windowTitle(), QStringLiteral("Edit Box"));
    auto *tabs = m_form->findChild<QTabWidget *>();
    QStringList titles;
    QStringList visible;
    for (int index = 0; index < tabs->count(); ++index) {
        titles.append(tabs->tabText(index));
        tabs->setCurrentIndex(index);
        for (const QLineEdit *edit : m_form->findChildren<QLineEdit *>()) {
            if (edit->isVisible() && !visible.contains(edit->objectName())) {
                visible.append(edit->objectName());
            }
        }
    }
    QCOMPARE(titles,
             (QStringList{QStringLiteral("Commonly"), QStringLiteral("LAN"), QStringLiteral("WAN"),
                          QStringLiteral("NTP"), QStringLiteral("Time")}));
    visible.sort();
    QCOMPARE(visible.join(QLatin1Char(' ')),
             QStringLiteral("ip lanDns1 lanDns2 lanGateway lanIp lanMask localTime name ntpServer time "
                            "wanDns1 wanDns2 wanGateway wanIp wanMask"));
    QVERIFY(!find<QComboBox>("model")->isVisible());
    QVERIFY(!find<QComboBox>("model")->isEnabled());
    for (const char *name : {"wifiReadButton", "wifiWriteButton", "lteReadButton", "lteWriteButton"}) {
        QVERIFY(find<QPushButton>(name));
        QVERIFY(!find<QPushButton>(name)->isVisible());
    }
    const auto *area = m_form->findChild<QScrollArea *>();
    QCOMPARE(area->styleSheet(), QStringLiteral("QScrollArea { border: none; }"));
    QCOMPARE(area->widget(), tabs);
}

void TestBoxEditDialog::commonPage()
{
    open();
    QCOMPARE(status(), QStringLiteral("Connection status: connecting.."));
    QCOMPARE(find<QLabel>("versionLabel")->text(), QStringLiteral("Program version: 0.0.0"));
    const struct {
        const char *name;
        QString text;
    } buttons[] = {
        {"connectButton", QStringLiteral("Connect")},
        {"disconnectButton", QStringLiteral("Disconnect")},
        {"changeHostButton", QString()},
        {"updateProjectButton", QStringLiteral("Update project")},
        {"updateProgramButton", QStringLiteral("Update program")},
        {"rebootButton", QStringLiteral("Reboot Device")},
        {"lanReadButton", QStringLiteral("Read")},
        {"timeWriteButton", QStringLiteral("Write")},
        {"saveButton", QStringLiteral("Save")},
        {"cancelButton", QStringLiteral("Cancel")},
    };
    for (const auto &button : buttons) {
        QCOMPARE(find<QPushButton>(button.name)->text(), button.text);
    }
    QCOMPARE(find<QPushButton>("changeHostButton")->maximumSize(), QSize(20, 25));
    QCOMPARE(find<QPushButton>("changeHostButton")->minimumSize(), QSize(20, 25));
    const auto *progress = find<QProgressBar>("progressBar");
    QCOMPARE(progress->minimum(), 0);
    QCOMPARE(progress->maximum(), 100);
    QCOMPARE(progress->value(), 0);
}

void TestBoxEditDialog::buttonsAreNeverDisabledAndNoneTakesEnter()
{
    open();
    const auto check = [this] {
        for (const QPushButton *button : m_form->findChildren<QPushButton *>()) {
            QVERIFY2(button->isEnabled(), qPrintable(button->objectName()));
            QVERIFY2(!button->autoDefault() && !button->isDefault(), qPrintable(button->objectName()));
        }
    };
    check();
    m_form->disconnectFromServer();
    check();
}

void TestBoxEditDialog::wordsShareOneValidator()
{
    open();
    const QValidator *validator = find<QLineEdit>("wifissid")->validator();
    QVERIFY(validator);
    for (const char *name : {"wifipassword", "at1", "at2", "at3", "at4", "at5"}) {
        QCOMPARE(find<QLineEdit>(name)->validator(), validator);
    }
    QCOMPARE(find<QLineEdit>("name")->validator(), nullptr);
    QCOMPARE(find<QLineEdit>("wifipassword")->echoMode(), QLineEdit::Password);
}

void TestBoxEditDialog::addressesTakeDottedNumbersOnly()
{
    open();
    for (const char *name : {"ip", "lanIp", "lanMask", "lanGateway", "lanDns1", "lanDns2", "wanIp", "wanMask",
                             "wanGateway", "wanDns1", "wanDns2", "wifiIp", "wifiMask", "wifiGateway",
                             "wifiDns1", "wifiDns2", "ntpServer"}) {
        auto *edit = find<QLineEdit>(name);
        edit->clear();
        QTest::keyClicks(edit, QStringLiteral("10.x300.1"));
        QCOMPARE(edit->text(), QStringLiteral("10.30.1"));
    }
}

void TestBoxEditDialog::showsTheItem()
{
    open();
    QCOMPARE(shownRoles(), fullRoles());
}

void TestBoxEditDialog::opensWithLteOnWhateverTheItemHolds()
{
    m_item->setData(QStringLiteral("off"), boxLteOnOffRole);
    open();
    QCOMPARE(shown("lteOnOff"), QStringLiteral("on"));
    m_form->saveChanges();
    QCOMPARE(m_item->data(boxLteOnOffRole), QVariant(QStringLiteral("on")));
}

void TestBoxEditDialog::unknownListTextOpensWithTheFirstEntry()
{
    m_item->setData(QStringLiteral("perhaps"), boxWanDhcpRole);
    m_item->setData(QStringLiteral("enable"), boxWifiDhcpRole);
    m_item->setData(QStringLiteral("MRN-GATE-99"), boxModelRole);
    m_item->setData(QStringLiteral("neither"), boxWifiOnOffRole);
    open();
    QCOMPARE(shown("wanDhcp"), QStringLiteral("Disabled"));
    QCOMPARE(shown("wifiDhcp"), QStringLiteral("Disabled"));
    QCOMPARE(shown("model"), QStringLiteral("MRN-RIM-KX91"));
    QCOMPARE(shown("wifiOnOff"), QStringLiteral("neither"));
}

void TestBoxEditDialog::savesAllFieldsAndSaysSo()
{
    open();
    QStandardItem other;
    m_form->replaceItem(&other);
    for (const Input &input : inputs) {
        if (auto *edit = find<QLineEdit>(input.name)) {
            edit->setText(QString::fromLatin1(input.text));
        } else if (auto *list = find<QComboBox>(input.name)) {
            list->setCurrentText(QString::fromLatin1(input.text));
        }
    }
    find<QRadioButton>("wifiOnOffOff")->setChecked(true);
    find<QRadioButton>("lteOnOffOn")->setChecked(true);
    const LogTail log(QStringLiteral("BoxEditDialog"));
    m_form->saveChanges();
    QMap<int, QVariant> expected = fullRoles();
    expected[boxWifiOnOffRole] = QStringLiteral("off");
    QCOMPARE(rolesOf(other), expected);
    QCOMPARE(m_workspace->messages,
             QStringList(QStringLiteral("The box 'Gate 1' is saved successfully.")));
    QCOMPARE(log.events(), QStringList(QStringLiteral("BoxEditDialog: save")));
    QVERIFY(m_form);
}

void TestBoxEditDialog::savesWithoutMainWindow()
{
    m_form = new BoxEditDialog(m_item.get(), nullptr);
    m_form->nameEdit()->setText(QStringLiteral("alone"));
    m_form->saveChanges();
    QCOMPARE(m_item->text(), QStringLiteral("alone"));
}

void TestBoxEditDialog::openingLeavesTheItemAlone()
{
    QStandardItem bare(QStringLiteral("bare"));
    const auto before = rolesOf(bare);
    m_form = new BoxEditDialog(&bare, m_workspace.get());
    QCOMPARE(rolesOf(bare), before);
}

void TestBoxEditDialog::replacedItemIsShownAndLteComesFromIt()
{
    QStandardItem bare(QStringLiteral("bare"));
    m_form = new BoxEditDialog(&bare, m_workspace.get());
    const Protocol *session = m_form->protocol();
    m_item->setData(QStringLiteral("off"), boxLteOnOffRole);
    const LogTail log(QStringLiteral("BoxEditDialog"));
    m_form->replaceItem(m_item.get());
    QMap<int, QVariant> expected = fullRoles();
    expected[boxLteOnOffRole] = QStringLiteral("off");
    QCOMPARE(shownRoles(), expected);
    QCOMPARE(m_form->protocol(), session);
    QCOMPARE(log.events(), QStringList(QStringLiteral("BoxEditDialog: replace")));
    m_form->saveChanges();
    QCOMPARE(rolesOf(*m_item), expected);
    QCOMPARE(bare.text(), QStringLiteral("bare"));
}

void TestBoxEditDialog::replacedItemKeepsListsWithUnknownTexts()
{
    open();
    QStandardItem bare;
    bare.setData(QStringLiteral("perhaps"), boxWanDhcpRole);
    m_form->replaceItem(&bare);
    QCOMPARE(shown("wanDhcp"), QStringLiteral("Enable"));
    QCOMPARE(shown("model"), QStringLiteral("MRN-GATE-20"));
    QCOMPARE(shown("lanIp"), QString());
}

void TestBoxEditDialog::switchOfOneItemDoesNotReachTheNext()
{
    open();
    QStandardItem bare;
    m_form->replaceItem(&bare);
    QCOMPARE(shown("wifiOnOff"), QStringLiteral("neither"));
    QCOMPARE(shown("lteOnOff"), QStringLiteral("neither"));
    m_form->saveChanges();
    QCOMPARE(bare.data(boxWifiOnOffRole), QVariant(QStringLiteral("off")));
}

void TestBoxEditDialog::clearDataEmptiesTheForm()
{
    m_item->setData(QStringLiteral("off"), boxWifiOnOffRole);
    open();
    find<QRadioButton>("lteOnOffOff")->setChecked(true);
    m_form->clearData();
    QMap<int, QVariant> expected;
    for (const Input &input : inputs) {
        expected.insert(input.role, QString());
    }
    expected[boxModelRole] = QStringLiteral("MRN-RIM-KX91");
    expected[boxWanDhcpRole] = QStringLiteral("Disabled");
    expected[boxWifiDhcpRole] = QStringLiteral("Disabled");
    expected[boxWifiModeRole] = QStringLiteral("station");
    expected[boxWifiOnOffRole] = QStringLiteral("on");
    expected[boxLteOnOffRole] = QStringLiteral("on");
    QCOMPARE(shownRoles(), expected);
    QCOMPARE(rolesOf(*m_item).value(boxLanIpRole), fullRoles().value(boxLanIpRole));
}

void TestBoxEditDialog::localTimeTicks()
{
    open();
    QCOMPARE(shown("localTime"), QString());
    QTRY_VERIFY(!shown("localTime").isEmpty());
    const QDateTime shownTime
        = QDateTime::fromString(shown("localTime"), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    QVERIFY(shownTime.isValid());
    QVERIFY(qAbs(shownTime.secsTo(QDateTime::currentDateTime())) <= 2);
}

void TestBoxEditDialog::logsItsLife()
{
    const LogTail log(QStringLiteral("BoxEditDialog"));
    open();
    QCOMPARE(log.events(), QStringList(QStringLiteral("BoxEditDialog: new-nuilt")));
    delete m_form;
    QCOMPARE(log.events(),
             (QStringList{QStringLiteral("BoxEditDialog: new-nuilt"),
                          QStringLiteral("BoxEditDialog: destroyed")}));
}

void TestBoxEditDialog::connectsAtOnceAndHeartbeats()
{
    open();
    QVERIFY(connected());
    QCOMPARE(m_box->received(0).toHex(), QByteArray("1234010008005678"));
}

void TestBoxEditDialog::showsStatusAndVersion()
{
    open();
    QVERIFY(connected());
    // Version "2.1.0", serial number "S1", model "M".
    answer(QByteArray::fromHex("12340200 1300 05 322e312e30 02 5331 01 4d 5678"));
    QTRY_COMPARE(status(), QStringLiteral("Connection status: Connected"));
    QCOMPARE(find<QLabel>("versionLabel")->text(), QStringLiteral("Program version: 2.1.0"));
    m_box->link(0)->abort();
    QTRY_COMPARE(status(), QStringLiteral("Connection status: Disconnected"));
}

void TestBoxEditDialog::connectTwiceReplacesTheSession()
{
    open();
    QVERIFY(connected());
    const QPointer<Protocol> first(m_form->protocol());
    const LogTail log(QStringLiteral("BoxEditDialog"));
    QStringList labels;
    for (int press = 0; press < 2; ++press) {
        find<QPushButton>("connectButton")->click();
        labels.append(status());
    }
    QVERIFY(!first);
    QCOMPARE(labels,
             (QStringList{QStringLiteral("Connection status: connecting.."),
                          QStringLiteral("Connection status: connecting..")}));
    const QString disconnected = QStringLiteral("BoxEditDialog: disconnect");
    const QString connectedLine = QStringLiteral("BoxEditDialog: connect");
    QCOMPARE(log.events(), (QStringList{disconnected, connectedLine, disconnected, connectedLine}));
    QTRY_COMPARE(m_box->link(0)->state(), QAbstractSocket::UnconnectedState);
    QVERIFY(connected());
}

void TestBoxEditDialog::disconnectDropsTheSessionOnce()
{
    open();
    QVERIFY(connected());
    const QPointer<Protocol> session(m_form->protocol());
    const LogTail log(QStringLiteral("BoxEditDialog"));
    find<QPushButton>("disconnectButton")->click();
    QVERIFY(!session);
    QCOMPARE(m_form->protocol(), nullptr);
    QCOMPARE(status(), QStringLiteral("Connection status: Not connected"));
    find<QLabel>("statusLabel")->setText(QStringLiteral("untouched"));
    find<QPushButton>("disconnectButton")->click();
    QCOMPARE(status(), QStringLiteral("untouched"));
    QCOMPARE(log.events(), QStringList(QStringLiteral("BoxEditDialog: disconnect")));
    QTRY_COMPARE(m_box->link(0)->state(), QAbstractSocket::UnconnectedState);
}

void TestBoxEditDialog::readAfterDisconnectMakesASession()
{
    open();
    QVERIFY(connected());
    m_form->disconnectFromServer();
    const LogTail log(QStringLiteral("BoxEditDialog"));
    find<QPushButton>("lanReadButton")->click();
    QVERIFY(m_form->protocol());
    QCOMPARE(log.events(),
             (QStringList{QStringLiteral("BoxEditDialog: connect"),
                          QStringLiteral("BoxEditDialog: read Lan")}));
    QTRY_COMPARE(m_box->count(), 2);
    QTRY_COMPARE(requestsIn(m_box->received(1)).size(), 1);
    QCOMPARE(requestsIn(m_box->received(1)).first().value(QLatin1String("type")).toString(),
             QStringLiteral("2"));
}

void TestBoxEditDialog::cancelDisconnectsBeforeItRejects()
{
    open();
    QString statusAtRejection;
    connect(m_form, &QDialog::rejected, this, [&] { statusAtRejection = status(); });
    find<QPushButton>("cancelButton")->click();
    QCOMPARE(statusAtRejection, QStringLiteral("Connection status: Not connected"));
    QCOMPARE(m_form->protocol(), nullptr);
}

void TestBoxEditDialog::offlineIsToldInTheMessageDock()
{
    open();
    emit m_form->protocol()->offlineOccurred();
    QCOMPARE(m_workspace->messages,
             QStringList(
                 QStringLiteral("!!!No communication for 30 seconds. Connection may be lost.!!!")));
    delete m_form;
    m_form = new BoxEditDialog(m_item.get(), nullptr);
    emit m_form->protocol()->offlineOccurred();
}

void TestBoxEditDialog::reportsArePassedOn()
{
    qRegisterMetaType<Protocol::dataMonitoringData>();
    open();
    const QSignalSpy passed(m_form, &BoxEditDialog::sendDataToMainWindow);
    const LogTail log(QStringLiteral("BoxEditDialog"));
    Protocol::dataMonitoringData report;
    report.projectName = QStringLiteral("plant");
    report.plcName = QStringLiteral("meter");
    QTest::ignoreMessage(QtDebugMsg, "\"plant\"");
    emit m_form->protocol()->dataReceived(report);
    QCOMPARE(passed.size(), 1);
    QCOMPARE(passed.first().first().value<Protocol::dataMonitoringData>().plcName, QStringLiteral("meter"));
    QCOMPARE(log.events(), QStringList(QStringLiteral("BoxEditDialog: Data")));
}

void TestBoxEditDialog::requestOnADeadLinkIsToldInTheLabel()
{
    open();
    QVERIFY(connected());
    m_box->link(0)->abort();
    QTRY_COMPARE(status(), QStringLiteral("Connection status: Disconnected"));
    find<QPushButton>("lanReadButton")->click();
    QCOMPARE(status(), QStringLiteral("Not connected to server."));
}

void TestBoxEditDialog::requests_data()
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
                                  << QStringLiteral("BoxEditDialog: ") + QLatin1String(row.logged);
    }
}

void TestBoxEditDialog::requests()
{
    QFETCH(QString, button);
    QFETCH(QByteArray, expected);
    QFETCH(QString, logged);
    open();
    find<QRadioButton>("lteOnOffOff")->setChecked(true);
    QVERIFY(connected());
    find<QLineEdit>("localTime")->setText(QStringLiteral("2020-02-03 04:05:06"));
    const LogTail log(QStringLiteral("BoxEditDialog"));
    m_form->findChild<QPushButton *>(button)->click();
    QCOMPARE(log.events(), QStringList(logged));
    QTRY_COMPARE(requestsIn(m_box->received(0)).size(), 1);
    QCOMPARE(requestsIn(m_box->received(0)).first(), QJsonDocument::fromJson(expected).object());
}

void TestBoxEditDialog::answers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("fields"); // name, text
    QTest::addColumn<QString>("logged");
    QTest::addColumn<QString>("told");
    const auto pairs = [](const char *words) {
        return QString::fromLatin1(words).split(QLatin1Char(' '));
    };
    QTest::newRow("lan") << QByteArray(R"({"type":"2","pares":{"lanIp":"1.1.1.1","lanMask":"1.1.1.2",
            "lanGateway":"1.1.1.3","lanDns1":"1.1.1.4","lanDns2":"1.1.1.5"}})")
                         << pairs("lanIp 1.1.1.1 lanMask 1.1.1.2 lanGateway 1.1.1.3 lanDns1 1.1.1.4 "
                                  "lanDns2 1.1.1.5")
                         << QStringLiteral("update Lan")
                         << QStringLiteral("LAN Configuration|LAN configuration updated successfully.");
    QTest::newRow("wan") << QByteArray(R"({"type":"3","pares":{"wanDhcp":"0","wanIp":"2.1.1.1",
            "wanMask":"2.1.1.2","wanGateway":"2.1.1.3","wanDns1":"2.1.1.4","wanDns2":"2.1.1.5"}})")
                         << pairs("wanDhcp Disabled wanIp 2.1.1.1 wanMask 2.1.1.2 wanGateway 2.1.1.3 "
                                  "wanDns1 2.1.1.4 wanDns2 2.1.1.5")
                         << QStringLiteral("update Wan")
                         << QStringLiteral("Wan Configuration|Wan configuration updated successfully.");
    QTest::newRow("wifi") << QByteArray(R"({"type":"4","pares":{"wifiOnOff":"OFF","wifiMode":"bridge",
            "ssid":"net","password":"word","wifiDhcp":"0","wifiIp":"3.1.1.1","wifiMask":"3.1.1.2",
            "wifiGateway":"3.1.1.3","wifiDns1":"3.1.1.4","wifiDns2":"3.1.1.5"}})")
                          << pairs("wifiOnOff off wifiMode station wifissid net wifipassword word "
                                   "wifiDhcp Disabled wifiIp 3.1.1.1 wifiMask 3.1.1.2 wifiGateway 3.1.1.3 "
                                   "wifiDns1 3.1.1.4 wifiDns2 3.1.1.5")
                          << QStringLiteral("update Wifi")
                          << QStringLiteral("Wifi Configuration|Wifi configuration updated successfully.");
    QTest::newRow("lte") << QByteArray(R"({"type":"5","pares":{"lteOnOff":"Off","AT1":"a","AT2":"b",
            "AT3":"c","AT4":"d","AT5":"e"}})")
                         << pairs("lteOnOff off at1 a at2 b at3 c at4 d at5 e")
                         << QStringLiteral("update Lte")
                         << QStringLiteral("Lte Configuration|Lte configuration updated successfully.");
    QTest::newRow("ntp") << QByteArray(R"({"type":"8","pares":{"NTP":"4.1.1.1"}})")
                         << pairs("ntpServer 4.1.1.1") << QStringLiteral("update NTP")
                         << QStringLiteral("NTP Configuration|NTP configuration updated successfully.");
    // The clock's update is logged as NTP, on purpose.
    QTest::newRow("time") << QByteArray(R"({"type":"9","pares":{"date":"noon"}})") << pairs("time noon")
                          << QStringLiteral("update NTP")
                          << QStringLiteral("time Configuration|time configuration updated successfully.");
}

void TestBoxEditDialog::answers()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, fields);
    QFETCH(QString, logged);
    QFETCH(QString, told);
    open();
    QVERIFY(connected());
    QMap<int, QVariant> expected = fullRoles();
    for (const Input &input : inputs) {
        const int at = fields.indexOf(QLatin1String(input.name));
        if (at >= 0) {
            expected[input.role] = fields.at(at + 1);
        }
    }
    const LogTail log(QStringLiteral("BoxEditDialog"));
    m_boxes->expect();
    answer(jsonFrame(text));
    QTRY_COMPARE(m_boxes->told(), QStringList(told));
    QCOMPARE(shownRoles(), expected);
    QCOMPARE(log.events(), QStringList(QStringLiteral("BoxEditDialog: ") + logged));
}

void TestBoxEditDialog::answersLeaveTheItemAlone()
{
    open();
    m_boxes->expect();
    emit m_form->protocol()->NTPAllocationDataReceived({QStringLiteral("9.9.9.9")});
    QCOMPARE(shown("ntpServer"), QStringLiteral("9.9.9.9"));
    QCOMPARE(rolesOf(*m_item), fullRoles());
}

void TestBoxEditDialog::unknownDhcpFlagLeavesTheList()
{
    open();
    m_boxes->expect();
    Protocol::WanAllocationData wan;
    wan.wanDhcp = QStringLiteral("2");
    emit m_form->protocol()->wanAllocationDataReceived(wan);
    QCOMPARE(shown("wanDhcp"), QStringLiteral("Enable"));
    m_boxes->expect();
    wan.wanDhcp = QStringLiteral("Disabled");
    emit m_form->protocol()->wanAllocationDataReceived(wan);
    QCOMPARE(shown("wanDhcp"), QStringLiteral("Enable"));
}

void TestBoxEditDialog::unknownSwitchChecksNeitherButton()
{
    open();
    m_boxes->expect();
    emit m_form->protocol()->lteAllocationDataReceived({});
    QCOMPARE(shown("lteOnOff"), QStringLiteral("neither"));
}

void TestBoxEditDialog::hostAddressChoices()
{
    const QList<QHostAddress> addresses{
        QHostAddress(QStringLiteral("127.0.0.1")), QHostAddress(QStringLiteral("10.1.2.3")),
        QHostAddress(QStringLiteral("::1")),       QHostAddress(QStringLiteral("fe80::1")),
        QHostAddress(QStringLiteral("127.9.9.9")), QHostAddress(QStringLiteral("192.168.1.5")),
    };
    QCOMPARE(HostAddressDialog::choices(addresses),
             (QStringList{QStringLiteral("0.0.0.0"), QStringLiteral("10.1.2.3"),
                          QStringLiteral("192.168.1.5")}));
}

void TestBoxEditDialog::hostAddressDialogOffersTheAddressesOfThisMachine()
{
    open();
    m_dialogs->expect([](QWidget *dialog) {
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Select Host Address"));
        QCOMPARE(dialog->minimumSize(), QSize(350, 100));
        QCOMPARE(dialog->findChild<QLabel *>()->text(), QStringLiteral("Please select the host address:"));
        const auto *list = dialog->findChild<QComboBox *>(QStringLiteral("hostAddress"));
        QCOMPARE(list->itemText(0), QStringLiteral("0.0.0.0"));
        QCOMPARE(list->currentIndex(), 0);
        dialog->close();
    });
    find<QPushButton>("changeHostButton")->click();
    // It stays a child of the form.
    QVERIFY(m_form->findChild<HostAddressDialog *>());
}

void TestBoxEditDialog::anyHostAddressStartsANewSession()
{
    open();
    QVERIFY(connected());
    const QPointer<Protocol> first(m_form->protocol());
    m_dialogs->expect([](QWidget *dialog) {
        dialog->findChild<QPushButton *>(QStringLiteral("okButton"))->click();
    });
    m_form->showChangeHostAddressDialog();
    QVERIFY(!first);
    QCOMPARE(m_form->findChild<HostAddressDialog *>()->result(), int(QDialog::Accepted));
    QCOMPARE(m_workspace->messages,
             QStringList(QStringLiteral("Selected address: 0.0.0.0 (No binding)")));
    QCOMPARE(status(), QStringLiteral("Connection status: connecting.."));
    QTRY_COMPARE(m_box->count(), 2);
}

void TestBoxEditDialog::chosenHostAddressIsBoundAndRemembered()
{
    open();
    QVERIFY(connected());
    const auto choose = [](QWidget *dialog) {
        auto *list = dialog->findChild<QComboBox *>(QStringLiteral("hostAddress"));
        list->addItem(QStringLiteral("127.0.11.7"));
        list->setCurrentIndex(list->count() - 1);
        dialog->findChild<QPushButton *>(QStringLiteral("okButton"))->click();
    };
    m_dialogs->expect(choose);
    m_form->showChangeHostAddressDialog();
    QCOMPARE(m_form->hostAddress(), QStringLiteral("127.0.11.7"));
    QCOMPARE(m_workspace->messages, QStringList(QStringLiteral("Selected host address: 127.0.11.7")));
    QCOMPARE(status(), QStringLiteral("Connection status: Waiting for connection."));
    QTRY_COMPARE(m_box->count(), 2);
    QCOMPARE(status(), QStringLiteral("Connection status: Reconnecting..."));
    QCOMPARE(m_box->link(1)->peerAddress(), QHostAddress(QStringLiteral("127.0.11.7")));
}

void TestBoxEditDialog::cancelledHostAddressChangesNothing()
{
    open();
    const Protocol *session = m_form->protocol();
    m_dialogs->expect([](QWidget *dialog) {
        auto *list = dialog->findChild<QComboBox *>(QStringLiteral("hostAddress"));
        list->addItem(QStringLiteral("127.0.11.7"));
        list->setCurrentIndex(list->count() - 1);
        dialog->findChild<QPushButton *>(QStringLiteral("cancelButton"))->click();
    });
    m_form->showChangeHostAddressDialog();
    QCOMPARE(m_form->hostAddress(), QStringLiteral("0.0.0.0"));
    QCOMPARE(m_form->protocol(), session);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestBoxEditDialog::bindingFailureIsToldForTheSessionOfThatMoment()
{
    open();
    const QString told = QStringLiteral("Binding Failed|Failed to bind to IP address: 192.0.2.1");
    // Twice, and still one box a failure.
    for (int time = 0; time < 2; ++time) {
        m_dialogs->expect([](QWidget *dialog) { dialog->close(); });
        m_form->showChangeHostAddressDialog();
    }
    m_form->protocol()->closeConnection();
    m_boxes->expect();
    m_form->protocol()->bindToAddress(QHostAddress(QStringLiteral("192.0.2.1")));
    QCOMPARE(m_boxes->told(), QStringList(told));

    // The session that "OK" starts has nobody listening.
    m_dialogs->expect([](QWidget *dialog) {
        auto *list = dialog->findChild<QComboBox *>(QStringLiteral("hostAddress"));
        list->addItem(QStringLiteral("192.0.2.1"));
        list->setCurrentIndex(list->count() - 1);
        dialog->findChild<QPushButton *>(QStringLiteral("okButton"))->click();
    });
    m_form->showChangeHostAddressDialog();
    QCOMPARE(m_boxes->told(), QStringList(told));
}

void TestBoxEditDialog::actBelowTheNextBox(std::function<void()> act)
{
    m_boxes.reset();
    auto *timer = new QTimer(m_box.get());
    connect(timer, &QTimer::timeout, timer, [timer, act = std::move(act), acted = false]() mutable {
        QWidget *box = QApplication::activeModalWidget();
        if (!acted && box) {
            acted = true;
            act();
        } else if (acted && box) {
            box->close();
        } else if (acted) {
            timer->deleteLater();
        }
    });
    timer->start(1);
}

QStandardItem *TestBoxEditDialog::addProject()
{
    QStandardItem *project = ProjectTree::makeProject(QStringLiteral("plant"), m_dir->path(), QString());
    ProjectTree::appendMissingFolders(project);
    QStandardItem *box = ProjectTree::appendDefinition(
        ProjectTree::childNamed(project, ProjectTree::boxFolder), QStringLiteral("Gate 1"), QString());
    m_model->appendRow(project);
    m_workspace->current = box;
    return project;
}

// The last connection that brings a digest is answered with the verdict; the form's session is the first.
void TestBoxEditDialog::answerTransferWith(const QByteArray &verdict)
{
    m_box->heard = [this, verdict](int index) {
        const QByteArray stream = m_box->received(index);
        if (stream.size() >= 30 && stream.right(30).startsWith(QByteArray::fromHex("1234"))
            && stream.at(stream.size() - 24) == 2) {
            m_box->send(index, verdict);
        }
    };
}

void TestBoxEditDialog::projectIsPushed()
{
    QStandardItem *project = addProject();
    const QByteArray document = QJsonDocument(m_workspace->buildProjectJson(project)).toJson();
    QVERIFY(!document.isEmpty() && document.size() < 1024);
    open();
    QVERIFY(connected());
    answerTransferWith(QByteArray::fromHex("12340300 0a00 03 00 5678"));
    const LogTail log(QStringLiteral("BoxEditDialog"));
    find<QPushButton>("updateProjectButton")->click();
    QCOMPARE(m_workspace->messages, QStringList(QStringLiteral("Checksum Result:Checksum successful.")));
    QCOMPARE(log.events(), QStringList(QStringLiteral("BoxEditDialog: updateProject")));
    QCOMPARE(find<QProgressBar>("progressBar")->value(), 100);
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList());
    // One chunk: 17 bytes, the document, 2 bytes; then the digest's frame.
    QCOMPARE(m_box->received(1).left(4).toHex(), QByteArray("12340300"));
    QCOMPARE(m_box->received(1).mid(17, document.size()), document);
    QCOMPARE(m_box->received(1).size(), 17 + document.size() + 2 + 30);
}

void TestBoxEditDialog::projectPushNeedsAProject()
{
    open();
    QTest::ignoreMessage(QtDebugMsg, "No project selected.");
    m_form->updateProject();
    delete m_form;
    m_form = new BoxEditDialog(m_item.get(), nullptr);
    QTest::ignoreMessage(QtDebugMsg, "No project selected.");
    m_form->updateProject();
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestBoxEditDialog::projectPushNeedsATempFile_data()
{
    QTest::addColumn<bool>("full");
    QTest::newRow("folder is not there") << false;
    QTest::newRow("disk is full") << true;
}

void TestBoxEditDialog::projectPushNeedsATempFile()
{
    QFETCH(bool, full);
    QStandardItem *project = addProject();
    if (full) {
        if (!QFile::exists(QStringLiteral("/dev/full"))) {
            QSKIP("no device that is always full");
        }
        QVERIFY(QFile::link(QStringLiteral("/dev/full"), m_dir->filePath(QStringLiteral("temp.json"))));
    } else {
        project->setData(m_dir->filePath(QStringLiteral("nowhere")), projectPathRole);
    }
    open();
    QVERIFY(connected());
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("^Could not create temp file: \".+\"$")));
    m_form->updateProject();
    QCOMPARE(m_workspace->messages, QStringList());
    QCoreApplication::processEvents();
    QCOMPARE(m_box->count(), 1);
}

void TestBoxEditDialog::unreachableBoxIsToldAndTempFileStays()
{
    addProject();
    m_item->setData(silentAddress, boxIpRole);
    open();
    m_form->updateProject();
    QCOMPARE(m_workspace->messages,
             QStringList(QStringLiteral(
                 "Connection Status:Failed to connect to server for program update.")));
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList(QStringLiteral("temp.json")));
}

void TestBoxEditDialog::programIsPushed()
{
    QFile program(m_dir->filePath(QStringLiteral("gate.bin")));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("a");
    program.close();
    open();
    QVERIFY(connected());
    answerTransferWith(QByteArray::fromHex("12340400 0a00 03 01 5678"));
    m_dialogs->expect([&](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Select Program File"));
        QCOMPARE(dialog->directory().path(), QDir::homePath());
        QCOMPARE(dialog->nameFilters(),
                 (QStringList{QStringLiteral("Program Files (*.bin)"), QStringLiteral("All Files (*.*)")}));
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(program.fileName());
        static_cast<QDialog *>(dialog)->accept();
    });
    const LogTail log(QStringLiteral("BoxEditDialog"));
    find<QPushButton>("updateProgramButton")->click();
    QCOMPARE(m_workspace->messages, QStringList(QStringLiteral("Checksum Result:Checksum failed.")));
    QCOMPARE(log.events(), QStringList(QStringLiteral("BoxEditDialog: updateProgram")));
    QCOMPARE(find<QProgressBar>("progressBar")->value(), 0);
    QCOMPARE(m_box->received(1).toHex(),
             QByteArray::fromHex("12340400 1400 01 01000000 0100 01000000 61 5678"
                                 "12340400 1e00 02 01000000 10 0cc175b9c0f1b6a831c399e269772661 5678")
                 .toHex());
    QVERIFY(QFile::exists(program.fileName()));
}

void TestBoxEditDialog::programPushCanBeCancelled()
{
    open();
    QVERIFY(connected());
    m_dialogs->expect([](QWidget *dialog) { static_cast<QDialog *>(dialog)->reject(); });
    m_form->updateProgram();
    QCOMPARE(m_workspace->messages, QStringList());
    QCOMPARE(m_box->count(), 1);
}

void TestBoxEditDialog::missingProgramIsTold()
{
    QFile program(m_dir->filePath(QStringLiteral("gate.bin")));
    QVERIFY(program.open(QIODevice::WriteOnly));
    open();
    QVERIFY(connected());
    m_dialogs->expect([&](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        connect(dialog, &QDialog::accepted, this, [&program] { program.remove(); });
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(program.fileName());
        static_cast<QDialog *>(dialog)->accept();
    });
    m_boxes->expect();
    m_form->updateProgram();
    QCOMPARE(m_boxes->told(), QStringList(QStringLiteral("Error|Failed to open program file.")));
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestBoxEditDialog::timeoutIsToldInABoxAndInTheDock()
{
    addProject();
    open();
    FileTransfer::Timeouts timeouts;
    timeouts.verdict = 20;
    m_form->setTransferTimeouts(timeouts);
    const LogTail log(QStringLiteral("BoxEditDialog"));
    m_boxes->expect();
    m_form->updateProject();
    QCOMPARE(m_boxes->told(), QStringList(QStringLiteral("Timeout|Timeout while waiting for checksum result.")));
    QCOMPARE(m_workspace->messages,
             QStringList(QStringLiteral("Timeout:Timeout while waiting for checksum result.")));
    QCOMPARE(find<QProgressBar>("progressBar")->value(), 0);
    QCOMPARE(log.events(), QStringList());
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList());
}

void TestBoxEditDialog::transferTakesTheHostAddress()
{
    addProject();
    open();
    m_dialogs->expect([](QWidget *dialog) {
        auto *list = dialog->findChild<QComboBox *>(QStringLiteral("hostAddress"));
        list->addItem(QStringLiteral("192.0.2.1"));
        list->setCurrentIndex(list->count() - 1);
        dialog->findChild<QPushButton *>(QStringLiteral("okButton"))->click();
    });
    m_form->showChangeHostAddressDialog();
    m_workspace->messages.clear();
    m_form->updateProject();
    QCOMPARE(m_workspace->messages,
             QStringList(QStringLiteral("Binding Status: Failed to bind to 192.0.2.1")));
}

void TestBoxEditDialog::sessionLivesOnDuringATransfer()
{
    addProject();
    open();
    QVERIFY(connected());
    m_box->heard = [this](int index) {
        if (index == 1) {
            m_boxes->expect();
            m_box->send(0, jsonFrame(R"({"type":"8","pares":{"NTP":"4.1.1.1"}})"));
            m_box->heard = nullptr;
            connect(m_form->protocol(), &Protocol::NTPAllocationDataReceived, m_box.get(), [this] {
                m_box->send(1, QByteArray::fromHex("12340300 0a00 03 00 5678"));
            });
        }
    };
    m_form->updateProject();
    QCOMPARE(shown("ntpServer"), QStringLiteral("4.1.1.1"));
    QCOMPARE(m_workspace->messages, QStringList(QStringLiteral("Checksum Result:Checksum successful.")));
}

void TestBoxEditDialog::updateProjectAgainDuringTheWait()
{
    addProject();
    open();
    QVERIFY(connected());
    m_box->heard = [this](int index) {
        if (index == 1) {
            m_box->heard = [this](int second) {
                if (second == 2) {
                    m_box->heard = nullptr;
                    m_box->send(1, QByteArray::fromHex("12340300 0a00 03 01 5678"));
                    m_box->send(2, QByteArray::fromHex("12340300 0a00 03 00 5678"));
                }
            };
            QTimer::singleShot(0, m_form, [this] { find<QPushButton>("updateProjectButton")->click(); });
        }
    };
    find<QPushButton>("updateProjectButton")->click();
    QCOMPARE(m_workspace->messages,
             (QStringList{QStringLiteral("Checksum Result:Checksum successful."),
                          QStringLiteral("Checksum Result:Checksum failed.")}));
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList());
}

void TestBoxEditDialog::formMayDie_data()
{
    QTest::addColumn<QByteArray>("moment");
    for (const char *moment : {"while connecting", "after the link broke", "below an update's box",
                               "below a write's box", "below a binding failure's box",
                               "below the host address dialog", "below the file dialog",
                               "while the verdict is awaited", "below the time-out's box"}) {
        QTest::newRow(moment) << QByteArray(moment);
    }
}

void TestBoxEditDialog::formMayDie()
{
    QFETCH(QByteArray, moment);
    addProject();
    open();
    if (moment == "while connecting") {
        delete m_form;
        QTRY_VERIFY(!m_form);
        return;
    }
    QVERIFY(connected());
    const auto kill = [this] { m_form->deleteLater(); };
    if (moment == "after the link broke") {
        m_box->link(0)->abort();
        QTRY_COMPARE(status(), QStringLiteral("Connection status: Disconnected"));
        delete m_form;
    } else if (moment == "below an update's box") {
        actBelowTheNextBox(kill);
        answer(jsonFrame(R"({"type":"8","pares":{"NTP":"4.1.1.1"}})"));
    } else if (moment == "below a write's box") {
        // That box has no parent: it is left after the form has gone.
        actBelowTheNextBox(kill);
        answer(jsonFrame(R"({"type":"108","code":"200"})") + jsonFrame(R"({"type":"109","code":"200"})"));
    } else if (moment == "below a binding failure's box") {
        m_dialogs->expect([](QWidget *dialog) { dialog->close(); });
        m_form->showChangeHostAddressDialog();
        m_form->protocol()->closeConnection();
        actBelowTheNextBox(kill);
        m_form->protocol()->bindToAddress(QHostAddress(QStringLiteral("192.0.2.1")));
    } else if (moment == "below the host address dialog") {
        m_dialogs->expect([this](QWidget *) { delete m_form; });
        m_form->showChangeHostAddressDialog();
    } else if (moment == "below the file dialog") {
        m_dialogs->expect([this](QWidget *) { delete m_form; });
        m_form->updateProgram();
    } else if (moment == "while the verdict is awaited") {
        m_box->heard = [this](int index) {
            if (index == 1) {
                m_form->deleteLater();
            }
        };
        m_form->updateProject();
    } else if (moment == "below the time-out's box") {
        FileTransfer::Timeouts timeouts;
        timeouts.verdict = 20;
        m_form->setTransferTimeouts(timeouts);
        actBelowTheNextBox(kill);
        m_form->updateProject();
    }
    QTRY_VERIFY(!m_form);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestBoxEditDialog::sessionMayBeDroppedBelowItsOwnBox_data()
{
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<bool>("again");
    const QByteArray read = jsonFrame(R"({"type":"8","pares":{"NTP":"4.1.1.1"}})");
    const QByteArray written = jsonFrame(R"({"type":"108","code":"200"})");
    QTest::newRow("an update's, disconnected") << read + read << false;
    QTest::newRow("an update's, connected anew") << read + read << true;
    QTest::newRow("a write's, disconnected") << written + written << false;
    QTest::newRow("a write's, connected anew") << written + written << true;
}

// What the dropped session still had in hand is not told any more.
void TestBoxEditDialog::sessionMayBeDroppedBelowItsOwnBox()
{
    QFETCH(QByteArray, stream);
    QFETCH(bool, again);
    open();
    QVERIFY(connected());
    const QPointer<Protocol> dropped(m_form->protocol());
    actBelowTheNextBox([&] {
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

QTEST_MAIN(TestBoxEditDialog)
#include "tst_boxeditdialog.moc"

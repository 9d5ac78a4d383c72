#include "boxformtest.h"

#include "boxes/hostaddressdialog.h"
#include "logtail.h"
#include "model/itemroles.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QtTest>

// The form of a Box: its fields and what goes between them and the item.
class TestBoxEditDialog : public BoxFormTest
{
    Q_OBJECT
public:
    TestBoxEditDialog()
        : BoxFormTest("127.0.11.1")
    {
    }

private slots:
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
    void fitsANarrowTab();
    void logsItsLife();
};

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
             "saveChanges() disconnectFromServer() connectToServer() "
             "showChangeHostAddressDialog() clearData() rebootDevice() readLanAllocation() "
             "writeLanAllocation() readWanAllocation() writeWanAllocation() "
             "readWifiAllocation() writeWifiAllocation() readLteAllocation() "
             "writeLteAllocation() readNTPAllocation() writeNTPAllocation() "
             "readTimeAllocation() writeTimeAllocation() replaceItem(QStandardItem*) "
             "updateProject() updateProgram()");
    QVERIFY(meta.indexOfSignal("sendDataToMainWindow(Protocol::dataMonitoringData)") >= 0);
}

void TestBoxEditDialog::everyInputIsNamedAfterItsKey()
{
    open();
    QStringList expected{"localTime", "wifiOnOffOn", "wifiOnOffOff", "lteOnOffOn", "lteOnOffOff"};
    for (const BoxInput &input : boxInputs()) {
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
    QCOMPARE(m_form->nameEdit()->objectName(), "name");
    QCOMPARE(m_form->saveButton()->objectName(), "saveButton");
    for (const QPushButton *button : m_form->findChildren<QPushButton *>()) {
        QVERIFY2(!button->objectName().isEmpty(), qPrintable(button->text()));
    }
}

void TestBoxEditDialog::showsTabsButNotWifiAndLte()
{
    open();
    m_form->show();
    QCOMPARE(m_form->windowTitle(), "Edit Box");
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
    QCOMPARE(titles, (QStringList{"Commonly", "LAN", "WAN", "NTP", "Time"}));
    visible.sort();
    QCOMPARE(visible.join(QLatin1Char(' ')),
             "ip lanDns1 lanDns2 lanGateway lanIp lanMask localTime name ntpServer time "
             "wanDns1 wanDns2 wanGateway wanIp wanMask");
    QVERIFY(!find<QComboBox>("model")->isVisible());
    QVERIFY(!find<QComboBox>("model")->isEnabled());
    for (const char *name : {"wifiReadButton", "wifiWriteButton", "lteReadButton", "lteWriteButton"}) {
        QVERIFY(find<QPushButton>(name));
        QVERIFY(!find<QPushButton>(name)->isVisible());
    }
    const auto *area = m_form->findChild<QScrollArea *>();
    QCOMPARE(area->frameShape(), QFrame::NoFrame);
    QCOMPARE(area->styleSheet(), "QScrollArea { border: none; }");
    QCOMPARE(area->widget(), tabs);
}

void TestBoxEditDialog::commonPage()
{
    open();
    QCOMPARE(status(), "Connection status: connecting..");
    QCOMPARE(find<QLabel>("versionLabel")->text(), "Program version: 0.0.0");
    const struct {
        const char *name;
        QString text;
        const char *icon;
    } buttons[] = {
        {"connectButton", "Connect", "Connect"},
        {"disconnectButton", "Disconnect", "Disconnect"},
        {"changeHostButton", QString(), "change_host"},
        {"updateProjectButton", "Update project", "Update project"},
        {"updateProgramButton", "Update program", "Update project"},
        {"rebootButton", "Reboot Device", "Reboot Device"},
        {"lanReadButton", "Read", "read"},
        {"timeWriteButton", "Write", "write"},
        {"saveButton", "Save", "ok"},
        {"cancelButton", "Cancel", "cancel"},
    };
    for (const auto &button : buttons) {
        QCOMPARE(find<QPushButton>(button.name)->text(), button.text);
        const QIcon icon(QString(":/adsdemo/images/%1.svg").arg(QLatin1String(button.icon)));
        const QImage image = icon.pixmap(32).toImage();
        QVERIFY2(!image.isNull(), button.icon);
        QVERIFY2(find<QPushButton>(button.name)->icon().pixmap(32).toImage() == image, button.name);
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
    for (const char *name :
         {"ip", "lanIp", "lanMask", "lanGateway", "lanDns1", "lanDns2", "wanIp", "wanMask", "wanGateway",
          "wanDns1", "wanDns2", "wifiIp", "wifiMask", "wifiGateway", "wifiDns1", "wifiDns2", "ntpServer"}) {
        auto *edit = find<QLineEdit>(name);
        edit->clear();
        QTest::keyClicks(edit, "10.x300.1");
        QCOMPARE(edit->text(), "10.30.1");
    }
}

void TestBoxEditDialog::showsTheItem()
{
    open();
    QCOMPARE(shownRoles(), fullRoles());
}

void TestBoxEditDialog::opensWithLteOnWhateverTheItemHolds()
{
    m_item->setData("off", boxLteOnOffRole);
    open();
    QCOMPARE(shown("lteOnOff"), "on");
    m_form->saveChanges();
    QCOMPARE(m_item->data(boxLteOnOffRole), QVariant("on"));
}

void TestBoxEditDialog::unknownListTextOpensWithTheFirstEntry()
{
    m_item->setData("perhaps", boxWanDhcpRole);
    m_item->setData("enable", boxWifiDhcpRole);
    m_item->setData("MRN-GATE-99", boxModelRole);
    m_item->setData("neither", boxWifiOnOffRole);
    open();
    QCOMPARE(shown("wanDhcp"), "Disabled");
    QCOMPARE(shown("wifiDhcp"), "Disabled");
    QCOMPARE(shown("model"), "MRN-RIM-KX91");
    QCOMPARE(shown("wifiOnOff"), "neither");
}

void TestBoxEditDialog::savesAllFieldsAndSaysSo()
{
    open();
    QStandardItem other;
    m_form->replaceItem(&other);
    for (const BoxInput &input : boxInputs()) {
        if (auto *edit = find<QLineEdit>(input.name)) {
            edit->setText(QString::fromLatin1(input.text));
        } else if (auto *list = find<QComboBox>(input.name)) {
            list->setCurrentText(QString::fromLatin1(input.text));
        }
    }
    find<QLineEdit>("ip")->setText(boxAddress());
    find<QRadioButton>("wifiOnOffOff")->setChecked(true);
    find<QRadioButton>("lteOnOffOn")->setChecked(true);
    const LogTail log("BoxEditDialog");
    m_form->saveChanges();
    QMap<int, QVariant> expected = fullRoles();
    expected[boxWifiOnOffRole] = "off";
    QCOMPARE(inputRolesOf(other), expected);
    QCOMPARE(m_workspace->messages, QStringList("The box 'Gate 1' is saved successfully."));
    QCOMPARE(log.events(), QStringList("BoxEditDialog: save"));
    QVERIFY(m_form);
}

void TestBoxEditDialog::savesWithoutMainWindow()
{
    m_form = new BoxEditDialog(m_item, nullptr);
    m_form->nameEdit()->setText("alone");
    m_form->saveChanges();
    QCOMPARE(m_item->text(), "alone");
}

void TestBoxEditDialog::openingLeavesTheItemAlone()
{
    QStandardItem bare("bare");
    const auto before = inputRolesOf(bare);
    m_form = new BoxEditDialog(&bare, m_workspace);
    QCOMPARE(inputRolesOf(bare), before);
}

void TestBoxEditDialog::replacedItemIsShownAndLteComesFromIt()
{
    QStandardItem bare("bare");
    m_form = new BoxEditDialog(&bare, m_workspace);
    const Protocol *session = m_form->protocol();
    m_item->setData("off", boxLteOnOffRole);
    const LogTail log("BoxEditDialog");
    m_form->replaceItem(m_item);
    QMap<int, QVariant> expected = fullRoles();
    expected[boxLteOnOffRole] = "off";
    QCOMPARE(shownRoles(), expected);
    QCOMPARE(m_form->protocol(), session);
    QCOMPARE(log.events(), QStringList("BoxEditDialog: replace"));
    m_form->saveChanges();
    QCOMPARE(inputRolesOf(*m_item), expected);
    QCOMPARE(bare.text(), "bare");
}

void TestBoxEditDialog::replacedItemKeepsListsWithUnknownTexts()
{
    open();
    QStandardItem bare;
    bare.setData("perhaps", boxWanDhcpRole);
    m_form->replaceItem(&bare);
    QCOMPARE(shown("wanDhcp"), "Enable");
    QCOMPARE(shown("model"), "MRN-GATE-20");
    QCOMPARE(shown("lanIp"), QString());
}

void TestBoxEditDialog::switchOfOneItemDoesNotReachTheNext()
{
    open();
    QStandardItem bare;
    m_form->replaceItem(&bare);
    QCOMPARE(shown("wifiOnOff"), "neither");
    QCOMPARE(shown("lteOnOff"), "neither");
    m_form->saveChanges();
    QCOMPARE(bare.data(boxWifiOnOffRole), QVariant("off"));
}

void TestBoxEditDialog::clearDataEmptiesTheForm()
{
    m_item->setData("off", boxWifiOnOffRole);
    open();
    find<QRadioButton>("lteOnOffOff")->setChecked(true);
    m_form->clearData();
    QMap<int, QVariant> expected;
    for (const BoxInput &input : boxInputs()) {
        expected.insert(input.role, QString());
    }
    expected[boxModelRole] = "MRN-RIM-KX91";
    expected[boxWanDhcpRole] = "Disabled";
    expected[boxWifiDhcpRole] = "Disabled";
    expected[boxWifiModeRole] = "station";
    expected[boxWifiOnOffRole] = "on";
    expected[boxLteOnOffRole] = "on";
    QCOMPARE(shownRoles(), expected);
    QCOMPARE(inputRolesOf(*m_item).value(boxLanIpRole), fullRoles().value(boxLanIpRole));
}

void TestBoxEditDialog::localTimeTicks()
{
    const QDateTime before = QDateTime::currentDateTime();
    open();
    QCOMPARE(shown("localTime"), QString());
    QTRY_VERIFY(!shown("localTime").isEmpty());
    const QDateTime shownTime = QDateTime::fromString(shown("localTime"), "yyyy-MM-dd HH:mm:ss");
    QVERIFY(shownTime.isValid());
    QVERIFY(before.addSecs(-1) < shownTime && shownTime <= QDateTime::currentDateTime());
}

// Save and Cancel stay in sight in a tab that is narrower than the widest page.
void TestBoxEditDialog::fitsANarrowTab()
{
    open();
    QVERIFY2(m_form->minimumSizeHint().width() <= 260 && m_form->minimumWidth() <= 260,
             qPrintable(QString::number(m_form->minimumSizeHint().width())));
}

void TestBoxEditDialog::logsItsLife()
{
    const LogTail log("BoxEditDialog");
    open();
    QCOMPARE(log.events(), QStringList("BoxEditDialog: new-nuilt"));
    delete m_form;
    QCOMPARE(log.events(), (QStringList{"BoxEditDialog: new-nuilt", "BoxEditDialog: destroyed"}));
}

QTEST_MAIN(TestBoxEditDialog)
#include "tst_boxeditdialog.moc"

#include "servers/serverinputdialog.h"

#include "inputdialogs.h"
#include "logtail.h"
#include "messages.h"
#include "projectdump.h"
#include "serverformtest.h"

using namespace ServerFormTest;

class TestServerInputDialog : public QObject
{
    Q_OBJECT
private slots:
    void offersTheProtocolsInOrder();
    void fieldsStandInOrder();
    void firstProtocolIsSetUpInTheEventLoop();
    void protocolDecidesWhatIsShown_data();
    void protocolDecidesWhatIsShown();
    void slotOfAnUnknownProtocolShowsThePortOnly();
    void emptiedDomainStaysEmpty();
    void secondSlaveIsRefused();
    void otherProtocolsMayRepeat_data();
    void otherProtocolsMayRepeat();
    void handsOutWhatWasEntered();
    void handsOutWhatIsHidden();
    void handsOutTheKeyInEachLanguage_data();
    void handsOutTheKeyInEachLanguage();
    void whatCanBeTyped_data();
    void whatCanBeTyped();
    void enterAcceptsAndEscapeRejects();
    void writesItsLifeToTheLog();
};

namespace {

const QString defaultHost = "mqtts.heclouds.com";

QStringList protocols()
{
    return {"MQTT",  "AliMQTT", "OneNetMQTT", "HuaWeiMQTT", "ModbusTCP(Slave)",
            "HJ212", "SL651",   "OpcUaServer"};
}

// The dialog after its first run of the event loop.
class Dialog : public ServerInputDialog
{
    // No Q_OBJECT: its texts are those of the dialog.
public:
    Dialog()
    {
        show();
        QCoreApplication::processEvents();
    }
    template <typename Widget> Widget *in(const char *name) const { return input<Widget>(*this, name); }
    void choose(const QString &protocol) { in<QComboBox>("protocol")->setCurrentText(protocol); }
    QString textOf(const char *name) const { return in<QLineEdit>(name)->text(); }
    // The texts of the labels and the names of the line edits that can be seen, from top to bottom, labels
    // before fields.
    QStringList seen() const
    {
        QMap<QPair<int, int>, QString> texts;
        const auto widgets = findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            const auto *label = qobject_cast<const QLabel *>(widget);
            const bool isInput = qobject_cast<const QLineEdit *>(widget);
            if (widget->isVisible() && (label || isInput)) {
                const QPoint centre = widget->mapTo(this, widget->rect().center());
                texts.insert({centre.y() / 8, centre.x()}, label ? label->text() : widget->objectName());
            }
        }
        return texts.values();
    }
};

} // namespace

void TestServerInputDialog::offersTheProtocolsInOrder()
{
    const Dialog dialog;
    QCOMPARE(dialog.windowTitle(), "Add Server");
    QCOMPARE(ProjectDump::iconBytes(dialog.windowIcon()),
             ProjectDump::iconBytes(":/adsdemo/images/Server.svg"));
    QCOMPARE(InputDialogs::entries(dialog.in<QComboBox>("protocol")), protocols());
    const struct {
        const char *name;
        QString text;
        QString icon;
    } buttons[] = {
        {"okButton", "OK", ":/adsdemo/images/ok.svg"},
        {"cancelButton", "Cancel", ":/adsdemo/images/cancel.svg"},
    };
    for (const auto &button : buttons) {
        QCOMPARE(dialog.in<QPushButton>(button.name)->text(), button.text);
        QCOMPARE(ProjectDump::iconBytes(dialog.in<QPushButton>(button.name)->icon()),
                 ProjectDump::iconBytes(button.icon));
    }
}

void TestServerInputDialog::fieldsStandInOrder()
{
    const Dialog dialog;
    QStringList labels;
    for (const QLabel *label : dialog.findChildren<QLabel *>()) {
        labels.append(label->text() + " -> " + (label->buddy() ? label->buddy()->objectName() : QString()));
    }
    labels.sort();
    QCOMPARE(labels,
             QStringList({"Description: -> description", "Domain Name: -> domainName", "IP Address: -> ip",
                          "Local port number: -> port", "ModbusTCP slave -> ", "Port: -> port",
                          "Protocol: -> protocol", "Server Name: -> name"}));
    QCOMPARE(checkOf(dialog.in<QLineEdit>("name")->validator()), QString());
    QCOMPARE(checkOf(dialog.in<QLineEdit>("description")->validator()), QString());
    QCOMPARE(checkOf(dialog.in<QLineEdit>("ip")->validator()), " host");
    QCOMPARE(checkOf(dialog.in<QLineEdit>("port")->validator()), " -1..65535");
    QCOMPARE(checkOf(dialog.in<QLineEdit>("domainName")->validator()), " host");
}

void TestServerInputDialog::firstProtocolIsSetUpInTheEventLoop()
{
    const ServerInputDialog dialog;
    QCOMPARE(dialog.port(), QString());
    QCoreApplication::processEvents();
    QCOMPARE(dialog.port(), "1883");
    QVERIFY(input<QLineEdit>(dialog, "domainName")->isHidden());
    QVERIFY(!input<QLineEdit>(dialog, "ip")->isHidden());
}

void TestServerInputDialog::protocolDecidesWhatIsShown_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("domain");
    QTest::addColumn<QStringList>("options");
    const QString typed = "typed.example.com";
    const QStringList address{"IP Address:", "ip", "Port:", "port"};
    const QStringList domain{"Port:", "port", "Domain Name:", "domainName"};
    QTest::newRow("MQTT") << "1883" << typed << address;
    QTest::newRow("AliMQTT") << "1883" << QString() << domain;
    QTest::newRow("OneNetMQTT") << "1883" << defaultHost << domain;
    QTest::newRow("HuaWeiMQTT") << "8883" << QString() << domain;
    QTest::newRow("ModbusTCP(Slave)")
        << "502" << typed << QStringList({"Local port number:", "port", "ModbusTCP slave"});
    QTest::newRow("HJ212") << QString() << typed << address;
    QTest::newRow("SL651") << QString() << typed << address;
    QTest::newRow("OpcUaServer") << "4840" << typed << QStringList({"Port:", "port"});
}

// From each other protocol, with a port and a domain typed there.
void TestServerInputDialog::protocolDecidesWhatIsShown()
{
    QFETCH(QString, port);
    QFETCH(QString, domain);
    QFETCH(QStringList, options);
    const QString protocol = QString::fromLatin1(QTest::currentDataTag());
    const QStringList above{"Server Name:", "name", "Description:", "description", "Protocol:"};
    for (const QString &from : protocols()) {
        if (from == protocol) {
            continue;
        }
        Dialog dialog;
        dialog.choose(from);
        dialog.in<QLineEdit>("port")->setText("typed");
        dialog.in<QLineEdit>("domainName")->setText("typed.example.com");
        dialog.choose(protocol);
        QCoreApplication::processEvents();
        QCOMPARE(dialog.port(), port);
        QCOMPARE(dialog.domain(), domain);
        QCOMPARE(dialog.seen(), above + options);
    }
}

void TestServerInputDialog::slotOfAnUnknownProtocolShowsThePortOnly()
{
    Dialog dialog;
    QVERIFY(QMetaObject::invokeMethod(&dialog, "updateProtocolOptions", Q_ARG(QString, "mqtt")));
    QVERIFY(dialog.in<QLineEdit>("port")->isVisible());
    QVERIFY(!dialog.in<QLineEdit>("ip")->isVisible());
    QVERIFY(!dialog.in<QLineEdit>("domainName")->isVisible());
    QCOMPARE(dialog.port(), "1883");
    QVERIFY(QMetaObject::invokeMethod(&dialog, "updateProtocolOptions", Q_ARG(QString, "OpcUaServer")));
    QCOMPARE(dialog.port(), "4840");
}

void TestServerInputDialog::emptiedDomainStaysEmpty()
{
    Dialog dialog;
    dialog.choose("HuaWeiMQTT");
    QTest::keyClicks(dialog.in<QLineEdit>("domainName"), "iot.example.com");
    QCOMPARE(dialog.domain(), "iot.example.com");
    dialog.choose("AliMQTT");
    QCOMPARE(dialog.domain(), QString());
    dialog.choose("MQTT");
    QCOMPARE(dialog.domain(), QString());
    QVERIFY(!dialog.in<QLineEdit>("domainName")->isVisible());
}

void TestServerInputDialog::secondSlaveIsRefused()
{
    Dialog dialog;
    dialog.setExistingProtocols({"MQTT", "ModbusTCP(Slave)"});
    dialog.choose("OpcUaServer");
    Messages messages;
    messages.expect();
    dialog.choose("ModbusTCP(Slave)");
    QCOMPARE(messages.told(),
             QStringList("Warning|A ModbusTCP(Slave) file already exists. You cannot create another one."));
    QCOMPARE(dialog.protocol(), "MQTT");
    QCOMPARE(dialog.in<QComboBox>("protocol")->currentIndex(), 0);
    QCOMPARE(dialog.port(), "1883");
    QVERIFY(dialog.in<QLineEdit>("ip")->isVisible());
}

void TestServerInputDialog::otherProtocolsMayRepeat_data()
{
    QTest::addColumn<QStringList>("existing");
    for (const QString &protocol : protocols()) {
        QStringList existing = protocols();
        existing.removeOne("ModbusTCP(Slave)");
        if (protocol == QLatin1String("ModbusTCP(Slave)")) {
            existing += {"modbustcp(slave)", "ModbusTCP(Slave) "};
        }
        QTest::newRow(qPrintable(protocol)) << existing;
    }
    QTest::newRow("HJ212 beside a slave") << QStringList("ModbusTCP(Slave)");
}

void TestServerInputDialog::otherProtocolsMayRepeat()
{
    QFETCH(QStringList, existing);
    const QString protocol = QString::fromLatin1(QTest::currentDataTag()).section(QLatin1Char(' '), 0, 0);
    Dialog dialog;
    dialog.setExistingProtocols(existing);
    Messages messages;
    dialog.choose("SL651");
    dialog.choose(protocol);
    QCOMPARE(messages.told(), QStringList());
    QCOMPARE(dialog.protocol(), protocol);
}

void TestServerInputDialog::handsOutWhatWasEntered()
{
    Dialog dialog;
    QTest::keyClicks(dialog.in<QLineEdit>("name"), "up 1");
    QTest::keyClicks(dialog.in<QLineEdit>("description"), "to the broker");
    QTest::keyClicks(dialog.in<QLineEdit>("ip"), "192.168.1.70");
    dialog.in<QPushButton>("okButton")->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.name(), "up 1");
    QCOMPARE(dialog.description(), "to the broker");
    QCOMPARE(dialog.protocol(), "MQTT");
    QCOMPARE(dialog.ip(), "192.168.1.70");
    QCOMPARE(dialog.port(), "1883");
    QCOMPARE(dialog.domain(), QString());
}

void TestServerInputDialog::handsOutWhatIsHidden()
{
    Dialog dialog;
    dialog.in<QLineEdit>("ip")->setText("10.0.0.1");
    dialog.choose("OneNetMQTT");
    dialog.choose("OpcUaServer");
    QVERIFY(!dialog.in<QLineEdit>("ip")->isVisible());
    QCOMPARE(dialog.ip(), "10.0.0.1");
    QCOMPARE(dialog.domain(), defaultHost);
}

void TestServerInputDialog::handsOutTheKeyInEachLanguage_data()
{
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("port");
    const auto add = [](const char *protocol, const QString &shown, const QString &port) {
        QTest::newRow(protocol) << shown << port;
    };
    add("MQTT", "MQTT", "1883");
    add("AliMQTT", "*AliMQTT", "1883");
    add("OneNetMQTT", "*OneNetMQTT", "1883");
    add("HuaWeiMQTT", "*HuaWeiMQTT", "8883");
    add("ModbusTCP(Slave)", "ModbusTCP(Slave)", "502");
    add("HJ212", "HJ212", QString());
    add("SL651", "SL651", QString());
    add("OpcUaServer", "OpcUaServer", "4840");
}

void TestServerInputDialog::handsOutTheKeyInEachLanguage()
{
    QFETCH(QString, shown);
    QFETCH(QString, port);
    const Marked marked;
    Dialog dialog;
    const QString key = QString::fromLatin1(QTest::currentDataTag());
    dialog.in<QComboBox>("protocol")->setCurrentIndex(protocols().indexOf(key));
    QCOMPARE(dialog.in<QComboBox>("protocol")->currentText(), shown);
    QCOMPARE(dialog.protocol(), key);
    QCOMPARE(dialog.port(), port);
}

void TestServerInputDialog::whatCanBeTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    const auto add = [](const char *name, const char *what, const QString &typed, const QString &shown) {
        QTest::addRow("%s: %s", name, what) << typed << shown;
    };
    add("name", "anything", "电 a/_", "电 a/_");
    add("description", "anything", "电 a/_", "电 a/_");
    for (const char *name : {"ip", "domainName"}) {
        add(name, "dotted", "192.168.1.70", "192.168.1.70");
        add(name, "host", "mqtt.example.com", "mqtt.example.com");
        add(name, "others", "电a_b c/", "abc");
    }
    add("port", "-1", "-1", "-1");
    add("port", "minus", "-", "-");
    add("port", "letters", "a1b2", "12");
    add("port", "highest", "655350", "65535");
}

void TestServerInputDialog::whatCanBeTyped()
{
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    const QString name = QString::fromLatin1(QTest::currentDataTag()).section(QLatin1Char(':'), 0, 0);
    const Dialog dialog;
    auto *edit = dialog.in<QLineEdit>(name.toLatin1().constData());
    edit->clear();
    for (const QChar &character : typed) {
        edit->insert(character);
    }
    QCOMPARE(edit->text(), shown);
}

void TestServerInputDialog::enterAcceptsAndEscapeRejects()
{
    Dialog dialog;
    InputDialogs::compareEnterAndEscape(&dialog);
}

void TestServerInputDialog::writesItsLifeToTheLog()
{
    const LogTail log("ServerInputDialog");
    {
        const ServerInputDialog dialog;
    }
    QCOMPARE(log.events(), QStringList({"ServerInputDialog: new-nuilt", "ServerInputDialog: destroyed"}));
}

QTEST_MAIN(TestServerInputDialog)
#include "tst_serverinputdialog.moc"

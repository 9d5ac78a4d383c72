#include "serverformtest.h"

using namespace ServerFormTest;

// What the forms of the MQTT family share beyond the plain fields.
class TestMqttForms : public FormTest
{
    Q_OBJECT
public:
    TestMqttForms()
        : FormTest("up", serverProtocolRole, QString())
    {
    }
private slots:
    void unknownQosShowsAsOne_data();
    void unknownQosShowsAsOne();
    void cloudProviderIsShownInTheUsersLanguage_data();
    void cloudProviderIsShownInTheUsersLanguage();
};

void TestMqttForms::unknownQosShowsAsOne_data()
{
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("qos");
    QTest::addColumn<QString>("shown");
    const struct {
        const char *protocol;
        QStringList levels;
    } rows[] = {
        {"MQTT", {"0", "1", "2"}},
        {"AliMQTT", {"0", "1", "2"}},
        {"OneNetMQTT", {"0", "1"}},
        {"HuaWeiMQTT", {"0", "1", "2"}},
    };
    for (const auto &row : rows) {
        for (const char *stored : {"0", "1", "2", "3", "", "01", "many"}) {
            const QString qos = QLatin1String(stored);
            QTest::addRow("%s, \"%s\"", row.protocol, stored)
                << QString::fromLatin1(row.protocol) << qos << (row.levels.contains(qos) ? qos : "1");
        }
    }
}

void TestMqttForms::unknownQosShowsAsOne()
{
    QFETCH(QString, protocol);
    QFETCH(QString, qos);
    QFETCH(QString, shown);
    m_item->setData(protocol, serverProtocolRole);
    m_item->setData(qos, serverQosRole);
    QStandardItem *other = addItem("other");
    other->setData("0", serverQosRole);
    const std::unique_ptr<ServerForm> opened(make(protocol, m_item, nullptr));
    QCOMPARE(list(*opened, "qos")->currentText(), shown);
    const std::unique_ptr<ServerForm> rebound(make(protocol, other, nullptr));
    rebound->replaceItem(m_item);
    QCOMPARE(list(*rebound, "qos")->currentText(), shown);
    rebound->saveChanges();
    QCOMPARE(m_item->data(serverQosRole), QVariant(shown));
}

void TestMqttForms::cloudProviderIsShownInTheUsersLanguage_data()
{
    QTest::addColumn<QString>("shown");
    QTest::newRow("AliMQTT") << "*AliMQTT";
    QTest::newRow("OneNetMQTT") << "*OneNetMQTT";
    QTest::newRow("HuaWeiMQTT") << "*HuaWeiMQTT";
}

// Whatever is shown, the plain key is stored.
void TestMqttForms::cloudProviderIsShownInTheUsersLanguage()
{
    QFETCH(QString, shown);
    const QString protocol = QString::fromLatin1(QTest::currentDataTag());
    m_item->setData(protocol, serverProtocolRole);
    const Marked marked;
    const std::unique_ptr<ServerForm> dialog(make(protocol, m_item, nullptr));
    QCOMPARE(dialog->windowTitle(), "*Edit Server");
    QCOMPARE(list(*dialog, "protocol")->currentText(), shown);
    dialog->replaceItem(m_item);
    dialog->saveChanges();
    QCOMPARE(m_item->data(serverProtocolRole).toString(), protocol);
    dialog->show();
    const QComboBox *key = list(*dialog, "protocolKey");
    QVERIFY(!key->isVisible());
    QCOMPARE(dialog->findChild<QFormLayout *>()->indexOf(list(*dialog, "protocolKey")), -1);
    QCOMPARE(key->currentText(), protocol);
}

QTEST_MAIN(TestMqttForms)
#include "tst_mqttforms.moc"

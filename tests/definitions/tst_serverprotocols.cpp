#include "definitions/serverprotocols.h"

#include <QFile>
#include <QtTest>

class TestServerProtocols : public QObject
{
    Q_OBJECT
private slots:
    void offeredInOrder();
    void iconGoesByTheProtocol_data();
    void iconGoesByTheProtocol();
    void onlyTheSlaveIsSingle();
};

void TestServerProtocols::offeredInOrder()
{
    QStringList keys;
    for (const ServerProtocol &protocol : ServerProtocols::all()) {
        keys.append(protocol.key);
        QCOMPARE(protocol.shownName("ServerInputDialog"), QString(protocol.key)); // no catalogue is loaded
    }
    QCOMPARE(keys.join(QLatin1Char('|')),
             "MQTT|AliMQTT|OneNetMQTT|HuaWeiMQTT|ModbusTCP(Slave)|HJ212|SL651|OpcUaServer");
}

void TestServerProtocols::iconGoesByTheProtocol_data()
{
    QTest::addColumn<QString>("icon");
    QTest::newRow("MQTT") << "MQTT.svg";
    QTest::newRow("AliMQTT") << "ali.svg";
    QTest::newRow("OneNetMQTT") << "onenet.svg";
    QTest::newRow("HuaWeiMQTT") << "HuaWei.svg";
    QTest::newRow("ModbusTCP(Slave)") << "server-file.svg";
    QTest::newRow("HJ212") << "HJ212.svg";
    QTest::newRow("SL651") << "SL651.svg";
    QTest::newRow("OpcUaServer") << "OpcUaServer.svg";
    QTest::newRow("mqtt") << QString();
    QTest::newRow("") << QString();
}

void TestServerProtocols::iconGoesByTheProtocol()
{
    QFETCH(QString, icon);
    const QString images = ":/adsdemo/images/";
    QCOMPARE(ServerProtocols::icon(QString::fromLatin1(QTest::currentDataTag())),
             icon.isEmpty() ? QString() : images + icon);
    QVERIFY(icon.isEmpty() || QFile::exists(QString(SOURCE_ROOT "/src/resources/images/") + icon));
}

void TestServerProtocols::onlyTheSlaveIsSingle()
{
    for (const ServerProtocol &protocol : ServerProtocols::all()) {
        QCOMPARE(protocol.isSingle, protocol.key == QLatin1String("ModbusTCP(Slave)"));
    }
}

QTEST_GUILESS_MAIN(TestServerProtocols)
#include "tst_serverprotocols.moc"

#include "definitions/protocols.h"

#include <QFile>
#include <QtTest>

class TestProtocols : public QObject
{
    Q_OBJECT
private slots:
    void standardIconFollowsTheProtocol_data();
    void standardIconFollowsTheProtocol();
};

void TestProtocols::standardIconFollowsTheProtocol_data()
{
    QTest::addColumn<QString>("icon");
    QTest::newRow("Modbus") << "Modbus.svg";
    QTest::newRow("DLT645") << "DLT645.svg";
    QTest::newRow("DIDO") << "dio.svg";
    QTest::newRow("CustomPoll") << "CustomPoll.svg";
    QTest::newRow("OpcUA") << "OpcUa.svg";
    QTest::newRow("modbus") << QString();
    QTest::newRow("Profibus") << QString();
    QTest::newRow("") << QString();
}

void TestProtocols::standardIconFollowsTheProtocol()
{
    QFETCH(QString, icon);
    const QString images = ":/adsdemo/images/";
    QCOMPARE(Protocols::standardIcon(QString::fromLatin1(QTest::currentDataTag())),
             icon.isEmpty() ? QString() : images + icon);
    QVERIFY(icon.isEmpty() || QFile::exists(QString(SOURCE_ROOT "/src/resources/images/") + icon));
}

QTEST_GUILESS_MAIN(TestProtocols)
#include "tst_protocols.moc"

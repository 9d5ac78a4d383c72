#include "definitions/plccatalogue.h"

#include <QtTest>

class TestPlcCatalogue : public QObject
{
    Q_OBJECT
private slots:
    void pairsShowTheirGroups_data();
    void pairsShowTheirGroups();
    void noOtherPairIsKnown();
    void linkGoesByTheProtocol();
    void documentKnowsTwoMorePairs();
    void manufacturersInOrder();
    void protocolsInOrder_data();
    void protocolsInOrder();
    void modelsOfProtocols();
    void modelsShowTheirSettings_data();
    void modelsShowTheirSettings();
    void allenBradleyModelsHaveCodes();
    void seriesOfMakers_data();
    void seriesOfMakers();
    void portGoesByTheProtocol_data();
    void portGoesByTheProtocol();
};

namespace {

struct Pair {
    QString manufacturer;
    QString protocol;
    PlcGroup link;
    PlcGroup group;
};

// clang-format off
const Pair pairs[] = {
    {"Siemens", "S7", PlcGroup::Network, PlcGroup::S7Model},
    {"Siemens", "PPI", PlcGroup::Serial, PlcGroup::Ppi},
    {"Siemens", "PPI On TCP", PlcGroup::Network, PlcGroup::Ppi},
    {"Mitsubishi", "EtherNet/IP", PlcGroup::Network, PlcGroup::MitsubishiEip},
    {"Mitsubishi", "MC-3C", PlcGroup::Serial, PlcGroup::Mc3c},
    {"Mitsubishi", "MC-1E", PlcGroup::Network, PlcGroup::Mc1e},
    {"Mitsubishi", "MC-3E", PlcGroup::Network, PlcGroup::Mc3e},
    {"Mitsubishi", "FxLinks", PlcGroup::Serial, PlcGroup::FxLinks},
    {"Mitsubishi", "FxSerial", PlcGroup::Serial, PlcGroup::FxSerial},
    {"Omron", "Fins", PlcGroup::Network, PlcGroup::Fins},
    {"Omron", "EtherNet/IP", PlcGroup::Network, PlcGroup::OmronEip},
    {"Omron", "HostLink", PlcGroup::Serial, PlcGroup::HostLink},
    {"Omron", "HostLink On TCP", PlcGroup::Serial, PlcGroup::HostLink},
    {"AllenBradley", "EtherNet/IP", PlcGroup::Network, PlcGroup::AllenBradleyEip},
    {"AllenBradley", "MicroCIP", PlcGroup::Network, PlcGroup::AllenBradleyEip},
    {"AllenBradley", "DF1", PlcGroup::Serial, PlcGroup::Df1},
    {"Beckhoff", "Ads", PlcGroup::Network, PlcGroup::Ads},
    {"Inovance", "Modbus TCP", PlcGroup::Network, PlcGroup::Inovance},
    {"Inovance", "Modbus RTU On TCP", PlcGroup::Network, PlcGroup::Inovance},
    {"Inovance", "Modbus RTU", PlcGroup::Serial, PlcGroup::Inovance},
    {"XinJE", "Modbus TCP", PlcGroup::Network, PlcGroup::Xinje},
    {"XinJE", "Modbus RTU On TCP", PlcGroup::Network, PlcGroup::Xinje},
    {"XinJE", "Modbus RTU", PlcGroup::Serial, PlcGroup::Xinje},
    {"Modbus", "Modbus TCP", PlcGroup::Network, PlcGroup::Modbus},
    {"Modbus", "Modbus RTU", PlcGroup::Serial, PlcGroup::Modbus},
    {"Delta", "Modbus TCP", PlcGroup::Network, PlcGroup::Delta},
    {"Delta", "Modbus RTU", PlcGroup::Serial, PlcGroup::Delta},
};
// clang-format on

} // namespace

void TestPlcCatalogue::pairsShowTheirGroups_data()
{
    QTest::addColumn<int>("place");
    int place = 0;
    for (const Pair &pair : pairs) {
        QTest::addRow("%s %s", qPrintable(pair.manufacturer), qPrintable(pair.protocol)) << place++;
    }
}

void TestPlcCatalogue::pairsShowTheirGroups()
{
    QFETCH(int, place);
    const Pair &pair = pairs[place];
    const PlcCatalogue::Entry *entry = PlcCatalogue::find(pair.manufacturer, pair.protocol);
    QVERIFY(entry);
    QVERIFY(entry->link == pair.link);
    QVERIFY(entry->group == pair.group);
}

// A protocol of one manufacturer means nothing to another, and case counts.
void TestPlcCatalogue::noOtherPairIsKnown()
{
    const auto isPair = [](const QString &manufacturer, const QString &protocol) {
        return std::any_of(std::begin(pairs), std::end(pairs), [&](const Pair &pair) {
            return pair.manufacturer == manufacturer && pair.protocol == protocol;
        });
    };
    const QStringList manufacturers = PlcCatalogue::manufacturers() << "Modbus";
    for (const QString &manufacturer : manufacturers) {
        const QStringList protocols = PlcCatalogue::protocols(manufacturer);
        for (const QString &protocol : protocols) {
            QVERIFY2(isPair(manufacturer, protocol), qPrintable(manufacturer + ' ' + protocol));
        }
    }
    for (const Pair &one : pairs) {
        for (const Pair &other : pairs) {
            QCOMPARE(PlcCatalogue::find(one.manufacturer, other.protocol) != nullptr,
                     isPair(one.manufacturer, other.protocol));
        }
    }
    QVERIFY(!PlcCatalogue::find("siemens", "S7"));
    QVERIFY(!PlcCatalogue::find("Siemens", "s7"));
    QVERIFY(!PlcCatalogue::find("Siemens", "Empty"));
    QVERIFY(!PlcCatalogue::find("Modbus", "Modbus RTU On TCP"));
    QVERIFY(!PlcCatalogue::find("Delta", "Modbus RTU On TCP"));
}

void TestPlcCatalogue::linkGoesByTheProtocol()
{
    for (const Pair &pair : pairs) {
        QVERIFY2(PlcCatalogue::linkOf(pair.protocol) == pair.link, qPrintable(pair.protocol));
    }
    for (const char *unknown : {"Empty", "s7", ""}) {
        QVERIFY2(PlcCatalogue::linkOf(QLatin1String(unknown)) == PlcGroup::None, unknown);
    }
}

void TestPlcCatalogue::documentKnowsTwoMorePairs()
{
    for (const Pair &pair : pairs) {
        QVERIFY(PlcCatalogue::groupInDocument(pair.manufacturer, pair.protocol) == pair.group);
    }
    const QString onTcp = "Modbus RTU On TCP";
    QVERIFY(PlcCatalogue::groupInDocument("Modbus", onTcp) == PlcGroup::Modbus);
    QVERIFY(PlcCatalogue::groupInDocument("Delta", onTcp) == PlcGroup::Delta);
    for (const char *other : {"Siemens", "Omron", "Beckhoff", "Panasonic", ""}) {
        QVERIFY2(PlcCatalogue::groupInDocument(QLatin1String(other), onTcp) == PlcGroup::None, other);
    }
}

void TestPlcCatalogue::manufacturersInOrder()
{
    QCOMPARE(PlcCatalogue::manufacturers().join(QLatin1Char('|')),
             "Siemens|Mitsubishi|Omron|AllenBradley|XinJE|Beckhoff|Inovance|Delta");
}

void TestPlcCatalogue::protocolsInOrder_data()
{
    QTest::addColumn<QString>("protocols");
    QTest::newRow("Siemens") << "S7|PPI";
    QTest::newRow("Mitsubishi") << "EtherNet/IP|MC-3C|MC-1E|MC-3E|FxLinks|FxSerial";
    QTest::newRow("Omron") << "Fins|EtherNet/IP|HostLink";
    QTest::newRow("AllenBradley") << "EtherNet/IP|DF1";
    QTest::newRow("XinJE") << "Modbus TCP|Modbus RTU";
    QTest::newRow("Beckhoff") << "Ads";
    QTest::newRow("Inovance") << "Modbus TCP|Modbus RTU";
    QTest::newRow("Modbus") << "Modbus TCP|Modbus RTU";
    QTest::newRow("Delta") << "Modbus TCP|Modbus RTU";
    QTest::newRow("Panasonic") << "Empty";
    QTest::newRow("delta") << "Empty";
    QTest::newRow("") << "Empty";
}

void TestPlcCatalogue::protocolsInOrder()
{
    QFETCH(QString, protocols);
    QCOMPARE(PlcCatalogue::protocols(QLatin1String(QTest::currentDataTag())).join(QLatin1Char('|')),
             protocols);
}

void TestPlcCatalogue::modelsOfProtocols()
{
    QCOMPARE(PlcCatalogue::models("S7").join(QLatin1Char('|')), "S200|S1200|S300|S400|S1500|S200Smart");
    for (const Pair &pair : pairs) {
        if (pair.protocol != "S7") {
            QCOMPARE(PlcCatalogue::models(pair.protocol), QStringList("Empty"));
        }
    }
    QCOMPARE(PlcCatalogue::models("Empty"), QStringList("Empty"));
}

void TestPlcCatalogue::modelsShowTheirSettings_data()
{
    QTest::addColumn<int>("group");
    QTest::newRow("S200") << int(PlcGroup::S7Tsap);
    QTest::newRow("S1200") << int(PlcGroup::S7Rack);
    QTest::newRow("S300") << int(PlcGroup::S7Rack);
    QTest::newRow("S400") << int(PlcGroup::S7Rack);
    QTest::newRow("S1500") << int(PlcGroup::S7Rack);
    QTest::newRow("S200Smart") << int(PlcGroup::None);
    QTest::newRow("Empty") << int(PlcGroup::None);
    QTest::newRow("") << int(PlcGroup::None);
}

void TestPlcCatalogue::modelsShowTheirSettings()
{
    QFETCH(int, group);
    QCOMPARE(int(PlcCatalogue::groupOfModel(QLatin1String(QTest::currentDataTag()))), group);
}

void TestPlcCatalogue::allenBradleyModelsHaveCodes()
{
    QStringList models;
    for (const PlcCatalogue::Model &model : PlcCatalogue::allenBradleyModels()) {
        models.append(QString::fromUtf8(model.text) + QLatin1Char('=') + model.code);
    }
    QCOMPARE(models,
             QStringList({"ControlLogix系列=controllogix", "CompactLogix系列=compactlogix",
                          "MicroLogix系列=micrologix", "Logix5000系列=lgxplc5", "Micro800系列=micro800",
                          "SLC 500=slc500"}));
}

void TestPlcCatalogue::seriesOfMakers_data()
{
    QTest::addColumn<int>("maker");
    QTest::addColumn<QString>("series");
    QTest::newRow("XinJE") << int(PlcGroup::Xinje) << "XD3E|XD5E|XDH|XG";
    QTest::newRow("Inovance") << int(PlcGroup::Inovance) << "AM|H3U|H5U";
    QTest::newRow("Modbus") << int(PlcGroup::Modbus) << "standard";
    QTest::newRow("Delta") << int(PlcGroup::Delta) << "AH|AS|DVP";
    QTest::newRow("another group") << int(PlcGroup::S7Model) << "";
}

void TestPlcCatalogue::seriesOfMakers()
{
    QFETCH(int, maker);
    QFETCH(QString, series);
    QCOMPARE(PlcCatalogue::series(PlcGroup(maker)).join(QLatin1Char('|')), series);
}

void TestPlcCatalogue::portGoesByTheProtocol_data()
{
    QTest::addColumn<QString>("port");
    QTest::newRow("Modbus TCP") << "502";
    QTest::newRow("Modbus RTU") << "502";
    QTest::newRow("Modbus RTU On TCP") << "502";
    QTest::newRow("EtherNet/IP") << "44818";
    QTest::newRow("MC-1E") << "";
    QTest::newRow("MC-3E") << "";
    QTest::newRow("Fins") << "9600";
    QTest::newRow("Ads") << "48898";
    for (const char *other : {"S7", "PPI", "PPI On TCP", "MC-3C", "FxLinks", "FxSerial", "HostLink",
                              "HostLink On TCP", "MicroCIP", "DF1", "Empty", "fins", ""}) {
        QTest::newRow(other) << "102";
    }
}

void TestPlcCatalogue::portGoesByTheProtocol()
{
    QFETCH(QString, port);
    QCOMPARE(PlcCatalogue::defaultPort(QLatin1String(QTest::currentDataTag())), port);
}

QTEST_GUILESS_MAIN(TestPlcCatalogue)
#include "tst_plccatalogue.moc"

#include "documenttest.h"
#include "language.h"
#include "tablerow.h"

class TestDlt645Writer : public QObject
{
    Q_OBJECT
private slots:
    void dlt645Standard();
    void dlt645PointFollowsItsLabel_data();
    void dlt645PointFollowsItsLabel();
    void dlt645LabelsAreComparedInTheLanguageInForce();
    void firstOfEqualDlt645LabelsWins();
    void protocolVersionIsTheOneNumber();
};

void TestDlt645Writer::dlt645Standard()
{
    Standard standard("DLT645");
    standard.set(standardRtsEnableRole, "true");
    standard.setGroups({{"DLT645-1",
                         {row({"AAAAAAAAAAAA", "DLT645_2007"}),
                          {true, "A-phase voltage", "Ua"},
                          {"false", "C-phase positive active energy", QString()},
                          {"true", QString(), "nameless"},
                          {"true", "no such item", "n"}}},
                        {"DLT645-2",
                         {row({"000012345678", "DLT645_1997"}),
                          {"true", "Reverse active total electrical energy", "E-"},
                          {false, "C-phase positive active energy", "x"},
                          {"true"},
                          {}}}});
    QCOMPARE(standard.bytes(), onDisk(R"({"name": "M", "protocol": "DLT645",
        "parameter": {"serialport": "v147", "baudRate": "v148", "dataBit": "v149", "stopBit": "v150",
                      "parityBit": "v151", "rtsEnable": "1", "communicationTimeout": "v153",
                      "communicationGap": "v154", "collectionInterval": "v146"},
        "datas": [
            {"slaveAddress": "AAAAAAAAAAAA", "protocolVersion": 1, "datas": [
                {"select": "true", "name": "Ua", "addr": "02010100", "dataType": "XXX.X"},
                {"select": "false", "name": "", "addr": "003D0000", "dataType": "XXXXXX.XX"},
                {"select": "true"},
                {"select": "true", "name": "n"}]},
            {"slaveAddress": "000012345678", "protocolVersion": 2, "datas": [
                {"select": "true", "name": "E-", "addr": "9020", "dataType": "XXXXXX.XX "},
                {"select": "false", "name": "x"},
                {"select": "true"},
                {"select": ""}]}]})"));
}

void TestDlt645Writer::dlt645PointFollowsItsLabel_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QByteArray>("point");
    const QString reactive = "Reactive constant of electric meter";
    tableRow("2007", "DLT645_2007", reactive,
             QByteArray(R"({"select": "s", "name": "n", "addr": "0400040A", "dataType": "XXXXXX"})"));
    tableRow("1997", "DLT645_1997", reactive,
             QByteArray(R"({"select": "s", "name": "n", "addr": "C031", "dataType": "NNNNNN"})"));
    tableRow("other version text is 1997", "2007", reactive,
             QByteArray(R"({"select": "s", "name": "n", "addr": "C031", "dataType": "NNNNNN"})"));
    tableRow("2007 only, in 1997", "DLT645_1997", "Instantaneous total apparent power",
             QByteArray(R"({"select": "s", "name": "n"})"));
    tableRow("other case", "DLT645_2007", "a-phase voltage", QByteArray(R"({"select": "s", "name": "n"})"));
    tableRow("no label", "DLT645_2007", QString(), QByteArray(R"({"select": "s"})"));
}

void TestDlt645Writer::dlt645PointFollowsItsLabel()
{
    QFETCH(QString, version);
    QFETCH(QString, label);
    QFETCH(QByteArray, point);
    Standard standard("DLT645");
    standard.setGroups({{"DLT645-1", rows({{"AA", version}, {"s", label, "n"}})}});
    const QJsonArray points = standard.datas().at(0).toObject().value("datas").toArray();
    QCOMPARE(points.size(), 1);
    QCOMPARE(QJsonDocument(points.at(0).toObject()).toJson(), onDisk(point.constData()));
}

static QStringList addressesOf(const QStringList &labels, const QString &version)
{
    Standard standard("DLT645");
    RowList list{row({"AA", version})};
    for (const QString &label : labels) {
        list.append(row({"true", label, QString()}));
    }
    standard.setGroups({{"DLT645-1", list}});
    QStringList addresses;
    const QJsonArray points = standard.datas().at(0).toObject().value("datas").toArray();
    for (const QJsonValue &point : points) {
        addresses.append(point.toObject().value("addr").toString("absent"));
    }
    return addresses;
}

void TestDlt645Writer::dlt645LabelsAreComparedInTheLanguageInForce()
{
    const QStringList labels{"A-phase voltage", "A相电压"};
    QCOMPARE(addressesOf(labels, "DLT645_2007"), QStringList({"02010100", "absent"}));
    {
        const Language chinese(QString(), {{"A-phase voltage", "A相电压"}});
        QCOMPARE(addressesOf(labels, "DLT645_2007"), QStringList({"absent", "02010100"}));
    }
    QCOMPARE(addressesOf(labels, "DLT645_2007"), QStringList({"02010100", "absent"}));
}

void TestDlt645Writer::firstOfEqualDlt645LabelsWins()
{
    const QString same = "same";
    const Language language(
        QString(),
        {{"B-phase positive active energy", same}, {"B-phase current", same}, {"B-phase voltage", same}});
    QCOMPARE(addressesOf({same}, "DLT645_2007"), QStringList({"00290000"}));
    QCOMPARE(addressesOf({same}, "DLT645_1997"), QStringList({"B622"}));
}

static void collectNonTexts(const QJsonValue &value, const QString &key, QStringList *found)
{
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto member = object.begin(); member != object.end(); ++member) {
            collectNonTexts(member.value(), member.key(), found);
        }
    } else if (value.isArray()) {
        const QJsonArray array = value.toArray();
        for (const QJsonValue &entry : array) {
            collectNonTexts(entry, key, found);
        }
    } else if (!value.isString()) {
        found->append(key);
    }
}

void TestDlt645Writer::protocolVersionIsTheOneNumber()
{
    Standard standard("DLT645");
    standard.set(standardBaudRateRole, 9600);
    standard.set(standardRtsEnableRole, true);
    standard.setGroups({{"DLT645-1", {{12, "DLT645_2007"}, {true, "A-phase voltage", 3}}}});
    QStringList found;
    collectNonTexts(standard.object("standards"), QString(), &found);
    QCOMPARE(found, QStringList({"protocolVersion"}));
    QCOMPARE(standard.datas().at(0).toObject().value("protocolVersion"), QJsonValue(1));
}

QTEST_GUILESS_MAIN(TestDlt645Writer)
#include "tst_dlt645writer.moc"

#include "documenttest.h"
#include "language.h"

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
    standard.set(standardRtsEnableRole, S("true"));
    standard.setGroups({{S("DLT645-1"),
                         {row({S("AAAAAAAAAAAA"), S("DLT645_2007")}),
                          {true, S("A-phase voltage"), S("Ua")},
                          {S("false"), S("C-phase positive active energy"), S()},
                          {S("true"), S(), S("nameless")},
                          {S("true"), S("no such item"), S("n")}}},
                        {S("DLT645-2"),
                         {row({S("000012345678"), S("DLT645_1997")}),
                          {S("true"), S("Reverse active total electrical energy"), S("E-")},
                          {false, S("C-phase positive active energy"), S("x")},
                          {S("true")},
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
    const QString reactive = S("Reactive constant of electric meter");
    QTest::newRow("2007") << S("DLT645_2007") << reactive
                          << QByteArray(
                                 R"({"select": "s", "name": "n", "addr": "0400040A", "dataType": "XXXXXX"})");
    QTest::newRow("1997") << S("DLT645_1997") << reactive
                          << QByteArray(
                                 R"({"select": "s", "name": "n", "addr": "C031", "dataType": "NNNNNN"})");
    QTest::newRow("other version text is 1997")
        << S("2007") << reactive
        << QByteArray(R"({"select": "s", "name": "n", "addr": "C031", "dataType": "NNNNNN"})");
    QTest::newRow("2007 only, in 1997") << S("DLT645_1997") << S("Instantaneous total apparent power")
                                        << QByteArray(R"({"select": "s", "name": "n"})");
    QTest::newRow("other case") << S("DLT645_2007") << S("a-phase voltage")
                                << QByteArray(R"({"select": "s", "name": "n"})");
    QTest::newRow("no label") << S("DLT645_2007") << S() << QByteArray(R"({"select": "s"})");
}

void TestDlt645Writer::dlt645PointFollowsItsLabel()
{
    QFETCH(QString, version);
    QFETCH(QString, label);
    QFETCH(QByteArray, point);
    Standard standard("DLT645");
    standard.setGroups({{S("DLT645-1"), rows({{S("AA"), version}, {S("s"), label, S("n")}})}});
    const QJsonArray points = standard.datas().at(0).toObject().value(S("datas")).toArray();
    QCOMPARE(points.size(), 1);
    QCOMPARE(QJsonDocument(points.at(0).toObject()).toJson(), onDisk(point.constData()));
}

static QStringList addressesOf(const QStringList &labels, const QString &version)
{
    Standard standard("DLT645");
    RowList list{row({S("AA"), version})};
    for (const QString &label : labels) {
        list.append(row({S("true"), label, S()}));
    }
    standard.setGroups({{S("DLT645-1"), list}});
    QStringList addresses;
    const QJsonArray points = standard.datas().at(0).toObject().value(S("datas")).toArray();
    for (const QJsonValue &point : points) {
        addresses.append(point.toObject().value(S("addr")).toString(S("absent")));
    }
    return addresses;
}

void TestDlt645Writer::dlt645LabelsAreComparedInTheLanguageInForce()
{
    const QStringList labels{S("A-phase voltage"), S("A相电压")};
    QCOMPARE(addressesOf(labels, S("DLT645_2007")), QStringList({S("02010100"), S("absent")}));
    {
        const Language chinese(S(), {{S("A-phase voltage"), S("A相电压")}});
        QCOMPARE(addressesOf(labels, S("DLT645_2007")), QStringList({S("absent"), S("02010100")}));
    }
    QCOMPARE(addressesOf(labels, S("DLT645_2007")), QStringList({S("02010100"), S("absent")}));
}

void TestDlt645Writer::firstOfEqualDlt645LabelsWins()
{
    const QString same = S("same");
    const Language language(S(),
                            {{S("B-phase positive active energy"), same},
                             {S("B-phase current"), same},
                             {S("B-phase voltage"), same}});
    QCOMPARE(addressesOf({same}, S("DLT645_2007")), QStringList({S("00290000")}));
    QCOMPARE(addressesOf({same}, S("DLT645_1997")), QStringList({S("B622")}));
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
    standard.setGroups({{S("DLT645-1"), {{12, S("DLT645_2007")}, {true, S("A-phase voltage"), 3}}}});
    QStringList found;
    collectNonTexts(standard.object("standards"), S(), &found);
    QCOMPARE(found, QStringList({S("protocolVersion")}));
    QCOMPARE(standard.datas().at(0).toObject().value(S("protocolVersion")), QJsonValue(1));
}

QTEST_GUILESS_MAIN(TestDlt645Writer)
#include "tst_dlt645writer.moc"

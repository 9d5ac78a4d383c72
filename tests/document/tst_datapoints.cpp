#include "document/datapoints.h"
#include "language.h"
#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardItem>
#include <QtTest>

namespace {

struct MeterItem {
    const char *label;
    const char *addr;
    const char *dataType;
    const char *length;
};

// clang-format off
const MeterItem items2007[] = {
    {"Positive active power rate of 4 electric energy", "00010400", "float", "4"},
    {"Positive active power rate of 3 electric energy", "00010300", "float", "4"},
    {"Positive active power rate of 2 electric energy", "00010200", "float", "4"},
    {"Positive active power rate of 1 electric energy", "00010100", "float", "4"},
    {"Combination active power rate 4 electricity", "00000400", "float", "4"},
    {"Combination active power rate 3 electricity", "00000300", "float", "4"},
    {"Combination active power rate 2 electricity", "00000200", "float", "4"},
    {"Combination active power rate 1 electricity", "00000100", "float", "4"},
    {"Combined reactive power 2 total electrical energy", "00040000", "float", "4"},
    {"Combined reactive power 1 total electrical energy", "00030000", "float", "4"},
    {"A-phase positive active energy", "00150000", "float", "4"},
    {"B-phase positive active energy", "00290000", "float", "4"},
    {"C-phase positive active energy", "003D0000", "float", "4"},
    {"Reactive constant of electric meter", "0400040A", "float", "3"},
    {"Active constant of electric meter", "04000409", "float", "3"},
    {"Combined active total electrical energy", "00000000", "float", "4"},
    {"Reverse active total electrical energy", "00020000", "float", "4"},
    {"Total reactive energy in the first quadrant", "00050000", "float", "4"},
    {"Total reactive energy in the second quadrant", "00060000", "float", "4"},
    {"Total reactive energy in the third quadrant", "00070000", "float", "4"},
    {"Total reactive energy in the fourth quadrant", "00080000", "float", "4"},
    {"Positive active total electrical energy", "00010000", "float", "4"},
    {"Instantaneous total apparent power", "02050000", "float", "3"},
    {"Instantaneous A-phase apparent power", "02050100", "float", "3"},
    {"Instantaneous B-phase apparent power", "02050200", "float", "3"},
    {"Instantaneous C-phase apparent power", "02050300", "float", "3"},
    {"Instantaneous total reactive power", "02040000", "float", "3"},
    {"Instantaneous A-phase reactive power", "02040100", "float", "3"},
    {"Instantaneous B-phase reactive power", "02040200", "float", "3"},
    {"Instantaneous C-phase reactive power", "02040300", "float", "3"},
    {"Instantaneous total active power", "02030000", "float", "3"},
    {"Instantaneous A-phase active power", "02030100", "float", "3"},
    {"Instantaneous B-phase active power", "02030200", "float", "3"},
    {"Instantaneous C-phase active power", "02030300", "float", "3"},
    {"Total power factor", "02060000", "float", "3"},
    {"A-phase power factor", "02060100", "float", "3"},
    {"B-phase power factor", "02060200", "float", "3"},
    {"C-phase power factor", "02060300", "float", "3"},
    {"A-phase current", "02020100", "float", "3"},
    {"B-phase current", "02020200", "float", "3"},
    {"C-phase current", "02020300", "float", "3"},
    {"A-phase voltage", "02010100", "float", "2"},
    {"B-phase voltage", "02010200", "float", "2"},
    {"C-phase voltage", "02010300", "float", "2"},
};

const MeterItem items1997[] = {
    {"Positive active power rate of 4 electric energy", "9014", "float", "4"},
    {"Positive active power rate of 3 electric energy", "9013", "float", "4"},
    {"Positive active power rate of 2 electric energy", "9012", "float", "4"},
    {"Positive active power rate of 1 electric energy", "9011", "float", "4"},
    {"Reactive constant of electric meter", "C031", "int32", "3"},
    {"Active constant of electric meter", "C030", "int32", "3"},
    {"Reverse active total electrical energy", "9020", "float", "4"},
    {"Total reactive energy in the first quadrant", "9130", "float", "4"},
    {"Total reactive energy in the second quadrant", "9150", "float", "4"},
    {"Total reactive energy in the third quadrant", "9160", "float", "4"},
    {"Total reactive energy in the fourth quadrant", "9140", "float", "4"},
    {"Positive active total electrical energy", "9010", "float", "4"},
    {"Instantaneous total reactive power", "B640", "float", "2"},
    {"Instantaneous A-phase reactive power", "B641", "float", "2"},
    {"Instantaneous B-phase reactive power", "B642", "float", "2"},
    {"Instantaneous C-phase reactive power", "B643", "float", "2"},
    {"Instantaneous total active power", "B630", "float", "3"},
    {"Instantaneous A-phase active power", "B631", "float", "3"},
    {"Instantaneous B-phase active power", "B632", "float", "3"},
    {"Instantaneous C-phase active power", "B633", "float", "3"},
    {"Total power factor", "B650", "float", "2"},
    {"A-phase power factor", "B651", "float", "2"},
    {"B-phase power factor", "B652", "float", "2"},
    {"C-phase power factor", "B653", "float", "2"},
    {"A-phase current", "B621", "float", "2"},
    {"B-phase current", "B622", "float", "2"},
    {"C-phase current", "B623", "float", "2"},
    {"A-phase voltage", "B611", "float", "2"},
    {"B-phase voltage", "B612", "float", "2"},
    {"C-phase voltage", "B613", "float", "2"},
};
// clang-format on

const QString meter2007 = "DLT645_2007";
const QString meter1997 = "DLT645_1997";

using Cells = QStringList;

RowList rows(const QList<Cells> &lines)
{
    RowList list;
    for (const Cells &cells : lines) {
        QVariantList row;
        for (const QString &cell : cells) {
            row.append(cell);
        }
        list.append(row);
    }
    return list;
}

QVariant list(const QList<Cells> &lines)
{
    return QVariant::fromValue(rows(lines));
}

QVariant groups(const QMap<QString, QList<Cells>> &tabs)
{
    GroupMap map;
    for (auto tab = tabs.cbegin(); tab != tabs.cend(); ++tab) {
        map.insert(tab.key(), rows(tab.value()));
    }
    return QVariant::fromValue(map);
}

// One tab of a meter with one point.
QVariant meterRow(const QString &version, const QString &label)
{
    return groups({{"DLT645-1", {{"000000000001", version}, {"true", label, "mine"}}}});
}

QJsonObject meterPoint(const MeterItem &item)
{
    return {{"name", "mine"},
            {"reportingMethod", QString()},
            {"addr", QLatin1String(item.addr)},
            {"dataType", QLatin1String(item.dataType)},
            {"length", QLatin1String(item.length)}};
}

const QJsonObject bareMeterPoint{{"name", "mine"}, {"reportingMethod", QString()}};

QStandardItem *append(QStandardItem *parent, const QString &text)
{
    return ProjectTree::appendDefinition(parent, text, QString());
}

QStandardItem *appendStandard(QStandardItem *folder, const QString &name, const QString &protocol,
                              const QVariant &datas)
{
    QStandardItem *standard = append(folder, name);
    standard->setData(protocol, standardProtocolRole);
    standard->setData(datas, standardDatasRole);
    return standard;
}

QStandardItem *appendPlc(QStandardItem *folder, const QString &name, const QList<Cells> &lines)
{
    QStandardItem *plc = append(folder, name);
    plc->setData(list(lines), plcParametersRole);
    return plc;
}

// What is collected from a project of one Standard called "S".
DataPoints::Lists ofStandard(const QString &protocol, const QVariant &datas)
{
    QStandardItem project;
    appendStandard(append(&project, "Standard"), "S", protocol, datas);
    return DataPoints::collect(project);
}

DataPoints::Lists pointsOfS(const QList<QJsonObject> &points)
{
    return {{"S", points}};
}

// The definitions with their points as JSON: {"name": [point, ...], ...}.
DataPoints::Lists lists(const char *json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject()) {
        qFatal("not an object: %s", json);
    }
    DataPoints::Lists result;
    const QJsonObject definitions = document.object();
    for (auto definition = definitions.begin(); definition != definitions.end(); ++definition) {
        QList<QJsonObject> points;
        const QJsonArray array = definition.value().toArray();
        for (const QJsonValue &point : array) {
            points.append(point.toObject());
        }
        result.insert(definition.key(), points);
    }
    return result;
}

} // namespace

// What the definitions of a project offer to a Server's table.
class TestDataPoints : public QObject
{
    Q_OBJECT
private slots:
    void meterItem_data();
    void meterItem();
    void itemThatTheOlderEditionLacks();
    void anyOtherVersionTextIsTheOlderEdition_data();
    void anyOtherVersionTextIsTheOlderEdition();
    void unknownItemKeepsItsPoint_data();
    void unknownItemKeepsItsPoint();
    void meterItemIsKnownInTheLanguageInForce();
    void metersOfAllTabsInTheOrderOfTheirTitles();
    void pointsOfAStandard_data();
    void pointsOfAStandard();
    void pointsOfAPlc();
    void otherKindsHaveAnEmptyList_data();
    void otherKindsHaveAnEmptyList();
    void lastOfOneNameWins();
    void otherFoldersOfferNothing();
    void emptyProject();
};

void TestDataPoints::meterItem_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QJsonObject>("point");
    for (const MeterItem &item : items2007) {
        QTest::addRow("2007: %s", item.label)
            << meter2007 << QString(QLatin1String(item.label)) << meterPoint(item);
    }
    for (const MeterItem &item : items1997) {
        QTest::addRow("1997: %s", item.label)
            << meter1997 << QString(QLatin1String(item.label)) << meterPoint(item);
    }
    QCOMPARE(int(std::size(items2007)), 44);
    QCOMPARE(int(std::size(items1997)), 30);
}

void TestDataPoints::meterItem()
{
    QFETCH(QString, version);
    QFETCH(QString, label);
    QFETCH(QJsonObject, point);
    QCOMPARE(ofStandard("DLT645", meterRow(version, label)), pointsOfS({point}));
}

void TestDataPoints::itemThatTheOlderEditionLacks()
{
    int lacking = 0;
    for (const MeterItem &item : items2007) {
        const bool older =
            std::any_of(std::begin(items1997), std::end(items1997),
                        [&](const MeterItem &other) { return qstrcmp(other.label, item.label) == 0; });
        if (!older) {
            QCOMPARE(ofStandard("DLT645", meterRow(meter1997, QLatin1String(item.label))),
                     pointsOfS({bareMeterPoint}));
            ++lacking;
        }
    }
    QCOMPARE(lacking, 14);
}

void TestDataPoints::anyOtherVersionTextIsTheOlderEdition_data()
{
    QTest::addColumn<QString>("version");
    QTest::newRow("empty") << "";
    QTest::newRow("other case") << "dlt645_2007";
    QTest::newRow("a later one") << "DLT645_2027";
}

void TestDataPoints::anyOtherVersionTextIsTheOlderEdition()
{
    QFETCH(QString, version);
    const MeterItem voltage{"A-phase voltage", "B611", "float", "2"};
    QCOMPARE(ofStandard("DLT645", meterRow(version, QLatin1String(voltage.label))),
             pointsOfS({meterPoint(voltage)}));
}

void TestDataPoints::unknownItemKeepsItsPoint_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("empty") << "";
    QTest::newRow("unknown") << "D-phase voltage";
    QTest::newRow("other case") << "a-phase voltage";
    QTest::newRow("an identifier") << "02010100";
}

void TestDataPoints::unknownItemKeepsItsPoint()
{
    QFETCH(QString, label);
    QCOMPARE(ofStandard("DLT645", meterRow(meter2007, label)), pointsOfS({bareMeterPoint}));
}

void TestDataPoints::meterItemIsKnownInTheLanguageInForce()
{
    const MeterItem voltage{"A-phase voltage", "02010100", "float", "2"};
    const Language language("zh ");
    QCOMPARE(ofStandard("DLT645", meterRow(meter2007, "zh A-phase voltage")),
             pointsOfS({meterPoint(voltage)}));
    QCOMPARE(ofStandard("DLT645", meterRow(meter2007, "A-phase voltage")), pointsOfS({bareMeterPoint}));
}

// Each tab has an edition of its own; a point comes whether it is ticked or not; a row of the form ends
// before the reporting method.
void TestDataPoints::metersOfAllTabsInTheOrderOfTheirTitles()
{
    const QVariant datas = groups({
        {"DLT645-2", {{"000000000002", "DLT645_2007"}, {"true", "A-phase voltage", "Ua2"}}},
        {"DLT645-10",
         {{"000000000010", "DLT645_1997"},
          {"false", "Total power factor", ""},
          {"true", "Active constant of electric meter", "constant", "Timed"}}},
        {"DLT645-3", {{"000000000003", "DLT645_2007"}}},
        {"DLT645-4", {}},
    });
    QCOMPARE(ofStandard("DLT645", datas), lists(R"({"S": [
        {"name": "", "reportingMethod": "", "addr": "B650", "dataType": "float", "length": "2"},
        {"name": "constant", "reportingMethod": "Timed", "addr": "C030", "dataType": "int32", "length": "3"},
        {"name": "Ua2", "reportingMethod": "", "addr": "02010100", "dataType": "float", "length": "2"}]})"));
}

void TestDataPoints::pointsOfAStandard_data()
{
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QVariant>("datas");
    QTest::addColumn<QByteArray>("points");

    QTest::newRow("DIDO") << "DIDO" << list({{"DI1", "door", "r", "Change"}, {"DO1", "lamp", "rw"}})
                          << QByteArray(R"({"S": [
        {"addr": "DI1", "name": "door", "permissions": "r", "reportingMethod": "Change",
         "dataType": "bit", "length": "1"},
        {"addr": "DO1", "name": "lamp", "permissions": "rw", "reportingMethod": "",
         "dataType": "bit", "length": "1"}]})");
    QTest::newRow("OpcUA") << "OpcUA"
                           << list({{"ns=2;s=a", "a", "2", "s", "r", "Timed", "", "X", "X", "float"},
                                    {"ns=2;s=b", "b", "2", "s", "rw"}})
                           << QByteArray(R"({"S": [
        {"addr": "ns=2;s=a", "name": "a", "permissions": "r", "dataType": "float", "length": "1"},
        {"addr": "ns=2;s=b", "name": "b", "permissions": "rw", "dataType": "", "length": "1"}]})");
    QTest::newRow("Modbus, tabs by title")
        << "Modbus"
        << groups(
               {{"Modbus-2", {{"", "2", "ABCD", "true", "false"}, {"40001", "u", "string", "8", "rw"}}},
                {"Modbus-10", {{"", "10", "ABCD", "false", "true"}, {"0", "i", "int16", "1", "r"}, {"1"}}}})
        << QByteArray(R"({"S": [
        {"addr": "0", "name": "i", "dataType": "int16", "length": "1", "permissions": "r"},
        {"addr": "1", "name": "", "dataType": "", "length": "", "permissions": ""},
        {"addr": "40001", "name": "u", "dataType": "string", "length": "8", "permissions": "rw"}]})");
    QTest::newRow("Modbus, nothing stored") << "Modbus" << QVariant() << QByteArray(R"({"S": []})");
    QTest::newRow("Modbus, rows without tabs")
        << "Modbus" << list({{"0", "i", "int16", "1", "r"}}) << QByteArray(R"({"S": []})");
    QTest::newRow("DIDO, tabs") << "DIDO" << groups({{"x", {{"DI1"}}}}) << QByteArray(R"({"S": []})");
}

void TestDataPoints::pointsOfAStandard()
{
    QFETCH(QString, protocol);
    QFETCH(QVariant, datas);
    QFETCH(QByteArray, points);
    QVERIFY(DataPoints::declaresPoints(protocol));
    QCOMPARE(ofStandard(protocol, datas), lists(points.constData()));
}

void TestDataPoints::pointsOfAPlc()
{
    QStandardItem project;
    QStandardItem *folder = append(&project, "PLC");
    appendPlc(
        folder, "press",
        {{"D100", "force", "float", "1", "r", "Timed", "", "X*2", "X/2"}, {"D200", "text", "string", "8"}});
    append(folder, "new one");
    QCOMPARE(DataPoints::collect(project), lists(R"({"new one": [], "press": [
        {"addr": "D100", "name": "force", "dataType": "float", "length": "1", "permissions": "r"},
        {"addr": "D200", "name": "text", "dataType": "string", "length": "8", "permissions": ""}]})"));
}

void TestDataPoints::otherKindsHaveAnEmptyList_data()
{
    QTest::addColumn<QString>("protocol");
    for (const char *protocol : {"CustomPoll", "", "modbus", "ModbusTCP"}) {
        QTest::newRow(*protocol ? protocol : "none") << QString(QLatin1String(protocol));
    }
}

void TestDataPoints::otherKindsHaveAnEmptyList()
{
    QFETCH(QString, protocol);
    QVERIFY(!DataPoints::declaresPoints(protocol));
    QCOMPARE(ofStandard(protocol, list({{"a", "b", "c", "d", "e"}})), pointsOfS({}));
}

void TestDataPoints::lastOfOneNameWins()
{
    const char *ofThePlc = R"({"same": [
        {"addr": "D1", "name": "plc", "dataType": "bool", "length": "1", "permissions": "r"}]})";
    for (const bool plcLast : {true, false}) {
        QStandardItem project;
        QStandardItem *first = append(&project, plcLast ? QString("Standard") : "PLC");
        QStandardItem *last = append(&project, plcLast ? QString("PLC") : "Standard");
        appendPlc(plcLast ? last : first, "same", {{"D1", "plc", "bool", "1", "r"}});
        appendStandard(plcLast ? first : last, "same", "DIDO", list({{"DI1", "one", "r", "Change"}}));
        appendStandard(plcLast ? first : last, "same", "DIDO", list({}));
        QCOMPARE(DataPoints::collect(project), lists(plcLast ? ofThePlc : R"({"same": []})"));
    }
}

void TestDataPoints::otherFoldersOfferNothing()
{
    QStandardItem project;
    for (const char *name : {"Service", "Box", "Data", "Server", "standard", "plc"}) {
        QStandardItem *folder = append(&project, QLatin1String(name));
        appendStandard(folder, "S", "DIDO", list({{"DI1", "a", "r", "Change"}}))
            ->setData(list({{"D1", "b", "bool", "1", "r"}}), plcParametersRole);
    }
    QCOMPARE(DataPoints::collect(project), DataPoints::Lists());
}

void TestDataPoints::emptyProject()
{
    QStandardItem project;
    QCOMPARE(DataPoints::collect(project), DataPoints::Lists());
    project.setRowCount(2); // rows without items
    ProjectTree::appendMissingFolders(&project);
    QCOMPARE(DataPoints::collect(project), DataPoints::Lists());
}

QTEST_GUILESS_MAIN(TestDataPoints)
#include "tst_datapoints.moc"

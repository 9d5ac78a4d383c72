#include "document/datapoints.h"
#include "language.h"
#include "meteritems.h"
#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardItem>
#include <QtTest>

namespace {

const QString meter2007 = "DLT645_2007";
const QString meter1997 = "DLT645_1997";

// Type and length of a point, by the format of its item in each edition.
const QMap<QString, QString> types2007{{"XXXXXX.XX", "float 4"}, {"XXXXXX", "float 3"},
                                       {"XX.XXXX", "float 3"},   {"XXX.XXX", "float 3"},
                                       {"X.XXX", "float 3"},     {"XXX.X", "float 2"}};
const QMap<QString, QString> types1997{
    {"XXXXXX.XX", "float 4"}, {"XXXXXX.XX ", "float 4"}, {"NNNNNN", "int32 3"}, {"XX.XXXX", "float 3"},
    {"XX.XX", "float 2"},     {"X.XXX", "float 2"},      {"XXX", "float 2"}};

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

QJsonObject meterPoint(const QString &address, const QString &typeAndLength)
{
    return {{"name", "mine"},
            {"reportingMethod", QString()},
            {"addr", address},
            {"dataType", typeAndLength.section(QLatin1Char(' '), 0, 0)},
            {"length", typeAndLength.section(QLatin1Char(' '), 1)}};
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
    for (const MeterItem &item : meterItems) {
        const QString label = QLatin1String(item.label);
        QTest::addRow("2007: %s", item.label)
            << meter2007 << label
            << meterPoint(QLatin1String(item.address2007), types2007.value(QLatin1String(item.format2007)));
        QTest::addRow("1997: %s", item.label)
            << meter1997 << label
            << (item.address1997 ? meterPoint(QLatin1String(item.address1997),
                                              types1997.value(QLatin1String(item.format1997)))
                                 : bareMeterPoint);
    }
}

void TestDataPoints::meterItem()
{
    QFETCH(QString, version);
    QFETCH(QString, label);
    QFETCH(QJsonObject, point);
    QCOMPARE(ofStandard("DLT645", meterRow(version, label)), pointsOfS({point}));
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
    QCOMPARE(ofStandard("DLT645", meterRow(version, "A-phase voltage")),
             pointsOfS({meterPoint("B611", "float 2")}));
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
    const Language language("zh ");
    QCOMPARE(ofStandard("DLT645", meterRow(meter2007, "zh A-phase voltage")),
             pointsOfS({meterPoint("02010100", "float 2")}));
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

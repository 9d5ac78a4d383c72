#include "language.h"
#include "modelwatch.h"
#include "readertest.h"
#include "tablerow.h"

#include <QFile>

namespace {

using ProjectDump::iconBytes;
using ProjectDump::shape;
using ProjectDump::tree;

QByteArray imageBytes(const QString &name)
{
    const QString path = QString(":/adsdemo/images/%1.svg").arg(name);
    return QFile::exists(path) ? iconBytes(path) : QByteArray("no such image");
}

// A document with something in every array.
const char fullDocument[] = R"({"name": "P", "description": "D",
    "standards": [{"name": "M", "protocol": "Modbus", "modbus": "ModbusTCP", "parameter": {"ip": "1.2.3.4"},
                   "extendedParameters": {}, "datas": [{"series": "s", "datas": [{"addr": "0"}]}]},
                  {"name": "D", "protocol": "DLT645", "datas": [{"protocolVersion": 1, "datas": [
                      {"select": "true", "addr": "00010000", "name": "E"}]}]}],
    "services": [{"name": "IEC61850", "protocol": "IEC61850", "port": "102", "extendedParameters": {}}],
    "boxs": [{"name": "B", "ip": "10.0.0.1"}]})";

} // namespace

class TestProjectMerge : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { watchModel(&m_model); }
    void init() { m_model.clear(); }
    void newProjectTakesNameDescriptionAndFolder();
    void emptyObjectGivesANamelessProjectWithFourFolders();
    void emptyServicesLeaveTheFolderEmpty();
    void definitionsHaveTheirIcons_data();
    void definitionsHaveTheirIcons();
    void openProjectOfTheSameNameIsMerged();
    void projectNamesAreComparedExactly();
    void loadingTwiceChangesNothing();
    void entriesOfOneNameEndUpInOneItem();
    void firstOfTwoItemsOfOneNameIsFilled();
    void foldersAreTakenByTheirRow();
    void missingFoldersAreRepaired();
    void liveDataStays();
    void entriesThatAreNoObjectsReadAsEmptyOnes();
    void absentServiceKeysEmptyWhatStood();
    void wrongTypesInTheRootReadAsMissing_data();
    void wrongTypesInTheRootReadAsMissing();
    void boxComesBackWithoutWhatIsNotSaved();
    void dormantStandardsLoseTheirPointsAndKeepTheRest_data();
    void dormantStandardsLoseTheirPointsAndKeepTheRest();
    void fromTenGroupsOnTheOrderChangesWithEachLoad();
    void otherLanguageCostsLabelsAndNothingElse();
    void passwordOfAnotherLanguageStaysOut();
    void unlabelledPointComesBackWithoutALabel();

private:
    QStandardItem *load(const char *json, const QString &folder = "/folder")
    {
        return loadProject(m_model, parse(json), folder);
    }

    QStandardItemModel m_model;
};

void TestProjectMerge::newProjectTakesNameDescriptionAndFolder()
{
    m_model.appendRow(new QStandardItem("Q"));
    const QStandardItem *project = load(R"({"name": "P", "description": "D"})", "/home/anna");
    QCOMPARE(m_model.rowCount(), 2);
    QCOMPARE(m_model.item(1), project);
    QCOMPARE(shape(project), "P(Standard() Service() Box() Data())");
    QCOMPARE(ProjectDump::roles(project), QStringList({line(1, "/home/anna"), line(2, "D")}));
    QCOMPARE(iconBytes(project->icon()), imageBytes("project_manage"));
    QCOMPARE(iconBytes(project->child(1)->icon()), imageBytes("Service"));
}

void TestProjectMerge::emptyObjectGivesANamelessProjectWithFourFolders()
{
    const QStandardItem *project = load("{}");
    QCOMPARE(shape(project), "(Standard() Service() Box() Data())");
    QCOMPARE(ProjectDump::roles(project), QStringList({line(1, "/folder"), line(2, "")}));
    QCOMPARE(load("{}"), project);
    QCOMPARE(m_model.rowCount(), 1);
}

void TestProjectMerge::emptyServicesLeaveTheFolderEmpty()
{
    QCOMPARE(shape(load(R"({"name": "P", "standards": [], "services": [], "boxs": []})")),
             "P(Standard() Service() Box() Data())");
}

void TestProjectMerge::definitionsHaveTheirIcons_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("folder");
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("image");
    tableRow("Modbus", "standards", 0, "Modbus", "Modbus");
    tableRow("DLT645", "standards", 0, "DLT645", "DLT645");
    tableRow("DIDO", "standards", 0, "DIDO", QString());
    tableRow("CustomPoll", "standards", 0, "CustomPoll", QString());
    tableRow("OpcUA", "standards", 0, "OpcUA", QString());
    tableRow("unknown standard", "standards", 0, "Profibus", QString());
    tableRow("IEC61850", "services", 1, "IEC61850", "IEC61850");
    tableRow("unknown service", "services", 1, "Modbus", QString());
    tableRow("box", "boxs", 2, QString(), "box-file");
}

void TestProjectMerge::definitionsHaveTheirIcons()
{
    QFETCH(QString, key);
    QFETCH(int, folder);
    QFETCH(QString, protocol);
    QFETCH(QString, image);
    const QJsonObject entry{{"name", "x"}, {"protocol", protocol}};
    const QStandardItem *project = loadProject(m_model, {{key, QJsonArray{entry}}}, "/folder");
    const QIcon icon = project->child(folder)->child(0)->icon();
    QCOMPARE(iconBytes(icon), image.isEmpty() ? QByteArray() : imageBytes(image));
}

void TestProjectMerge::openProjectOfTheSameNameIsMerged()
{
    QStandardItem *project = load(fullDocument, "/first");
    project->child(0)->child(0)->setData("kept", standardRtuCommunicationTimeoutRole);
    const QStandardItem *merged = load(R"({"name": "P", "description": "other",
        "standards": [{"name": "New", "protocol": "Modbus"},
                      {"name": "M", "protocol": "Modbus", "modbus": "ModbusTCP",
                       "parameter": {"ip": "5.6.7.8"}}],
        "boxs": [{"name": "b", "ip": "10.0.0.2"}, {"name": "B", "ip": "10.0.0.3"}]})",
                                       "/second");
    QCOMPARE(merged, project);
    QCOMPARE(m_model.rowCount(), 1);
    QCOMPARE(shape(project), "P(Standard(M() D() New()) Service(IEC61850()) Box(B() b()) Data())");
    QCOMPARE(ProjectDump::roles(project), QStringList({line(1, "/first"), line(2, "D")}));
    const QStandardItem *standard = project->child(0)->child(0);
    QCOMPARE(standard->data(standardIpRole).toString(), "5.6.7.8");
    QCOMPARE(standard->data(standardRtuCommunicationTimeoutRole).toString(), "kept");
    QCOMPARE(standard->data(standardDatasRole).value<GroupMap>(), GroupMap());
    QCOMPARE(project->child(1)->child(0)->data(servicePortRole).toString(), "102");
    QCOMPARE(project->child(2)->child(0)->data(boxIpRole).toString(), "10.0.0.3");
    QCOMPARE(project->child(2)->child(1)->data(boxIpRole).toString(), "10.0.0.2");
}

void TestProjectMerge::projectNamesAreComparedExactly()
{
    load(R"({"name": "P"})");
    load(R"({"name": "p"})");
    load(R"({"name": "P "})");
    QCOMPARE(m_model.rowCount(), 3);
}

void TestProjectMerge::loadingTwiceChangesNothing()
{
    const QStandardItem *project = load(fullDocument);
    const QStringList before = tree(project);
    load(fullDocument);
    QCOMPARE(tree(project), before);
    QCOMPARE(m_model.rowCount(), 1);
}

void TestProjectMerge::entriesOfOneNameEndUpInOneItem()
{
    const QStandardItem *project = load(R"({"name": "P",
        "standards": [{"name": "S", "protocol": "DLT645"}, {"name": "S", "protocol": "Modbus"}],
        "boxs": [{"name": "B", "ip": "1"}, {"name": "C"}, {"name": "B", "ip": "2"}]})");
    QCOMPARE(shape(project), "P(Standard(S()) Service() Box(B() C()) Data())");
    QCOMPARE(project->child(2)->child(0)->data(boxIpRole).toString(), "2");
    const QStandardItem *standard = project->child(0)->child(0);
    QCOMPARE(standard->data(standardProtocolRole).toString(), "Modbus");
    QCOMPARE(iconBytes(standard->icon()), imageBytes("DLT645")); // An item that is there keeps its icon.
}

void TestProjectMerge::firstOfTwoItemsOfOneNameIsFilled()
{
    QStandardItem *project = load(R"({"name": "P"})");
    for (int i = 0; i < 2; ++i) {
        project->child(2)->appendRow(new QStandardItem("B"));
    }
    load(R"({"name": "P", "boxs": [{"name": "B", "ip": "1"}]})");
    QCOMPARE(project->child(2)->child(0)->data(boxIpRole).toString(), "1");
    QVERIFY(!project->child(2)->child(1)->data(boxIpRole).isValid());
}

void TestProjectMerge::foldersAreTakenByTheirRow()
{
    auto *project = new QStandardItem("P");
    project->appendRow(new QStandardItem("Box"));
    m_model.appendRow(project);
    load(fullDocument);
    QCOMPARE(shape(project), "P(Box(M() D()) Standard(IEC61850()) Service(B()) Data())");
}

void TestProjectMerge::missingFoldersAreRepaired()
{
    QStandardItem *project = load(fullDocument);
    project->removeRow(3);
    project->removeRow(2);
    load(fullDocument);
    QCOMPARE(shape(project), "P(Standard(M() D()) Service(IEC61850()) Box(B()) Data())");
    QCOMPARE(iconBytes(project->child(3)->icon()), imageBytes("Data"));
}

void TestProjectMerge::liveDataStays()
{
    QStandardItem *project = load(fullDocument);
    auto *live = new QStandardItem("M");
    live->setData(QVariantList{1}, dataRowsRole);
    project->child(3)->appendRow(live);
    load(fullDocument);
    QCOMPARE(project->child(3)->rowCount(), 1);
    QCOMPARE(live->data(dataRowsRole), QVariant(QVariantList{1}));
}

void TestProjectMerge::entriesThatAreNoObjectsReadAsEmptyOnes()
{
    const QStandardItem *project = load(R"({"name": "P", "standards": [1, "x", null, []],
        "boxs": [[{"name": "deep"}], true], "services": [{}]})");
    QCOMPARE(shape(project), "P(Standard(()) Service(()) Box(()) Data())");
    QCOMPARE(project->child(0)->child(0)->data(standardRtsEnableRole).toString(), "false");
}

void TestProjectMerge::absentServiceKeysEmptyWhatStood()
{
    QStandardItem *project = load(fullDocument);
    QStandardItem *service = project->child(1)->child(0);
    service->setData("Password", serviceAuthenticationRole);
    service->setData("PEM", serviceRootCertificateRole);
    service->setData("PEM", serviceClientCertificate10Role);
    load(fullDocument);
    QCOMPARE(service->data(serviceAuthenticationRole).toString(), "Password");
    QCOMPARE(service->data(serviceRootCertificateRole), QVariant(QString()));
    QCOMPARE(service->data(serviceClientCertificate10Role), QVariant(QString()));
}

void TestProjectMerge::wrongTypesInTheRootReadAsMissing_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("wrong");
    for (const char *key : {"name", "description", "standards", "services", "boxs"}) {
        const QPair<const char *, QJsonValue> values[] = {
            {"number", QJsonValue(7)},
            {"null", QJsonValue(QJsonValue::Null)},
            {"boolean", QJsonValue(true)},
            {"object", QJsonValue(QJsonObject{{"name", "x"}})},
        };
        for (const auto &value : values) {
            const QByteArray row = QByteArray(key) + " is a " + value.first;
            QTest::newRow(row.constData()) << QString::fromLatin1(key) << value.second;
        }
    }
    QTest::newRow("name is an array") << "name" << QJsonValue(QJsonArray{"x"});
    QTest::newRow("standards is a text") << "standards" << QJsonValue("x");
}

void TestProjectMerge::wrongTypesInTheRootReadAsMissing()
{
    QFETCH(QString, key);
    QFETCH(QJsonValue, wrong);
    QJsonObject with = parse(fullDocument);
    QJsonObject without = with;
    with.insert(key, wrong);
    without.remove(key);
    const QStringList found = tree(loadProject(m_model, with, "/folder"));
    QStandardItemModel other;
    QCOMPARE(found, tree(loadProject(other, without, "/folder")));
}

static QByteArray reloaded(const QByteArray &document)
{
    QStandardItemModel model;
    return projectDocument(loadProject(model, QJsonDocument::fromJson(document).object(), "/folder"));
}

void TestProjectMerge::boxComesBackWithoutWhatIsNotSaved()
{
    QStandardItem *project = load(R"({"name": "P", "boxs": [{"name": "B", "ip": "1"}]})");
    QStandardItem *box = project->child(2)->child(0);
    for (const int role : {boxModelRole, boxAt1Role, boxAt5Role, boxNtpServerRole, boxTimeRole}) {
        box->setData("unsaved", role);
    }
    const QJsonObject document = buildProjectJson(project);
    QStandardItemModel other;
    const QStandardItem *back = loadProject(other, document, "/folder")->child(2)->child(0);
    QCOMPARE(ProjectDump::roles(back), QStringList({line(0, "1")}) + lines(115, 136, ""));
    QVERIFY(!back->data(boxModelRole).isValid());
}

void TestProjectMerge::dormantStandardsLoseTheirPointsAndKeepTheRest_data()
{
    QTest::addColumn<QString>("protocol");
    for (const char *protocol : {"DIDO", "CustomPoll", "OpcUA"}) {
        QTest::newRow(protocol) << QString::fromLatin1(protocol);
    }
}

void TestProjectMerge::dormantStandardsLoseTheirPointsAndKeepTheRest()
{
    QFETCH(QString, protocol);
    const QJsonObject document{{"standards", QJsonArray{standardWith(protocol, QString())}}};
    QStandardItem *item = loadProject(m_model, document, "/folder")->child(0)->child(0);
    item->setData(QVariant::fromValue(rows({{"a", "b"}})), standardDatasRole);
    const QByteArray saved = projectDocument(m_model.item(0));
    QVERIFY(saved.contains("\"a\""));
    QJsonObject expected = QJsonDocument::fromJson(saved).object();
    QJsonObject standard = expected.value("standards").toArray().at(0).toObject();
    standard.insert("datas", QJsonArray());
    expected.insert("standards", QJsonArray{standard});
    QCOMPARE(reloaded(saved), QJsonDocument(expected).toJson());
}

// Standing still would need a number with leading noughts; the titles are the keys, so the order moves.
void TestProjectMerge::fromTenGroupsOnTheOrderChangesWithEachLoad()
{
    const auto stations = [](const QByteArray &document) {
        const QJsonObject root = QJsonDocument::fromJson(document).object();
        const QJsonArray groups = root.value("standards").toArray().at(0).toObject().value("datas").toArray();
        QStringList list;
        for (const QJsonValue &group : groups) {
            list.append(group.toObject().value("stationNum").toString());
        }
        return list.join(QLatin1Char(' '));
    };
    QJsonArray groups;
    for (int number = 1; number <= 10; ++number) {
        groups.append(QJsonObject{{"stationNum", QString::number(number)}});
    }
    const QJsonObject standard{{"name", "M"}, {"protocol", "Modbus"}, {"datas", groups}};
    const QJsonObject root{{"standards", QJsonArray{standard}}};
    const QByteArray once = reloaded(QJsonDocument(root).toJson());
    QCOMPARE(stations(once), "1 10 2 3 4 5 6 7 8 9");
    QCOMPARE(stations(reloaded(once)), "1 9 10 2 3 4 5 6 7 8");
}

void TestProjectMerge::otherLanguageCostsLabelsAndNothingElse()
{
    const char *document = R"({"name": "P", "standards": [
        {"name": "D", "protocol": "DLT645", "datas": [{"slaveAddress": "AA", "protocolVersion": 1,
            "datas": [{"select": "true", "addr": "02010100", "dataType": "XXX.X", "name": "Ua"}]}]},
        {"name": "M", "protocol": "Modbus", "modbus": "ModbusTCP", "datas": [{"series": "s"}]}],
        "boxs": [{"name": "B", "ip": "1"}]})";
    const QStandardItem *project = load(document);
    const QByteArray english = projectDocument(project);
    const Language chinese("zh ");
    QByteArray expected = english;
    expected.replace(R"(                            "addr": "02010100",
                            "dataType": "XXX.X",
)",
                     "");
    QVERIFY(expected != english);
    QCOMPARE(projectDocument(project), expected);
    QCOMPARE(reloaded(english), english); // Loaded and saved under one language, nothing is lost.
}

void TestProjectMerge::passwordOfAnotherLanguageStaysOut()
{
    const char *document = R"({"name": "P", "services": [{"name": "IEC61850", "protocol": "IEC61850",
        "enableSSL": "false", "extendedParameters": {"authentication": "1", "password": "p"}}]})";
    const QStandardItem *project = load(document);
    QVERIFY(projectDocument(project).contains("\"password\": \"p\""));
    const Language chinese("zh ");
    QVERIFY(!projectDocument(project).contains("\"password\""));
    QVERIFY(!projectDocument(project).contains("\"authentication\""));
}

void TestProjectMerge::unlabelledPointComesBackWithoutALabel()
{
    const QStandardItem *project = load(R"({"standards": [{"name": "D", "protocol": "DLT645",
        "datas": [{"datas": [{"select": "true"}, {"select": "false", "name": "n", "addr": "FFFF"}]}]}]})");
    const auto map = project->child(0)->child(0)->data(standardDatasRole).value<GroupMap>();
    QCOMPARE(map.value("DLT645-1").mid(1), rows({{"true", QString(), QString()}, {"false", QString(), "n"}}));
    const QByteArray saved = projectDocument(project);
    QCOMPARE(saved.count("\"select\""), 2);
    QVERIFY(!saved.contains("FFFF"));
    QVERIFY(!saved.contains("\"name\": \"n\"")); // Without a label a point has its mark alone.
}

QTEST_GUILESS_MAIN(TestProjectMerge)
#include "tst_projectmerge.moc"

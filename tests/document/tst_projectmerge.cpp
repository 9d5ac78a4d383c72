#include "language.h"
#include "readertest.h"

#include <QFile>

namespace {

using ProjectDump::iconBytes;
using ProjectDump::shape;
using ProjectDump::tree;

QStandardItem *load(QStandardItemModel &model, const char *json, const QString &folder = S("/folder"))
{
    return loadProject(model, parse(json), folder);
}

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
};

void TestProjectMerge::newProjectTakesNameDescriptionAndFolder()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem(S("Q")));
    const QStandardItem *project = load(model, R"({"name": "P", "description": "D"})", S("/home/anna"));
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.item(1), project);
    QCOMPARE(shape(project), S("P(Standard() Service() Box() Data())"));
    QCOMPARE(ProjectDump::roles(project), QStringList({line(1, "/home/anna"), line(2, "D")}));
    QCOMPARE(iconBytes(project->icon()), imageBytes(S("project_manage")));
    QCOMPARE(iconBytes(project->child(1)->icon()), imageBytes(S("Service")));
}

void TestProjectMerge::emptyObjectGivesANamelessProjectWithFourFolders()
{
    QStandardItemModel model;
    const QStandardItem *project = load(model, "{}");
    QCOMPARE(shape(project), S("(Standard() Service() Box() Data())"));
    QCOMPARE(ProjectDump::roles(project), QStringList({line(1, "/folder"), line(2, "")}));
    QCOMPARE(load(model, "{}"), project);
    QCOMPARE(model.rowCount(), 1);
}

void TestProjectMerge::emptyServicesLeaveTheFolderEmpty()
{
    QStandardItemModel model;
    QCOMPARE(shape(load(model, R"({"name": "P", "standards": [], "services": [], "boxs": []})")),
             S("P(Standard() Service() Box() Data())"));
}

void TestProjectMerge::definitionsHaveTheirIcons_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("folder");
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("image");
    QTest::newRow("Modbus") << S("standards") << 0 << S("Modbus") << S("Modbus");
    QTest::newRow("DLT645") << S("standards") << 0 << S("DLT645") << S("DLT645");
    QTest::newRow("DIDO") << S("standards") << 0 << S("DIDO") << S();
    QTest::newRow("CustomPoll") << S("standards") << 0 << S("CustomPoll") << S();
    QTest::newRow("OpcUA") << S("standards") << 0 << S("OpcUA") << S();
    QTest::newRow("unknown standard") << S("standards") << 0 << S("Profibus") << S();
    QTest::newRow("IEC61850") << S("services") << 1 << S("IEC61850") << S("IEC61850");
    QTest::newRow("unknown service") << S("services") << 1 << S("Modbus") << S();
    QTest::newRow("box") << S("boxs") << 2 << S() << S("box-file");
}

void TestProjectMerge::definitionsHaveTheirIcons()
{
    QFETCH(QString, key);
    QFETCH(int, folder);
    QFETCH(QString, protocol);
    QFETCH(QString, image);
    QStandardItemModel model;
    const QJsonObject entry{{S("name"), S("x")}, {S("protocol"), protocol}};
    const QStandardItem *project = loadProject(model, {{key, QJsonArray{entry}}}, S("/folder"));
    const QIcon icon = project->child(folder)->child(0)->icon();
    QCOMPARE(iconBytes(icon), image.isEmpty() ? QByteArray() : imageBytes(image));
}

void TestProjectMerge::openProjectOfTheSameNameIsMerged()
{
    QStandardItemModel model;
    QStandardItem *project = load(model, fullDocument, S("/first"));
    project->child(0)->child(0)->setData(S("kept"), standardRtuCommunicationTimeoutRole);
    const QStandardItem *merged = load(model, R"({"name": "P", "description": "other",
        "standards": [{"name": "New", "protocol": "Modbus"},
                      {"name": "M", "protocol": "Modbus", "modbus": "ModbusTCP",
                       "parameter": {"ip": "5.6.7.8"}}],
        "boxs": [{"name": "b", "ip": "10.0.0.2"}, {"name": "B", "ip": "10.0.0.3"}]})",
                                       S("/second"));
    QCOMPARE(merged, project);
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(shape(project), S("P(Standard(M() D() New()) Service(IEC61850()) Box(B() b()) Data())"));
    QCOMPARE(ProjectDump::roles(project), QStringList({line(1, "/first"), line(2, "D")}));
    const QStandardItem *standard = project->child(0)->child(0);
    QCOMPARE(standard->data(standardIpRole).toString(), S("5.6.7.8"));
    QCOMPARE(standard->data(standardRtuCommunicationTimeoutRole).toString(), S("kept"));
    QCOMPARE(standard->data(standardDatasRole).value<GroupMap>(), GroupMap());
    QCOMPARE(project->child(1)->child(0)->data(servicePortRole).toString(), S("102"));
    QCOMPARE(project->child(2)->child(0)->data(boxIpRole).toString(), S("10.0.0.3"));
    QCOMPARE(project->child(2)->child(1)->data(boxIpRole).toString(), S("10.0.0.2"));
}

void TestProjectMerge::projectNamesAreComparedExactly()
{
    QStandardItemModel model;
    load(model, R"({"name": "P"})");
    load(model, R"({"name": "p"})");
    load(model, R"({"name": "P "})");
    QCOMPARE(model.rowCount(), 3);
}

void TestProjectMerge::loadingTwiceChangesNothing()
{
    QStandardItemModel model;
    const QStandardItem *project = load(model, fullDocument);
    const QStringList before = tree(project);
    load(model, fullDocument);
    QCOMPARE(tree(project), before);
    QCOMPARE(model.rowCount(), 1);
}

void TestProjectMerge::entriesOfOneNameEndUpInOneItem()
{
    QStandardItemModel model;
    const QStandardItem *project = load(model, R"({"name": "P",
        "standards": [{"name": "S", "protocol": "DLT645"}, {"name": "S", "protocol": "Modbus"}],
        "boxs": [{"name": "B", "ip": "1"}, {"name": "C"}, {"name": "B", "ip": "2"}]})");
    QCOMPARE(shape(project), S("P(Standard(S()) Service() Box(B() C()) Data())"));
    QCOMPARE(project->child(2)->child(0)->data(boxIpRole).toString(), S("2"));
    const QStandardItem *standard = project->child(0)->child(0);
    QCOMPARE(standard->data(standardProtocolRole).toString(), S("Modbus"));
    QCOMPARE(iconBytes(standard->icon()), imageBytes(S("DLT645"))); // An item that is there keeps its icon.
}

void TestProjectMerge::firstOfTwoItemsOfOneNameIsFilled()
{
    QStandardItemModel model;
    QStandardItem *project = load(model, R"({"name": "P"})");
    for (int i = 0; i < 2; ++i) {
        project->child(2)->appendRow(new QStandardItem(S("B")));
    }
    load(model, R"({"name": "P", "boxs": [{"name": "B", "ip": "1"}]})");
    QCOMPARE(project->child(2)->child(0)->data(boxIpRole).toString(), S("1"));
    QVERIFY(!project->child(2)->child(1)->data(boxIpRole).isValid());
}

void TestProjectMerge::foldersAreTakenByTheirRow()
{
    QStandardItemModel model;
    auto *project = new QStandardItem(S("P"));
    project->appendRow(new QStandardItem(S("Box")));
    model.appendRow(project);
    load(model, fullDocument);
    QCOMPARE(shape(project), S("P(Box(M() D()) Standard(IEC61850()) Service(B()) Data())"));
}

void TestProjectMerge::missingFoldersAreRepaired()
{
    QStandardItemModel model;
    QStandardItem *project = load(model, fullDocument);
    project->removeRow(3);
    project->removeRow(2);
    load(model, fullDocument);
    QCOMPARE(shape(project), S("P(Standard(M() D()) Service(IEC61850()) Box(B()) Data())"));
    QCOMPARE(iconBytes(project->child(3)->icon()), imageBytes(S("Data")));
}

void TestProjectMerge::liveDataStays()
{
    QStandardItemModel model;
    QStandardItem *project = load(model, fullDocument);
    auto *live = new QStandardItem(S("M"));
    live->setData(QVariantList{1}, dataRowsRole);
    project->child(3)->appendRow(live);
    load(model, fullDocument);
    QCOMPARE(project->child(3)->rowCount(), 1);
    QCOMPARE(live->data(dataRowsRole), QVariant(QVariantList{1}));
}

void TestProjectMerge::entriesThatAreNoObjectsReadAsEmptyOnes()
{
    QStandardItemModel model;
    const QStandardItem *project = load(model, R"({"name": "P", "standards": [1, "x", null, []],
        "boxs": [[{"name": "deep"}], true], "services": [{}]})");
    QCOMPARE(shape(project), S("P(Standard(()) Service(()) Box(()) Data())"));
    QCOMPARE(project->child(0)->child(0)->data(standardRtsEnableRole).toString(), S("false"));
}

void TestProjectMerge::absentServiceKeysEmptyWhatStood()
{
    QStandardItemModel model;
    QStandardItem *project = load(model, fullDocument);
    QStandardItem *service = project->child(1)->child(0);
    service->setData(S("Password"), serviceAuthenticationRole);
    service->setData(S("PEM"), serviceRootCertificateRole);
    service->setData(S("PEM"), serviceClientCertificate10Role);
    load(model, fullDocument);
    QCOMPARE(service->data(serviceAuthenticationRole).toString(), S("Password"));
    QCOMPARE(service->data(serviceRootCertificateRole), QVariant(S()));
    QCOMPARE(service->data(serviceClientCertificate10Role), QVariant(S()));
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
            {"object", QJsonValue(QJsonObject{{S("name"), S("x")}})},
        };
        for (const auto &value : values) {
            const QByteArray row = QByteArray(key) + " is a " + value.first;
            QTest::newRow(row.constData()) << S(key) << value.second;
        }
    }
    QTest::newRow("name is an array") << S("name") << QJsonValue(QJsonArray{S("x")});
    QTest::newRow("standards is a text") << S("standards") << QJsonValue(S("x"));
}

void TestProjectMerge::wrongTypesInTheRootReadAsMissing()
{
    QFETCH(QString, key);
    QFETCH(QJsonValue, wrong);
    QJsonObject with = parse(fullDocument);
    QJsonObject without = with;
    with.insert(key, wrong);
    without.remove(key);
    QStandardItemModel model;
    const QStringList found = tree(loadProject(model, with, S("/folder")));
    QStandardItemModel other;
    QCOMPARE(found, tree(loadProject(other, without, S("/folder"))));
}

static QByteArray reloaded(const QByteArray &document)
{
    QStandardItemModel model;
    return projectDocument(loadProject(model, QJsonDocument::fromJson(document).object(), "/folder"));
}

void TestProjectMerge::boxComesBackWithoutWhatIsNotSaved()
{
    QStandardItemModel model;
    QStandardItem *project = load(model, R"({"name": "P", "boxs": [{"name": "B", "ip": "1"}]})");
    QStandardItem *box = project->child(2)->child(0);
    for (const int role : {boxModelRole, boxAt1Role, boxAt5Role, boxNtpServerRole, boxTimeRole}) {
        box->setData(S("unsaved"), role);
    }
    const QJsonObject document = buildProjectJson(project);
    QStandardItemModel other;
    const QStandardItem *back = loadProject(other, document, S("/folder"))->child(2)->child(0);
    QCOMPARE(ProjectDump::roles(back), QStringList({line(0, "1")}) + lines(115, 136, ""));
    QVERIFY(!back->data(boxModelRole).isValid());
}

void TestProjectMerge::dormantStandardsLoseTheirPointsAndKeepTheRest_data()
{
    QTest::addColumn<QString>("protocol");
    for (const char *protocol : {"DIDO", "CustomPoll", "OpcUA"}) {
        QTest::newRow(protocol) << S(protocol);
    }
}

void TestProjectMerge::dormantStandardsLoseTheirPointsAndKeepTheRest()
{
    QFETCH(QString, protocol);
    QStandardItemModel model;
    const QJsonObject document{{S("standards"), QJsonArray{standardWith(protocol, S())}}};
    QStandardItem *item = loadProject(model, document, S("/folder"))->child(0)->child(0);
    item->setData(QVariant::fromValue(rows({{S("a"), S("b")}})), standardDatasRole);
    const QByteArray saved = projectDocument(model.item(0));
    QVERIFY(saved.contains("\"a\""));
    QJsonObject expected = QJsonDocument::fromJson(saved).object();
    QJsonObject standard = expected.value(S("standards")).toArray().at(0).toObject();
    standard.insert(S("datas"), QJsonArray());
    expected.insert(S("standards"), QJsonArray{standard});
    QCOMPARE(reloaded(saved), QJsonDocument(expected).toJson());
}

// Standing still would need a number with leading noughts; the titles are the keys, so the order moves.
void TestProjectMerge::fromTenGroupsOnTheOrderChangesWithEachLoad()
{
    const auto stations = [](const QByteArray &document) {
        const QJsonObject root = QJsonDocument::fromJson(document).object();
        const QJsonArray groups =
            root.value(S("standards")).toArray().at(0).toObject().value(S("datas")).toArray();
        QStringList list;
        for (const QJsonValue &group : groups) {
            list.append(group.toObject().value(S("stationNum")).toString());
        }
        return list.join(QLatin1Char(' '));
    };
    QJsonArray groups;
    for (int number = 1; number <= 10; ++number) {
        groups.append(QJsonObject{{S("stationNum"), QString::number(number)}});
    }
    const QJsonObject standard{{S("name"), S("M")}, {S("protocol"), S("Modbus")}, {S("datas"), groups}};
    const QJsonObject root{{S("standards"), QJsonArray{standard}}};
    const QByteArray once = reloaded(QJsonDocument(root).toJson());
    QCOMPARE(stations(once), S("1 10 2 3 4 5 6 7 8 9"));
    QCOMPARE(stations(reloaded(once)), S("1 9 10 2 3 4 5 6 7 8"));
}

void TestProjectMerge::otherLanguageCostsLabelsAndNothingElse()
{
    const char *document = R"({"name": "P", "standards": [
        {"name": "D", "protocol": "DLT645", "datas": [{"slaveAddress": "AA", "protocolVersion": 1,
            "datas": [{"select": "true", "addr": "02010100", "dataType": "XXX.X", "name": "Ua"}]}]},
        {"name": "M", "protocol": "Modbus", "modbus": "ModbusTCP", "datas": [{"series": "s"}]}],
        "boxs": [{"name": "B", "ip": "1"}]})";
    QStandardItemModel model;
    const QStandardItem *project = load(model, document);
    const QByteArray english = projectDocument(project);
    const Language chinese(S("zh "));
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
    QStandardItemModel model;
    const QStandardItem *project = load(model, document);
    QVERIFY(projectDocument(project).contains("\"password\": \"p\""));
    const Language chinese(S("zh "));
    QVERIFY(!projectDocument(project).contains("\"password\""));
    QVERIFY(!projectDocument(project).contains("\"authentication\""));
}

void TestProjectMerge::unlabelledPointComesBackWithoutALabel()
{
    QStandardItemModel model;
    const QStandardItem *project = load(model, R"({"standards": [{"name": "D", "protocol": "DLT645",
        "datas": [{"datas": [{"select": "true"}, {"select": "false", "name": "n", "addr": "FFFF"}]}]}]})");
    const auto map = project->child(0)->child(0)->data(standardDatasRole).value<GroupMap>();
    QCOMPARE(map.value(S("DLT645-1")).mid(1), rows({{S("true"), S(), S()}, {S("false"), S(), S("n")}}));
    const QByteArray saved = projectDocument(project);
    QCOMPARE(saved.count("\"select\""), 2);
    QVERIFY(!saved.contains("FFFF"));
    QVERIFY(!saved.contains("\"name\": \"n\"")); // Without a label a point has its mark alone.
}

QTEST_GUILESS_MAIN(TestProjectMerge)
#include "tst_projectmerge.moc"

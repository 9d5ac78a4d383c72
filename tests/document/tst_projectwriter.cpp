#include "documenttest.h"
#include "language.h"
#include "tablerow.h"

#include <QFile>

class TestProjectWriter : public QObject
{
    Q_OBJECT
private slots:
    void projectWithoutFoldersHasNameAndDescriptionOnly();
    void newProjectHasItsServiceAndTwoEmptyArrays();
    void anyFolderBringsAllThreeArrays();
    void dataFolderIsNotSaved();
    void definitionsComeInTreeOrderWhateverTheFoldersOrder();
    void foldersOfOtherTextsAddNothing();
    void dormantFoldersLeaveNoTrace();
    void workedExampleIsSavedByteForByte();
    void boxHasItsTwentyFourKeysAndNoOthers();
    void unsetRolesAreSavedAsEmptyTexts();
    void serviceKeysStandInTheirConditions_data();
    void serviceKeysStandInTheirConditions();
    void serviceWithAllCertificates();
    void servicePasswordIsComparedInTheLanguageInForce();
    void serviceOfUnknownProtocolHasItsNameOnly();
    void fileIsNamedAfterThePresentText();
};

void TestProjectWriter::projectWithoutFoldersHasNameAndDescriptionOnly()
{
    QStandardItem project("P");
    project.setData("D", projectDescriptionRole);
    QCOMPARE(projectDocument(&project),
             QByteArray("{\n    \"description\": \"D\",\n    \"name\": \"P\"\n}\n"));
}

void TestProjectWriter::newProjectHasItsServiceAndTwoEmptyArrays()
{
    const QScopedPointer<QStandardItem> project(ProjectTree::makeProject("Empty", "/p", QString()));
    ProjectTree::appendMissingFolders(project.data());
    QStandardItem *service =
        ProjectTree::appendDefinition(project->child(1), "IEC61850", ProjectTree::serviceIcon);
    service->setData("IEC61850", serviceProtocolRole);
    QCOMPARE(projectDocument(project.data()), QByteArray(R"({
    "boxs": [
    ],
    "description": "",
    "name": "Empty",
    "services": [
        {
            "enableGoosePublishing": "",
            "enableSSL": "",
            "extendedParameters": {
            },
            "isVerifyClientCert": "",
            "name": "IEC61850",
            "port": "",
            "protocol": "IEC61850"
        }
    ],
    "standards": [
    ]
}
)"));
}

void TestProjectWriter::anyFolderBringsAllThreeArrays()
{
    QStandardItem project("P");
    project.appendRow(new QStandardItem("Data"));
    QCOMPARE(projectDocument(&project),
             onDisk(R"({"name": "P", "description": "", "standards": [], "services": [], "boxs": []})"));
}

void TestProjectWriter::dataFolderIsNotSaved()
{
    const QScopedPointer<QStandardItem> project(ProjectTree::makeProject("P", "/p", QString()));
    ProjectTree::appendMissingFolders(project.data());
    const QByteArray before = projectDocument(project.data());
    QStandardItem *live = ProjectTree::appendDefinition(project->child(3), "PLC 1", QString());
    live->setData(QVariantList{QVariantMap{{"name", "Ua"}}}, dataRowsRole);
    live->setData("NoDisplay", dataDisplayRole);
    QCOMPARE(projectDocument(project.data()), before);
}

void TestProjectWriter::definitionsComeInTreeOrderWhateverTheFoldersOrder()
{
    QStandardItem project("P");
    for (const char *text : {"Standard", "Box", "Standard", "Data", "Service", "Box"}) {
        auto *folder = new QStandardItem(QLatin1String(text));
        const QString prefix = QString::number(project.rowCount());
        folder->appendRow(new QStandardItem(prefix + QLatin1Char('b')));
        folder->appendRow(new QStandardItem(prefix + QLatin1Char('a')));
        project.appendRow(folder);
    }
    const QJsonObject root = buildProjectJson(&project);
    const auto names = [&root](const char *key) {
        QStringList list;
        const QJsonArray array = root.value(QLatin1String(key)).toArray();
        for (const QJsonValue &value : array) {
            list.append(value.toObject().value("name").toString());
        }
        return list.join(QLatin1Char(' '));
    };
    QCOMPARE(names("standards"), "0b 0a 2b 2a");
    QCOMPARE(names("boxs"), "1b 1a 5b 5a");
    QCOMPARE(names("services"), "4b 4a");
    QCOMPARE(root.size(), 5);
}

void TestProjectWriter::foldersOfOtherTextsAddNothing()
{
    QStandardItem project("P");
    for (const char *text : {"standard", "Boxes", "", "Data"}) {
        auto *folder = new QStandardItem(QLatin1String(text));
        folder->appendRow(new QStandardItem("x"));
        project.appendRow(folder);
    }
    QCOMPARE(projectDocument(&project),
             onDisk(R"({"name": "P", "description": "", "standards": [], "services": [], "boxs": []})"));
}

void TestProjectWriter::dormantFoldersLeaveNoTrace()
{
    QStandardItem project("P");
    auto *plcs = new QStandardItem("PLC");
    QStandardItem *plc = ProjectTree::appendDefinition(plcs, "plc", QString());
    plc->setData("Siemens", plcManufacturerRole);
    plc->setData("S7", plcProtocolRole);
    project.appendRow(plcs);
    auto *servers = new QStandardItem("Server");
    ProjectTree::appendDefinition(servers, "server", QString())->setData("MQTT", serverProtocolRole);
    project.appendRow(servers);
    QCOMPARE(projectDocument(&project),
             onDisk(R"({"name": "P", "description": "", "standards": [], "services": [], "boxs": []})"));
}

void TestProjectWriter::workedExampleIsSavedByteForByte()
{
    const QScopedPointer<QStandardItem> project(ProjectTree::makeProject("P", "/p", "D"));
    ProjectTree::appendMissingFolders(project.data());
    const auto fill = [](QStandardItem *item, const QVector<QPair<int, const char *>> &values) {
        for (const auto &value : values) {
            item->setData(QLatin1String(value.second), value.first);
        }
    };
    QStandardItem *standard = ProjectTree::appendDefinition(project->child(0), "M", QString());
    fill(standard,
         {{standardProtocolRole, "Modbus"},
          {standardModbusModeRole, "ModbusTCP"},
          {standardIpRole, "192.168.1.60"},
          {standardPortRole, "502"},
          {standardConnectionTimeoutRole, "2000"},
          {standardCommunicationTimeoutRole, "2000"},
          {standardKeepAliveRole, "60000"},
          {standardCollectionIntervalRole, "2000"}});
    GroupMap groups;
    groups.insert("Modbus-1",
                  {{"standard", "1", "ABCD", true, false},
                   row({"0", "a", "int16", "1", "r"}),
                   row({"1", "b", "float", "1", "r"})});
    standard->setData(QVariant::fromValue(groups), standardDatasRole);
    QStandardItem *service = ProjectTree::appendDefinition(project->child(1), "IEC61850", QString());
    fill(service,
         {{serviceProtocolRole, "IEC61850"},
          {servicePortRole, "102"},
          {serviceAuthenticationRole, "None"},
          {serviceEnableGoosePublishingRole, "true"},
          {serviceEnableSslRole, "false"},
          {serviceIsVerifyClientCertRole, "false"}});
    QStandardItem *box = ProjectTree::appendDefinition(project->child(2), "B", QString());
    fill(box,
         {{boxIpRole, "192.168.1.70"},
          {boxLanIpRole, "192.168.1.80"},
          {boxLanMaskRole, "255.255.255.0"},
          {boxLanGatewayRole, "192.168.1.1"},
          {boxLanDns1Role, "192.168.1.1"},
          {boxLanDns2Role, "8.8.8.8"},
          {boxWanDhcpRole, "Disabled"},
          {boxWanIpRole, "10.20.0.80"},
          {boxWanMaskRole, "255.255.255.0"},
          {boxWanGatewayRole, "10.20.0.1"},
          {boxWanDns1Role, "10.20.0.1"},
          {boxWifiOnOffRole, "off"},
          {boxWifiModeRole, "station"},
          {boxWifiDhcpRole, "Disabled"},
          {boxLteOnOffRole, "on"}});
    QFile sample(TEST_DATA_DIR "/one-slave.json");
    QVERIFY(sample.open(QIODevice::ReadOnly));
    QCOMPARE(projectDocument(project.data()), sample.readAll());
}

void TestProjectWriter::boxHasItsTwentyFourKeysAndNoOthers()
{
    Definition box("Box", "B");
    box.set(boxIpRole, "v0");
    box.set(boxModelRole, "v1");
    for (int role = boxLanIpRole; role <= boxTimeRole; ++role) {
        box.set(role, QString("v%1").arg(role - Qt::UserRole));
    }
    QCOMPARE(box.object("boxs").size(), 24);
    QCOMPARE(box.bytes("boxs"), onDisk(R"({"name": "B", "ip": "v0",
        "lanIp": "v115", "lanMask": "v116", "lanGateway": "v117", "lanDns1": "v118", "lanDns2": "v119",
        "wanDhcp": "v120", "wanIp": "v121", "wanMask": "v122", "wanGateway": "v123", "wanDns1": "v124",
        "wanDns2": "v125", "wifiOnOff": "v126", "wifiMode": "v127", "wifissid": "v128",
        "wifipassword": "v129", "wifiDhcp": "v130", "wifiIp": "v131", "wifiMask": "v132",
        "wifiGateway": "v133", "wifiDns1": "v134", "wifiDns2": "v135", "lteOnOff": "v136"})"));
}

void TestProjectWriter::unsetRolesAreSavedAsEmptyTexts()
{
    const Definition box("Box", "B");
    QCOMPARE(box.bytes("boxs"), onDisk(R"({"name": "B", "ip": "", "lanIp": "", "lanMask": "",
        "lanGateway": "", "lanDns1": "", "lanDns2": "", "wanDhcp": "", "wanIp": "", "wanMask": "",
        "wanGateway": "", "wanDns1": "", "wanDns2": "", "wifiOnOff": "", "wifiMode": "", "wifissid": "",
        "wifipassword": "", "wifiDhcp": "", "wifiIp": "", "wifiMask": "", "wifiGateway": "",
        "wifiDns1": "", "wifiDns2": "", "lteOnOff": ""})"));
}

static Definition *newService(const QVariant &ssl, const QVariant &verify, const QString &authentication)
{
    auto *service = new Definition("Service", "IEC61850");
    for (int role = serviceProtocolRole; role <= serviceServerKeyPasswordRole; ++role) {
        service->set(role, QString("v%1").arg(role - Qt::UserRole));
    }
    service->set(serviceProtocolRole, "IEC61850");
    service->set(serviceEnableSslRole, ssl);
    service->set(serviceIsVerifyClientCertRole, verify);
    service->set(serviceAuthenticationRole, authentication);
    return service;
}

void TestProjectWriter::serviceKeysStandInTheirConditions_data()
{
    QTest::addColumn<QVariant>("ssl");
    QTest::addColumn<QVariant>("verify");
    QTest::addColumn<QString>("authentication");
    QTest::addColumn<QString>("keys"); // of "extendedParameters": p(assword), s(erver), c(lients)
    const QVariant yes = "true";
    const QVariant no = "false";
    tableRow("password without SSL", no, no, "Password", "p");
    tableRow("none without SSL", no, no, "None", QString());
    tableRow("other text without SSL", no, no, "password", QString());
    tableRow("no text without SSL", no, no, QString(), QString());
    tableRow("clients alone", no, yes, "None", QString());
    tableRow("password and clients alone", no, yes, "Password", "p");
    tableRow("SSL", yes, no, "None", "s");
    tableRow("password with SSL", yes, no, "Password", "s");
    tableRow("SSL and clients", yes, yes, "Password", "sc");
    tableRow("flags as booleans", QVariant(true), QVariant(true), "None", "sc");
    tableRow("flag false as a boolean", QVariant(false), no, "Password", "p");
    tableRow("SSL never set", QVariant(), yes, "Password", QString());
    tableRow("SSL of another text", QVariant("True"), yes, "Password", QString());
}

void TestProjectWriter::serviceKeysStandInTheirConditions()
{
    QFETCH(QVariant, ssl);
    QFETCH(QVariant, verify);
    QFETCH(QString, authentication);
    QFETCH(QString, keys);
    QJsonObject extended;
    if (keys.contains(QLatin1Char('p'))) {
        extended = {{"authentication", "1"}, {"password", "v174"}};
    }
    if (keys.contains(QLatin1Char('s'))) {
        extended = {{"rootCertificate", "v178"},   {"rootCertificatePath", "v177"},
                    {"serverCertificate", "v180"}, {"serverCertificatePath", "v179"},
                    {"serverKey", "v182"},         {"serverKeyPath", "v181"},
                    {"serverKeyPassword", "v204"}};
    }
    for (int client = 1; keys.contains(QLatin1Char('c')) && client <= 10; ++client) {
        extended.insert(QString("clientCertificatePath%1").arg(client), QString("v%1").arg(182 + 2 * client));
        extended.insert(QString("clientCertificate%1").arg(client), QString("v%1").arg(183 + 2 * client));
    }
    const QJsonObject expected{{"name", "IEC61850"},
                               {"protocol", "IEC61850"},
                               {"port", "v172"},
                               {"enableGoosePublishing", "v175"},
                               {"enableSSL", ssl.toString()},
                               {"isVerifyClientCert", verify.toString()},
                               {"extendedParameters", extended}};
    const QScopedPointer<Definition> service(newService(ssl, verify, authentication));
    QCOMPARE(service->bytes("services"), QJsonDocument(expected).toJson());
}

void TestProjectWriter::serviceWithAllCertificates()
{
    const QScopedPointer<Definition> service(newService("true", "true", "None"));
    QCOMPARE(service->bytes("services"), onDisk(R"({"name": "IEC61850", "protocol": "IEC61850",
        "port": "v172", "enableGoosePublishing": "v175", "enableSSL": "true", "isVerifyClientCert": "true",
        "extendedParameters": {
        "rootCertificate": "v178", "rootCertificatePath": "v177",
        "serverCertificate": "v180", "serverCertificatePath": "v179",
        "serverKey": "v182", "serverKeyPath": "v181", "serverKeyPassword": "v204",
        "clientCertificate1": "v185", "clientCertificatePath1": "v184",
        "clientCertificate2": "v187", "clientCertificatePath2": "v186",
        "clientCertificate3": "v189", "clientCertificatePath3": "v188",
        "clientCertificate4": "v191", "clientCertificatePath4": "v190",
        "clientCertificate5": "v193", "clientCertificatePath5": "v192",
        "clientCertificate6": "v195", "clientCertificatePath6": "v194",
        "clientCertificate7": "v197", "clientCertificatePath7": "v196",
        "clientCertificate8": "v199", "clientCertificatePath8": "v198",
        "clientCertificate9": "v201", "clientCertificatePath9": "v200",
        "clientCertificate10": "v203", "clientCertificatePath10": "v202"}})"));
}

void TestProjectWriter::servicePasswordIsComparedInTheLanguageInForce()
{
    const auto extendedKeys = [](const QString &stored) {
        const QScopedPointer<Definition> service(newService("false", "false", stored));
        return service->object("services").value("extendedParameters").toObject().keys();
    };
    const QStringList both{"authentication", "password"};
    QCOMPARE(extendedKeys("Password"), both);
    const Language language(QString(), {{"Password", "密码"}, {"None", "无"}});
    QCOMPARE(extendedKeys("Password"), QStringList());
    QCOMPARE(extendedKeys("密码"), both);
    QCOMPARE(extendedKeys("无"), QStringList());
}

void TestProjectWriter::serviceOfUnknownProtocolHasItsNameOnly()
{
    Definition service("Service", "S");
    QCOMPARE(service.bytes("services"), onDisk(R"({"name": "S"})"));
    service.set(serviceProtocolRole, "iec61850");
    QCOMPARE(service.bytes("services"), onDisk(R"({"name": "S"})"));
}

void TestProjectWriter::fileIsNamedAfterThePresentText()
{
    const QScopedPointer<QStandardItem> project(ProjectTree::makeProject("P", "/home/anna", QString()));
    QCOMPARE(projectFilePath(project.data()), "/home/anna/P.json");
    project->setText("../Q r");
    QCOMPARE(projectFilePath(project.data()), "/home/anna/../Q r.json");
}

QTEST_GUILESS_MAIN(TestProjectWriter)
#include "tst_projectwriter.moc"

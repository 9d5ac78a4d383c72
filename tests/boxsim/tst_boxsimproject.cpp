#include "boxsim/pointsignal.h"
#include "boxsimtest.h"

#include <QFile>
#include <QJsonArray>

#include <algorithm>

// What the simulated Box makes of a project: which points it reports, in which form, with which values.
class TestBoxSimProject : public BoxSimTest
{
    Q_OBJECT
public:
    TestBoxSimProject()
        : BoxSimTest("127.0.12.3")
    {
    }

private slots:
    void cleanup() { stop(); }

    void samplesRun_data();
    void samplesRun();
    void aReportHasExactlyTheseKeys();
    void unselectedAndNamelessPointsAreLeftOut();
    void pointsWithoutGroupsAreReported();
    void eachStandardReportsAtItsOwnInterval();
    void anIntervalOfTheBoxReplacesTheStandards();
    void aPushedProjectReplacesTheOneBefore();
    void documentsThatAreNoProject_data();
    void documentsThatAreNoProject();
    void wrongTypesInEveryKeyAreHarmless();
    void settingsOfAnotherTypeAreMissing();
    void largeProjectsAreBounded();
    void valuesKeepToTheirPoint_data();
    void valuesKeepToTheirPoint();
    void countersGrowAtEachStep_data();
    void countersGrowAtEachStep();
    void booleansFlip();
    void textsStay();
    void theSameSeedGivesTheSameValues();

private:
    static QByteArray sample(const QString &name)
    {
        QFile file(QString(TEST_DATA_DIR "/") + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    // So many reports of a Box, asked for once.
    QVector<QJsonObject> reports(const QByteArray &project, int count)
    {
        startSession(withProject(project));
        if (QTest::currentTestFailed()) {
            return {};
        }
        m_box->reportNow();
        const bool came = QTest::qWaitFor([&] { return Raw::reports(m_tool->bytes()).size() >= count; });
        return came ? Raw::reports(m_tool->bytes()) : QVector<QJsonObject>();
    }
    static QStringList names(const QJsonObject &report)
    {
        QStringList names;
        const QJsonArray datas = report.value(QLatin1String("datas")).toArray();
        for (const QJsonValue &point : datas) {
            names.append(point.toObject().value(QLatin1String("name")).toString());
        }
        return names;
    }
    static SimPoint point(const QString &name, const QString &dataType, const QString &addr = "0")
    {
        return {name, addr, dataType, 0};
    }
};

void TestBoxSimProject::samplesRun_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("digest");
    QTest::addColumn<QString>("project");
    QTest::addColumn<QStringList>("standards");
    QTest::addColumn<QVector<int>>("points");
    QTest::newRow("riverside") << "riverside-substation.json"
                               << QByteArray("8e17ce118a838b7448570d31ec67d371") << "Riverside substation"
                               << QStringList{"Feeder meters", "Transformer bay", "Tariff meters"}
                               << QVector<int>{32, 8, 7};
    QTest::newRow("one slave") << "one-slave.json" << QByteArray("a32babd1a55d852370848124fb20cf4b") << "P"
                               << QStringList{"M"} << QVector<int>{2};
    QTest::newRow("empty") << "empty.json" << QByteArray("ae4b170e6ba2deb9f010c63441637ce4") << "Empty"
                           << QStringList() << QVector<int>();
}

void TestBoxSimProject::samplesRun()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, digest);
    QFETCH(QString, project);
    QFETCH(QStringList, standards);
    QFETCH(QVector<int>, points);
    RUN(startSession());
    RawTool transfer;
    QVERIFY(transfer.connectTo(address()));
    transfer.send(Raw::transfer(3, sample(file), digest));
    QCOMPARE(transfer.take(10).toHex(), QByteArray("123403000a0003005678"));
    QCOMPARE(m_box->projectName(), project);
    QCOMPARE(m_box->standardNames(), standards);
    m_box->reportNow();
    QTRY_COMPARE(Raw::reports(m_tool->bytes()).size(), standards.size());
    const QVector<QJsonObject> reports = Raw::reports(m_tool->bytes());
    for (int i = 0; i < reports.size(); ++i) {
        QCOMPARE(reports.at(i).value(QLatin1String("projectName")).toString(), project);
        QCOMPARE(reports.at(i).value(QLatin1String("plcName")).toString(), standards.at(i));
        QCOMPARE(names(reports.at(i)).size(), points.at(i));
    }
    QCOMPARE(transfer.bytes(), QByteArray());
}

void TestBoxSimProject::aReportHasExactlyTheseKeys()
{
    const QVector<QJsonObject> found = reports(sample("one-slave.json"), 1);
    QCOMPARE(found.size(), 1);
    QJsonObject report = found.at(0);
    const QString time = report.value(QLatin1String("time")).toString();
    QVERIFY2(QDateTime::fromString(time, "yyyy-MM-dd HH:mm:ss").isValid(), qPrintable(time));
    report.remove("time");
    QJsonArray datas = report.value(QLatin1String("datas")).toArray();
    for (int i = 0; i < datas.size(); ++i) {
        QJsonObject point = datas.at(i).toObject();
        QVERIFY(point.value(QLatin1String("value")).isString());
        QVERIFY(!point.value(QLatin1String("value")).toString().isEmpty());
        point.remove("value");
        datas[i] = point;
    }
    report.insert("datas", datas);
    QCOMPARE(
        QJsonDocument(report).toJson(QJsonDocument::Compact),
        QByteArray("{\"datas\":["
                   "{\"addr\":\"0\",\"dataType\":\"int16\",\"name\":\"a\",\"valid\":\"1\"},"
                   "{\"addr\":\"1\",\"dataType\":\"float\",\"name\":\"b\",\"valid\":\"1\"}],"
                   "\"description\":\"D\",\"plcName\":\"M\",\"projectName\":\"P\",\"sn\":\"SIM00000001\"}"));
}

void TestBoxSimProject::unselectedAndNamelessPointsAreLeftOut()
{
    const QVector<QJsonObject> found =
        reports("{\"name\":\"P\",\"standards\":[{\"name\":\"S\",\"datas\":[{\"datas\":["
                "{\"select\":\"false\",\"name\":\"left\",\"addr\":\"9010\"},"
                "{\"select\":\"true\"},"
                "{\"select\":\"true\",\"name\":\"\",\"addr\":\"B611\",\"dataType\":\"XXX\"},"
                "{\"select\":\"true\",\"name\":\"taken\",\"addr\":\"9020\",\"dataType\":\"XXXXXX.XX \"},"
                "{\"name\":\"no mark\"}]}]}]}",
                1);
    QCOMPARE(found.size(), 1);
    QCOMPARE(names(found.at(0)), QStringList({"B611", "taken", "no mark"}));
    // The trailing blank is part of the type's name.
    QCOMPARE(
        found.at(0).value(QLatin1String("datas")).toArray().at(1).toObject().value(QLatin1String("dataType")),
        QJsonValue("XXXXXX.XX "));
}

void TestBoxSimProject::pointsWithoutGroupsAreReported()
{
    const QVector<QJsonObject> found = reports("{\"name\":\"P\",\"standards\":[{\"name\":\"S\",\"datas\":[{"
                                               "\"name\":\"a\",\"addr\":\"1\"},{\"name\":\"b\"}]}]}",
                                               1);
    QCOMPARE(found.size(), 1);
    QCOMPARE(names(found.at(0)), QStringList({"a", "b"}));
}

void TestBoxSimProject::eachStandardReportsAtItsOwnInterval()
{
    BoxSimOptions own = withProject(
        "{\"name\":\"P\",\"standards\":["
        "{\"name\":\"fast\",\"parameter\":{\"collectionInterval\":\"100\"},\"datas\":[{\"name\":\"a\"}]},"
        "{\"name\":\"slow\",\"parameter\":{\"collectionInterval\":\"60000\"},\"datas\":[{\"name\":\"b\"}]}]"
        "}");
    own.reportInterval = -1;
    RUN(startSession(own));
    QTRY_VERIFY(Raw::reports(m_tool->bytes()).size() >= 5);
    const QVector<QJsonObject> found = Raw::reports(m_tool->bytes());
    const auto slow = std::count_if(found.cbegin(), found.cend(), [](const QJsonObject &report) {
        return report.value(QLatin1String("plcName")) == QJsonValue("slow");
    });
    QVERIFY(slow <= 1);
}

void TestBoxSimProject::anIntervalOfTheBoxReplacesTheStandards()
{
    BoxSimOptions own = withProject("{\"name\":\"P\",\"standards\":[{\"name\":\"slow\",\"parameter\":"
                                    "{\"collectionInterval\":\"60000\"},\"datas\":[{\"name\":\"b\"}]}]}");
    own.reportInterval = 20;
    RUN(startSession(own));
    QTRY_VERIFY(Raw::reports(m_tool->bytes()).size() >= 3);
}

void TestBoxSimProject::aPushedProjectReplacesTheOneBefore()
{
    RUN(start(withProject(R"({"name":"Old","standards":[{"name":"S","datas":[{"name":"a"}]}]})")));
    QSignalSpy started(m_box.get(), &BoxSim::projectStarted);
    m_tool->send(Raw::transfer(3, "{\"name\":\"New\"}", "bd702dfe980ad0192f34a85ef36209d2"));
    QCOMPARE(m_tool->take(10).toHex(), QByteArray("123403000a0003005678"));
    QCOMPARE(started.size(), 1);
    QCOMPARE(started.at(0).at(0).toString(), "New");
    QCOMPARE(m_box->standardNames(), QStringList());
}

void TestBoxSimProject::documentsThatAreNoProject_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("{");
    QTest::newRow("array") << QByteArray("[]");
    QTest::newRow("no name") << QByteArray("{}");
    QTest::newRow("name is a number") << QByteArray("{\"name\":1}");
    QTest::newRow("nested too deep") << QByteArray(100000, '[');
}

void TestBoxSimProject::documentsThatAreNoProject()
{
    QFETCH(QByteArray, document);
    SimProject project;
    QString error;
    QVERIFY(!readSimProject(document, &project, &error));
    QVERIFY(!error.isEmpty());
    QCOMPARE(project.name, QString());
}

void TestBoxSimProject::wrongTypesInEveryKeyAreHarmless()
{
    SimProject project;
    QString error;
    QVERIFY(
        readSimProject("{\"name\":\"P\",\"description\":1,\"standards\":[1,[],{\"name\":2,\"parameter\":[],"
                       "\"datas\":{}},{\"parameter\":{\"collectionInterval\":5},\"datas\":[1,{\"datas\":[2,"
                       "{\"name\":{},\"addr\":3},{\"name\":\"x\",\"length\":[]}]}]}]}",
                       &project, &error));
    QCOMPARE(project.standards.size(), 4);
    QCOMPARE(project.standards.at(3).points.size(), 1);
    QCOMPARE(project.standards.at(3).interval, 1000);
}

void TestBoxSimProject::settingsOfAnotherTypeAreMissing()
{
    SimProject project;
    QString error;
    QVERIFY(readSimProject(
        R"({"name": "P", "standards": [{"name": "S", "parameter": {"ip": "10.0.0.1", "port": 502},
                               "datas": [{"datas": [], "slaveAddress": "17", "protocolVersion": 1},
                                         {"datas": [], "stationNum": 1, "protocolVersion": "1"}]}]})",
        &project, &error));
    const SimStandard &standard = project.standards.at(0);
    QCOMPARE(standard.parameters, (QMap<QString, QString>{{"ip", "10.0.0.1"}}));
    QCOMPARE(standard.devices.size(), 2);
    QCOMPARE(standard.devices.at(0).settings,
             (QMap<QString, QString>{{"protocolVersion", "1"}, {"slaveAddress", "17"}}));
    QCOMPARE(standard.devices.at(1).settings, (QMap<QString, QString>()));
}

void TestBoxSimProject::largeProjectsAreBounded()
{
    QByteArray points = "{\"name\":\"p\"}";
    for (int i = 0; i < 16; ++i) {
        points += ',' + points; // 65536 of them
    }
    QByteArray standards = "{}";
    for (int i = 0; i < 9; ++i) {
        standards += ',' + standards;
    }
    SimProject project;
    QString error;
    QVERIFY(readSimProject("{\"name\":\"P\",\"standards\":[{\"datas\":[" + points + "]}," + standards + "]}",
                           &project, &error));
    QCOMPARE(project.standards.size(), 256);
    QCOMPARE(project.standards.at(0).points.size(), 50000);
    QCOMPARE(project.standards.at(0).leftOut, 65536 - 50000);
}

void TestBoxSimProject::valuesKeepToTheirPoint_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("dataType");
    QTest::addColumn<QString>("addr");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<int>("decimals");
    const auto row = [](const QString &name, const QString &dataType, const QString &addr, double low,
                        double high, int decimals) {
        QTest::newRow(qPrintable(QString("%1 %2 %3").arg(name, dataType, addr)))
            << name << dataType << addr << low << high << decimals;
    };
    row("Phase A voltage", "float", "0", 225, 235, 2);
    row("相电压", "uint16", "0", 225, 235, 0);
    row("Phase A current", "double", "0", 8, 16, 3);
    row("Total power factor", "float", "0", 0.9, 1.0, 2);
    row("Total active power", "float", "0", 2050, 3350, 2);
    row("Frequency", "float", "0", 49.9, 50.1, 2);
    row("Oil temperature", "int16", "0", 42, 54, 0);
    row("voltage of a small type", "int8", "0", 127, 127, 0);
    row("anything", "int32", "0", 30, 70, 0);
    row("anything", "", "0", 30, 70, 2);
    row("Ua", "XXX.X", "02010100", 225, 235, 1);
    row("Ua", "XXX", "B611", 225, 235, 0);
    row("Ia", "XXX.XXX", "02020100", 8, 16, 3);
    row("P", "XX.XXXX", "02030000", 2, 3.4, 4);
    row("cos", "X.XXX", "B650", 0.9, 1.0, 3);
    row("constant", "NNNNNN", "C030", 1600, 1600, 0);
    // The address means a meter's item only together with a meter's format.
    row("anything", "uint16", "02010100", 30, 70, 0);
}

void TestBoxSimProject::valuesKeepToTheirPoint()
{
    QFETCH(QString, name);
    QFETCH(QString, dataType);
    QFETCH(QString, addr);
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(int, decimals);
    for (quint32 seed : {1U, 2U, 77U}) {
        const PointSignal signal(point(name, dataType, addr), seed);
        QSet<QString> seen;
        for (quint64 step = 0; step < 200; ++step) {
            const QString value = signal.value(step);
            seen.insert(value);
            bool number = false;
            const double read = value.toDouble(&number);
            QVERIFY2(number && read >= low && read <= high, qPrintable(value));
            QCOMPARE(value.section(QLatin1Char('.'), 1).size(), decimals);
        }
        QCOMPARE(seen.size() > 2, low < high);
    }
}

void TestBoxSimProject::countersGrowAtEachStep_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("dataType");
    QTest::addColumn<QString>("addr");
    const auto row = [](const QString &name, const QString &dataType, const QString &addr) {
        QTest::newRow(qPrintable(name)) << name << dataType << addr;
    };
    row("Import active energy", "float", "72");
    row("Operating hours", "uint32", "40");
    row("Energy through", "uint64", "44");
    row("Import", "XXXXXX.XX", "00010000");
    row("x", "XXXXXX.XX ", "9020");
}

void TestBoxSimProject::countersGrowAtEachStep()
{
    QFETCH(QString, name);
    QFETCH(QString, dataType);
    QFETCH(QString, addr);
    const PointSignal signal(point(name, dataType, addr), 1);
    for (quint64 step = 0; step < 1000; ++step) {
        QVERIFY2(signal.value(step).toDouble() < signal.value(step + 1).toDouble(),
                 qPrintable(signal.value(step)));
    }
}

void TestBoxSimProject::booleansFlip()
{
    const PointSignal signal(point("Fan running", "bool"), 1);
    QSet<QString> seen;
    for (quint64 step = 0; step < 20; ++step) {
        seen.insert(signal.value(step));
    }
    QCOMPARE(seen, QSet<QString>({"0", "1"}));
}

void TestBoxSimProject::textsStay()
{
    SimPoint plate = point("Nameplate", "string");
    const PointSignal signal(plate, 1);
    QCOMPARE(signal.value(0).size(), 10);
    QCOMPARE(signal.value(0), signal.value(99));
    plate.length = 3;
    QCOMPARE(PointSignal(plate, 1).value(0), "SIM");
}

void TestBoxSimProject::theSameSeedGivesTheSameValues()
{
    const auto run = [](quint32 seed) {
        QStringList values;
        for (const char *name : {"voltage", "energy", "flag"}) {
            const PointSignal signal(point(QString::fromLatin1(name), "float"), seed);
            for (quint64 step = 0; step < 50; ++step) {
                values.append(signal.value(step));
            }
        }
        return values;
    };
    QCOMPARE(run(7), run(7));
    QVERIFY(run(7) != run(8));
}

QTEST_GUILESS_MAIN(TestBoxSimProject)
#include "tst_boxsimproject.moc"

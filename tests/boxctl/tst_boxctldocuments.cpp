#include "boxctltest.h"
#include "definitions/values.h"
#include "files.h"
#include "model/itemroles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QtTest>

using namespace BoxCtl;

namespace {

const QString oneSlave = TEST_DATA_DIR "/one-slave.json";

QByteArray withChange(const char *before, const char *after)
{
    QByteArray bytes = Files::contents(oneSlave);
    if (!bytes.contains(before)) {
        qFatal("the document has no %s", before);
    }
    return bytes.replace(before, after);
}

// Every key that a definition of a kind may have, each with its own name for a text.
QJsonObject everyKey(Definitions::Kind kind)
{
    QJsonObject object{{"name", "N"}};
    const QVector<Definitions::Value> &values = Definitions::values(kind);
    for (const Definitions::Value &value : values) {
        if (value.coding != Definitions::Coding::Unsaved
            && QLatin1String(value.key) != QLatin1String("datas")) {
            object.insert(QLatin1String(value.key), QLatin1String(value.key));
        }
    }
    return object;
}

} // namespace

// The commands on project documents, and how a call is told that it is wrong.
class TestBoxCtlDocuments : public QObject
{
    Q_OBJECT
private slots:
    void wrongCalls_data();
    void wrongCalls();
    void helpNamesEveryCommand();
    void badDocuments_data();
    void badDocuments();
    void check_data();
    void check();
    void show();
    void secretsAreMasked();
    void secretsOfEveryKindAreMasked();
    void everyValueHasTheNameOfItsForm();
    void diff_data();
    void diff();
    void diffOfHandMadeDocuments_data();
    void diffOfHandMadeDocuments();
    void diffOfSecrets();
    void fullDiskIsTold();
};

void TestBoxCtlDocuments::wrongCalls_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    const QString general = "boxctl: try boxctl --help\n";
    QTest::newRow("none") << QStringList() << "boxctl: a command is missing\n" + general;
    QTest::newRow("command") << QStringList{"nonsense"} << "boxctl: there is no command nonsense\n" + general;
    QTest::newRow("option first") << QStringList{"--json"} << "boxctl: there is no option --json\n" + general;
    QTest::newRow("option") << QStringList{"show", "--bogus", "a.json"}
                            << "boxctl: show: Unknown option 'bogus'.\nboxctl: try boxctl show --help\n";
    QTest::newRow("check nothing") << QStringList{
        "check"} << "boxctl: check: it takes one project document\nboxctl: try boxctl check --help\n";
    QTest::newRow("show two") << QStringList{
        "show", "a", "b"} << "boxctl: show: it takes one project document\nboxctl: try boxctl show --help\n";
    QTest::newRow("diff one") << QStringList{
        "diff", "a"} << "boxctl: diff: it takes two project documents\nboxctl: try boxctl diff --help\n";
}

void TestBoxCtlDocuments::wrongCalls()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    QCOMPARE(run(arguments), (Outcome{2, QString(), error}));
}

void TestBoxCtlDocuments::helpNamesEveryCommand()
{
    const Outcome help = run({"--help"});
    const Outcome all = run({"--help-all"});
    QCOMPARE(help.status, 0);
    QVERIFY(all.out.startsWith(help.out));
    static const QRegularExpression row("^  ([a-z]+)  +[A-Z]", QRegularExpression::MultilineOption);
    const QString list = help.out.section("Commands:\n", 1).section("\nBoxes:", 0, 0);
    auto commands = row.globalMatch(list);
    QVERIFY(commands.hasNext());
    while (commands.hasNext()) {
        const QString name = commands.next().captured(1);
        const Outcome own = run({name, "--help"});
        QCOMPARE(own.status, 0);
        QVERIFY2(own.out.startsWith("Usage: boxctl " + name + " [options]"), qPrintable(own.out));
        QVERIFY2(all.out.contains("\nboxctl " + name + " [options]"), qPrintable(name));
        QVERIFY2(all.out.contains(own.out.section("\n", 1)), qPrintable(name));
    }
    const QStringList lines = all.out.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        QVERIFY2(line.size() <= 80, qPrintable(line));
    }
}

void TestBoxCtlDocuments::badDocuments_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("why");
    const auto file = [](const QString &name, const QByteArray &bytes) { return Files::put(name, bytes); };
    QTest::newRow("missing") << "missing.json"
                             << "No such file or directory";
    QTest::newRow("a folder") << "."
                              << "it is a folder";
    QTest::newRow("endless") << "/dev/zero"
                             << "it holds more than 64 MiB";
    QTest::newRow("empty") << file("empty.json", "") << "it is not JSON: illegal value at byte 0";
    QTest::newRow("no JSON") << file("text.json", "{\"name\":")
                             << "it is not JSON: unterminated object at byte 8";
    QTest::newRow("a list") << file("list.json", "[1]") << "it holds no JSON object";
    QTest::newRow("of another program")
        << file("package.json", R"({"name": "leftpad", "version": "1.0.0"})") << "it is no project document";
    QTest::newRow("too deep") << file("deep.json", QByteArray(2000, '[') + QByteArray(2000, ']'))
                              << "it is not JSON: too deeply nested document at byte 1025";
}

void TestBoxCtlDocuments::badDocuments()
{
    QFETCH(QString, path);
    QFETCH(QString, why);
    const Outcome expected{3, QString(), QString("boxctl: %1: %2\n").arg(path, why)};
    QCOMPARE(run({"check", path}), expected);
    QCOMPARE(run({"show", path}), expected);
    QCOMPARE(run({"diff", oneSlave, path}), expected);
    QCOMPARE(run({"diff", path, oneSlave}), expected);
}

void TestBoxCtlDocuments::check_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("json");
    QTest::newRow("nothing to remark") << Files::contents(oneSlave) << 0 << QString() << QString();
    QTest::newRow("a warning")
        << withChange("192.168.1.70", "") << 0 << "Warning: Box/B: The IP address is empty.\n"
        << "{\"path\":[\"Box\",\"B\"],\"severity\":\"warning\",\"text\":\"The IP address is "
           "empty.\"}\n";
    QTest::newRow("an error")
        << withChange("192.168.1.60", "") << 1 << "Error: Standard/M: The IP address is empty.\n"
        << "{\"path\":[\"Standard\",\"M\"],\"severity\":\"error\",\"text\":\"The IP address is "
           "empty.\"}\n";
    QTest::newRow("characters that are not seen")
        << withChange("192.168.1.70", "").replace("\"B\"", "\"B\u202e\u007f\u009b\u2028\U000e0041\"") << 0
        << "Warning: Box/B     : The IP address is empty.\n"
        << "{\"path\":[\"Box\",\"B\\u202e\\u007f\\u009b\\u2028\\udb40\\udc41\"],"
           "\"severity\":\"warning\",\"text\":\"The IP address is empty.\"}\n";
    QTest::newRow("no name") << withChange("\"name\": \"P\"", "\"name\": \"\"") << 1
                             << "Error: : The name is empty.\n"
                             << "{\"path\":[\"\"],\"severity\":\"error\",\"text\":\"The name is empty.\"}\n";
}

void TestBoxCtlDocuments::check()
{
    QFETCH(QByteArray, document);
    QFETCH(int, status);
    QFETCH(QString, lines);
    QFETCH(QString, json);
    const QString path = Files::put("checked.json", document);
    QCOMPARE(run({"check", path}), (Outcome{status, lines, QString()}));
    QCOMPARE(run({"check", "--json", path}), (Outcome{status, json, QString()}));
}

void TestBoxCtlDocuments::show()
{
    const QString document = R"({
        "name": "Plant\u001b[2J", "description": "first\nsecond", "extra": 7,
        "standards": [
            {"name": "Meters", "protocol": "DLT645", "parameter": {"baudRate": "2400"},
             "datas": [{"slaveAddress": "AA", "protocolVersion": 2,
                        "datas": [{"name": "", "addr": "9010", "select": "true"}, {"name": "", "addr": "9010"}]},
                       {"slaveAddress": "BB", "datas": "none"}]},
            {"name": "Meters"}],
        "boxs": [{"name": "North", "ip": "10.0.0.1", "wifipassword": ""}]})";
    const QString shown = "Plant [2J\n"
                          "  Description: first\n"
                          "    second\n"
                          "  \"extra\": 7\n"
                          "  Standard\n"
                          "    Meters\n"
                          "      Protocol: DLT645\n"
                          "      Baud Rate: 2400\n"
                          "      DLT645-1\n"
                          "        Slave Address: AA\n"
                          "        Protocol Version: 2\n"
                          "        9010\n"
                          "          Address: 9010\n"
                          "          \"select\": true\n"
                          "        9010 (2)\n"
                          "          Address: 9010\n"
                          "      DLT645-2\n"
                          "        Slave Address: BB\n"
                          "        \"datas\": none\n"
                          "    Meters (2)\n"
                          "  Box\n"
                          "    North\n"
                          "      IP: 10.0.0.1\n"
                          "      WIFI Password:\n";
    QCOMPARE(run({"show", Files::put("shown.json", document.toUtf8())}), (Outcome{0, shown, QString()}));
    QCOMPARE(run({"show", Files::put("shown.json", R"({"boxs": []})")}), (Outcome{0, "\n", QString()}));
}

void TestBoxCtlDocuments::secretsAreMasked()
{
    const QString path = Files::put("secret.json", R"({"name": "P", "services": [{"name": "S",
        "extendedParameters": {"password": "tiger1", "serverKeyPassword": "tiger2", "serverKey": "tiger3",
        "rootCertificate": "tiger4", "clientCertificate10": "tiger5", "rootCertificatePath": "root.pem"}}],
        "boxs": [{"name": "B", "wifipassword": "tiger6"}], "unknown": {"list": [{"password": "tiger7"}]}})");
    const Outcome shown = run({"show", path});
    QCOMPARE(shown.out.count("********"), 7);
    QCOMPARE(shown.out.count("tiger"), 0);
    QVERIFY(shown.out.contains("Root Certificate file: root.pem\n"));
    const Outcome open = run({"show", "--show-secrets", path});
    QCOMPARE(open.out.count("tiger"), 7);
    QCOMPARE(open.out.count("****"), 0);
}

// What the form of a Server, Standard, Service or Box keeps out of sight is so here, under its own key and
// deep in a value that no form shows.
void TestBoxCtlDocuments::secretsOfEveryKindAreMasked()
{
    using Definitions::Kind;
    const QVector<int> roles{serverPasswordRole,           serverDeviceSecretRole,
                             standardPasswordRole,         standardPrivateKeyRole,
                             standardCertificateRole,      servicePasswordRole,
                             serviceServerKeyRole,         serviceServerKeyPasswordRole,
                             serviceServerCertificateRole, serviceClientCertificate1Role,
                             boxWifiPasswordRole};
    QSet<int> found;
    QStringList keys{"accessToken", "Passphrase"};
    for (const Kind kind : {Kind::Server, Kind::Standard, Kind::Service, Kind::Box}) {
        for (const Definitions::Value &value : Definitions::values(kind)) {
            if (roles.contains(value.role)) {
                keys.append(QLatin1String(value.key));
                found.insert(value.role);
            }
        }
    }
    QCOMPARE(found.size(), roles.size());
    keys.removeDuplicates();
    QJsonObject box;
    QJsonObject document;
    for (const QString &key : qAsConst(keys)) {
        box.insert(key, "tiger");
        document.insert(QString("unknown%1").arg(document.size()), QJsonArray{QJsonObject{{key, "tiger"}}});
    }
    document.insert("boxs", QJsonArray{box});
    const QString path = Files::put("secret.json", QJsonDocument(document).toJson());
    const QString none = Files::put("none.json", R"({"boxs": [{}]})");
    for (const Outcome &outcome :
         {run({"show", path}), run({"diff", path, none}), run({"diff", none, path})}) {
        QCOMPARE(outcome.out.count("********"), 2 * keys.size());
        QCOMPARE(outcome.out.count("tiger"), 0);
    }
}

// A name of the output, less the page that it is on, is a label of a form.
void TestBoxCtlDocuments::everyValueHasTheNameOfItsForm()
{
    const QJsonObject document{{"name", "P"},
                               {"description", "D"},
                               {"standards", QJsonArray{everyKey(Definitions::Kind::Standard)}},
                               {"services", QJsonArray{everyKey(Definitions::Kind::Service)}},
                               {"boxs", QJsonArray{everyKey(Definitions::Kind::Box)}}};
    const QString path = Files::put("all.json", QJsonDocument(document).toJson());
    const QString catalogue = QString::fromUtf8(Files::contents(SOURCE_ROOT "/src/resources/chinese.ts"));
    const QStringList lines = run({"show", path}).out.split(QLatin1Char('\n')).filter(": ");
    QVERIFY(lines.size() > 60);
    static const QRegularExpression around("^ +((LAN|WAN|WIFI|LTE) )?|( file)?: .*$");
    for (QString line : lines) {
        const QString name = line.remove(around);
        QVERIFY2(catalogue.contains(QString("<source>%1:</source>").arg(name)), qPrintable(name));
    }
}

void TestBoxCtlDocuments::diff_data()
{
    QTest::addColumn<QByteArray>("other");
    QTest::addColumn<QString>("lines");
    QTest::newRow("nothing") << Files::contents(oneSlave) << QString();
    QTest::newRow("a field of a point")
        << withChange("int16", "int32") << "Standard/M/Modbus-1/a: Type: \"int16\", \"int32\"\n";
    QTest::newRow("fields of a Box") << withChange("\"192.168.1.70\",", "\"10.0.0.1\", \"added\": \"x\",")
                                     << "Box/B: IP: \"192.168.1.70\", \"10.0.0.1\"\n"
                                        "Box/B: \"added\": not there, \"x\"\n";
    QTest::newRow("a field that is gone") << withChange("\"keepAlive\": \"60000\",", "")
                                          << "Standard/M: Keep Alive Time: \"60000\", not there\n";
    QTest::newRow("a node of another name")
        << withChange("\"name\": \"M\"", "\"name\": \"N\"")
        << "Standard/M: only in " + oneSlave + "\nStandard/N: only in other.json\n";
    QTest::newRow("the project's name")
        << withChange("\"name\": \"P\"", "\"name\": \"Q\"") << "Name: \"P\", \"Q\"\n";
    QTest::newRow("a point more") << withChange("\"addr\": \"0\",", "\"name\": \"c\"}, {\"addr\": \"0\",")
                                  << "Standard/M/Modbus-1/c: only in other.json\n";
    QTest::newRow("a number for a text")
        << withChange("\"60000\"", "60000") << "Standard/M: Keep Alive Time: \"60000\", 60000\n";
    QTest::newRow("null for a text") << withChange("\"D\"", "null") << "Description: \"D\", null\n";
    QTest::newRow("another project's name, as a number")
        << withChange("\"name\": \"P\"", "\"name\": 5") << "Name: \"P\", 5\n";
    QTest::newRow("a name as a number")
        << withChange("\"name\": \"a\"", "\"name\": 5")
        << "Standard/M/Modbus-1/a: only in " + oneSlave + "\nStandard/M/Modbus-1/5: only in other.json\n";
    QTest::newRow("a line end") << withChange("\"D\"", "\"D\\n\"") << "Description: \"D\", \"D\\n\"\n";
    QTest::newRow("white space")
        << QJsonDocument::fromJson(Files::contents(oneSlave)).toJson(QJsonDocument::Compact) << QString();
}

void TestBoxCtlDocuments::diff()
{
    QFETCH(QByteArray, other);
    QFETCH(QString, lines);
    Files::put("other.json", other);
    QCOMPARE(run({"diff", oneSlave, "other.json"}), (Outcome{lines.isEmpty() ? 0 : 1, lines, QString()}));
}

void TestBoxCtlDocuments::diffOfHandMadeDocuments_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QString>("lines");
    const auto standard = [](const QByteArray &members) {
        return QByteArray("{\"standards\": [{\"name\": \"S\", " + members + "}]}");
    };
    QTest::newRow("one key in two places") << standard(R"("ip": "1", "parameter": {"ip": "2"})")
                                           << standard(R"("ip": "2", "parameter": {"ip": "1"})")
                                           << "Standard/S: IP: \"1\", \"2\"\nStandard/S: IP: \"2\", \"1\"\n";
    QTest::newRow("another place") << standard(R"("ip": "1")") << standard(R"("parameter": {"ip": "1"})")
                                   << "Standard/S: IP: \"1\", not there\nStandard/S: IP: not there, \"1\"\n";
    QTest::newRow("a name that is none")
        << standard(R"("parameter": {"name": "1"})") << standard(R"("parameter": {"name": "2"})")
        << "Standard/S: \"name\": \"1\", \"2\"\n";
    QTest::newRow("a flag") << standard(R"("x": true)") << standard(R"("x": "true")")
                            << "Standard/S: \"x\": true, \"true\"\n";
    QTest::newRow("nothing") << standard(R"("x": null)") << standard(R"("x": "")")
                             << "Standard/S: \"x\": null, \"\"\n";
    QTest::newRow("a list") << standard(R"("x": ["1", {}])") << standard(R"("x": "[\"1\",{}]")")
                            << "Standard/S: \"x\": [\"1\",{}], \"[\\\"1\\\",{}]\"\n";
    const QByteArray likeNamed =
        R"j({"boxs": [{"name": "A"}, {"name": "A", "ip": "2"}, {"name": "A (2)"}]})j";
    QTest::newRow("like-named, the same") << likeNamed << likeNamed << QString();
    QTest::newRow("like-named") << likeNamed << QByteArray(likeNamed).replace("\"2\"", "\"3\"")
                                << "Box/A (3): IP: \"2\", \"3\"\n";
    QTest::newRow("in another order")
        << likeNamed
        << QByteArray(R"j({"boxs": [{"name": "A (2)"}, {"name": "A"}, {"name": "A", "ip": "2"}]})j")
        << QString();
}

void TestBoxCtlDocuments::diffOfHandMadeDocuments()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(QString, lines);
    Files::put("before.json", before);
    Files::put("after.json", after);
    QCOMPARE(run({"diff", "before.json", "after.json"}),
             (Outcome{lines.isEmpty() ? 0 : 1, lines, QString()}));
}

void TestBoxCtlDocuments::diffOfSecrets()
{
    const QString a = Files::put("a.json", R"({"boxs": [{"name": "B", "wifipassword": "tiger1"}]})");
    const QString b = Files::put("b.json", R"({"boxs": [{"name": "B", "wifipassword": "tiger2"}]})");
    const QString c = Files::put("c.json", R"({"boxs": [{"name": "B"}]})");
    QCOMPARE(run({"diff", a, b}), (Outcome{1, "Box/B: WIFI Password differs\n", QString()}));
    QCOMPARE(run({"diff", a, c}), (Outcome{1, "Box/B: WIFI Password: \"********\", not there\n", QString()}));
    QCOMPARE(run({"diff", "--show-secrets", a, b}),
             (Outcome{1, "Box/B: WIFI Password: \"tiger1\", \"tiger2\"\n", QString()}));
}

void TestBoxCtlDocuments::fullDiskIsTold()
{
    const QString call = "exec \"$0\" show \"$1\" > /dev/full";
    QCOMPARE(run("sh", {"-c", call, BOXCTL_PROGRAM, oneSlave}),
             (Outcome{1, QString(), "boxctl: the output could not be written: No space left on device\n"}));
}

QTEST_GUILESS_MAIN(TestBoxCtlDocuments)
#include "tst_boxctldocuments.moc"

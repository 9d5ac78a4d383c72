#include "boxctltest.h"
#include "files.h"

#include <QtTest>

using namespace BoxCtl;

namespace {

const QString address = "127.0.40.10";
const QString other = "127.0.40.11";
const QString nowhere = "127.0.40.12"; // nothing listens there

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

} // namespace

// What is asked of Boxes.
class TestBoxCtlSettings : public QObject
{
    Q_OBJECT
private slots:
    void wrongCalls_data();
    void wrongCalls();
    void info();
    void oneThatFailsStopsNoOther();
    void faults_data();
    void faults();
    void get();
    void getThatFailsHalfway();
    void getAsJson();
    void reboot();
    void manyBoxesAndFewFiles();
    void interruptTellsWhatIsUnfinished_data();
    void interruptTellsWhatIsUnfinished();
};

void TestBoxCtlSettings::wrongCalls_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("why");
    const auto row = [](const char *arguments, const char *why) {
        QTest::newRow(arguments) << words(arguments) << QString::fromLatin1(why);
    };
    row("info", "a Box is missing");
    row("info 127.0.40", "'127.0.40' is no IPv4 address");
    row("info 127.0.40.256", "'127.0.40.256' is no IPv4 address");
    row("info localhost", "'localhost' is no IPv4 address");
    row("info 127.0.40.10:30088", "'127.0.40.10:30088' is no IPv4 address");
    row("info 127.0.40.10\n", "'127.0.40.10 ' is no IPv4 address");
    row("info 127.0.40.10 ::1", "'::1' is no IPv4 address");
    row("info --jobs 0 127.0.40.10", "--jobs takes a number from 1 to 1000");
    row("info --timeout x 127.0.40.10", "--timeout takes a number from 0.1 to 86400");
    row("info --progress x 127.0.40.10", "--progress takes a number from 0 to 86400");
    row("reboot --wait-limit 0 127.0.40.10", "--wait-limit takes a number from 1 to 86400");
    row("get lan", "a Box is missing");
    row("set 127.0.40.10", "it takes a group: lan wan wifi lte ntp time");
    row("set 127.0.40.10 lan", "lan needs what to set");
    row("set 127.0.40.10 lan bogus=1", "lan has no field 'bogus'");
    row("set 127.0.40.10 lan ip", "ip needs a text, as in ip=TEXT");
    row("set 127.0.40.10 lan ip=1.2.3.4 ip=1.2.3.5", "ip is named twice");
    row("set 127.0.40.10 lan ip=1.2.3", "ip takes an IPv4 address, or nothing");
    row("set 127.0.40.10 lan dns1=1.2.3.4\n", "dns1 takes an IPv4 address, or nothing");
    row("set 127.0.40.10 wan dhcp=1", "dhcp takes on or off");
    row("set 127.0.40.10 lte state=yes", "state takes on or off");
    row("set 127.0.40.10 wifi password", "password needs a source: password=@FILE or password=-");
    row("set 127.0.40.10 wifi password=@/dev/zero", "/dev/zero: it holds more than 4 KiB");
    row("set 127.0.40.10 wifi password=tiger",
        "a password is no argument, which others can see: password=@FILE or password=-");
    row("set 127.0.40.10 wifi password=@missing", "missing: No such file or directory");
    row("set 127.0.40 wifi password=@missing", "'127.0.40' is no IPv4 address");
    row("set 127.0.40.10 wifi password=@/dev/null", "/dev/null: it holds no password");
    row("set 127.0.40.10 lte at1=AT\rAT", "at1 takes no control characters");
    row("set 127.0.40.10 time soon", "time takes now, or a time such as \"2026-11-21 20:00:00\"");
    row("set 127.0.40.10 time now now", "time takes now, or one time such as \"2026-11-21 20:00:00\"");
}

void TestBoxCtlSettings::wrongCalls()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, why);
    const QString command = arguments.constFirst();
    QCOMPARE(
        run(arguments),
        (Outcome{2, QString(), QString("boxctl: %1: %2\nboxctl: try boxctl %1 --help\n").arg(command, why)}));
}

void TestBoxCtlSettings::info()
{
    const SimulatedBox box(address, {"--serial-number", "S7", "--model", "M", "--box-version", "2.1"});
    QCOMPARE(run({"info", address}),
             (Outcome{0, "127.0.40.10: version 2.1, serial number S7, model M\n", QString()}));
    QCOMPARE(run({"info", "--json", address}),
             (Outcome{0,
                      "{\"box\":\"127.0.40.10\",\"model\":\"M\",\"ok\":true,\"serialNumber\":\"S7\","
                      "\"version\":\"2.1\"}\n",
                      QString()}));
}

void TestBoxCtlSettings::oneThatFailsStopsNoOther()
{
    const SimulatedBox box(address);
    const SimulatedBox second(other);
    const Outcome outcome = run({"info", "--json", "--jobs", "1", address, nowhere, other});
    const QString identity =
        R"("model":"MRN-GATE-70","ok":true,"serialNumber":"SIM00000001","version":"1.0.0"})";
    QCOMPARE(outcome,
             (Outcome{1,
                      "{\"box\":\"127.0.40.10\"," + identity
                          + "\n{\"box\":\"127.0.40.12\",\"error\":\"Connection refused\",\"ok\":false}\n"
                            "{\"box\":\"127.0.40.11\","
                          + identity + "\n",
                      "boxctl: 127.0.40.12: Connection refused\n"
                      "boxctl: 2 of 3 Boxes done, 1 failed\n"}));
}

void TestBoxCtlSettings::faults_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("error");
    const auto row = [](const QString &options, const QString &command, const QString &error) {
        QTest::newRow(qPrintable(options + ", " + command)) << options << command << error;
    };
    const QString unknown = "; whether the Box took it is not known";
    row("--fault silent", "info", "No answer in 0.3 s");
    row("--fault silent", "get lan", "reading lan: No answer in 0.3 s");
    row("--fault no-heartbeat", "get ntp", "");
    row("--fault no-json", "set ntp server=1.2.3.4", "reading ntp: No answer in 0.3 s; nothing is written");
    row("--fault missing-key=NTP", "set ntp server=1.2.3.4",
        "reading ntp: No answer in 0.3 s; nothing is written");
    row("--fault type-number", "get ntp", "reading ntp: No answer in 0.3 s");
    row("--fault code-number", "set ntp server=1.2.3.4", "writing ntp: No answer in 0.3 s" + unknown);
    row("--fault code-number", "reboot",
        "The remote host closed the connection; whether it reboots is not known");
    row("--fault number-key=NTP", "set ntp server=1.2.3.4",
        "reading ntp: NTP is no text; nothing is written");
    row("--fault number-key=NTP", "get ntp", "reading ntp: NTP is no text");
    row("--fault ignore-writes", "set ntp server=1.2.3.4",
        "ntp was written, but is read back with another server");
    row("--fault ignore-writes", "set wifi ip=1.2.3.4 state=on",
        "wifi was written, but is read back with another state, ip");
    row("--fault refuse-write=403", "reboot", "the Box refused with the code 403");
    row("--fault drop-after-received=8", "get lan", "reading lan: The remote host closed the connection");
    row("--fault split=3 --fault noise", "get ntp", "");
}

void TestBoxCtlSettings::faults()
{
    QFETCH(QString, options);
    QFETCH(QString, command);
    QFETCH(QString, error);
    const SimulatedBox box(address, options.split(QLatin1Char(' ')));
    QStringList arguments = command.split(QLatin1Char(' '));
    arguments.insert(1, address);
    const Outcome outcome = run(arguments + QStringList{"--timeout", "0.3"});
    if (error.isEmpty()) {
        QCOMPARE(outcome, (Outcome{0, "127.0.40.10: ntp server=192.168.1.1\n", QString()}));
    } else {
        QCOMPARE(outcome, (Outcome{1, QString(), "boxctl: 127.0.40.10: " + error + QLatin1Char('\n')}));
    }
}

void TestBoxCtlSettings::get()
{
    const SimulatedBox box(address, {"--set", "ssid=plant\x1b[2J", "--set", "password=tiger"});
    QCOMPARE(run({"get", address, "lte", "wifi"}),
             (Outcome{0,
                      "127.0.40.10: lte state=on\n"
                      "127.0.40.10: lte at1=AT+CFUN=1\n"
                      "127.0.40.10: lte at2=\n"
                      "127.0.40.10: lte at3=\n"
                      "127.0.40.10: lte at4=\n"
                      "127.0.40.10: lte at5=\n"
                      "127.0.40.10: wifi state=off\n"
                      "127.0.40.10: wifi mode=station\n"
                      "127.0.40.10: wifi ssid=plant [2J\n"
                      "127.0.40.10: wifi password=********\n"
                      "127.0.40.10: wifi dhcp=on\n"
                      "127.0.40.10: wifi ip=192.168.2.80\n"
                      "127.0.40.10: wifi mask=255.255.255.0\n"
                      "127.0.40.10: wifi gateway=192.168.2.1\n"
                      "127.0.40.10: wifi dns1=192.168.2.1\n"
                      "127.0.40.10: wifi dns2=8.8.8.8\n",
                      QString()}));
    QVERIFY(run({"get", "--show-secrets", address, "wifi"}).out.contains("wifi password=tiger\n"));
    const Outcome all = run({"get", address});
    QCOMPARE(all.status, 0);
    QCOMPARE(all.out.count(QLatin1Char('\n')), 5 + 6 + 10 + 6 + 1 + 1);
}

// What was read before is told.
void TestBoxCtlSettings::getThatFailsHalfway()
{
    const SimulatedBox box(address, {"--fault", "missing-key=AT3"});
    QCOMPARE(run({"get", "--timeout", "0.3", address, "ntp", "lte", "lan"}),
             (Outcome{1, "127.0.40.10: ntp server=192.168.1.1\n",
                      "boxctl: 127.0.40.10: reading lte: No answer in 0.3 s\n"}));
    QCOMPARE(run({"get", "--json", "--timeout", "0.3", address, "ntp", "lte", "lan"}).out,
             "{\"box\":\"127.0.40.10\",\"error\":\"reading lte: No answer in 0.3 s\","
             "\"ntp\":{\"NTP\":\"192.168.1.1\"},\"ok\":false}\n");
}

void TestBoxCtlSettings::getAsJson()
{
    const SimulatedBox box(address);
    QCOMPARE(
        run({"get", "--json", address, "wan", "ntp"}),
        (Outcome{0,
                 "{\"box\":\"127.0.40.10\",\"ntp\":{\"NTP\":\"192.168.1.1\"},\"ok\":true,\"wan\":{"
                 "\"wanDhcp\":\"0\",\"wanDns1\":\"10.20.0.1\",\"wanDns2\":\"8.8.4.4\","
                 "\"wanGateway\":\"10.20.0.1\",\"wanIp\":\"10.20.0.80\",\"wanMask\":\"255.255.255.0\"}}\n",
                 QString()}));
}

void TestBoxCtlSettings::reboot()
{
    const SimulatedBox box(address, {"--reboot-time", "300"});
    QCOMPARE(run({"reboot", "--wait", address}),
             (Outcome{0, "127.0.40.10: answers again, version 1.0.0\n", QString()}));
    QCOMPARE(run({"reboot", address}), (Outcome{0, "127.0.40.10: reboots\n", QString()}));
    const SimulatedBox gone(other, {"--reboot-time", "100000"});
    QCOMPARE(run({"reboot", "--wait", "--wait-limit", "1", other}),
             (Outcome{1, QString(), "boxctl: 127.0.40.11: it reboots, and did not answer again in 1 s\n"}));
    const SimulatedBox deaf("127.0.40.13", {"--reboot-time", "0"});
    QCOMPARE(run({"reboot", "--wait", "--wait-limit", "1", "127.0.40.13"}),
             (Outcome{1, QString(), "boxctl: 127.0.40.13: it did not go down in 1 s\n"}));
}

void TestBoxCtlSettings::manyBoxesAndFewFiles()
{
    QByteArray list;
    for (int box = 0; box < 1000; ++box) {
        list +=
            "127.0.4" + QByteArray::number(3 + box / 250) + '.' + QByteArray::number(1 + box % 250) + '\n';
    }
    Files::put("thousand", list);
    const Outcome outcome =
        run("sh", {"-c", "ulimit -n 256; exec \"$0\" info --jobs 1000 @thousand", BOXCTL_PROGRAM});
    QCOMPARE(outcome.error.count(": Connection refused\n"), 1000);
    QCOMPARE(outcome.error.count(QLatin1Char('\n')), 1000 + 1);
    QVERIFY(outcome.error.endsWith("boxctl: 0 of 1000 Boxes done, 1000 failed\n"));
    QCOMPARE(outcome.status, 1);
}

void TestBoxCtlSettings::interruptTellsWhatIsUnfinished_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void TestBoxCtlSettings::interruptTellsWhatIsUnfinished()
{
    QFETCH(int, number);
    SimulatedBox box(address, {"--fault", "silent"});
    RunningCall call({"info", "--jobs", "1", address, other});
    QVERIFY(box.hasHeard("-> heartbeat"));
    call.signal(number);
    QCOMPARE(call.outcome(),
             (Outcome{1, QString(),
                      "boxctl: 127.0.40.10: interrupted while waiting for the heartbeat answer\n"
                      "boxctl: 127.0.40.11: interrupted before it was begun\n"
                      "boxctl: 0 of 2 Boxes done, 2 failed\n"}));
}

QTEST_GUILESS_MAIN(TestBoxCtlSettings)
#include "tst_boxctlsettings.moc"

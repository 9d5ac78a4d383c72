#include "boxctltest.h"
#include "fakebox.h"
#include "files.h"
#include "handframes.h"

#include <QDateTime>
#include <QtTest>

using namespace BoxCtl;

namespace {

const QString address = "127.0.40.60";
const QString clockSet = "2026-11-21 20:00:00";

// A Box that takes a clock, and more than a second later answers with that text what it is.
class ClockBox
{
public:
    ClockBox(const QString &where, const QString &readBack)
        : m_box(where)
    {
        m_box.heard = [this, readBack](int) {
            const QByteArray heard = m_box.received();
            m_box.forgetReceived();
            if (heard.contains(R"("type": 109)")) {
                m_isSet = true;
                m_box.send(HandFrames::json(R"({"type":"109","code":"200"})"));
            } else if (heard.contains(R"("type": "9")") && !m_isSet) {
                answer("2001-02-03 04:05:06");
            } else if (heard.contains(R"("type": "9")")) {
                QTimer::singleShot(1200, &m_box, [this, readBack] { answer(readBack); });
            }
        };
    }
    Q_DISABLE_COPY(ClockBox)

private:
    void answer(const QString &date) const
    {
        m_box.send(HandFrames::json(R"({"type":"9","pares":{"date":")" + date.toLatin1() + R"("}})"));
    }

    FakeBox m_box;
    bool m_isSet = false;
};

} // namespace

// Settings that are changed: what is kept, what is read back, and what is told where that is not so.
class TestBoxCtlSet : public QObject
{
    Q_OBJECT
private slots:
    void set_data();
    void set();
    void setKeepsWhatIsNotNamed();
    void setIsRefusedOrLost_data();
    void setIsRefusedOrLost();
    void capitalsOfASwitch();
    void requestThatIsTooLong();
    void setTime();
    void clockGoesOnMeanwhile();
    void clockHasNoSummerTime();
    void passwordsStayOutOfSight();
    void passwordIsAskedFor();
};

void TestBoxCtlSet::set_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("lines");
    const auto row = [](const char *change, const char *lines) {
        QTest::newRow(change) << QString::fromLatin1(change) << QString::fromLatin1(lines);
    };
    row("lan ip=10.0.0.9 dns2=",
        "127.0.40.60: lan ip=10.0.0.9 (was 192.168.1.80)\n127.0.40.60: lan dns2= (was 8.8.8.8)\n");
    row("wan dhcp=on", "127.0.40.60: wan dhcp=on (was off)\n");
    row("wifi state=on ssid=a=b",
        "127.0.40.60: wifi state=on (was off)\n127.0.40.60: wifi ssid=a=b (was box)\n");
    row("lte at5=AT", "127.0.40.60: lte at5=AT (was )\n");
    row("ntp server=10.0.0.1", "127.0.40.60: ntp server=10.0.0.1 (was 192.168.1.1)\n");
}

void TestBoxCtlSet::set()
{
    QFETCH(QString, change);
    QFETCH(QString, lines);
    const SimulatedBox box(address);
    const QStringList arguments = QStringList{"set", address} + change.split(QLatin1Char(' '));
    QString would = lines;
    QCOMPARE(run(arguments + QStringList{"--dry-run"}),
             (Outcome{0, would.replace(")\n", ") would be written\n"), QString()}));
    QCOMPARE(run(arguments), (Outcome{0, lines, QString()})); // so the dry run has changed nothing
}

void TestBoxCtlSet::setKeepsWhatIsNotNamed()
{
    const SimulatedBox box(address);
    const QString before = run({"get", address, "lan", "wan", "wifi", "lte", "ntp"}).out;
    QCOMPARE(run({"set", "--json", address, "lan", "gateway=10.9.9.9"}),
             (Outcome{0,
                      "{\"box\":\"127.0.40.60\",\"lan\":{\"lanDns1\":\"192.168.1.1\",\"lanDns2\":\"8.8.8.8\","
                      "\"lanGateway\":\"10.9.9.9\",\"lanIp\":\"192.168.1.80\",\"lanMask\":\"255.255.255.0\"},"
                      "\"ok\":true}\n",
                      QString()}));
    QString expected = before;
    expected.replace("lan gateway=192.168.1.1", "lan gateway=10.9.9.9");
    QCOMPARE(run({"get", address, "lan", "wan", "wifi", "lte", "ntp"}).out, expected);
}

void TestBoxCtlSet::setIsRefusedOrLost_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("error");
    const QString unknown = "; whether the Box took it is not known";
    QTest::newRow("refused") << "refuse-write=108:500"
                             << "writing ntp: the Box refused with the code 500";
    QTest::newRow("lost in the write") << "drop-after-received=60"
                                       << "writing ntp: The remote host closed the connection" + unknown;
    QTest::newRow("lost in the answer") << "drop-after-sent=100"
                                        << "writing ntp: The remote host closed the connection" + unknown;
}

void TestBoxCtlSet::setIsRefusedOrLost()
{
    QFETCH(QString, fault);
    QFETCH(QString, error);
    const SimulatedBox box(address, {"--fault", fault});
    QCOMPARE(run({"set", address, "ntp", "server=10.0.0.1"}),
             (Outcome{1, QString(), "boxctl: 127.0.40.60: " + error + QLatin1Char('\n')}));
}

void TestBoxCtlSet::capitalsOfASwitch()
{
    const SimulatedBox box(address, {"--fault", "capitals"});
    QCOMPARE(run({"set", address, "lte", "state=off"}),
             (Outcome{0, "127.0.40.60: lte state=off (was on)\n", QString()}));
    QVERIFY(run({"get", address, "lte"}).out.startsWith("127.0.40.60: lte state=off\n"));
}

void TestBoxCtlSet::requestThatIsTooLong()
{
    const SimulatedBox box(address, {"--set", "AT1=" + QString(1000, 'x')});
    QCOMPARE(run({"set", address, "lte", "at2=" + QString(3000, '"')}),
             (Outcome{1, QString(),
                      "boxctl: 127.0.40.60: lte would be a request of 7162 bytes, more than 4096; nothing is "
                      "written\n"}));
}

void TestBoxCtlSet::setTime()
{
    const SimulatedBox box(address);
    const Outcome fixed = run({"set", address, "time", "2001-02-03 04:05:06"});
    QVERIFY2(fixed.out.startsWith("127.0.40.60: time 2001-02-03 04:05:06 (was 20"), qPrintable(fixed.out));
    QCOMPARE(fixed.status, 0);
    const QDateTime before = QDateTime::currentDateTime();
    const Outcome now = run({"set", address, "time", "now"});
    QVERIFY2(now.out.contains(" (was 2001-02-03 04:05:"), qPrintable(now.out));
    const QString format = "yyyy-MM-dd HH:mm:ss";
    const QDateTime set = QDateTime::fromString(now.out.mid(18, format.size()), format);
    QVERIFY2(before.addSecs(-1) < set && set <= QDateTime::currentDateTime(), qPrintable(now.out));
}

// A Box reads its clock at any moment between the question and its answer.
void TestBoxCtlSet::clockGoesOnMeanwhile()
{
    const ClockBox early("127.0.40.61", "2026-11-21 19:59:58"); // as it was asked, and two seconds wrong
    const ClockBox late("127.0.40.62", "2026-11-21 20:00:03");  // as it answered, and two seconds wrong
    const ClockBox wrong("127.0.40.63", "2026-11-21 20:00:10");
    const Outcome outcome = run({"set", "127.0.40.61", "127.0.40.62", "127.0.40.63", "time", clockSet});
    QStringList lines = outcome.out.split(QLatin1Char('\n'));
    lines.sort();
    QCOMPARE(lines,
             (QStringList{"", "127.0.40.61: time 2026-11-21 20:00:00 (was 2001-02-03 04:05:06)",
                          "127.0.40.62: time 2026-11-21 20:00:00 (was 2001-02-03 04:05:06)"}));
    QCOMPARE(outcome.error,
             QString("boxctl: 127.0.40.63: time was written, but is read back with another time\n"
                     "boxctl: 2 of 3 Boxes done, 1 failed\n"));
}

// An hour that this computer skips is one of the Box.
void TestBoxCtlSet::clockHasNoSummerTime()
{
    const SimulatedBox box(address);
    const Outcome outcome = run("env",
                                {"TZ=CET-1CEST,M3.5.0,M10.5.0/3", BOXCTL_PROGRAM, "set", address, "time",
                                 "2026-03-29 02:30:00", "--dry-run"});
    QVERIFY2(outcome.out.startsWith("127.0.40.60: time 2026-03-29 02:30:00 (was 20"),
             qPrintable(outcome.out + outcome.error));
}

void TestBoxCtlSet::passwordsStayOutOfSight()
{
    const SimulatedBox box(address);
    Files::put("secret", "tiger = 7\r\nsecond line\n");
    const QStringList arguments{"set", address, "wifi", "password=@secret"};
    QCOMPARE(run(arguments), (Outcome{0, "127.0.40.60: wifi password=******** (was ********)\n", QString()}));
    QCOMPARE(
        run({"get", "--json", "--show-secrets", address, "wifi"}).out.count("\"password\":\"tiger = 7\""), 1);
    QCOMPARE(run(arguments + QStringList{"--json"}).out.count("tiger"), 0);
    // setsid(1) leaves no terminal to ask on.
    QCOMPARE(run("setsid", {"--wait", BOXCTL_PROGRAM, "set", address, "wifi", "password=-"}),
             (Outcome{2, QString(),
                      "boxctl: set: there is no terminal to ask for the password on\n"
                      "boxctl: try boxctl set --help\n"}));
}

void TestBoxCtlSet::passwordIsAskedFor()
{
    const SimulatedBox box(address);
    const QStringList arguments{"set", address, "wifi", "password=-"};
    const QByteArray question = "Password: ";
    const Outcome typed = runOnTerminal(arguments, question, "tiger\n");
    QVERIFY2(typed.out.startsWith("Password: \r\n"), qPrintable(typed.out)); // and nothing that was typed
    QVERIFY2(typed.out.endsWith("127.0.40.60: wifi password=******** (was ********)\r\n"),
             qPrintable(typed.out));
    QVERIFY(run({"get", "--show-secrets", address, "wifi"}).out.contains("wifi password=tiger\n"));
    // The end of the input is no password, an empty line is the empty one.
    QCOMPARE(runOnTerminal(arguments, question, "\x04"),
             (Outcome{2,
                      "Password: \r\nboxctl: set: no password was given\r\n"
                      "boxctl: try boxctl set --help\r\n",
                      QString()}));
    const Outcome empty = runOnTerminal(arguments, question, "\n");
    QVERIFY2(empty.out.endsWith("127.0.40.60: wifi password= (was ********)\r\n"), qPrintable(empty.out));
    // Nobody types one for a call that is wrong.
    QCOMPARE(runOnTerminal({"set", "127.0.40", "wifi", "password=-"}, "boxctl: ", {}).out,
             "boxctl: set: '127.0.40' is no IPv4 address\r\nboxctl: try boxctl set --help\r\n");
}

QTEST_GUILESS_MAIN(TestBoxCtlSet)
#include "tst_boxctlset.moc"

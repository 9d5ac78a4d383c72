#include "boxctltest.h"
#include "files.h"

#include <QFileInfo>
#include <QtTest>

using namespace BoxCtl;

namespace {

const QString searchAddress = "10.213.8.1";
const QString boxAddress = "10.213.8.70";

// Names with the process number, so that two runs do not meet; interfaces take 15 characters at most.
QString hostName(const char *role)
{
    return QString("mc%1%2").arg(QLatin1String(role)).arg(QCoreApplication::applicationPid());
}

Outcome runAs(const QString &host, const QStringList &command)
{
    return run("ip", QStringList{"netns", "exec", host} + command);
}

// Runs ip(8); its complaint, or an empty text.
QString ip(const QString &arguments)
{
    const Outcome outcome = run("ip", arguments.split(QLatin1Char(' ')));
    return outcome.status == 0 ? QString() : QString("ip %1: %2").arg(arguments, outcome.error);
}

} // namespace

// The search over a real broadcast: boxctl and a simulated Box on two hosts of their own, network namespaces
// joined by a pair of virtual interfaces. Nothing is sent outside of them.
class TestBoxCtlSearch : public QObject
{
    Q_OBJECT
private slots:
    void wrongCalls_data();
    void wrongCalls();
    void interruptIsTold();
    void initTestCase();
    void cleanupTestCase();
    void findsTheBox_data();
    void findsTheBox();
    void portThatIsNotItsOwnIsTold();

private:
    QString m_reason; // why there are no hosts; empty if they are there
};

void TestBoxCtlSearch::initTestCase()
{
    const QString tool = hostName("t");
    const QString box = hostName("b");
    const QStringList steps{
        "netns add " + tool,
        "netns add " + box,
        QString("link add mcv netns %1 type veth peer name mcv netns %2").arg(tool, box),
        QString("-n %1 addr add %2/24 dev mcv").arg(tool, searchAddress),
        QString("-n %1 addr add %2/24 dev mcv").arg(box, boxAddress),
        QString("-n %1 link set lo up").arg(tool),
        QString("-n %1 link set mcv up").arg(tool),
        QString("-n %1 link set mcv up").arg(box),
    };
    for (const QString &step : steps) {
        if (m_reason.isEmpty()) {
            m_reason = ip(step);
        }
    }
}

void TestBoxCtlSearch::cleanupTestCase()
{
    // The pair of interfaces goes with its namespaces. What was not made is not there to remove.
    for (const char *role : {"t", "b"}) {
        if (QFileInfo::exists("/run/netns/" + hostName(role))) {
            QCOMPARE(ip("netns del " + hostName(role)), QString());
        }
    }
}

void TestBoxCtlSearch::wrongCalls_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("why");
    QTest::newRow("an argument") << QStringList{"127.0.0.1"} << "it takes no arguments";
    QTest::newRow("no address") << QStringList{"--bind", "eth0"} << "--bind takes an IPv4 address";
    QTest::newRow("no time") << QStringList{"--seconds", "0"} << "--seconds takes a number from 1 to 3600";
}

void TestBoxCtlSearch::wrongCalls()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, why);
    QCOMPARE(run(QStringList{"search"} + arguments),
             (Outcome{2, QString(), "boxctl: search: " + why + "\nboxctl: try boxctl search --help\n"}));
}

void TestBoxCtlSearch::interruptIsTold()
{
    RunningCall call({"search", "--seconds", "60", "--bind", "10.213.8.2"});
    QTRY_VERIFY(call.error().endsWith('\n')); // that it can't search from there
    const QString before = QString::fromUtf8(call.error());
    call.signal(SIGINT);
    QCOMPARE(
        call.outcome(),
        (Outcome{1, QString(), before + "boxctl: the search was interrupted; there may be more Boxes\n"}));
}

void TestBoxCtlSearch::findsTheBox_data()
{
    QTest::addColumn<bool>("answers");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<Outcome>("outcome");
    QTest::newRow("for people") << true << QStringList{"--seconds", "2"} // which brings two answers
                                << Outcome{0, "10.213.8.70: mask 255.255.255.0, model MRN-GATE-70\n",
                                           QString()};
    QTest::newRow("as JSON") << true << QStringList{"--seconds", "1", "--json", "--bind", searchAddress}
                             << Outcome{0,
                                        "{\"box\":\"10.213.8.70\",\"mask\":\"255.255.255.0\","
                                        "\"model\":\"MRN-GATE-70\",\"ok\":true}\n",
                                        QString()};
    // Not octal, as the system reads it.
    QTest::newRow("with zeros in front")
        << true << QStringList{"--seconds", "1", "--bind", "010.213.8.001"}
        << Outcome{0, "10.213.8.70: mask 255.255.255.0, model MRN-GATE-70\n", QString()};
    QTest::newRow("none") << false << QStringList{"--seconds", "1"} << Outcome{1, QString(), QString()};
    QTest::newRow("not its address")
        << true << QStringList{"--seconds", "1", "--bind", "10.213.8.2"}
        << Outcome{1, QString(),
                   "boxctl: no search from 10.213.8.2, UDP port 5: The address is not available\n"};
}

void TestBoxCtlSearch::findsTheBox()
{
    QFETCH(bool, answers);
    QFETCH(QStringList, options);
    QFETCH(Outcome, outcome);
    if (!m_reason.isEmpty()) {
        QSKIP(qPrintable("Network namespaces may not be made here: " + m_reason));
    }
    QProcess box;
    box.start("ip",
              {"netns", "exec", hostName("b"), BOXSIM_PROGRAM, "--address", boxAddress, "--discovery-address",
               "0.0.0.0", "--log", "box.log",
               answers ? QString("--quiet") : QString("--fault=no-discovery")});
    QVERIFY(QTest::qWaitFor([&box] { return box.peek(1000).contains("listening on"); }));
    QCOMPARE(runAs(hostName("t"), QStringList{BOXCTL_PROGRAM, "search"} + options), outcome);
    box.terminate();
    QVERIFY(box.waitForFinished());
    if (options.contains("2")) { // asked once at the beginning and once a second later
        QVERIFY(Files::contents("box.log").count("search") >= 2);
    }
}

void TestBoxCtlSearch::portThatIsNotItsOwnIsTold()
{
    if (!m_reason.isEmpty()) {
        QSKIP(qPrintable("Network namespaces may not be made here: " + m_reason));
    }
    // Without the right to a port below 1024.
    const Outcome outcome = runAs(hostName("t"),
                                  {"sh", "-c",
                                   "sysctl -qw net.ipv4.ip_unprivileged_port_start=1024; "
                                   "exec setpriv --bounding-set=-net_bind_service \"$0\" search --seconds 1",
                                   BOXCTL_PROGRAM});
    QCOMPARE(
        outcome,
        (Outcome{1, QString(), "boxctl: no search from 10.213.8.1, UDP port 5: The address is protected\n"}));
}

QTEST_GUILESS_MAIN(TestBoxCtlSearch)
#include "tst_boxctlsearch.moc"

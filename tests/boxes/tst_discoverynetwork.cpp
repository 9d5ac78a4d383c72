#include "run.h"
#include "searchrows.h"

#include <QComboBox>
#include <QFileInfo>
#include <QHostAddress>
#include <QNetworkInterface>
#include <QProcess>
#include <QPushButton>
#include <QUdpSocket>
#include <QtTest>

// The search over a real broadcast: a simulated Box and the search dialog on two hosts of their own, network
// namespaces joined by a pair of virtual interfaces. Nothing is sent outside of them.
class TestDiscoveryNetwork : public QObject
{
    Q_OBJECT
private slots:
    void boxOnTheOtherHostIsListed();
    void searchedInterfaceDecides();
    void hostileDatagramsLeaveNoRow();
    void answerUnreadAtTheNextBroadcastIsLost();
    void takenPortShowsNothing();
    void cleanup();

private:
    // The test of this name again, inside the namespace of the searching host.
    void runOnSearchingHost(const char *test);
    // False with the reason if this user may not make namespaces.
    bool makeHosts(QString *reason);
    void removeHosts();

    QProcess m_box;
};

namespace {

// Set in the process that runs inside the namespace.
const char insideVariable[] = "MARLINGATE_SEARCHING_HOST";
const QString searchAddress = "10.213.7.1";
const QString boxAddress = "10.213.7.70";

bool isInside()
{
    return qEnvironmentVariableIsSet(insideVariable);
}

// Names with the process number, so that two runs do not meet; interfaces take 15 characters at most.
QString hostName(const char *role)
{
    return QString("mg%1%2").arg(QLatin1String(role)).arg(QCoreApplication::applicationPid());
}

// Runs ip(8); its complaint, or an empty text.
QString ip(const QString &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start("ip", arguments.split(QLatin1Char(' ')));
    if (!process.waitForStarted() || !process.waitForFinished()) {
        return "ip cannot be run: " + process.errorString();
    }
    const QString said = QString::fromLocal8Bit(process.readAll()).trimmed();
    return process.exitCode() == 0 ? QString() : QString("ip %1: %2").arg(arguments, said);
}

void selectInterface(const BoxSearchDialog &dialog, const QString &address)
{
    auto *interfaces = dialog.findChild<QComboBox *>();
    for (int index = 0; index < interfaces->count(); ++index) {
        const auto entries = interfaces->itemData(index).value<QNetworkInterface>().addressEntries();
        for (const QNetworkAddressEntry &entry : entries) {
            if (entry.ip() == QHostAddress(address)) {
                interfaces->setCurrentIndex(index);
                return;
            }
        }
    }
    QFAIL("the interface is not in the list");
}

// Has the Box answer a search that is not the dialog's: all that the dialog sent it before is answered then.
void awaitTheBox()
{
    QUdpSocket probe;
    QVERIFY(probe.bind(QHostAddress(searchAddress)));
    const QByteArray search("\x12\x34\0\0Search Box\x56\x78", 16);
    QCOMPARE(probe.writeDatagram(search, QHostAddress(boxAddress), 30088), qint64(search.size()));
    QTRY_VERIFY(probe.hasPendingDatagrams());
}

const QString boxRow = "设备IP: 10.213.7.70\n子网掩码: 255.255.255.0\n盒子型号: MRN-GATE-70";

} // namespace

void TestDiscoveryNetwork::cleanup()
{
    if (!isInside()) {
        removeHosts();
    }
}

bool TestDiscoveryNetwork::makeHosts(QString *reason)
{
    const QString tool = hostName("t");
    const QString box = hostName("b");
    const QStringList steps{
        "netns add " + tool,
        "netns add " + box,
        QString("link add %1 netns %2 type veth peer name %1 netns %3").arg("mgv", tool, box),
        QString("-n %1 addr add %2/24 dev mgv").arg(tool, searchAddress),
        QString("-n %1 addr add %2/24 dev mgv").arg(box, boxAddress),
        QString("-n %1 link set lo up").arg(tool),
        QString("-n %1 link set mgv up").arg(tool),
        QString("-n %1 link set mgv up").arg(box),
    };
    for (const QString &step : steps) {
        *reason = ip(step);
        if (!reason->isEmpty()) {
            return false;
        }
    }
    return true;
}

void TestDiscoveryNetwork::removeHosts()
{
    if (m_box.state() != QProcess::NotRunning) {
        m_box.terminate();
        if (!m_box.waitForFinished(5000)) {
            m_box.kill();
            m_box.waitForFinished(5000);
        }
    }
    // The pair of interfaces goes with its namespaces. What was not made is not there to remove.
    for (const char *role : {"t", "b"}) {
        if (QFileInfo::exists("/run/netns/" + hostName(role))) {
            QCOMPARE(ip("netns del " + hostName(role)), QString());
        }
    }
}

void TestDiscoveryNetwork::runOnSearchingHost(const char *test)
{
    QString reason;
    if (!makeHosts(&reason)) {
        QSKIP(qPrintable("Network namespaces may not be made here: " + reason));
    }
    m_box.setProcessChannelMode(QProcess::MergedChannels);
    m_box.start("ip",
                {"netns", "exec", hostName("b"), QString(BOXSIM_PROGRAM), "--address", boxAddress,
                 "--discovery-address", "0.0.0.0"});
    QByteArray said;
    QTRY_VERIFY2((said += m_box.readAll()).contains("listening on"), said.constData());

    QProcess inside;
    inside.setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(insideVariable), "1");
    inside.setProcessEnvironment(environment);
    inside.start(
        "ip", {"netns", "exec", hostName("t"), QCoreApplication::applicationFilePath(), QLatin1String(test)});
    QVERIFY(inside.waitForFinished(60000));
    const QByteArray output = inside.readAll();
    QVERIFY2(inside.exitCode() == 0, output.constData());
}

void TestDiscoveryNetwork::boxOnTheOtherHostIsListed()
{
    if (!isInside()) {
        runOnSearchingHost("boxOnTheOtherHostIsListed");
        return;
    }
    BoxSearchDialog dialog;
    RUN(selectInterface(dialog, searchAddress));
    dialog.findChild<QPushButton *>("searchButton")->click();
    QTRY_COMPARE(rowsOf(dialog), QStringList{boxRow});
    // The answer to the next broadcast brings no second row.
    const QSignalSpy answered(dialog.findChild<QUdpSocket *>(), &QUdpSocket::readyRead);
    dialog.sendSearchBroadcast();
    QTRY_VERIFY(!answered.isEmpty());
    QCOMPARE(rowsOf(dialog), QStringList{boxRow});
}

void TestDiscoveryNetwork::searchedInterfaceDecides()
{
    if (!isInside()) {
        runOnSearchingHost("searchedInterfaceDecides");
        return;
    }
    BoxSearchDialog dialog;
    RUN(selectInterface(dialog, "127.0.0.1"));
    const QSignalSpy broadcast(dialog.findChild<QTimer *>("searchTimer"), &QTimer::timeout);
    dialog.searchForBoxes();
    QTRY_VERIFY(!broadcast.isEmpty());
    RUN(awaitTheBox());
    QCOMPARE(rowsOf(dialog), QStringList());
    // Taken up by the next broadcast of the same search.
    RUN(selectInterface(dialog, searchAddress));
    QTRY_COMPARE(rowsOf(dialog), QStringList{boxRow});
}

void TestDiscoveryNetwork::hostileDatagramsLeaveNoRow()
{
    if (!isInside()) {
        runOnSearchingHost("hostileDatagramsLeaveNoRow");
        return;
    }
    BoxSearchDialog dialog;
    RUN(selectInterface(dialog, searchAddress));
    dialog.sendSearchBroadcast();
    QTRY_COMPARE(rowsOf(dialog), QStringList{boxRow});
    QUdpSocket sender;
    const auto send = [&sender](const QByteArray &datagram) {
        QCOMPARE(sender.writeDatagram(datagram, QHostAddress(searchAddress), 5), qint64(datagram.size()));
    };
    for (int size = 0; size <= 40; ++size) {
        send(QByteArray(size, '\xFF'));
        send(QByteArray("\x12\x34", 2) + QByteArray(size, '\x12'));
    }
    send(QByteArray("\x12\x34\xFF\xFF", 4) + QByteArray(33, 'x'));
    // The last of them tells that all before it were read: 16 characters without NUL, M larger than what is
    // left.
    send(QByteArray("\x12\x34\xFF\xFF", 4) + QByteArray(32, 'y') + QByteArray("\xFFM"));
    const QString last = "设备IP: yyyyyyyyyyyyyyyy\n子网掩码: yyyyyyyyyyyyyyyy\n盒子型号: M";
    QTRY_COMPARE(rowsOf(dialog), (QStringList{boxRow, last}));
}

void TestDiscoveryNetwork::answerUnreadAtTheNextBroadcastIsLost()
{
    if (!isInside()) {
        runOnSearchingHost("answerUnreadAtTheNextBroadcastIsLost");
        return;
    }
    BoxSearchDialog dialog;
    RUN(selectInterface(dialog, searchAddress));
    dialog.sendSearchBroadcast();
    QTRY_COMPARE(rowsOf(dialog), QStringList{boxRow});
    QUdpSocket sender;
    const auto answerFrom = [&sender](char name) {
        const QByteArray answer =
            QByteArray("\x12\x34\xFF\xFF", 4) + QByteArray(32, name) + QByteArray("\x01M");
        QCOMPARE(sender.writeDatagram(answer, QHostAddress(searchAddress), 5), qint64(answer.size()));
    };
    answerFrom('x');
    dialog.sendSearchBroadcast();
    // One that comes later is taken, whichever broadcast it answers.
    answerFrom('y');
    const QString late = "设备IP: yyyyyyyyyyyyyyyy\n子网掩码: yyyyyyyyyyyyyyyy\n盒子型号: M";
    QTRY_COMPARE(rowsOf(dialog), (QStringList{boxRow, late}));
}

void TestDiscoveryNetwork::takenPortShowsNothing()
{
    if (!isInside()) {
        runOnSearchingHost("takenPortShowsNothing");
        return;
    }
    QUdpSocket other;
    QVERIFY(other.bind(QHostAddress(searchAddress), 5, QAbstractSocket::DontShareAddress));
    BoxSearchDialog dialog;
    RUN(selectInterface(dialog, searchAddress));
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^Binding to address:.*10\\.213\\.7\\.1"));
    QTest::ignoreMessage(QtDebugMsg, "Failed to bind to selected network interface!");
    dialog.sendSearchBroadcast();
    RUN(awaitTheBox());
    QCOMPARE(rowsOf(dialog), QStringList());
    QVERIFY(!other.hasPendingDatagrams()); // nothing was asked
    other.close();
    dialog.sendSearchBroadcast();
    QTRY_COMPARE(rowsOf(dialog), QStringList{boxRow});
}

QTEST_MAIN(TestDiscoveryNetwork)
#include "tst_discoverynetwork.moc"

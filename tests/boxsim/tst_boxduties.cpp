#include "boxundertest.h"
#include "protocolpage.h"
#include "rawtool.h"

#include <QFile>
#include <QNetworkDatagram>
#include <QUdpSocket>

// What any Box owes the tool, real or simulated: sends the frames of the protocol page and looks at the
// answers byte by byte, without the program's code or the simulator's.
class TestBoxDuties : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_box.reset(); }

    void heartbeatIsAnswered();
    void everyHeartbeatIsAnswered();
    void settingsAreAnswered_data();
    void settingsAreAnswered();
    void severalRequestsAreAnswered();
    void requestsMayComeInPieces();
    void twoConnectionsAreServed();
    void searchIsAnswered();
    void settingsAreTaken();
    void fileWithAWrongDigestIsRefused();
    void projectIsTakenDuringASession();

private:
    static BoxSimOptions options()
    {
        BoxSimOptions options;
        options.address = QHostAddress("127.0.33.4");
        options.reportInterval = 200;
        return options;
    }
    static QStringList keysOf(const QByteArray &group);
    QJsonObject answer(RawTool *tool, const QByteArray &request) const;

    const ProtocolPage m_page;
    std::unique_ptr<BoxUnderTest> m_box;
};

namespace {

int byte(const QByteArray &bytes, int at)
{
    return static_cast<quint8>(bytes.at(at));
}

// The next frame of a command, as commandByte in its first; live reports may come before it. Empty if none
// comes or it is no frame.
QByteArray frameOf(RawTool *tool, char commandByte)
{
    for (;;) {
        const QByteArray frame = tool->takeFrame();
        const bool whole = frame.size() >= 8 && frame.startsWith("\x12\x34") && frame.endsWith("\x56\x78");
        if (!whole || frame.at(2) == commandByte) {
            return whole && frame.at(3) == 0 ? frame : QByteArray();
        }
    }
}

QJsonObject jsonOf(RawTool *tool)
{
    const QByteArray frame = frameOf(tool, 5);
    const int length = frame.size() - 10;
    if (length < 2 || byte(frame, 6) + 256 * byte(frame, 7) != length) {
        return {};
    }
    return QJsonDocument::fromJson(frame.mid(8, length)).object();
}

QStringList heartbeatTexts(const QByteArray &frame)
{
    QStringList texts;
    int at = 6;
    while (at < frame.size() - 2) {
        texts.append(QString::fromUtf8(frame.mid(at + 1, byte(frame, at))));
        at += 1 + byte(frame, at);
    }
    return at == frame.size() - 2 ? texts : QStringList();
}

} // namespace

void TestBoxDuties::init()
{
    m_box = std::make_unique<BoxUnderTest>(options());
    QVERIFY(m_box->start());
}

// The keys of a record, from the answer that the page shows.
QStringList TestBoxDuties::keysOf(const QByteArray &group)
{
    const QByteArray frame = ProtocolPage().bytes("read " + group + " answer");
    return QJsonDocument::fromJson(frame.mid(8, frame.size() - 10))
        .object()
        .value(QLatin1String("pares"))
        .toObject()
        .keys();
}

QJsonObject TestBoxDuties::answer(RawTool *tool, const QByteArray &request) const
{
    tool->send(m_page.bytes(request));
    return jsonOf(tool);
}

void TestBoxDuties::heartbeatIsAnswered()
{
    RawTool tool;
    QVERIFY(tool.connectTo(m_box->address()));
    tool.send(m_page.bytes("heartbeat"));
    const QByteArray frame = frameOf(&tool, 2);
    QVERIFY2(!frame.isEmpty() && frame.size() < 128, frame.toHex(' ').constData());
    QCOMPARE(heartbeatTexts(frame).size(), 3);
}

void TestBoxDuties::everyHeartbeatIsAnswered()
{
    RawTool tool;
    QVERIFY(tool.connectTo(m_box->address()));
    tool.send(m_page.bytes("heartbeat").repeated(3));
    const QByteArray first = frameOf(&tool, 2);
    QVERIFY(!first.isEmpty());
    QCOMPARE(frameOf(&tool, 2), first);
    QCOMPARE(frameOf(&tool, 2), first);
}

void TestBoxDuties::settingsAreAnswered_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<QString>("type");
    const auto row = [](const char *group, const char *type) {
        QTest::newRow(group) << QByteArray(group) << QString::fromLatin1(type);
    };
    row("LAN", "2");
    row("WAN", "3");
    row("WIFI", "4");
    row("LTE", "5");
    row("NTP", "8");
    row("time", "9");
}

void TestBoxDuties::settingsAreAnswered()
{
    QFETCH(QByteArray, group);
    QFETCH(QString, type);
    RawTool tool;
    QVERIFY(tool.connectTo(m_box->address()));
    const QJsonObject object = answer(&tool, "read " + group);
    QCOMPARE(object.value(QLatin1String("type")), QJsonValue(type));
    const QJsonObject record = object.value(QLatin1String("pares")).toObject();
    const QStringList keys = keysOf(group);
    QVERIFY(!keys.isEmpty());
    for (const QString &key : keys) {
        QVERIFY2(record.value(key).isString(), qPrintable(key));
    }
}

void TestBoxDuties::severalRequestsAreAnswered()
{
    RawTool tool;
    QVERIFY(tool.connectTo(m_box->address()));
    tool.send(m_page.bytes("read NTP") + m_page.bytes("heartbeat") + m_page.bytes("read WAN")
              + m_page.bytes("read LAN"));
    QStringList types;
    for (int i = 0; i < 3; ++i) {
        types.append(jsonOf(&tool).value(QLatin1String("type")).toString());
    }
    types.sort();
    QCOMPARE(types, QStringList({"2", "3", "8"}));
}

void TestBoxDuties::requestsMayComeInPieces()
{
    RawTool tool;
    QVERIFY(tool.connectTo(m_box->address()));
    tool.socket().setSocketOption(QAbstractSocket::LowDelayOption, 1);
    const QByteArray request = m_page.bytes("read LAN");
    for (int at = 0; at < request.size(); ++at) {
        tool.send(request.mid(at, 1));
    }
    QCOMPARE(jsonOf(&tool).value(QLatin1String("type")), QJsonValue("2"));
}

void TestBoxDuties::twoConnectionsAreServed()
{
    RawTool first;
    RawTool second;
    QVERIFY(first.connectTo(m_box->address()));
    QVERIFY(second.connectTo(m_box->address()));
    second.send(m_page.bytes("heartbeat"));
    QVERIFY(!frameOf(&second, 2).isEmpty());
    first.send(m_page.bytes("heartbeat"));
    QVERIFY(!frameOf(&first, 2).isEmpty());
}

void TestBoxDuties::searchIsAnswered()
{
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress(QHostAddress::AnyIPv4)));
    socket.writeDatagram(m_page.bytes("search"), m_box->address(), 30088);
    QTRY_VERIFY(socket.hasPendingDatagrams());
    const QByteArray datagram = socket.receiveDatagram().data();
    QVERIFY2(datagram.size() >= 38 && datagram.startsWith("\x12\x34\xff\xff"),
             datagram.toHex(' ').constData());
    QVERIFY(!QHostAddress(QString::fromLatin1(datagram.mid(4, 16).constData())).isNull());
    QVERIFY(!QHostAddress(QString::fromLatin1(datagram.mid(20, 16).constData())).isNull());
    QVERIFY(byte(datagram, 36) >= 1 && datagram.size() >= 37 + byte(datagram, 36));
}

// NTP, since a Box that got another address could not be reached any more.
void TestBoxDuties::settingsAreTaken()
{
    SKIP_UNLESS_BOX_MAY_CHANGE();
    RawTool tool;
    QVERIFY(tool.connectTo(m_box->address()));
    QCOMPARE(answer(&tool, "write NTP"), (QJsonObject{{"type", "108"}, {"code", "200"}}));
    QCOMPARE(answer(&tool, "read NTP").value(QLatin1String("pares")).toObject().value(QLatin1String("NTP")),
             QJsonValue("10.0.0.9"));
}

void TestBoxDuties::fileWithAWrongDigestIsRefused()
{
    SKIP_UNLESS_BOX_MAY_CHANGE();
    RawTool tool;
    QVERIFY(tool.connectTo(m_box->address()));
    QByteArray checksum = m_page.bytes("project checksum");
    checksum[12] = '\0';
    tool.send(m_page.bytes("project chunk") + checksum);
    const QByteArray verdict = tool.take(10);
    QCOMPARE(verdict.left(7).toHex(), QByteArray("12340300") + "0a00" + "03");
    QVERIFY(verdict.at(7) != 0);
}

void TestBoxDuties::projectIsTakenDuringASession()
{
    SKIP_UNLESS_BOX_MAY_CHANGE();
    QFile file(QString(TEST_DATA_DIR "/one-slave.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray project = file.readAll();
    RawTool session;
    QVERIFY(session.connectTo(m_box->address()));
    session.send(m_page.bytes("heartbeat"));
    QVERIFY(!frameOf(&session, 2).isEmpty());
    RawTool transfer;
    QVERIFY(transfer.connectTo(m_box->address()));
    transfer.send(
        Raw::transfer(3, project, QCryptographicHash::hash(project, QCryptographicHash::Md5).toHex()));
    QCOMPARE(transfer.take(10), m_page.bytes("project verdict, success"));
    session.send(m_page.bytes("heartbeat"));
    QVERIFY(!frameOf(&session, 2).isEmpty());
}

QTEST_GUILESS_MAIN(TestBoxDuties)
#include "tst_boxduties.moc"

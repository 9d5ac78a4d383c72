#include "boxlink/heartbeat.h"
#include "handframes.h"

#include <QtTest>

using HandFrames::frame;
using HandFrames::hex;

// Heartbeat answers, byte by byte.
class TestHeartbeat : public QObject
{
    Q_OBJECT
private slots:
    void answer_data();
    void answer();
    void badFooterWritesALine();
};

namespace {

// "version|serial number|model", or a null text for an answer that can't be read.
QString read(const QByteArray &bytes)
{
    const auto answer = HeartbeatAnswer::fromFrame(bytes);
    const QLatin1Char bar('|');
    return answer ? answer->version + bar + answer->serialNumber + bar + answer->model : QString();
}

// A body of texts of these lengths.
QByteArray body(int version, int serialNumber, int model)
{
    return char(version) + QByteArray(version, 'v') + char(serialNumber) + QByteArray(serialNumber, 's')
        + char(model) + QByteArray(model, 'm');
}

QString bodyTexts(int version, int serialNumber, int model)
{
    return QString(version, QLatin1Char('v')) + QLatin1Char('|') + QString(serialNumber, QLatin1Char('s'))
        + QLatin1Char('|') + QString(model, QLatin1Char('m'));
}

} // namespace

void TestHeartbeat::answer_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("texts"); // null: no answer

    const auto newRow = [](const char *name, const QByteArray &bytes, const QString &texts = QString()) {
        QTest::newRow(name) << bytes << texts;
    };
    newRow("three texts", hex("12 34 02 00 0f 00 02 31 2e 01 53 01 4d 56 78"), "1.|S|M");
    newRow("empty texts", hex("12 34 02 00 0b 00 00 00 00 56 78"), "||");
    newRow("UTF-8", hex("12 34 02 00 0e 00 03 e7 89 88 00 00 56 78"), "版||");
    newRow("bytes behind the model", hex("12 34 02 00 0d 00 00 00 00 01 02 56 78"), "||");
    newRow("127 bytes", frame("02 00", body(100, 10, 6)), bodyTexts(100, 10, 6));
    newRow("128 bytes", frame("02 00", body(100, 10, 7)));
    newRow("255 bytes", frame("02 00", body(100, 100, 44)));
    newRow("256 bytes", frame("02 00", body(100, 100, 45)), bodyTexts(100, 100, 45));
    newRow("length too large", hex("12 34 02 00 0c 00 00 00 00 56 78"));
    newRow("length too small", hex("12 34 02 00 0a 00 00 00 00 56 78"));
    newRow("version past the footer", hex("12 34 02 00 0b 00 04 00 00 56 78"));
    newRow("version into the footer", hex("12 34 02 00 0b 00 02 00 00 56 78"));
    newRow("version up to the footer", hex("12 34 02 00 0b 00 02 31 32 56 78"));
    newRow("serial number past the footer", hex("12 34 02 00 0c 00 01 31 7f 00 56 78"));
    newRow("model past the footer", hex("12 34 02 00 0b 00 00 00 01 56 78"));
    newRow("negative count of the version", hex("12 34 02 00 0b 00 ff 00 00 56 78"));
    newRow("negative count of the serial number", hex("12 34 02 00 0b 00 00 80 00 56 78"));
    newRow("negative count of the model", hex("12 34 02 00 0b 00 00 00 fe 56 78"));
    newRow("no body", hex("12 34 02 00 08 00 56 78"));
    newRow("one byte", hex("12"));
    newRow("no length field", hex("12 34 02 00 05"));
    newRow("empty", QByteArray());
}

void TestHeartbeat::answer()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, texts);

    QCOMPARE(read(bytes), texts);
    QCOMPARE(read(bytes).isNull(), texts.isNull());
}

void TestHeartbeat::badFooterWritesALine()
{
    QTest::ignoreMessage(QtDebugMsg, "Invalid package footer.");
    QVERIFY(!HeartbeatAnswer::fromFrame(hex("12 34 02 00 0b 00 00 00 00 56 79")));
}

QTEST_GUILESS_MAIN(TestHeartbeat)
#include "tst_heartbeat.moc"

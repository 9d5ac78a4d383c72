#include "boxlink/monitoringaccumulator.h"
#include "boxlink/monitoringreport.h"

#include <QFile>
#include <QJsonArray>
#include <QtEndian>
#include <QtTest>

namespace {

QByteArray hex(const char *bytes)
{
    return QByteArray::fromHex(bytes);
}

// A segment from its fields as they stand on the wire, in hexadecimal, and its text.
QByteArray segment(const char *length, const char *total, const char *size, const char *number,
                   const QByteArray &text)
{
    return hex("12 34 06 00") + hex(length) + hex("01") + hex(total) + hex(size) + hex(number) + text
        + hex("56 78");
}

// A report of the given size: one key with as many characters as it takes.
QByteArray reportText(int size)
{
    return "{\"sn\":\"" + QByteArray(size - 9, 'x') + "\"}";
}

QJsonObject report(int size)
{
    return {{"sn", QString(size - 9, QLatin1Char('x'))}};
}

std::optional<QJsonObject> addSegment(const QByteArray &frame)
{
    return MonitoringAccumulator::shared().addSegment(frame);
}

// A text in segments, as a Box cuts it; what the last of them gives.
std::optional<QJsonObject> sendReport(const QByteArray &text)
{
    const auto little32 = [](int number) {
        QByteArray bytes(4, '\0');
        qToLittleEndian(number, bytes.data());
        return bytes;
    };
    std::optional<QJsonObject> given;
    int number = 0;
    for (int at = 0; at < text.size(); at += 1024) {
        const QByteArray part = text.mid(at, 1024);
        given = addSegment(hex("12 34 06 00") + little32(part.size() + 19).left(2) + hex("01")
                           + little32(text.size()) + little32(part.size()).left(2) + little32(++number) + part
                           + hex("56 78"));
    }
    return given;
}

// What the process holds in memory, or 0.
qint64 residentBytes()
{
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    return file.readAll().split(' ').value(1).toLongLong() * 4096;
}

} // namespace

class tst_Monitoring : public QObject
{
    Q_OBJECT
private slots:
    void init() { MonitoringAccumulator::shared().reset(); }

    void oneSegment();
    void exactly1024Bytes();
    void oneByteMoreTakesTwoSegments();
    void manySegments();
    void segmentsJoinInTheOrderOfArrival();
    void segmentNumberAloneTellsTheEnd();
    void frameLengthCutsTheText();
    void nextReportStartsAfresh();

    void totalMismatchLosesTheReport();
    void totalOfZero();
    void totalOfZeroThatDoesNotEnd();
    void shortFrameDoesNotSetTheTotal_data();
    void shortFrameDoesNotSetTheTotal();
    void numbersAreUnsignedAndDoNotWrap_data();
    void numbersAreUnsignedAndDoNotWrap();
    void textThatIsNotJson_data();
    void textThatIsNotJson();
    void arrayReadsAsAnEmptyReport();
    void resetForgetsTheReport();
    void deepTextIsSurvived_data();
    void deepTextIsSurvived();
    void endlessReportIsDropped();
    void droppedReportReleasesItsMemory();

    void reportIsRead();
    void whatIsNoTextReadsAsEmpty();
};

void tst_Monitoring::oneSegment()
{
    QTest::ignoreMessage(QtDebugMsg, "data长度::17");
    QCOMPARE(addSegment(segment("24 00", "11 00 00 00", "11 00", "01 00 00 00", "{\"sn\":\"12345678\"}")),
             (QJsonObject{{"sn", "12345678"}}));
}

void tst_Monitoring::exactly1024Bytes()
{
    QTest::ignoreMessage(QtDebugMsg, "data长度::1024");
    QCOMPARE(addSegment(segment("13 04", "00 04 00 00", "00 04", "01 00 00 00", reportText(1024))),
             report(1024));
}

void tst_Monitoring::oneByteMoreTakesTwoSegments()
{
    const QByteArray text = reportText(1025);
    QTest::ignoreMessage(QtDebugMsg, "data长度::1025");
    QTest::ignoreMessage(QtDebugMsg, "数据长度未达到要\xEF\xBF\xBD:");
    QCOMPARE(addSegment(segment("13 04", "01 04 00 00", "00 04", "01 00 00 00", text.left(1024))),
             std::nullopt);
    QCOMPARE(addSegment(segment("14 00", "01 04 00 00", "01 00", "02 00 00 00", text.mid(1024))),
             report(1025));
}

void tst_Monitoring::manySegments()
{
    const QByteArray text = reportText(1024 * 300);
    for (int i = 0; i < 299; ++i) {
        const QByteArray number = QByteArray::number(i + 1 + 0x10000, 16).mid(1); // four digits, big-endian
        const QByteArray little = number.mid(2) + number.left(2) + "0000";
        QCOMPARE(addSegment(
                     segment("13 04", "00 b0 04 00", "00 04", little.constData(), text.mid(i * 1024, 1024))),
                 std::nullopt);
    }
    QCOMPARE(addSegment(segment("13 04", "00 b0 04 00", "00 04", "2c 01 00 00", text.mid(299 * 1024))),
             report(1024 * 300));
}

void tst_Monitoring::segmentsJoinInTheOrderOfArrival()
{
    // 2049 bytes, the second segment before the first: the numbers are not looked at until the last one.
    const QByteArray text = reportText(2049);
    addSegment(segment("13 04", "01 08 00 00", "00 04", "03 00 00 00", text.left(1024)));
    addSegment(segment("13 04", "01 08 00 00", "00 04", "01 00 00 00", text.mid(1024, 1024)));
    QCOMPARE(addSegment(segment("14 00", "01 08 00 00", "01 00", "03 00 00 00", text.mid(2048))),
             report(2049));
}

void tst_Monitoring::segmentNumberAloneTellsTheEnd()
{
    // Its number and size say that this is the last one, though the first was lost.
    QTest::ignoreMessage(QtWarningMsg, "Failed to parse JSON data");
    QCOMPARE(addSegment(segment("14 00", "01 04 00 00", "01 00", "02 00 00 00", "}")), std::nullopt);
}

void tst_Monitoring::frameLengthCutsTheText()
{
    // The segment's own length says 2, the frame holds 4 bytes of text.
    QCOMPARE(addSegment(segment("17 00", "02 00 00 00", "02 00", "01 00 00 00", "{ } ")), QJsonObject());
}

void tst_Monitoring::nextReportStartsAfresh()
{
    for (int i = 0; i < 3; ++i) {
        QTest::ignoreMessage(QtDebugMsg, "data长度::2");
        QCOMPARE(addSegment(segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "{}")), QJsonObject());
    }
}

void tst_Monitoring::totalMismatchLosesTheReport()
{
    const QByteArray text = reportText(1025);
    QTest::ignoreMessage(QtDebugMsg, "data长度::1025");
    QTest::ignoreMessage(QtDebugMsg, "长度不符::1026");
    QCOMPARE(addSegment(segment("13 04", "01 04 00 00", "00 04", "01 00 00 00", text.left(1024))),
             std::nullopt);
    QCOMPARE(addSegment(segment("14 00", "02 04 00 00", "01 00", "02 00 00 00", text.mid(1024))),
             std::nullopt);
    // The next segment begins a report, from wherever it stands.
    QTest::ignoreMessage(QtDebugMsg, "data长度::1025");
    QTest::ignoreMessage(QtWarningMsg, "Failed to parse JSON data");
    QCOMPARE(addSegment(segment("14 00", "01 04 00 00", "01 00", "02 00 00 00", text.mid(1024))),
             std::nullopt);
    // And a whole one gets through.
    QCOMPARE(addSegment(segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "{}")), QJsonObject());
}

void tst_Monitoring::totalOfZero()
{
    QTest::ignoreMessage(QtDebugMsg, "data长度::0");
    QTest::ignoreMessage(QtWarningMsg, "Failed to parse JSON data");
    QCOMPARE(addSegment(segment("13 00", "00 00 00 00", "00 00", "01 00 00 00", "")), std::nullopt);
}

void tst_Monitoring::totalOfZeroThatDoesNotEnd()
{
    QTest::ignoreMessage(QtDebugMsg, "data长度::0");
    QTest::ignoreMessage(QtDebugMsg, "数据长度未达到要\xEF\xBF\xBD:");
    QCOMPARE(addSegment(segment("15 00", "00 00 00 00", "02 00", "01 00 00 00", "{}")), std::nullopt);
    // No report is in hand, so the next one sets its total.
    QTest::ignoreMessage(QtDebugMsg, "data长度::2");
    addSegment(segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "  "));
}

void tst_Monitoring::shortFrameDoesNotSetTheTotal_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("18 bytes") << hex("12 34 06 00 12 00 01 05 00 00 00 02 00 01 00 00 56 78")
                              << QByteArray("长度不符::5");
    QTest::newRow("no body") << hex("12 34 06 00 08 00 56 78")
                             << QByteArray("长度不符::120"); // the footer's 0x78
    QTest::newRow("total of zero") << hex("12 34 06 00 12 00 01 00 00 00 00 02 00 01 00 00 56 78")
                                   << QByteArray("数据长度未达到要\xEF\xBF\xBD:");
    QTest::newRow("one byte") << hex("12") << QByteArray("数据长度未达到要\xEF\xBF\xBD:");
    QTest::newRow("empty") << QByteArray() << QByteArray("数据长度未达到要\xEF\xBF\xBD:");
}

void tst_Monitoring::shortFrameDoesNotSetTheTotal()
{
    QFETCH(QByteArray, frame);
    QFETCH(QByteArray, line);

    QTest::ignoreMessage(QtDebugMsg, line.constData());
    QCOMPARE(addSegment(frame), std::nullopt);
    QTest::ignoreMessage(QtDebugMsg, "data长度::2");
    QCOMPARE(addSegment(segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "{}")), QJsonObject());
}

void tst_Monitoring::numbersAreUnsignedAndDoNotWrap_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("total");

    QTest::newRow("total of 4 GiB less one")
        << segment("15 00", "ff ff ff ff", "02 00", "01 00 00 00", "{}") << QByteArray("4294967295");
    QTest::newRow("number 0") << segment("15 00", "ff ff ff ff", "ff 03", "00 00 00 00", "{}")
                              << QByteArray("4294967295");
    QTest::newRow("number past 32 bits")
        << segment("15 00", "02 00 00 00", "02 00", "01 00 40 00", "{}") << QByteArray("2");
    QTest::newRow("largest of all") << segment("15 00", "ff ff ff ff", "ff ff", "ff ff ff ff", "{}")
                                    << QByteArray("4294967295");
}

void tst_Monitoring::numbersAreUnsignedAndDoNotWrap()
{
    QFETCH(QByteArray, frame);
    QFETCH(QByteArray, total);

    QTest::ignoreMessage(QtDebugMsg, ("data长度::" + total).constData());
    QTest::ignoreMessage(QtDebugMsg, "数据长度未达到要\xEF\xBF\xBD:");
    QCOMPARE(addSegment(frame), std::nullopt);
}

void tst_Monitoring::textThatIsNotJson_data()
{
    QTest::addColumn<QByteArray>("text"); // of 12 bytes
    QTest::newRow("broken off") << QByteArray("{\"sn\":\"12345");
    QTest::newRow("no JSON at all") << QByteArray("hello, Box!!");
    QTest::newRow("nested too deep to end") << QByteArray("[[[[[[[[[[[[");
    QTest::newRow("NUL bytes") << QByteArray(12, '\0');
}

void tst_Monitoring::textThatIsNotJson()
{
    QFETCH(QByteArray, text);

    QTest::ignoreMessage(QtWarningMsg, "Failed to parse JSON data");
    QCOMPARE(addSegment(segment("1f 00", "0c 00 00 00", "0c 00", "01 00 00 00", text)), std::nullopt);
    QCOMPARE(addSegment(segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "{}")), QJsonObject());
}

void tst_Monitoring::arrayReadsAsAnEmptyReport()
{
    QCOMPARE(addSegment(segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "[]")), QJsonObject());
}

void tst_Monitoring::resetForgetsTheReport()
{
    addSegment(segment("13 04", "01 04 00 00", "00 04", "01 00 00 00", reportText(1025).left(1024)));
    MonitoringAccumulator::shared().reset();
    QTest::ignoreMessage(QtDebugMsg, "data长度::2");
    QCOMPARE(addSegment(segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "{}")), QJsonObject());
}

void tst_Monitoring::deepTextIsSurvived_data()
{
    QTest::addColumn<QByteArray>("text"); // of a MiB
    const int half = 512 * 1024;
    QTest::newRow("arrays") << QByteArray(half, '[') + QByteArray(half, ']');
    QTest::newRow("arrays without an end") << QByteArray(2 * half, '[');
    QTest::newRow("objects without an end")
        << QByteArray("{\"a\":").repeated(2 * half / 5 + 1).left(2 * half);
}

void tst_Monitoring::deepTextIsSurvived()
{
    QFETCH(QByteArray, text);

    QTest::ignoreMessage(QtWarningMsg, "Failed to parse JSON data");
    QCOMPARE(sendReport(text), std::nullopt);
    QCOMPARE(addSegment(segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "{}")), QJsonObject());
}

void tst_Monitoring::endlessReportIsDropped()
{
    // Announces 4 GiB in frames of the largest size, and never ends.
    const QByteArray frame = segment("ff ff", "ff ff ff ff", "00 04", "01 00 00 00", QByteArray(65516, ' '));
    QCOMPARE(frame.size(), 65535);
    qsizetype sent = 0;
    const QtMessageHandler shown =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    for (; sent + 65516 <= MonitoringAccumulator::sizeLimit; sent += 65516) {
        addSegment(frame);
    }
    qInstallMessageHandler(shown);
    QTest::ignoreMessage(QtDebugMsg, "Monitoring report too long, dropped: 4294967295");
    QCOMPARE(addSegment(frame), std::nullopt);
    QTest::ignoreMessage(QtDebugMsg, "data长度::2");
    QCOMPARE(addSegment(segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "{}")), QJsonObject());
}

void tst_Monitoring::droppedReportReleasesItsMemory()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("the sanitizer keeps released memory for a while");
#endif
    if (residentBytes() == 0) {
        QSKIP("no figures of the process here");
    }
    const QByteArray frame = segment("ff ff", "ff ff ff ff", "00 04", "01 00 00 00", QByteArray(65516, ' '));
    const QtMessageHandler shown =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const qint64 before = residentBytes();
    qint64 sent = 0;
    for (; sent + 65516 <= MonitoringAccumulator::sizeLimit; sent += 65516) {
        addSegment(frame);
    }
    const qint64 full = residentBytes();
    addSegment(frame);
    const qint64 after = residentBytes();
    qInstallMessageHandler(shown);

    QVERIFY2(full - before > sent / 2, qPrintable(QString("%1 bytes").arg(full - before)));
    QVERIFY2(after - before < sent / 16, qPrintable(QString("%1 bytes").arg(after - before)));
}

void tst_Monitoring::reportIsRead()
{
    const QJsonArray datas{QJsonObject{{"name", "Ua"}}};
    const auto read = MonitoringReport::fromJson({{"projectName", "P"},
                                                  {"plcName", "M1"},
                                                  {"description", "d"},
                                                  {"sn", "7"},
                                                  {"time", "now"},
                                                  {"datas", datas}});
    QCOMPARE((QStringList{read.projectName, read.plcName, read.description, read.sn, read.time}),
             (QStringList{"P", "M1", "d", "7", "now"}));
    QCOMPARE(read.datas, datas);
}

void tst_Monitoring::whatIsNoTextReadsAsEmpty()
{
    const auto read =
        MonitoringReport::fromJson({{"sn", 7}, {"time", QJsonValue::Null}, {"datas", QJsonObject()}});
    QCOMPARE(read.projectName + read.plcName + read.description + read.sn + read.time, QString());
    QCOMPARE(read.datas, QJsonArray());
}

QTEST_GUILESS_MAIN(tst_Monitoring)
#include "tst_monitoring.moc"

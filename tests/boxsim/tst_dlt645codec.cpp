#include "boxsim/acquire/dlt645query.h"
#include "boxsim/acquire/dlt645value.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

// Frames by the standard's text, to and from the meter 123456789012.
const QByteArray voltageAnswer = hex("68 129078563412 68 91 06 33343435 3856 7B 16");
const QByteArray energyAnswer = hex("68 129078563412 68 91 08 33333433 AB896745 CC 16");
const QByteArray olderAnswer = hex("68 129078563412 68 81 04 44E9 5335 C0 16");
const Dlt645Frame voltageFrame = {hex("129078563412"), 0x91, hex("00010102 0523")};
const Dlt645Frame energyFrame = {hex("129078563412"), 0x91, hex("00000100 78563412")};

QVector<Dlt645Frame> readInPieces(const QByteArray &bytes, int size)
{
    Dlt645FrameFinder finder;
    QVector<Dlt645Frame> frames;
    for (int at = 0; at < bytes.size(); at += size) {
        frames += finder.find(bytes.mid(at, size));
    }
    return frames;
}

Dlt645Query query(const QString &address, const QString &item)
{
    const Dlt645Edition edition = item.size() == 4 ? Dlt645Edition::Of1997 : Dlt645Edition::Of2007;
    return {edition, dlt645Address(address), dlt645Item(edition, item)};
}

// An answer as one text: what a row of a table compares.
QString told(const Dlt645Answer &answer)
{
    switch (answer.kind) {
    case Dlt645Answer::Kind::None:
        return QStringLiteral("none");
    case Dlt645Answer::Kind::Refused:
        return QStringLiteral("refused %1").arg(answer.error);
    case Dlt645Answer::Kind::Value:
        break;
    }
    return QString::fromLatin1(answer.value.toHex() + (answer.more ? "+" : ""));
}

} // namespace

// The frames of DL/T 645 in both editions, what they mean, and what does not belong to them.
class TestDlt645Codec : public QObject
{
    Q_OBJECT

private slots:
    void requestsHaveTheBytesOfTheStandard_data();
    void requestsHaveTheBytesOfTheStandard();
    void addressesAreDigitsOrWildcards_data();
    void addressesAreDigitsOrWildcards();
    void itemsHaveTheDigitsOfTheirEdition_data();
    void itemsHaveTheDigitsOfTheirEdition();
    void framesAreFoundHoweverTheyAreCut_data();
    void framesAreFoundHoweverTheyAreCut();
    void whatIsNoFrameIsPassedOver_data();
    void whatIsNoFrameIsPassedOver();
    void frameThatEndsFirstIsFound();
    void longestFrameIsFound();
    void damagedFrameIsToldAsSuch();
    void noBrokenBitPasses();
    void randomBytesHideNoFrame();
    void answersBelongToTheirRequest_data();
    void answersBelongToTheirRequest();
    void continuationIsAskedForAndAnswered_data();
    void continuationIsAskedForAndAnswered();
    void errorsAreTold_data();
    void errorsAreTold();
    void valuesBecomeTexts_data();
    void valuesBecomeTexts();
    void signsAreThoseOfTheStandard_data();
    void signsAreThoseOfTheStandard();
    void unknownLayoutsAreRefused_data();
    void unknownLayoutsAreRefused();
};

void TestDlt645Codec::requestsHaveTheBytesOfTheStandard_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("2007") << "123456789012"
                          << "02010100" << hex("68 129078563412 68 11 04 33343435 6B 16");
    QTest::newRow("1997") << "123456789012"
                          << "B611" << hex("68 129078563412 68 01 02 44E9 B6 16");
    QTest::newRow("any meter") << "AAAAAAAAAAAA"
                               << "00010000" << hex("68 AAAAAAAAAAAA 68 11 04 33333433 AE 16");
    QTest::newRow("all nines") << "999999999999"
                               << "9010" << hex("68 999999999999 68 01 02 43C3 6F 16");
    QTest::newRow("short address") << "4711"
                                   << "00010000" << hex("68 114700000000 68 11 04 33333433 0A 16");
    QTest::newRow("its end") << "AAAAAAAA4711"
                             << "00010000" << hex("68 1147AAAAAAAA 68 11 04 33333433 B2 16");
    QTest::newRow("small letters") << "aaaaaaaaaaaa"
                                   << "00010000" << hex("68 AAAAAAAAAAAA 68 11 04 33333433 AE 16");
}

void TestDlt645Codec::requestsHaveTheBytesOfTheStandard()
{
    QFETCH(QString, address);
    QFETCH(QString, item);
    QFETCH(QByteArray, bytes);
    QCOMPARE(query(address, item).request(), hex("FEFEFEFE") + bytes);
}

void TestDlt645Codec::addressesAreDigitsOrWildcards_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("twelve digits") << "123456789012" << hex("129078563412");
    QTest::newRow("an odd count") << "12345" << hex("452301000000");
    QTest::newRow("one") << "7" << hex("070000000000");
    QTest::newRow("wildcards within") << "12AA56AA90AA" << hex("AA90AA56AA12");
    QTest::newRow("empty") << QString() << QByteArray();
    QTest::newRow("thirteen digits") << "1234567890123" << QByteArray();
    QTest::newRow("half a wildcard") << "AAA" << QByteArray();
    QTest::newRow("wildcard across two bytes") << "1AA1" << QByteArray();
    QTest::newRow("other letters") << "BB" << QByteArray();
    QTest::newRow("no digits") << "xyz" << QByteArray();
    QTest::newRow("digits between others") << "1 2" << QByteArray();
    QTest::newRow("digits of another script") << QString::fromUtf8("١٢") << QByteArray();
}

void TestDlt645Codec::addressesAreDigitsOrWildcards()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(dlt645Address(text), bytes);
}

void TestDlt645Codec::itemsHaveTheDigitsOfTheirEdition_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("of2007");
    QTest::addColumn<QByteArray>("of1997");
    QTest::newRow("eight digits") << "0400040A" << hex("0A040004") << QByteArray();
    QTest::newRow("four digits") << "C031" << QByteArray() << hex("31C0");
    QTest::newRow("small letters") << "003d0000" << hex("00003D00") << QByteArray();
    QTest::newRow("empty") << QString() << QByteArray() << QByteArray();
    QTest::newRow("seven") << "0001000" << QByteArray() << QByteArray();
    QTest::newRow("three") << "901" << QByteArray() << QByteArray();
    QTest::newRow("a register") << "40001" << QByteArray() << QByteArray();
    QTest::newRow("blanks between") << "90 10" << QByteArray() << QByteArray();
    QTest::newRow("no digits") << "voltages" << QByteArray() << QByteArray();
}

void TestDlt645Codec::itemsHaveTheDigitsOfTheirEdition()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, of2007);
    QFETCH(QByteArray, of1997);
    QCOMPARE(dlt645Item(Dlt645Edition::Of2007, text), of2007);
    QCOMPARE(dlt645Item(Dlt645Edition::Of1997, text), of1997);
}

void TestDlt645Codec::framesAreFoundHoweverTheyAreCut_data()
{
    QTest::addColumn<int>("piece");
    for (int piece : {1, 2, 3, 5, 7, 11, 18, 19, 1000}) {
        QTest::newRow(qPrintable(QString("pieces of %1").arg(piece))) << piece;
    }
}

void TestDlt645Codec::framesAreFoundHoweverTheyAreCut()
{
    QFETCH(int, piece);
    const QByteArray stream = hex("FEFE") + voltageAnswer + hex("006816") + energyAnswer + voltageAnswer;
    QCOMPARE(readInPieces(stream, piece), QVector<Dlt645Frame>({voltageFrame, energyFrame, voltageFrame}));
}

void TestDlt645Codec::whatIsNoFrameIsPassedOver_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("wake-up bytes") << hex("FEFEFEFE");
    QTest::newRow("text") << QByteArray("GET / HTTP/1.1\r\n\r\n");
    QTest::newRow("start bytes") << QByteArray(500, 0x68);
    QTest::newRow("end bytes") << QByteArray(500, 0x16);
    QTest::newRow("half a frame") << voltageAnswer.left(9);
    QTest::newRow("a frame without its end") << voltageAnswer.left(17);
    QTest::newRow("the end of a frame") << voltageAnswer.mid(3);
    QTest::newRow("the head of a longer frame") << hex("68 129078563412 68 91 C8");
    QTest::newRow("a frame longer than there are") << hex("68 129078563412 68 91 C9") + QByteArray(203, 0x16);
}

// What follows is found at once, whatever the bytes before promise.
void TestDlt645Codec::whatIsNoFrameIsPassedOver()
{
    QFETCH(QByteArray, before);
    Dlt645FrameFinder finder;
    QCOMPARE(finder.find(before), QVector<Dlt645Frame>());
    QCOMPARE(finder.find(voltageAnswer), QVector<Dlt645Frame>({voltageFrame}));
}

// The data of the longer frame are those of a whole one.
void TestDlt645Codec::frameThatEndsFirstIsFound()
{
    const QByteArray longer = hex("68 129078563412 68 91 12") + voltageAnswer + hex("35 16");
    for (int piece : {1, 10, 1000}) {
        QCOMPARE(readInPieces(longer, piece), QVector<Dlt645Frame>({voltageFrame}));
    }
}

void TestDlt645Codec::longestFrameIsFound()
{
    const QByteArray longest = hex("68 129078563412 68 91 C8") + QByteArray(200, 0x33) + hex("B7 16");
    const Dlt645Frame frame = {hex("129078563412"), 0x91, QByteArray(200, 0)};
    QCOMPARE(readInPieces(longest + energyAnswer, 1), QVector<Dlt645Frame>({frame, energyFrame}));
}

void TestDlt645Codec::damagedFrameIsToldAsSuch()
{
    const QByteArray damaged = hex("68 129078563412 68 91 06 33343435 3856 7C 16");
    Dlt645Frame frame = voltageFrame;
    frame.intact = false;
    QCOMPARE(readInPieces(damaged + energyAnswer, 4), QVector<Dlt645Frame>({frame, energyFrame}));
    QCOMPARE(told(query("123456789012", "02010100").answer(frame)), "none");
}

void TestDlt645Codec::noBrokenBitPasses()
{
    for (int bit = 0; bit < 8 * voltageAnswer.size(); ++bit) {
        QByteArray broken = voltageAnswer;
        broken[bit / 8] = char(broken.at(bit / 8) ^ (1 << bit % 8));
        const QVector<Dlt645Frame> frames = readInPieces(broken, 1000);
        for (const Dlt645Frame &frame : frames) {
            QVERIFY2(!frame.intact, qPrintable(QString("bit %1").arg(bit)));
        }
    }
}

void TestDlt645Codec::randomBytesHideNoFrame()
{
    QRandomGenerator random(645);
    for (int round = 0; round < 2000; ++round) {
        QByteArray noise(random.bounded(300), 0);
        for (char &byte : noise) {
            // Mostly such bytes as frames are made of.
            byte = random.bounded(4) ? "\x68\x16\x91\x06\x33"[random.bounded(5)] : char(random.bounded(256));
        }
        QVector<Dlt645Frame> frames = readInPieces(noise + voltageAnswer, 1 + random.bounded(40));
        QCOMPARE(frames.takeLast(), voltageFrame);
        QCOMPARE(readInPieces(noise, 1 + random.bounded(40)), frames);
    }
}

void TestDlt645Codec::answersBelongToTheirRequest_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("answer");
    const QString own = "123456789012";
    const QString voltage = "02010100";
    QTest::newRow("2007") << own << voltage << voltageAnswer << "0523";
    QTest::newRow("1997") << own << "B611" << olderAnswer << "2002";
    QTest::newRow("to any meter") << "AAAAAAAAAAAA" << voltage << voltageAnswer << "0523";
    QTest::newRow("to its end") << "AAAAAAAA9012" << voltage << voltageAnswer << "0523";
    QTest::newRow("with more") << own << voltage << hex("68 129078563412 68 B1 06 33343435 3856 9B 16")
                               << "0523+";
    QTest::newRow("of 1997 with more")
        << own << "B611" << hex("68 129078563412 68 A1 03 44E9 53 AA 16") << "20+";
    QTest::newRow("without a value") << own << voltage << hex("68 129078563412 68 91 04 33343435 EB 16")
                                     << "";
    QTest::newRow("error") << own << voltage << hex("68 129078563412 68 D1 01 35 8D 16") << "refused 2";
    QTest::newRow("error of 1997") << own << "B611" << hex("68 129078563412 68 C1 01 35 7D 16")
                                   << "refused 2";
    QTest::newRow("error of two bytes")
        << own << voltage << hex("68 129078563412 68 D1 02 3533 C1 16") << "none";
    QTest::newRow("another meter") << own << voltage << hex("68 139078563412 68 91 06 33343435 3856 7C 16")
                                   << "none";
    QTest::newRow("another end") << "AAAAAAAA9013" << voltage << voltageAnswer << "none";
    QTest::newRow("another item") << own << voltage << hex("68 129078563412 68 91 06 33353435 3856 7C 16")
                                  << "none";
    QTest::newRow("half an item") << own << voltage << hex("68 129078563412 68 91 03 333434 B5 16") << "none";
    QTest::newRow("the other edition") << own << "B611" << voltageAnswer << "none";
    QTest::newRow("the request itself")
        << own << voltage << hex("68 129078563412 68 11 04 33343435 6B 16") << "none";
    QTest::newRow("to a write") << own << voltage << hex("68 129078563412 68 94 00 1A 16") << "none";
    QTest::newRow("to a continuation")
        << own << voltage << hex("68 129078563412 68 92 06 33343435 6635 89 16") << "none";
}

void TestDlt645Codec::answersBelongToTheirRequest()
{
    QFETCH(QString, address);
    QFETCH(QString, item);
    QFETCH(QByteArray, bytes);
    const QVector<Dlt645Frame> frames = readInPieces(bytes, 1000);
    QCOMPARE(frames.size(), 1);
    QVERIFY(frames.first().intact);
    QTEST(told(query(address, item).answer(frames.first())), "answer");
}

void TestDlt645Codec::continuationIsAskedForAndAnswered_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<int>("part");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("answer");
    const QByteArray first = hex("68 129078563412 68 12 05 33343435 34 A1 16");
    const QByteArray more = hex("68 129078563412 68 B2 07 33343435 4455 34 DC 16");
    const QByteArray older = hex("68 129078563412 68 02 02 44E9 B7 16");
    QTest::newRow("more to come") << "02010100" << 1 << first << more << "1122+";
    QTest::newRow("the last") << "02010100" << 2 << hex("68 129078563412 68 12 05 33343435 35 A2 16")
                              << hex("68 129078563412 68 92 06 33343435 66 35 89 16") << "33";
    QTest::newRow("the last of all") << "02010100" << 255 << hex("68 129078563412 68 12 05 33343435 32 9F 16")
                                     << more << "none";
    QTest::newRow("another part") << "02010100" << 1 << first
                                  << hex("68 129078563412 68 92 06 33343435 66 35 89 16") << "none";
    QTest::newRow("no part") << "02010100" << 1 << first << hex("68 129078563412 68 92 04 33343435 EC 16")
                             << "none";
    QTest::newRow("refused") << "02010100" << 1 << first << hex("68 129078563412 68 D2 01 35 8E 16")
                             << "refused 2";
    QTest::newRow("the first answer") << "02010100" << 1 << first << voltageAnswer << "none";
    QTest::newRow("1997, more to come")
        << "B611" << 1 << older << hex("68 129078563412 68 A2 03 44E9 35 8D 16") << "02+";
    QTest::newRow("1997, the last") << "B611" << 2 << older << hex("68 129078563412 68 82 03 44E9 36 6E 16")
                                    << "03";
}

void TestDlt645Codec::continuationIsAskedForAndAnswered()
{
    QFETCH(QString, item);
    QFETCH(int, part);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, bytes);
    const Dlt645Query asked = query("123456789012", item);
    QCOMPARE(asked.continuation(part), hex("FEFEFEFE") + request);
    const QVector<Dlt645Frame> frames = readInPieces(bytes, 1000);
    QCOMPARE(frames.size(), 1);
    QVERIFY(frames.first().intact);
    QTEST(told(asked.answer(frames.first(), part)), "answer");
}

void TestDlt645Codec::errorsAreTold_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("text");
    QTest::newRow("no data") << "02010100" << 0x02 << "no such data";
    QTest::newRow("two of them") << "02010100" << 0x05 << "other error, wrong password or not permitted";
    QTest::newRow("none") << "02010100" << 0x00 << "error 0";
    QTest::newRow("1997") << "B611" << 0x02 << "wrong data identifier";
    QTest::newRow("1997, the highest") << "B611" << 0x80 << "reserved error";
}

void TestDlt645Codec::errorsAreTold()
{
    QFETCH(QString, item);
    QFETCH(int, error);
    QTEST(query("1", item).errorText(quint8(error)), "text");
}

void TestDlt645Codec::valuesBecomeTexts_data()
{
    QTest::addColumn<QString>("dataType");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("energy") << "XXXXXX.XX" << hex("78563412") << "123456.78";
    QTest::newRow("small energy") << "XXXXXX.XX" << hex("50230100") << "123.50";
    QTest::newRow("below one") << "XXXXXX.XX" << hex("07000000") << "0.07";
    QTest::newRow("zero") << "XXXXXX.XX" << hex("00000000") << "0.00";
    QTest::newRow("the largest") << "XXXXXX.XX" << hex("99999999") << "999999.99";
    QTest::newRow("blank behind") << "XXXXXX.XX " << hex("78563412") << "123456.78";
    QTest::newRow("voltage") << "XXX.X" << hex("0523") << "230.5";
    QTest::newRow("voltage of 1997") << "XXX" << hex("2002") << "220";
    QTest::newRow("one digit more than the layout") << "XXX" << hex("2012") << "1220";
    QTest::newRow("current") << "XXX.XXX" << hex("341200") << "1.234";
    QTest::newRow("current of 1997") << "XX.XX" << hex("3412") << "12.34";
    QTest::newRow("power") << "XX.XXXX" << hex("560400") << "0.0456";
    QTest::newRow("power factor") << "X.XXX" << hex("0010") << "1.000";
    QTest::newRow("constant") << "XXXXXX" << hex("001600") << "1600";
    QTest::newRow("constant of 1997") << "NNNNNN" << hex("001600") << "1600";
    QTest::newRow("whole zero") << "XXXXXX" << hex("000000") << "0";
    QTest::newRow("a digit above 9") << "XXX.X" << hex("0A23") << QString();
    QTest::newRow("a high digit above 9") << "XXX.X" << hex("05F3") << QString();
    QTest::newRow("all above 9") << "XXX.X" << hex("FFFF") << QString();
    QTest::newRow("a byte too few") << "XXX.X" << hex("05") << QString();
    QTest::newRow("a byte too many") << "XXX.X" << hex("052300") << QString();
    QTest::newRow("no bytes") << "XXX.X" << QByteArray() << QString();
}

void TestDlt645Codec::valuesBecomeTexts()
{
    QFETCH(QString, dataType);
    QFETCH(QByteArray, value);
    QFETCH(QString, text);
    const QString told = Dlt645Format::of("9010", dataType).text(value);
    QCOMPARE(told, text);
    QCOMPARE(told.isNull(), text.isNull());
}

void TestDlt645Codec::signsAreThoseOfTheStandard_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("dataType");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("current") << "02020100"
                             << "XXX.XXX" << hex("341280") << "-1.234";
    QTest::newRow("largest current") << "02020300"
                                     << "XXX.XXX" << hex("9999F9") << "-799.999";
    QTest::newRow("power") << "02030000"
                           << "XX.XXXX" << hex("562381") << "-1.2356";
    QTest::newRow("reactive power") << "02040300"
                                    << "XX.XXXX" << hex("560480") << "-0.0456";
    QTest::newRow("apparent power") << "02050000"
                                    << "XX.XXXX" << hex("000081") << "-1.0000";
    QTest::newRow("power factor") << "02060000"
                                  << "X.XXX" << hex("0090") << "-1.000";
    QTest::newRow("combined energy") << "00000000"
                                     << "XXXXXX.XX" << hex("78563492") << "-123456.78";
    QTest::newRow("its tariff 4") << "00000400"
                                  << "XXXXXX.XX" << hex("01000080") << "-0.01";
    QTest::newRow("combined reactive energy 1") << "00030000"
                                                << "XXXXXX.XX" << hex("01000080") << "-0.01";
    QTest::newRow("combined reactive energy 2") << "00040000"
                                                << "XXXXXX.XX" << hex("01000080") << "-0.01";
    QTest::newRow("a zero with a sign") << "02030000"
                                        << "XX.XXXX" << hex("000080") << "0.0000";
    QTest::newRow("a positive one") << "02030000"
                                    << "XX.XXXX" << hex("562301") << "1.2356";
    QTest::newRow("a digit above 9 behind the sign") << "02030000"
                                                     << "XX.XXXX" << hex("5623FA") << QString();
    QTest::newRow("voltage") << "02010100"
                             << "XXX.X" << hex("0582") << "820.5";
    QTest::newRow("active energy") << "00010000"
                                   << "XXXXXX.XX" << hex("00000080") << "800000.00";
    QTest::newRow("reactive energy of a quadrant") << "00050000"
                                                   << "XXXXXX.XX" << hex("00000090") << "900000.00";
    QTest::newRow("active energy of a phase") << "00150000"
                                              << "XXXXXX.XX" << hex("00000080") << "800000.00";
    QTest::newRow("constant") << "04000409"
                              << "XXXXXX" << hex("000080") << "800000";
    QTest::newRow("current of 1997") << "B621"
                                     << "XX.XX" << hex("3492") << "92.34";
    QTest::newRow("power of 1997") << "B630"
                                   << "XX.XXXX" << hex("562381") << "81.2356";
}

void TestDlt645Codec::signsAreThoseOfTheStandard()
{
    QFETCH(QString, item);
    QFETCH(QString, dataType);
    QFETCH(QByteArray, value);
    QTEST(Dlt645Format::of(item, dataType).text(value), "text");
}

void TestDlt645Codec::unknownLayoutsAreRefused_data()
{
    QTest::addColumn<QString>("dataType");
    const QStringList unknown = {
        "", "float", "X.", ".X", "X.X.X", "xxx.x", "XX XX", "YYMMDDWW", "XXXXXXXXXXXXXXXXX"};
    for (const QString &dataType : unknown) {
        QTest::newRow(qPrintable(QString("'%1'").arg(dataType))) << dataType;
    }
}

void TestDlt645Codec::unknownLayoutsAreRefused()
{
    QFETCH(QString, dataType);
    const Dlt645Format format = Dlt645Format::of("02010100", dataType);
    QVERIFY(!format.isKnown());
    QVERIFY(format.text(QByteArray()).isNull());
    QVERIFY(format.text(hex("0523")).isNull());
}

QTEST_GUILESS_MAIN(TestDlt645Codec)
#include "tst_dlt645codec.moc"

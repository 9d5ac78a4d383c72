#include "boxsim/acquire/modbusline.h"
#include "boxsim/acquire/modbusvalue.h"
#include "boxsim/acquire/serialsettings.h"

#include <QLocale>
#include <QRandomGenerator>
#include <QtEndian>
#include <QtTest>

#include <cmath>

using Texts = QMap<QString, QString>;

Q_DECLARE_METATYPE(SerialSettings)

// What a Modbus Standard's points mean: which address, which registers, which text. No device is asked.
class TestModbusRules : public QObject
{
    Q_OBJECT

private slots:
    void addresses_data();
    void addresses();
    void stations_data();
    void stations();
    void values_data();
    void values();
    void strings_data();
    void strings();
    void everyNumberReadsBack();
    void answersAreMatched_data();
    void answersAreMatched();
    void serialSettingsAreRead_data();
    void serialSettingsAreRead();
    void gapsAreTimes_data();
    void gapsAreTimes();
};

void TestModbusRules::addresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isBool");
    QTest::addColumn<bool>("countsFrom0");
    QTest::addColumn<QString>("read"); // area and number, or why it is refused
    const auto row = [](const char *text, const char *from0, const char *from1, const char *boolFrom0) {
        const QString address = QString::fromUtf8(text);
        QTest::addRow("%s from 0", text) << address << false << true << QString::fromUtf8(from0);
        QTest::addRow("%s from 1", text) << address << false << false << QString::fromUtf8(from1);
        QTest::addRow("%s bool", text) << address << true << true << QString::fromUtf8(boolFrom0);
    };
    row("0", "H0", "there is no address 0", "C0");
    row("1", "H1", "H0", "C1");
    row("0000012", "H12", "H11", "C12");
    row("9999", "H9999", "H9998", "C9999");
    row("65535", "H65535", "H65534", "C65535");
    row("65536", "there is no address 65536", "there is no address 65536", "there is no address 65536");
    row("20000", "H20000", "H19999", "C20000");
    row("00001", "C0", "C0", "C0");
    row("00000", "there is no address 00000", "there is no address 00000", "there is no address 00000");
    row("10001", "D0", "D0", "D0");
    row("19999", "D9998", "D9998", "D9998");
    row("30001", "I0", "I0", "I0");
    row("40001", "H0", "H0", "H0");
    row("49999", "H9998", "H9998", "H9998");
    row("40000", "there is no address 40000", "there is no address 40000", "there is no address 40000");
    row("400001", "H0", "H0", "H0");
    row("465536", "H65535", "H65535", "H65535");
    row("465537", "there is no address 465537", "there is no address 465537", "there is no address 465537");
    row("165536", "D65535", "D65535", "D65535");
    row("365536", "I65535", "I65535", "I65535");
    row("065536", "C65535", "C65535", "C65535");
    row("200001", "there is no address 200001", "there is no address 200001", "there is no address 200001");
    row("4000001", "there is no address 4000001", "there is no address 4000001",
        "there is no address 4000001");
    row("99999999999999999999", "there is no address 99999999999999999999",
        "there is no address 99999999999999999999", "there is no address 99999999999999999999");
    row("", "it has no address", "it has no address", "it has no address");
    row("-1", "its address -1 is no number", "its address -1 is no number", "its address -1 is no number");
    row("+1", "its address +1 is no number", "its address +1 is no number", "its address +1 is no number");
    row("0x10", "its address 0x10 is no number", "its address 0x10 is no number",
        "its address 0x10 is no number");
    row("4:1", "its address 4:1 is no number", "its address 4:1 is no number",
        "its address 4:1 is no number");
    row(" 1", "its address  1 is no number", "its address  1 is no number", "its address  1 is no number");
    row("\xd9\xa1", "its address \xd9\xa1 is no number", "its address \xd9\xa1 is no number",
        "its address \xd9\xa1 is no number"); // an Arabic digit
}

void TestModbusRules::addresses()
{
    QFETCH(QString, text);
    QFETCH(bool, isBool);
    QFETCH(bool, countsFrom0);
    ModbusAddress address;
    QString read;
    if (readModbusAddress(text, isBool, countsFrom0, &address, &read)) {
        read = QString("CDIH").at(int(address.area)) + QString::number(address.number);
    }
    QTEST(read, "read");
}

void TestModbusRules::stations_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("network");
    QTest::addColumn<int>("serial");
    QTest::newRow("broadcast") << "0" << 0 << -1;
    QTest::newRow("first") << "1" << 1 << 1;
    QTest::newRow("last") << "247" << 247 << 247;
    QTest::newRow("reserved") << "248" << -1 << -1;
    QTest::newRow("of a device without stations") << "255" << 255 << -1;
    QTest::newRow("beyond") << "256" << -1 << -1;
    QTest::newRow("below") << "-1" << -1 << -1;
    QTest::newRow("no number") << "x" << -1 << -1;
    QTest::newRow("too long") << "99999999999" << -1 << -1;
    QTest::newRow("empty") << "" << -1 << -1;
}

void TestModbusRules::stations()
{
    QFETCH(QString, text);
    QTEST(readModbusStation(text, false), "network");
    QTEST(readModbusStation(text, true), "serial");
}

void TestModbusRules::values_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QVector<quint16>>("registers");
    QTest::addColumn<QString>("order");
    QTest::addColumn<QString>("text"); // empty for not valid
    using Words = QVector<quint16>;
    const auto row = [](const char *type, const Words &words, const char *order, const char *text) {
        QTest::addRow("%s %s %s", type, order, text)
            << QString::fromLatin1(type) << words << QString::fromLatin1(order) << QString::fromLatin1(text);
    };
    row("bool", {0}, "ABCD", "0");
    row("bool", {1}, "DCBA", "1");
    row("bool", {0x0100}, "ABCD", "1");
    row("int8", {0x12f6}, "ABCD", "-10");
    row("int8", {0xff7f}, "BADC", "127");
    row("uint8", {0x12f6}, "DCBA", "246");
    row("int16", {0xcfc7}, "BADC", "-12345");
    row("uint16", {0xd431}, "DCBA", "54321");
    row(" UInt16 ", {7}, "ABCD", "7");
    row("int32", {0xf8a4, 0x32eb}, "ABCD", "-123456789");
    row("int32", {0xeb32, 0xa4f8}, "DCBA", "-123456789");
    row("int32", {0x32eb, 0xf8a4}, "CDAB", "-123456789");
    row("int32", {0xa4f8, 0xeb32}, "BADC", "-123456789");
    row("int32", {0xf8a4, 0x32eb}, "", "-123456789");
    row("uint32", {0xee6b, 0x2800}, "ABCD", "4000000000");
    // The bytes 11 22 33 44 55 66 77 88 as ABCDEFGH: 1234605616436508552.
    row("int64", {0x1122, 0x3344, 0x5566, 0x7788}, "ABCD", "1234605616436508552");
    row("int64", {0x8877, 0x6655, 0x4433, 0x2211}, "DCBA", "1234605616436508552");
    row("int64", {0x7788, 0x5566, 0x3344, 0x1122}, "CDAB", "1234605616436508552");
    row("int64", {0x2211, 0x4433, 0x6655, 0x8877}, "BADC", "1234605616436508552");
    row("int64", {0xffff, 0xffff, 0xffff, 0xffff}, "ABCD", "-1");
    row("uint64", {0xffff, 0xffff, 0xffff, 0xffff}, "ABCD", "18446744073709551615");
    row("float", {0x4366, 0x199a}, "ABCD", "230.1");
    row("float", {0x199a, 0x4366}, "CDAB", "230.1");
    row("float", {0x3dcc, 0xcccd}, "ABCD", "0.1");
    row("float", {0xc000, 0}, "ABCD", "-2");
    row("float", {0x7f7f, 0xffff}, "ABCD", "3.4028235e+38");
    row("float", {0, 1}, "ABCD", "1e-45");
    row("float", {0x4b80, 0}, "ABCD", "16777216");
    row("float", {0x8000, 0}, "ABCD", "-0");
    row("float", {0x7fc0, 0}, "ABCD", "");
    row("float", {0x7f80, 0}, "ABCD", "");
    row("float", {0xff80, 0}, "ABCD", "");
    row("double", {0x3fb9, 0x9999, 0x9999, 0x999a}, "ABCD", "0.1");
    row("double", {0x999a, 0x9999, 0x9999, 0x3fb9}, "CDAB", "0.1");
    row("double", {0x7ff8, 0, 0, 0}, "ABCD", "");
    row("double", {0x7ff0, 0, 0, 0}, "ABCD", "");
}

void TestModbusRules::values()
{
    QFETCH(QString, type);
    QFETCH(QVector<quint16>, registers);
    QFETCH(QString, order);
    const ModbusType read(type, 0);
    QVERIFY(read.isValid());
    QCOMPARE(read.registers(), registers.size());
    const PointReading reading = read.reading(registers.constData(), {order, false});
    QTEST(reading.value, "text");
    QCOMPARE(reading.valid, !reading.value.isEmpty());
}

void TestModbusRules::strings_data()
{
    QTest::addColumn<QByteArray>("bytes"); // as they come, two a register
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("charReversed");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << QByteArray("Pump") << 4 << false << "Pump";
    QTest::newRow("odd") << QByteArray("Pump") << 3 << false << "Pum";
    QTest::newRow("ends at a NUL") << QByteArray("Pu\0x", 4) << 4 << false << "Pu";
    QTest::newRow("starts with one") << QByteArray("\0u", 2) << 2 << false << "";
    QTest::newRow("reversed") << QByteArray("uPpm") << 4 << true << "Pump";
    QTest::newRow("reversed and odd") << QByteArray("uPpm") << 3 << true << "Pum";
    QTest::newRow("reversed with a NUL") << QByteArray("uP\0m", 4) << 4 << true << "Pum";
    QTest::newRow("UTF-8") << QByteArray("Gr\xc3\xbcn ") << 6 << false << QString::fromUtf8("Gr\xc3\xbcn ");
    QTest::newRow("Latin-1") << QByteArray("Gr\xfcn") << 4 << false << QString::fromUtf8("Gr\xc3\xbcn");
    QTest::newRow("cut UTF-8") << QByteArray("G\xc3") << 2 << false << QString::fromUtf8("G\xc3\x83");
    QTest::newRow("Chinese") << QByteArray("\xe6\xb3\xb5 ") << 4 << false
                             << QString::fromUtf8("\xe6\xb3\xb5 ");
}

void TestModbusRules::strings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, length);
    QFETCH(bool, charReversed);
    QVector<quint16> registers;
    for (int i = 0; i < bytes.size(); i += 2) {
        registers.append(qFromBigEndian<quint16>(bytes.constData() + i));
    }
    const ModbusType type("string", length);
    QCOMPARE(type.registers(), registers.size());
    // The byte order is one of numbers.
    const PointReading reading = type.reading(registers.constData(), {"DCBA", charReversed});
    QTEST(reading.value, "text");
    QVERIFY(reading.valid);
}

void TestModbusRules::everyNumberReadsBack()
{
    QLocale::setDefault(QLocale(QLocale::German));
    auto *random = QRandomGenerator::global();
    for (int i = 0; i < 20000; ++i) {
        const quint64 bits = random->generate64();
        quint16 words[4];
        for (int w = 0; w < 4; ++w) {
            words[w] = quint16(bits >> (48 - 16 * w));
        }
        const auto high = quint32(bits >> 32);
        float single;
        double number;
        memcpy(&single, &high, sizeof single);
        memcpy(&number, &bits, sizeof number);
        const PointReading asFloat = ModbusType("float", 0).reading(words, {"ABCD", false});
        const PointReading asDouble = ModbusType("double", 0).reading(words, {"ABCD", false});
        QCOMPARE(asFloat.valid, std::isfinite(single));
        QCOMPARE(asDouble.valid, std::isfinite(number));
        QVERIFY(!asFloat.valid || strtof(asFloat.value.toLatin1(), nullptr) == single);
        QVERIFY(!asDouble.valid || strtod(asDouble.value.toLatin1(), nullptr) == number);
        QCOMPARE(ModbusType("int64", 0).reading(words, {"ABCD", false}).value, QString::number(qint64(bits)));
    }
    QLocale::setDefault(QLocale::c());
}

void TestModbusRules::answersAreMatched_data()
{
    QTest::addColumn<QByteArray>("answer"); // from the station on
    QTest::addColumn<bool>("fits");
    const auto row = [](const char *name, const char *hex, bool fits) {
        QTest::newRow(name) << QByteArray::fromHex(hex) << fits;
    };
    row("two registers", "050304 0001 0002", true);
    row("with a checksum", "050304 0001 0002 1234", true);
    row("exception", "058302", true);
    row("another station", "060304 0001 0002", false);
    row("exception of another station", "068302", false);
    row("another function", "050404 0001 0002", false);
    row("exception of another function", "058402", false);
    row("too few registers", "050302 0001", false);
    row("too many registers", "050306 0001 0002 0003", false);
    row("cut", "050304 0001 00", false);
    row("no size", "0503", false);
    row("nothing", "", false);
}

void TestModbusRules::answersAreMatched()
{
    QFETCH(QByteArray, answer);
    QTEST(ModbusLine::fits({5, ModbusArea::HoldingRegisters, 0, 2}, answer, 1), "fits");
}

void TestModbusRules::serialSettingsAreRead_data()
{
    QTest::addColumn<Texts>("parameters");
    QTest::addColumn<QString>("read");
    QTest::newRow("none") << Texts() << "9600 8 1 N 0 2000 -1";
    QTest::newRow("all") << Texts{{"baudRate", "600"},       {"dataBit", "7"},
                                  {"stopBit", "2"},          {"parityBit", "ODD"},
                                  {"rtsEnable", "1"},        {"communicationTimeout", "300"},
                                  {"communicationGap", "25"}}
                         << "600 7 2 O 1 300 25";
    QTest::newRow("even") << Texts{{"baudRate", "115200"}, {"parityBit", "EVEN"}, {"rtsEnable", "0"}}
                          << "115200 8 1 E 0 2000 -1";
    QTest::newRow("no sense") << Texts{{"baudRate", "0"},
                                       {"dataBit", "9"},
                                       {"stopBit", "x"},
                                       {"parityBit", "?"},
                                       {"communicationTimeout", "-1"},
                                       {"communicationGap", "x"}}
                              << "9600 8 1 N 0 2000 -1";
    QTest::newRow("no time-out") << Texts{{"communicationTimeout", "0"}, {"communicationGap", "0"}}
                                 << "9600 8 1 N 0 2000 0";
    QTest::newRow("spelt otherwise") << Texts{{"baudRate", "+9600"}, {"dataBit", "08"}}
                                     << "9600 8 1 N 0 2000 -1";
}

void TestModbusRules::serialSettingsAreRead()
{
    QFETCH(Texts, parameters);
    const SerialSettings read = serialSettings(parameters, SerialSettings());
    QTEST(QString("%1 %2 %3 %4 %5 %6 %7")
              .arg(read.baudRate)
              .arg(read.dataBits)
              .arg(read.stopBits)
              .arg(QLatin1Char(read.parity))
              .arg(int(read.rts))
              .arg(read.timeout)
              .arg(read.gap),
          "read");
}

void TestModbusRules::gapsAreTimes_data()
{
    QTest::addColumn<SerialSettings>("settings");
    QTest::addColumn<int>("microseconds");
    SerialSettings settings;
    QTest::newRow("3.5 characters of 10 bits at 9600") << settings << 3645;
    settings.parity = 'E';
    settings.baudRate = 600;
    QTest::newRow("3.5 characters of 11 bits at 600") << settings << 64166;
    settings.gap = 0;
    QTest::newRow("none") << settings << 0;
    settings.gap = 20;
    QTest::newRow("as said") << settings << 20000;
    settings.gap = INT_MAX;
    QTest::newRow("bounded") << settings << 1000000000;
}

void TestModbusRules::gapsAreTimes()
{
    QFETCH(SerialSettings, settings);
    QTEST(settings.gapTime(), "microseconds");
}

QTEST_GUILESS_MAIN(TestModbusRules)
#include "tst_modbusrules.moc"

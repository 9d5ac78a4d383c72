#include "boxsim/acquire/modbusplan.h"

#include <QtTest>

#include <functional>

using Texts = QMap<QString, QString>;

Q_DECLARE_METATYPE(SimPoint)

// What a Modbus slave is asked for: which values in one request, and what becomes of one that is refused or
// not answered. No device is asked.
class TestModbusPlan : public QObject
{
    Q_OBJECT

private slots:
    void refusedPoints_data();
    void refusedPoints();
    void neighboursAreJoined_data();
    void neighboursAreJoined();
    void aRefusedRequestIsHalved();
    void whatIsSilentComesLast();
    void silentValuesKeepNoOthersWaiting_data();
    void silentValuesKeepNoOthersWaiting();
    void whatHadNoTurnComesFirst();
    void whatAnswersAgainIsJoinedAgain();
    void whatStaysSilentIsNotJoined();
    void whatWasRefusedIsNotJoined();
    void joiningInVainBecomesRare();

private:
    static SimPoint point(const QString &addr, const QString &type, int length = 0)
    {
        return {"p" + addr, addr, type, length};
    }
    // "H0+2 C7": area, first address and count of each request.
    static QString spans(const ModbusPlan &plan)
    {
        QStringList spans;
        for (const ModbusRequest &request : plan.requests()) {
            spans.append(QString("%1%2+%3")
                             .arg(QString("CDIH").at(int(request.area())))
                             .arg(request.first())
                             .arg(request.count()));
        }
        return spans.join(' ');
    }
    // Points from texts such as "40001:int16".
    static QVector<SimPoint> points(const QString &texts)
    {
        QVector<SimPoint> points;
        const QStringList list = texts.split(' ');
        for (const QString &text : list) {
            const QStringList parts = text.split(':');
            points.append(point(parts.at(0), parts.at(1), parts.value(2).toInt()));
        }
        return points;
    }
    // A register each.
    static QVector<SimPoint> registers(int first, int count)
    {
        QVector<SimPoint> points;
        for (int i = first; i < first + count; ++i) {
            points.append(point(QString::number(i), "uint16"));
        }
        return points;
    }
    // Asks as a reader does, and counts what was not answered, and the readings without one of the points.
    static int failures(ModbusPlan *plan, int readings,
                        const std::function<bool(const ModbusRequest &)> &answers, int point = 0,
                        int *missed = nullptr)
    {
        int failures = 0;
        const auto hasPoint = [point](const ModbusItem &item) { return item.point == point; };
        for (; readings > 0; --readings) {
            bool isRead = false;
            plan->beginReading();
            for (int i = 0; i < plan->requests().size(); ++i) {
                const ModbusRequest request = plan->requests().at(i);
                if (answers(request)) {
                    isRead = isRead || std::any_of(request.items.begin(), request.items.end(), hasPoint);
                    plan->noteAnswer(i);
                    continue;
                }
                ++failures;
                const bool isLasting = plan->noteFailure(i);
                plan->putLast(i);
                if (isLasting) {
                    plan->split(plan->requests().size() - 1, ModbusPlan::Split::UntilAnswers);
                }
                break;
            }
            if (missed && !isRead) {
                ++*missed;
            }
        }
        return failures;
    }
};

void TestModbusPlan::refusedPoints_data()
{
    QTest::addColumn<QString>("addr");
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("reason"); // empty if it is taken
    QTest::newRow("number of coils") << "00001"
                                     << "int16" << 0 << "int16 at 00001 is a bit";
    QTest::newRow("string of inputs") << "10001"
                                      << "string" << 4 << "string at 10001 is a bit";
    QTest::newRow("bool of a coil") << "00001"
                                    << "bool" << 0 << "";
    QTest::newRow("bool of a register") << "40001"
                                        << "bool" << 0 << "";
    QTest::newRow("no address") << ""
                                << "int16" << 0 << "it has no address";
    QTest::newRow("no type") << "1"
                             << "word" << 0 << "there is no type word of length 0";
    QTest::newRow("string without a length") << "1"
                                             << "string" << 0 << "there is no type string of length 0";
    QTest::newRow("last register") << "65535"
                                   << "uint16" << 0 << "";
    QTest::newRow("past the last") << "65535"
                                   << "uint32" << 0 << "it reaches past the last register";
    QTest::newRow("endless string") << "1"
                                    << "string" << INT_MAX << "it reaches past the last register";
    QTest::newRow("two of four past") << "465534"
                                      << "double" << 0 << "it reaches past the last register";
}

void TestModbusPlan::refusedPoints()
{
    QFETCH(QString, addr);
    QFETCH(QString, type);
    QFETCH(int, length);
    QFETCH(QString, reason);
    const Texts settings = {{"startAddress0", "1"}};
    const ModbusPlan plan({point("1", "int16"), point(addr, type, length)}, settings, true);
    QCOMPARE(plan.refusals().size(), reason.isEmpty() ? 0 : 1);
    QCOMPARE(reason.isEmpty() ? QString() : plan.refusals().at(0).reason, reason);
    QVERIFY(reason.isEmpty() || plan.refusals().at(0).point == 1);
    QVERIFY(!reason.isEmpty() || spans(plan) != "H1+1"); // what is refused is never asked for
}

void TestModbusPlan::neighboursAreJoined_data()
{
    QTest::addColumn<QVector<SimPoint>>("points");
    QTest::addColumn<QString>("grouped");
    QTest::addColumn<QString>("single");
    QTest::newRow("neighbours") << points("0:int16 1:int32 3:double") << "H0+7"
                                << "H0+1 H1+2 H3+4";
    QTest::newRow("out of order") << points("3:double 0:int16 1:int32") << "H0+7"
                                  << "H0+1 H1+2 H3+4";
    QTest::newRow("a gap") << points("0:int16 2:int16") << "H0+1 H2+1"
                           << "H0+1 H2+1";
    QTest::newRow("the same twice") << points("5:int16 5:bool 40006:bool") << "C5+1 H5+1"
                                    << "C5+1 H5+1 H5+1";
    QTest::newRow("overlapping") << points("0:double 1:int16 2:float") << "H0+4"
                                 << "H0+4 H1+1 H2+2";
    QTest::newRow("areas") << points("00001:bool 10001:bool 30001:int16 40001:int16") << "C0+1 D0+1 I0+1 H0+1"
                           << "C0+1 D0+1 I0+1 H0+1";
    QVector<SimPoint> registers;
    QVector<SimPoint> doubles;
    QVector<SimPoint> bits;
    QStringList singles[3];
    for (int i = 0; i < 126; ++i) {
        registers.append(point(QString::number(i), "uint16"));
        singles[0].append(QString("H%1+1").arg(i));
    }
    for (int i = 0; i < 32; ++i) {
        doubles.append(point(QString::number(4 * i), "double"));
        singles[1].append(QString("H%1+4").arg(4 * i));
    }
    for (int i = 0; i < 2001; ++i) {
        bits.append(point(QString::number(i), "bool"));
        singles[2].append(QString("C%1+1").arg(i));
    }
    QTest::newRow("125 registers") << registers << "H0+125 H125+1" << singles[0].join(' ');
    QTest::newRow("no value in two") << doubles << "H0+124 H124+4" << singles[1].join(' ');
    QTest::newRow("2000 bits") << bits << "C0+2000 C2000+1" << singles[2].join(' ');
    QTest::newRow("long string") << points("0:int16 1:string:251 127:int16") << "H0+1 H1+126 H127+1"
                                 << "H0+1 H1+126 H127+1";
    QTest::newRow("string of 250") << points("0:string:250 125:int16") << "H0+125 H125+1"
                                   << "H0+125 H125+1";
}

void TestModbusPlan::neighboursAreJoined()
{
    QFETCH(QVector<SimPoint>, points);
    const Texts settings = {{"startAddress0", "1"}};
    QTEST(spans(ModbusPlan(points, settings, true)), "grouped");
    QTEST(spans(ModbusPlan(points, settings, false)), "single");
}

void TestModbusPlan::aRefusedRequestIsHalved()
{
    const Texts settings = {{"startAddress0", "1"}};
    const auto lasting = ModbusPlan::Split::Lasting;
    ModbusPlan plan(points("0:int16 1:int32 3:int16 4:int16 5:int16"), settings, true);
    QCOMPARE(spans(plan), "H0+6");
    QVERIFY(plan.split(0, lasting));
    QCOMPARE(spans(plan), "H0+3 H3+3");
    QVERIFY(plan.split(1, lasting));
    QCOMPARE(spans(plan), "H0+3 H3+1 H4+2");
    QVERIFY(!plan.split(1, lasting));
    QVERIFY(plan.split(2, lasting));
    QCOMPARE(spans(plan), "H0+3 H3+1 H4+1 H5+1");
    plan.reset();
    QCOMPARE(spans(plan), "H0+6");
}

void TestModbusPlan::whatIsSilentComesLast()
{
    const Texts settings = {{"startAddress0", "1"}};
    ModbusPlan plan(points("0:int16 2:int16 4:int16"), settings, true);
    plan.putLast(0);
    QCOMPARE(spans(plan), "H2+1 H4+1 H0+1");
    plan.putLast(2);
    QCOMPARE(spans(plan), "H2+1 H4+1 H0+1");
}

void TestModbusPlan::silentValuesKeepNoOthersWaiting_data()
{
    QTest::addColumn<int>("silent"); // values apart that are never answered
    QTest::addColumn<int>("atStart");
    QTest::newRow("none") << 0 << 3;
    QTest::newRow("five") << 5 << 8; // one more for the first silence of each
    QTest::newRow("twenty") << 20 << 23;
}

// Of 60 that are joined one is silent at times.
void TestModbusPlan::silentValuesKeepNoOthersWaiting()
{
    QFETCH(int, silent);
    QVector<SimPoint> points = registers(7, 1) + registers(100, 60);
    for (int i = 1; i <= silent; ++i) {
        points += registers(1000 + 2 * i, 1);
    }
    ModbusPlan plan(points, {{"startAddress0", "1"}}, true);
    bool isSound = false;
    const auto answers = [&](const ModbusRequest &request) {
        const bool hasBad = request.first() <= 130 && request.first() + request.count() > 130;
        return request.first() < 1000 && (isSound || !hasBad);
    };
    constexpr int neighbour = 6; // register 105
    int missed = 0;
    failures(&plan, 300, answers, neighbour, &missed);
    QTEST(missed, "atStart");
    isSound = true;
    missed = 0;
    failures(&plan, 1100, answers, neighbour, &missed);
    QCOMPARE(missed, 0); // not when they are joined, either
    const auto isWhole = [](const ModbusRequest &request) { return request.items.size() == 60; };
    QVERIFY(std::any_of(plan.requests().begin(), plan.requests().end(), isWhole));
    isSound = false;
    failures(&plan, 300, answers, neighbour, &missed);
    QCOMPARE(missed, 3);
}

// A peer that takes two requests a reading lets none wait for ever, silent or not.
void TestModbusPlan::whatHadNoTurnComesFirst()
{
    ModbusPlan plan(points("0:int16 2:int16 4:int16 6:int16 8:int16"), {{"startAddress0", "1"}}, true);
    plan.noteFailure(4);
    QMap<int, int> asked;
    for (int reading = 0; reading < 5; ++reading) {
        plan.beginReading();
        ++asked[plan.requests().at(0).first()];
        ++asked[plan.requests().at(1).first()];
        plan.putFirst(2);
    }
    QCOMPARE(asked, (QMap<int, int>{{0, 2}, {2, 2}, {4, 2}, {6, 2}, {8, 2}}));
}

void TestModbusPlan::whatAnswersAgainIsJoinedAgain()
{
    ModbusPlan plan(registers(7, 1) + registers(100, 60), {{"startAddress0", "1"}}, true);
    failures(&plan, 12, [](const ModbusRequest &request) { return request.first() < 100; });
    QVERIFY(plan.requests().size() > 3);
    const auto all = [](const ModbusRequest &) { return true; };
    failures(&plan, 10, all);
    QVERIFY(plan.requests().size() > 3); // it may be a chance
    failures(&plan, 1, all);
    QCOMPARE(spans(plan), "H7+1 H100+60");
}

// So the others pay for it once a reading at most, and no time-out of theirs.
void TestModbusPlan::whatStaysSilentIsNotJoined()
{
    ModbusPlan plan(registers(7, 1) + registers(100, 8), {{"startAddress0", "1"}}, true);
    const auto answers = [](const ModbusRequest &request) {
        return request.first() > 103 || request.first() + request.count() <= 103;
    };
    QCOMPARE(failures(&plan, 3000, answers), 3000);
    QStringList parts = spans(plan).split(' ');
    parts.sort();
    QCOMPARE(parts.join(' '), "H100+2 H102+1 H103+1 H104+4 H7+1");
}

void TestModbusPlan::whatWasRefusedIsNotJoined()
{
    ModbusPlan plan(registers(100, 8), {{"startAddress0", "1"}}, true);
    plan.split(0, ModbusPlan::Split::UntilAnswers);
    plan.split(0, ModbusPlan::Split::UntilAnswers);
    plan.split(1, ModbusPlan::Split::Lasting);
    const auto all = [](const ModbusRequest &) { return true; };
    failures(&plan, 1000, all);
    QCOMPARE(spans(plan), "H100+2 H102+1 H103+1 H104+4");
    // What was halved afterwards is.
    plan.split(3, ModbusPlan::Split::UntilAnswers);
    failures(&plan, 11, all);
    QCOMPARE(spans(plan), "H100+2 H102+1 H103+1 H104+4");
}

// As with a device that gives no more than 64 registers at once, and says nothing if it is asked for more.
void TestModbusPlan::joiningInVainBecomesRare()
{
    ModbusPlan plan(registers(7, 1) + registers(100, 120), {{"startAddress0", "1"}}, true);
    const auto answers = [](const ModbusRequest &request) { return request.count() <= 64; };
    const int first = failures(&plan, 100, answers);
    QVERIFY2(first <= 3 + 4, QByteArray::number(first)); // until it is halved, then after 10, 20 and 40
    const int later = failures(&plan, 10000, answers);
    QVERIFY2(later <= 15, QByteArray::number(later));
    QCOMPARE(spans(plan), "H7+1 H100+60 H160+60");
}

QTEST_GUILESS_MAIN(TestModbusPlan)
#include "tst_modbusplan.moc"

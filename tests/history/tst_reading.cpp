#include "history/point.h"
#include "history/reading.h"

#include <QtTest>

#include <cmath>

Q_DECLARE_METATYPE(Shape)
Q_DECLARE_METATYPE(SampleState)
Q_DECLARE_METATYPE(QVector<PointId>)

using Steps = QVector<QPair<qint64, qint64>>;

// What a report says of a point, at which time, and what a point is called.
class TestReading : public QObject
{
    Q_OBJECT
private slots:
    void readsARow_data();
    void readsARow();
    void readsNameAddressAndType();
    void readsAllRows();
    void knowsShapes_data();
    void knowsShapes();
    void tellsNamesApart_data();
    void tellsNamesApart();
    void comparesPoints();
    void clockNeverGoesBack_data();
    void clockNeverGoesBack();
    void presentGivesNoTime();
    void clockFollowsTheSystem();
    void textsAreThoseOfTheReportBefore();
};

void TestReading::readsARow_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QVariant>("valid");
    QTest::addColumn<SampleState>("state");
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");
    const auto number = [](const char *name, const QString &type, const QString &value, double is) {
        QTest::newRow(name) << type << value << QVariant("1") << SampleState::Valid << is << QString();
    };
    const auto other = [](const char *name, const QString &type, const QString &value, const QVariant &valid,
                          SampleState state) {
        QTest::newRow(name) << type << value << valid << state << double(NAN) << value;
    };
    number("a float", "float", "2.5", 2.5);
    number("a negative one", "int16", "-12", -12);
    number("an exponent", "double", "1.5e-300", 1.5e-300);
    number("the greatest", "double", "1.7976931348623157e308", 1.7976931348623157e308);
    number("a counter of 53 bits", "uint64", "9007199254740992", 9007199254740992.0);
    QTest::newRow("a counter that a double can't hold")
        << QString("uint64") << QString("18446744073709551615") << QVariant("1") << SampleState::Valid
        << 18446744073709551615.0 << QString("18446744073709551615");
    number("blanks around it", "float", " 7 ", 7);
    number("a bool as a number", "bool", "1", 1);
    number("a bool as a word", "bool", "true", 1);
    number("a bool as another word", "Bool", "False", 0);
    number("a type that is not known", "decimal", "3", 3);
    number("without a type", "", "3", 3);
    const QString noNumbers[] = {"nan",    "NaN",    "inf",  "-inf",  "infinity", "1e999",
                                 "-1e999", "",       " ",    "12,5",  "1 2",      "0x10",
                                 "12V",    "1e-999", "true", "1,234", "--1",      "1.2.3"};
    for (const QString &text : noNumbers) {
        other(qPrintable(QString("no number: '%1'").arg(text)), "float", text, "1", SampleState::NoNumber);
    }
    other("no bool", "bool", "on", "1", SampleState::NoNumber);
    other("a text of 64 kB as a number", "int32", QString(65536, '7'), "1", SampleState::NoNumber);
    other("a text", "string", "12", "1", SampleState::Valid);
    other("an empty text", "string", "", "1", SampleState::Valid);
    other("a long text", "string", QString(65536, 'x'), "1", SampleState::Valid);
    other("not valid", "float", "2.5", "0", SampleState::NotValid);
    other("a text that is not valid", "string", "on", "0", SampleState::NotValid);
    other("neither 1 nor 0", "float", "2.5", "2", SampleState::NotValid);
    other("a word for valid", "float", "2.5", "true", SampleState::NotValid);
    other("no word for valid", "float", "2.5", "", SampleState::NotValid);
    other("nothing on it", "float", "2.5", {}, SampleState::NotValid);
    QTest::newRow("valid as a number") << "float"
                                       << "2.5" << QVariant(1) << SampleState::Valid << 2.5 << QString();
}

void TestReading::readsARow()
{
    QFETCH(QString, type);
    QFETCH(QString, value);
    QFETCH(QVariant, valid);
    QFETCH(SampleState, state);
    QFETCH(double, number);
    QFETCH(QString, text);
    QVariantMap row{{"name", "P"}, {"dataType", type}, {"value", value}};
    if (valid.isValid()) {
        row.insert("valid", valid);
    }
    const Reading reading = Reading::fromRow(row);
    QCOMPARE(reading.state, state);
    QCOMPARE(reading.number, number);
    QCOMPARE(reading.text, text);
}

void TestReading::readsNameAddressAndType()
{
    const Reading reading = Reading::fromRow({{"name", "Ua"},
                                              {"addr", "40001"},
                                              {"dataType", "float"},
                                              {"value", "1"},
                                              {"valid", "1"},
                                              {"more", "x"}});
    QCOMPARE(QStringList({reading.name, reading.address, reading.type}),
             QStringList({"Ua", "40001", "float"}));
    const Reading none = Reading::fromRow({});
    QCOMPARE(QStringList({none.name, none.address, none.type, none.text}), QStringList({"", "", "", ""}));
    QCOMPARE(none.state, SampleState::NotValid);
}

void TestReading::readsAllRows()
{
    QVERIFY(readRows({}).isEmpty());
    const QVector<Reading> readings = readRows(
        {QVariantMap{{"name", "A"}, {"value", "1"}, {"valid", "1"}}, "no row", QVariantMap{{"name", "B"}}});
    QCOMPARE(readings.size(), 3);
    QCOMPARE(readings.at(0).name, QString("A"));
    QCOMPARE(readings.at(0).number, 1.0);
    QCOMPARE(readings.at(1).name, QString());
    QCOMPARE(readings.at(2).name, QString("B"));
}

void TestReading::knowsShapes_data()
{
    QTest::addColumn<Shape>("shape");
    for (const char *type : {"float", "double", "", "decimal", "Float"}) {
        QTest::newRow(type) << Shape::Line;
    }
    for (const char *type : {"bool", "bit", "int8", "uint8", "int16", "uint16", "int32", "uint32", "int64",
                             "uint64", "BOOL", "Int16"}) {
        QTest::newRow(type) << Shape::Step;
    }
    for (const char *type : {"string", "String", "string32"}) {
        QTest::newRow(type) << Shape::Event;
    }
}

void TestReading::knowsShapes()
{
    QFETCH(Shape, shape);
    QCOMPARE(shapeOf(QString::fromLatin1(QTest::currentDataTag())), shape);
}

void TestReading::tellsNamesApart_data()
{
    QTest::addColumn<QVector<PointId>>("points");
    QTest::addColumn<QStringList>("names");
    const auto row = [](const char *name, const QVector<PointId> &points, const QStringList &names) {
        QTest::newRow(name) << points << names;
    };
    row("none", {}, {});
    row("one", {{"10.0.0.1", "Plant", "Line", "Ua"}}, {"Ua"});
    row("by name", {{"b", "p", "s", "Ua"}, {"b", "p", "t", "Ub"}}, {"Ua", "Ub"});
    row("by Standard", {{"b", "p", "s", "Ua"}, {"b", "p", "t", "Ua"}, {"b", "p", "t", "Ub"}},
        {"s / Ua", "t / Ua", "Ub"});
    row("by project", {{"b", "p", "s", "Ua"}, {"b", "q", "s", "Ua"}}, {"p / s / Ua", "q / s / Ua"});
    row("by Box", {{"b", "p", "s", "Ua"}, {"c", "p", "s", "Ua"}}, {"b / p / s / Ua", "c / p / s / Ua"});
    row("each as far as needed", {{"b", "p", "s", "Ua"}, {"c", "p", "s", "Ua"}, {"b", "p", "t", "Ua"}},
        {"b / p / s / Ua", "c / p / s / Ua", "b / p / t / Ua"});
    row("of two projects", {{"b", "p", "s", "Ua"}, {"b", "q", "s", "Ub"}}, {"p / s / Ua", "q / s / Ub"});
    row("of two Boxes", {{"b", "p", "s", "Ua"}, {"c", "p", "s", "Ub"}}, {"b / p / s / Ua", "c / p / s / Ub"});
    row("outside a session", {{"", "p", "s", "Ua"}, {"c", "p", "s", "Ua"}},
        {" / p / s / Ua", "c / p / s / Ua"});
}

void TestReading::tellsNamesApart()
{
    QFETCH(QVector<PointId>, points);
    QTEST(distinctNames(points), "names");
}

void TestReading::comparesPoints()
{
    const PointId id{"b", "p", "s", "n"};
    const PointId others[] = {
        {"c", "p", "s", "n"}, {"b", "q", "s", "n"}, {"b", "p", "t", "n"}, {"b", "p", "s", "o"}};
    QVERIFY(id == PointId(id));
    for (const PointId &other : others) {
        QVERIFY(!(id == other));
        QVERIFY(id < other);
        QVERIFY(!(other < id));
        QVERIFY(qHash(id) != qHash(other));
    }
    // Parts that change places make another point.
    QVERIFY(qHash(PointId{"a", "b", "", ""}) != qHash(PointId{"b", "a", "", ""}));
}

void TestReading::clockNeverGoesBack_data()
{
    QTest::addColumn<Steps>("clocks"); // the monotonic and the wall clock, ms
    QTest::addColumn<QVector<qint64>>("times");
    QTest::addColumn<qint64>("ahead");
    const auto row = [](const char *name, const Steps &clocks, const QVector<qint64> &times, qint64 ahead) {
        QTest::newRow(name) << clocks << times << ahead;
    };
    row("the wall clock", {{5, 90000}, {1005, 91000}, {2005, 92003}}, {90000, 91000, 92003}, 0);
    row("twice in a ms", {{5, 90000}, {5, 90000}, {5, 90000}, {7, 90002}, {8, 90004}},
        {90000, 90001, 90002, 90003, 90004}, 0);
    row("set back", {{5, 90000}, {1005, 31000}, {2005, 32000}}, {90000, 91000, 92000}, 60000);
    row("set back, then right", {{5, 90000}, {1005, 31000}, {2005, 92500}}, {90000, 91000, 92500}, 0);
    row("twice in a ms while set back", {{5, 90000}, {1005, 31000}, {1005, 31000}, {2005, 32000}},
        {90000, 91000, 91001, 92000}, 60000);
    row("set back by little, and caught up", {{5, 90000}, {1005, 89900}, {2005, 91500}},
        {90000, 91000, 91500}, 0);
    row("put right bit by bit", {{5, 90000}, {1005, 90900}, {1006, 90500}, {2005, 91600}},
        {90000, 90900, 90901, 91600}, 0);
    row("set ahead", {{5, 90000}, {1005, 500000}}, {90000, 500000}, 0);
    row("a computer that sleeps", {{5, 90000}, {6, 3690000}}, {90000, 3690000}, 0);
    row("before 1970", {{5, -90000}, {1005, -150000}, {2005, -149000}}, {-90000, -89000, -88000}, 61000);
    row("a monotonic clock that is none", {{5000, 90000}, {5, 80000}}, {90000, 90001}, 10001);
}

void TestReading::clockNeverGoesBack()
{
    QFETCH(Steps, clocks);
    ArrivalClock clock;
    QVector<qint64> times;
    for (const auto &step : qAsConst(clocks)) {
        times.append(clock.at(step.first, step.second));
    }
    QTEST(times, "times");
    QTEST(clock.ahead(), "ahead");
}

void TestReading::presentGivesNoTime()
{
    ArrivalClock clock;
    QCOMPARE(clock.presentAt(5, 90000).time, qint64(90000));
    clock.at(5, 80000);
    // Set back, and no report comes.
    for (int round = 0; round < 2; ++round) {
        const ArrivalClock::Present present = clock.presentAt(10005, 30000);
        QCOMPARE(present.time, qint64(90000));
        QCOMPARE(present.ahead, qint64(60000));
    }
    QCOMPARE(clock.at(9005, 29000), qint64(89000));
}

void TestReading::clockFollowsTheSystem()
{
    ArrivalClock clock;
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const qint64 first = clock.now();
    const qint64 second = clock.now();
    QVERIFY(first >= before && first <= QDateTime::currentMSecsSinceEpoch());
    QVERIFY(second > first && second <= first + 60000);
    QCOMPARE(clock.ahead(), qint64(0));
}

void TestReading::textsAreThoseOfTheReportBefore()
{
    const auto report = [](const QString &second) {
        QVariantList rows;
        for (const QString &name : {QString("Ua"), second}) {
            rows.append(QVariantMap{{"name", name + QString()}, {"dataType", "float"}, {"value", "x"}});
        }
        return rows;
    };
    const QVector<Reading> before = readRows(report("Ub"));
    const QVector<Reading> same = readRows(report("Ub"), before);
    QCOMPARE(same.at(1).name, "Ub");
    QCOMPARE(same.at(1).name.constData(), before.at(1).name.constData());
    QCOMPARE(same.at(1).text.constData(), before.at(1).text.constData());
    QVector<Reading> other = readRows(report("Uc"), before);
    QCOMPARE(other.at(1).name, "Uc");
    other = readRows(report("Ub") + report("Ud"), before);
    QCOMPARE(other.size(), 4);
    QCOMPARE(other.at(3).name, "Ud");
}

QTEST_GUILESS_MAIN(TestReading)
#include "tst_reading.moc"

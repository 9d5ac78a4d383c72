#include "fakesource.h"
#include "trends/figuremodel.h"
#include "trends/valuescale.h"

#include <QtTest>

// Which scale a curve gets, and what a scale shows.
class TestValueScale : public QObject
{
    Q_OBJECT

private slots:
    void suggestsTheScale_data();
    void suggestsTheScale();
    void suggestsTheScalesOfMany_data();
    void suggestsTheScalesOfMany();
    void suggestsTheScalesBesideZero_data();
    void suggestsTheScalesBesideZero();
    void scaleShowsAllNumbers_data();
    void scaleShowsAllNumbers();
    void zoomedScaleHasTwoEnds();
};

namespace {

Statistics figures(double least, double greatest, qint64 count = 2)
{
    Statistics made;
    made.count = count;
    made.least = least;
    made.greatest = greatest;
    return made;
}

} // namespace

void TestValueScale::suggestsTheScale_data()
{
    QTest::addColumn<QVector<double>>("own"); // least and greatest
    QTest::addColumn<QVector<double>>("left");
    QTest::addColumn<bool>("right");
    const QVector<double> volts{228, 232};
    QTest::newRow("alone") << volts << QVector<double>() << false;
    QTest::newRow("alike") << volts << QVector<double>{220, 240} << false;
    QTest::newRow("a twentieth") << QVector<double>{0, 11.6} << volts << false;
    QTest::newRow("under a twentieth") << QVector<double>{0, 11.5} << volts << true;
    QTest::newRow("twenty times") << QVector<double>{0, 4640} << volts << false;
    QTest::newRow("over twenty times") << QVector<double>{-4700, 0} << volts << true;
    QTest::newRow("nothing but zero") << QVector<double>{0, 0} << volts << false;
    QTest::newRow("beside nothing but zero") << volts << QVector<double>{0, 0} << false;
    QTest::newRow("immense") << QVector<double>{-1.7e308, 1.7e308} << volts << true;
}

void TestValueScale::suggestsTheScale()
{
    QFETCH(QVector<double>, own);
    QFETCH(QVector<double>, left);
    QFETCH(bool, right);
    const Statistics other = left.isEmpty() ? figures(FakeSource::noNumber, FakeSource::noNumber, 0)
                                            : figures(left.first(), left.last());
    const Side side = ValueScale::suggested(ValueScale::magnitude(figures(own.first(), own.last())),
                                            ValueScale::magnitude(other));
    QCOMPARE(side == Side::Right, right);
}

void TestValueScale::suggestsTheScalesOfMany_data()
{
    QTest::addColumn<QVector<double>>("magnitudes");
    QTest::addColumn<QVector<int>>("right"); // places
    QTest::newRow("none") << QVector<double>() << QVector<int>();
    QTest::newRow("alike") << QVector<double>{230, 12, 231} << QVector<int>();
    QTest::newRow("two kinds") << QVector<double>{230, 11, 232, 10} << QVector<int>{1, 3};
    QTest::newRow("three kinds") << QVector<double>{234, 15, 3319, 235, 16} << QVector<int>{1, 4};
    QTest::newRow("greatest apart") << QVector<double>{10, 11, 40, 9000} << QVector<int>{0, 1, 2};
    QTest::newRow("zero and none") << QVector<double>{0, 5000, -1, 3} << QVector<int>{3};
    QTest::newRow("immense") << QVector<double>{1.7e308, 1e-300} << QVector<int>{1};
}

void TestValueScale::suggestsTheScalesOfMany()
{
    QFETCH(QVector<double>, magnitudes);
    QFETCH(QVector<int>, right);
    QVector<Side> expected(magnitudes.size(), Side::Left);
    for (const int place : qAsConst(right)) {
        expected[place] = Side::Right;
    }
    QVERIFY(ValueScale::suggested(magnitudes) == expected);
}

void TestValueScale::suggestsTheScalesBesideZero_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<double>("later"); // its greatest, with the answer after the one in which it is 0
    QTest::addColumn<QString>("scale");
    QTest::addColumn<QString>("laterScale");
    QTest::newRow("number") << "float" << 0.0 << "Left"
                            << "Left";
    QTest::newRow("number that grows") << "float" << 0.9 << "Left"
                                       << "Right";
    QTest::newRow("number that becomes alike") << "float" << 100.0 << "Left"
                                               << "Left";
    QTest::newRow("state") << "bool" << 0.0 << "Right"
                           << "Right";
    QTest::newRow("state that changes") << "bool" << 1.0 << "Right"
                                        << "Right";
}

// A curve that has been 0 so far tells nothing of what suits it, or those that come after it.
void TestValueScale::suggestsTheScalesBesideZero()
{
    QFETCH(QString, type);
    QFETCH(double, later);
    FigureModel model(nullptr, nullptr);
    const auto answer = [](const QString &name, double least, double greatest, const QString &of = "float") {
        const PointId id{"192.168.1.80", "plant", "meters", name};
        Thinned thinned;
        thinned.statistics = figures(least, greatest);
        return std::make_pair(Point{id, "40001", of}, thinned);
    };
    const auto add = [&model](const QVector<std::pair<Point, Thinned>> &all) {
        QVector<Point> points;
        SampleSource::Request request;
        QVector<Thinned> answers;
        for (const auto &each : all) {
            points.append(each.first);
            request.points.append(each.first.id);
            answers.append(each.second);
        }
        model.add(points);
        model.setAnswers(request, answers);
    };
    const auto scale = [&model](int row) {
        return model.index(row, FigureModel::RightScale).data().toString();
    };
    add({answer("Zero", 0, 0)});
    add({answer("Voltage", 228, 232), answer("Power factor", 0.9, 0.95)});
    QCOMPARE((QStringList{scale(0), scale(1), scale(2)}), (QStringList{"Left", "Left", "Right"}));
    add({answer("Fault", 0, 0, type)});
    QTEST(scale(3), "scale");
    add({answer("Fault", 0, later, type)});
    QTEST(scale(3), "laterScale");
}

void TestValueScale::scaleShowsAllNumbers_data()
{
    QTest::addColumn<QVector<double>>("numbers"); // least and greatest of each curve
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("greatest");
    QTest::newRow("none") << QVector<double>() << 0.0 << 1.0;
    QTest::newRow("one curve") << QVector<double>{0, 100} << -5.0 << 105.0;
    QTest::newRow("two curves") << QVector<double>{10, 20, 80, 110} << 5.0 << 115.0;
    QTest::newRow("always the same") << QVector<double>{200, 200} << 190.0 << 210.0;
    QTest::newRow("a counter") << QVector<double>{1e11, 1e11 + 20} << 1e11 - 1 << 1e11 + 21;
    QTest::newRow("always zero") << QVector<double>{0, 0} << -1.0 << 1.0;
    QTest::newRow("beyond what can be told apart")
        << QVector<double>{-1.7e308, 1.7e308} << -1.1e300 << 1.1e300;
}

void TestValueScale::scaleShowsAllNumbers()
{
    QFETCH(QVector<double>, numbers);
    QVector<Statistics> curves{figures(FakeSource::noNumber, FakeSource::noNumber, 0)};
    for (int at = 0; at < numbers.size(); at += 2) {
        curves.append(figures(numbers.at(at), numbers.at(at + 1)));
    }
    const ValueRange range = ValueScale::around(curves);
    QTEST(range.least, "least");
    QTEST(range.greatest, "greatest");
}

void TestValueScale::zoomedScaleHasTwoEnds()
{
    for (const ValueRange &range :
         {ValueRange{0, 1}, ValueRange{-1, 1}, ValueRange{1e15, 1e15 + 8}, ValueRange{-1.1e300, 1.1e300}}) {
        for (const double factor : {0.5, 2.0}) {
            ValueRange zoomed = range;
            for (int step = 0; step < 3000; ++step) {
                zoomed = ValueScale::zoomed(zoomed, factor);
            }
            QVERIFY(std::isfinite(zoomed.greatest - zoomed.least));
            QVERIFY(zoomed.least < zoomed.greatest);
        }
    }
}

QTEST_GUILESS_MAIN(TestValueScale)
#include "tst_valuescale.moc"

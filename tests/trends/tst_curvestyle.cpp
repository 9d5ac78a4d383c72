#include "trends/curvestyle.h"
#include "trends/polylines.h"
#include "trends/symbolplaces.h"
#include "trends/timeview.h"

#include <QPainter>
#include <QPalette>
#include <QSet>
#include <QtTest>

#include <array>
#include <cmath>

#include <qwt_scale_map.h>

using Matrix = std::array<std::array<double, 3>, 3>;
Q_DECLARE_METATYPE(Matrix)

// How the curves of a trend are told apart.
class TestCurveStyle : public QObject
{
    Q_OBJECT
private slots:
    void stylesDiffer();
    void stylesDifferWithoutColours();
    void symbolsStandOnTheCurve_data();
    void symbolsStandOnTheCurve();
    void symbolsGoAlongWithTheCurve();
    void coloursDifferForAllEyes_data();
    void coloursDifferForAllEyes();
    void stylesAreReadable_data();
    void stylesAreReadable();
};

namespace {

double linear(double part)
{
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

// Where a colour is seen, in L*, a* and b* of CIELAB. The matrix turns linear red, green and blue into those
// that eyes of one kind see.
std::array<double, 3> seen(const QColor &colour, const Matrix &eyes)
{
    std::array<double, 3> light{};
    for (size_t part = 0; part < 3; ++part) {
        light[part] = qBound(0.0,
                             eyes[part][0] * linear(colour.redF()) + eyes[part][1] * linear(colour.greenF())
                                 + eyes[part][2] * linear(colour.blueF()),
                             1.0);
    }
    const auto root = [](double part) {
        return part > 0.008856 ? std::cbrt(part) : 7.787 * part + 16.0 / 116;
    };
    const double x = root((0.4124 * light[0] + 0.3576 * light[1] + 0.1805 * light[2]) / 0.95047);
    const double y = root(0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2]);
    const double z = root((0.0193 * light[0] + 0.1192 * light[1] + 0.9505 * light[2]) / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double distance(const QColor &one, const QColor &other, const Matrix &eyes)
{
    const auto first = seen(one, eyes);
    const auto second = seen(other, eyes);
    return std::hypot(first[0] - second[0], first[1] - second[1], first[2] - second[2]);
}

double luminance(const QColor &colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const double first = luminance(one);
    const double second = luminance(other);
    return (qMax(first, second) + 0.05) / (qMin(first, second) + 0.05);
}

QPalette desktopOf(const QColor &base)
{
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    return palette;
}

} // namespace

void TestCurveStyle::stylesDiffer()
{
    for (const QColor &base : {QColor(Qt::white), QColor(0x23, 0x23, 0x23)}) {
        QSet<QString> seen;
        for (int style = 0; style < CurveStyle::count; ++style) {
            const QPen pen = CurveStyle::pen(style, desktopOf(base));
            seen.insert(pen.color().name() + QString::number(pen.style()));
        }
        QVERIFY(CurveStyle::count >= 16);
        QCOMPARE(seen.size(), CurveStyle::count);
    }
}

void TestCurveStyle::stylesDifferWithoutColours()
{
    for (const QColor &base : {QColor(Qt::white), QColor(0x23, 0x23, 0x23)}) {
        QSet<QByteArray> seen;
        for (int style = 0; style < CurveStyle::count; ++style) {
            QImage image(CurveStyle::sampleSize, QImage::Format_RGB32);
            image.fill(base);
            QPainter painter(&image);
            CurveStyle::drawSample(&painter, style, desktopOf(base), QPointF(0, image.height() / 2.0));
            QByteArray shape;
            for (int at = 0; at < image.width() * image.height(); ++at) {
                const QColor pixel = image.pixelColor(at % image.width(), at / image.width());
                shape.append(pixel == base ? ' ' : 'x');
            }
            seen.insert(shape);
        }
        QCOMPARE(seen.size(), CurveStyle::count);
    }
}

using Line = QVector<QPointF>;

void TestCurveStyle::symbolsStandOnTheCurve_data()
{
    QTest::addColumn<QVector<Line>>("pieces");
    QTest::addColumn<Line>("symbols");
    const auto row = [](const char *name, const QVector<Line> &pieces, const Line &symbols) {
        QTest::newRow(name) << pieces << symbols;
    };
    row("nothing", {}, {});
    row("a line", {Line{{100, 10}, {200, 20}, {500, 50}}}, Line{{150, 15}, {300, 30}, {450, 45}});
    row("steps", {Line{{0, 5}, {150, 5}, {150, 50}, {310, 50}}}, Line{{0, 5}, {150, 5}, {300, 50}});
    row("a gap", {Line{{100, 5}, {200, 5}}, Line{{400, 8}, {440, 8}}}, Line{{150, 5}});
    row("dots", {Line{{140, 5}}, Line{{160, 6}}, Line{{170, 7}}, Line{{460, 8}}},
        Line{{140, 5}, {160, 6}, {460, 8}});
    row("too short for the distance", {Line{{10, 3}, {20, 4}}}, Line{{20, 4}});
    row("one dot", {Line{{590, 3}}}, Line{{590, 3}});
    row("out of sight", {Line{{0, 500}, {600, 500}}}, {});
    row("seen at last", {Line{{500, 500}, {560, 20}}}, Line{{560, 20}});
}

void TestCurveStyle::symbolsStandOnTheCurve()
{
    QFETCH(QVector<Line>, pieces);
    QwtScaleMap map;
    map.setScaleInterval(0, 600);
    map.setPaintInterval(0, 600);
    const QRectF area(0, 0, 600, 100);
    SymbolPlaces places(map, area, 0);
    for (const Line &piece : qAsConst(pieces)) {
        if (piece.size() > 1) {
            places.addLine(piece, Polylines::cut(piece, area));
        } else {
            places.addDot(piece.first());
        }
    }
    QTEST(places.points(), "symbols");
}

void TestCurveStyle::symbolsGoAlongWithTheCurve()
{
    const qint64 start = 1763800000000;
    const auto timesFrom = [](qint64 moved) {
        QwtScaleMap map;
        map.setScaleInterval(double(start + moved), double(start + moved + 1200));
        map.setPaintInterval(0, 1200);
        const QPolygonF line(Line{{0, 50}, {1200, 50}});
        SymbolPlaces places(map, QRectF(0, 0, 1200, 100), 1);
        places.addLine(line, {line});
        QVector<qint64> times; // at which there is one
        const auto points = places.points();
        for (const QPointF &point : points) {
            times.append(moved + qRound64(point.x()));
        }
        return times;
    };
    const QVector<qint64> times = timesFrom(0);
    QCOMPARE(times.size(), 8);
    QVector<qint64> later = times.mid(1);
    later.append(times.last() + 150);
    QCOMPARE(timesFrom(150), later);
    QCOMPARE(timesFrom(times.first()).first(), times.first());
}

void TestCurveStyle::coloursDifferForAllEyes_data()
{
    QTest::addColumn<QColor>("base");
    QTest::addColumn<Matrix>("eyes"); // of Machado, Oliveira and Fernandes (2009), at their full severity
    const struct {
        const char *name;
        Matrix matrix;
    } eyes[] = {
        {"normal", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
        {"protan",
         {{{0.152286, 1.052583, -0.204868},
           {0.114503, 0.786281, 0.099216},
           {-0.003882, -0.048116, 1.051998}}}},
        {"deutan",
         {{{0.367322, 0.860646, -0.227968},
           {0.280085, 0.672501, 0.047413},
           {-0.011820, 0.042940, 0.968881}}}},
        {"tritan",
         {{{1.255528, -0.076749, -0.178779},
           {-0.078411, 0.930809, 0.147602},
           {0.004733, 0.691367, 0.303900}}}},
    };
    for (const auto &row : eyes) {
        QTest::addRow("%s, light", row.name) << QColor(Qt::white) << row.matrix;
        QTest::addRow("%s, dark", row.name) << QColor(0x23, 0x23, 0x23) << row.matrix;
    }
}

// A distance of 2.3 can just be seen on large areas, ten is another colour. Neighbours are those that are
// seen together most often.
void TestCurveStyle::coloursDifferForAllEyes()
{
    QFETCH(QColor, base);
    QFETCH(Matrix, eyes);
    const QPalette desktop = desktopOf(base);
    for (int one = 0; one < CurveStyle::count; ++one) {
        for (int other = one + 1; other < CurveStyle::count; ++other) {
            const QPen first = CurveStyle::pen(one, desktop);
            const QPen second = CurveStyle::pen(other, desktop);
            if (first.style() == second.style()) {
                const double apart = distance(first.color(), second.color(), eyes);
                QVERIFY2(apart >= (other == one + 1 ? 17 : 13),
                         qPrintable(QString("%1 and %2: %3").arg(one).arg(other).arg(apart)));
            }
        }
    }
}

void TestCurveStyle::stylesAreReadable_data()
{
    QTest::addColumn<QColor>("base");
    QTest::newRow("light") << QColor(Qt::white);
    QTest::newRow("dark") << QColor(0x23, 0x23, 0x23);
    QTest::newRow("black") << QColor(Qt::black);
}

// WCAG 2: graphics have a contrast of 3 to 1 at least.
void TestCurveStyle::stylesAreReadable()
{
    QFETCH(QColor, base);
    for (int style = 0; style < CurveStyle::count; ++style) {
        const QColor colour = CurveStyle::pen(style, desktopOf(base)).color();
        QVERIFY2(contrast(colour, base) >= 3, qPrintable(colour.name()));
    }
}

QTEST_GUILESS_MAIN(TestCurveStyle)
#include "tst_curvestyle.moc"

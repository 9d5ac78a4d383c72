#include "widgets/iconground.h"

#include "widgets/svgicon.h"

#include <QApplication>
#include <QMenu>
#include <QtTest>

#include <cmath>

// Whether icons can be seen on what is chosen.
class TestIconGround : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { QApplication::setPalette(m_desktop); }
    void iconsAndTextsCanBeSeen_data();
    void iconsAndTextsCanBeSeen();
    void chosenEntryOfAMenuHasTheColours_data();
    void chosenEntryOfAMenuHasTheColours();

private:
    QPalette m_desktop = QApplication::palette();
};

static double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

// As WCAG 2 has it.
static double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

static QPalette desktop(bool dark)
{
    return QPalette(dark ? QColor(0x35, 0x35, 0x35) : QColor(0xef, 0xef, 0xef));
}

void TestIconGround::iconsAndTextsCanBeSeen_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<QString>("icon");
    for (const bool dark : {false, true}) {
        for (const char *icon : {"New Project", "Load Project", "save", "saveini", "restore", "edit-1",
                                 "message", "data monitoring", "write"}) {
            QTest::addRow("%s, %s", icon, dark ? "dark" : "light")
                << dark << ":/adsdemo/images/" + QString::fromLatin1(icon) + ".svg";
        }
    }
}

void TestIconGround::iconsAndTextsCanBeSeen()
{
    QFETCH(bool, dark);
    QFETCH(QString, icon);
    const IconGround colours = IconGround::of(desktop(dark));
    QVERIFY(contrast(colours.ground, colours.text) > 7);
    QVERIFY(contrast(colours.ground, desktop(dark).color(QPalette::Window)) > 3); // it stands out, too
    QImage image = svgIcon(icon).pixmap(64).toImage().convertToFormat(QImage::Format_ARGB32);
    int drawn = 0;
    int seen = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() == 255) {
                ++drawn;
                seen += contrast(pixel, colours.ground) >= 3 ? 1 : 0;
            }
        }
    }
    QVERIFY(drawn > 0);
    QVERIFY2(seen * 2 > drawn, qPrintable(QString("%1 of %2").arg(seen).arg(drawn)));
}

void TestIconGround::chosenEntryOfAMenuHasTheColours_data()
{
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void TestIconGround::chosenEntryOfAMenuHasTheColours()
{
    QFETCH(bool, dark);
    QApplication::setPalette(desktop(dark));
    IconGround::useInMenus(desktop(dark));
    const IconGround colours = IconGround::of(desktop(dark));
    QMenu menu;
    QAction *entry = menu.addAction(svgIcon(":/adsdemo/images/save.svg"), "Save All Project");
    menu.addAction("Another");
    menu.setActiveAction(entry);
    menu.ensurePolished();
    QCOMPARE(menu.palette().color(QPalette::Highlight), colours.ground);
    QCOMPARE(menu.palette().color(QPalette::HighlightedText), colours.text);
    menu.adjustSize();
    const QRect place = menu.actionGeometry(entry);
    QCOMPARE(menu.grab().toImage().pixelColor(place.right() - 4, place.center().y()), colours.ground);
}

QTEST_MAIN(TestIconGround)
#include "tst_iconground.moc"

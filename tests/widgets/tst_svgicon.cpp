#include "widgets/svgicon.h"

#include <QPixmapCache>
#include <QtTest>

class TestSvgIcon : public QObject
{
    Q_OBJECT
private slots:
    void isThePictureOfTheResource();
    void keepsItsRendering();
};

static const QString path = ":/adsdemo/images/save.svg";

void TestSvgIcon::isThePictureOfTheResource()
{
    QCOMPARE(svgIcon(path).pixmap(92).toImage(), QIcon(path).pixmap(92).toImage());
    QVERIFY(!svgIcon(path).pixmap(92).toImage().isNull());
}

void TestSvgIcon::keepsItsRendering()
{
    const QIcon icon = svgIcon(path);
    const qint64 rendering = icon.pixmap(92).cacheKey();
    QPixmapCache::clear(); // what every icon's renderings are in
    QCOMPARE(icon.pixmap(92).cacheKey(), rendering);
}

QTEST_MAIN(TestSvgIcon)
#include "tst_svgicon.moc"

#include "mainwindow/dropoverlay.h"

#include "docksundertest.h"

#include <QCursor>
#include <QLabel>
#include <QWindow>

// What lies over the window while a dock is dragged.
class TestDropOverlay : public QObject
{
    Q_OBJECT
private slots:
    void mostOfTheWindowStaysUncovered();
};

// Pixels of a window that are not cut off.
static int covered(const QWidget *overlay)
{
    const QRegion mask = overlay->windowHandle()->mask();
    int pixels = 0;
    for (const QRect &rect : mask.isEmpty() ? QRegion(overlay->rect()) : mask & overlay->rect()) {
        pixels += rect.width() * rect.height();
    }
    return pixels;
}

static void pointAtASign(const QWidget *parent)
{
    const auto crosses = parent->findChildren<ads::CDockOverlayCross *>();
    for (const QWidget *cross : crosses) {
        const auto signs = cross->findChildren<QLabel *>();
        for (const QWidget *sign : signs) {
            if (sign->isVisible()) {
                QCursor::setPos(sign->mapToGlobal(sign->rect().center()));
            }
        }
    }
}

void TestDropOverlay::mostOfTheWindowStaysUncovered()
{
    DocksUnderTest window;
    window.resize(700, 500);
    QCoreApplication::processEvents();
    ads::CDockManager *manager = window.dockManager();
    const int all = manager->width() * manager->height();
    const auto overlays = manager->findChildren<ads::CDockOverlay *>();
    QCOMPARE(overlays.size(), 2);
    for (ads::CDockOverlay *overlay : overlays) {
        overlay->setAllowedAreas(ads::AllDockAreas);
        overlay->enableDropPreview(true);
        overlay->showOverlay(manager);
        QVERIFY(overlay->isVisible());
        QTRY_COMPARE(covered(overlay), 0); // no place is pointed at
        pointAtASign(manager);
        overlay->showOverlay(manager);
        QTRY_VERIFY(!overlay->dropOverlayRect().isEmpty());
        const QRect place = overlay->dropOverlayRect();
        QTRY_VERIFY(covered(overlay) > 0);
        QVERIFY(covered(overlay) <= place.width() * place.height() * 2 / 5);
        int signs = 0;
        const auto crosses = manager->findChildren<ads::CDockOverlayCross *>();
        for (const QWidget *cross : crosses) {
            if (cross->isVisible()) {
                QTRY_VERIFY(covered(cross) > 0 && covered(cross) < all / 4);
                ++signs;
            }
        }
        QCOMPARE(signs, 1);
        overlay->hideOverlay();
    }
}

QTEST_MAIN(TestDropOverlay)
#include "tst_dropoverlay.moc"

#include "mainwindow/dropoverlay.h"

#include "mainwindow/docking.h"

#include <QEvent>
#include <QTimer>
#include <QWindow>

namespace {

constexpr int lineWidth = 2; // pixels
constexpr int lineDistance = 8;
constexpr int frameWidth = 4;

// A frame with lines across it.
QRegion seenOf(const ads::CDockOverlay *overlay)
{
    const QRect place = overlay->dropOverlayRect();
    QRegion seen = QRegion(place) - QRegion(place.adjusted(frameWidth, frameWidth, -frameWidth, -frameWidth));
    for (int y = place.top(); y < place.bottom() - frameWidth; y += lineDistance) {
        seen += QRect(place.left(), y, place.width(), lineWidth);
    }
    return seen;
}

QRegion seenOf(const ads::CDockOverlayCross *signs)
{
    QRegion seen;
    const auto children = signs->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget *child : children) {
        if (child->isVisible()) {
            seen += child->geometry();
        }
    }
    return seen;
}

// Keeps the shape of a window to what is seen of it. An empty shape would stand for the whole window.
template <class Overlay> class Shape : public QObject
{
public:
    explicit Shape(Overlay *overlay)
        : QObject(overlay)
        , m_overlay(overlay)
    {
        overlay->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::Show:
            m_shape = QRegion();
            cut();
            break;
        case QEvent::Paint: // decides what is seen
        case QEvent::Resize:
            QTimer::singleShot(0, this, [this] { cut(); });
            break;
        default:
            break;
        }
        return false;
    }

private:
    void cut()
    {
        const QRegion nothing(-1, -1, 1, 1);
        const QRegion seen = seenOf(m_overlay);
        const QRegion shape = seen.isEmpty() ? nothing : seen;
        if (m_overlay->windowHandle() && shape != m_shape) {
            m_shape = shape;
            m_overlay->windowHandle()->setMask(shape);
        }
    }

    Overlay *m_overlay;
    QRegion m_shape;
};

template <class Overlay> void cutAll(const ads::CDockManager *manager)
{
    const auto overlays = manager->findChildren<Overlay *>();
    for (Overlay *overlay : overlays) {
        new Shape<Overlay>(overlay);
    }
}

} // namespace

void DropOverlay::cutOut(const ads::CDockManager *manager)
{
    cutAll<ads::CDockOverlay>(manager);
    cutAll<ads::CDockOverlayCross>(manager);
}

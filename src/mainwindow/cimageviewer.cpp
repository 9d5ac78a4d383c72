#include "mainwindow/cimageviewer.h"

#include "mainwindow/crenderwidget.h"
#include "widgets/choosefile.h"
#include "widgets/tell.h"

#include <QAction>
#include <QPointer>

namespace {

constexpr double zoomStep = 1.25;

} // namespace

CImageViewer::CImageViewer(QWidget *parent)
    : QScrollArea(parent)
    , m_picture(new CRenderWidget)
{
    setWidget(m_picture);
    setAlignment(Qt::AlignCenter);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    const struct {
        QString text;
        QKeySequence shortcut;
        void (CImageViewer::*slot)();
    } entries[] = {
        {tr("&Open..."), QKeySequence::Open, &CImageViewer::open},
        {tr("Fit on Screen"), {}, &CImageViewer::fitToWindow},
        {tr("Actual Pixels"), {}, &CImageViewer::normalSize},
        {tr("Zoom In (25%)"), QKeySequence::ZoomIn, &CImageViewer::zoomIn},
        {tr("Zoom Out (25%)"), QKeySequence::ZoomOut, &CImageViewer::zoomOut},
    };
    for (const auto &entry : entries) {
        auto *action = new QAction(entry.text, this);
        action->setShortcut(entry.shortcut);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, entry.slot);
        addAction(action);
    }
}

bool CImageViewer::loadFile(const QString &path)
{
    const QPixmap picture(path);
    if (picture.isNull()) {
        return false;
    }
    m_picture->setPicture(picture);
    return true;
}

double CImageViewer::scale() const
{
    return m_picture->scale();
}

void CImageViewer::open()
{
    const QPointer<CImageViewer> self(this);
    const QString path = chooseOpenFile(this, tr("Open Image"), QString(), QString());
    if (!path.isEmpty() && self && !loadFile(path)) {
        Tell::warning(this, tr("Open Image"), tr("%1 is not an image that can be shown.").arg(path));
    }
}

void CImageViewer::zoomIn()
{
    m_picture->setScale(m_picture->scale() * zoomStep);
}

void CImageViewer::zoomOut()
{
    m_picture->setScale(m_picture->scale() / zoomStep);
}

void CImageViewer::normalSize()
{
    m_picture->setScale(1.0);
}

void CImageViewer::fitToWindow()
{
    const QSize picture = m_picture->pictureSize();
    if (!picture.isEmpty()) {
        m_picture->setScale(double(picture.scaled(maximumViewportSize(), Qt::KeepAspectRatio).width())
                            / picture.width());
    }
}

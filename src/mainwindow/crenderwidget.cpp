#include "mainwindow/crenderwidget.h"

#include <QPainter>

CRenderWidget::CRenderWidget(QWidget *parent)
    : QWidget(parent)
{
}

void CRenderWidget::setPicture(const QPixmap &picture)
{
    m_picture = picture;
    setScale(1.0);
}

void CRenderWidget::setScale(double scale)
{
    m_scale = qBound(1.0 / 16, scale, 16.0);
    resize(sizeHint());
    updateGeometry();
    update();
}

QSize CRenderWidget::sizeHint() const
{
    return m_picture.size() * m_scale;
}

void CRenderWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRect(QPoint(0, 0), sizeHint()), m_picture);
}

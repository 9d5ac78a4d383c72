#pragma once

#include <QPixmap>
#include <QWidget>

// Draws a picture at a scale and takes the size that it needs for that.
class CRenderWidget : public QWidget
{
    Q_OBJECT
public:
    explicit CRenderWidget(QWidget *parent = nullptr);

    void setPicture(const QPixmap &picture);
    // 1.0 is one pixel of the picture to one pixel of the screen; kept between 1/16 and 16.
    void setScale(double scale);
    double scale() const { return m_scale; }
    QSize pictureSize() const { return m_picture.size(); }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_picture;
    double m_scale = 1.0;
};

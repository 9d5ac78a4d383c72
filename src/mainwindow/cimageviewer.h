#pragma once

#include <QScrollArea>

class CRenderWidget;

// Shows one picture, scrolled where it does not fit; its context menu opens another and scales it.
class CImageViewer : public QScrollArea
{
    Q_OBJECT
public:
    explicit CImageViewer(QWidget *parent = nullptr);

    // Shows the picture at its own size and tells whether there is one that can be read; else nothing
    // changes.
    bool loadFile(const QString &path);
    double scale() const;

public slots:
    void open();
    void zoomIn();
    void zoomOut();
    void normalSize();
    void fitToWindow();

private:
    CRenderWidget *m_picture;
};

#pragma once

#include "trends/trendpicture.h"

#include <QObject>

class MarkValues;
class TrendFeed;
class TrendPlot;
class QWidget;

// Takes a trend out of its window: to the clipboard, or into a file that the user names. What fails is told
// over the window.
class TrendSaver : public QObject
{
    Q_OBJECT
public:
    struct Parts {
        TrendFeed *feed;
        FigureModel *figures;
        const TrendPlot *plot;
        MarkValues *marks;
    };

    // A child of the window, like the parts.
    TrendSaver(const Parts &parts, QWidget *window);

    // The picture, and the figures as text.
    void copy() const;
    // PNG in the size and the colours of the window, or SVG, by the ending.
    void savePicture();
    // Of the curves that are shown, what is on screen, as CSV; see ValueSaver.
    void saveValues();

private:
    QVector<PointId> shown() const;
    TrendPicture picture() const;
    QString fileName() const;

    const Parts m_parts;
    QWidget *m_window;
};

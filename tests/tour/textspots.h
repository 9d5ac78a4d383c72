#pragma once

#include <QRect>
#include <QString>
#include <QVector>

class QColor;
class QImage;
class QWidget;

// A text that a widget draws.
struct TextSpot {
    const QWidget *widget;
    QString text;
    QRect area;           // in the widget: where the text stands and no icon does
    bool cutOff = false;  // the text needs more room than it has
    QString toolTip = {}; // what is shown in full where the text is cut off
    bool enabled = true;
};

namespace TextSpots {

// All texts that are shown below and in the widget, which has to be visible.
QVector<TextSpot> of(const QWidget *root);

// The contrast of two colours by the rule of WCAG 2: from 1 to 21.
double contrast(const QColor &one, const QColor &other);
// The strongest contrast of a pixel of the area to the most frequent colour of its row; 1 for an empty area.
double contrastIn(const QImage &image, const QRect &area);

} // namespace TextSpots

#pragma once

#include "history/valuetable.h"
#include "trends/trendpicture.h"

#include <QCoreApplication>

class QWidget;

// Takes a trend out of its window: to the clipboard, or into a file that the user names.
class TrendSaver
{
    Q_DECLARE_TR_FUNCTIONS(TrendSaver)
public:
    static void copy(const TrendPicture &picture, const QSize &size, const QPalette &desktop);
    // The file that the user names for a picture; the name is offered. Empty for none.
    static QString pictureFile(QWidget *window, const QString &name);
    // PNG in the size and the colours of the window, or SVG, by the ending. What fails is told over the
    // window.
    static void savePicture(QWidget *window, const TrendPicture &picture, const QString &path);
    // What the cursors hold, which is of that range, as CSV into a file that the user names; see ValueSaver.
    static void saveValues(QWidget *window, std::vector<ValueTable::Column> columns, const TimeRange &range,
                           const QString &name);
};

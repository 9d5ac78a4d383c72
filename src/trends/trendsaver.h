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
    // PNG or SVG, by the ending. The name is offered. What fails is told over the window.
    static void savePicture(QWidget *window, const TrendPicture &picture, const QSize &size,
                            const QString &name);
    // What the cursors hold, as CSV.
    static void saveValues(QWidget *window, std::vector<ValueTable::Column> columns, const QString &name);
};

#include "widgets/scrollintosight.h"

#include <QScrollArea>

void scrollIntoSight(QWidget *widget, int roomBeside)
{
    for (QWidget *around = widget->parentWidget(); around; around = around->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(around)) {
            area->ensureWidgetVisible(widget, roomBeside);
        }
    }
}

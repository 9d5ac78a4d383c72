#pragma once

#include "parametertable/cellwidget.h"
#include "widgets/combobox.h"

#include <QElapsedTimer>

// The list in a cell. An entry that is typed as a whole is selected, and stays so: Qt's own search would go
// on from "r" to "rw", since both begin with what was typed.
class ListCell : public CellWidget<ComboBox>
{
    Q_OBJECT
public:
    using CellWidget::CellWidget;

    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    // Sees the keys that are pressed in the open list.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int entryTyped(const QKeyEvent *event); // -1 if what was typed so far is no whole entry

    QString m_typed;
    QElapsedTimer m_sinceKey;
};

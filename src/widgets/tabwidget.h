#pragma once

#include <QTabWidget>

// A tab widget for tabs with a user's texts, at the top or the bottom: an "&" is shown as it is. The Tab key
// stops at it only while there is a tab: an empty bar is nowhere to be seen.
class TabWidget : public QTabWidget
{
    Q_OBJECT
public:
    explicit TabWidget(QWidget *parent = nullptr);

protected:
    void tabInserted(int index) override;
    void tabRemoved(int index) override;

private:
    void updateFocusPolicy();
};

#pragma once

#include <QTabWidget>

// A tab widget that the Tab key stops at only while there is a tab: an empty bar is nowhere to be seen.
class TabWidget : public QTabWidget
{
public:
    explicit TabWidget(QWidget *parent = nullptr);

    // A user's text as a title that shows it: an "&" would underline what follows.
    static QString titleFor(const QString &name);

protected:
    void tabInserted(int index) override;
    void tabRemoved(int index) override;

private:
    void updateFocusPolicy();
};

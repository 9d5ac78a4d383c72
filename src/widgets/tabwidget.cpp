#include "widgets/tabwidget.h"

#include <QTabBar>

TabWidget::TabWidget(QWidget *parent)
    : QTabWidget(parent)
{
    updateFocusPolicy();
}

QString TabWidget::titleFor(const QString &name)
{
    return QString(name).replace(QLatin1Char('&'), QLatin1String("&&"));
}

void TabWidget::tabInserted(int index)
{
    QTabWidget::tabInserted(index);
    updateFocusPolicy();
}

void TabWidget::tabRemoved(int index)
{
    QTabWidget::tabRemoved(index);
    updateFocusPolicy();
}

void TabWidget::updateFocusPolicy()
{
    tabBar()->setFocusPolicy(count() > 0 ? Qt::TabFocus : Qt::NoFocus);
}

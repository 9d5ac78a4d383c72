#include "widgets/tabwidget.h"

#include <QTabBar>
#include <QtTest>

class TestTabWidget : public QObject
{
    Q_OBJECT
private slots:
    void takesTheFocusWhileThereIsATab();
    void titleShowsTheNameAsItIs();
};

void TestTabWidget::takesTheFocusWhileThereIsATab()
{
    TabWidget tabs;
    QCOMPARE(tabs.tabBar()->focusPolicy(), Qt::NoFocus);
    tabs.addTab(new QWidget, "one");
    tabs.addTab(new QWidget, "two");
    QCOMPARE(tabs.tabBar()->focusPolicy(), Qt::TabFocus);
    tabs.removeTab(0);
    QCOMPARE(tabs.tabBar()->focusPolicy(), Qt::TabFocus);
    delete tabs.widget(0);
    QCOMPARE(tabs.count(), 0);
    QCOMPARE(tabs.tabBar()->focusPolicy(), Qt::NoFocus);
}

void TestTabWidget::titleShowsTheNameAsItIs()
{
    TabWidget tabs;
    tabs.addTab(new QWidget, TabWidget::titleFor("A&B &C &&"));
    const QFontMetrics metrics = tabs.tabBar()->fontMetrics();
    QCOMPARE(metrics.size(Qt::TextShowMnemonic, tabs.tabText(0)), metrics.size(0, "A&B &C &&"));
}

QTEST_MAIN(TestTabWidget)
#include "tst_tabwidget.moc"

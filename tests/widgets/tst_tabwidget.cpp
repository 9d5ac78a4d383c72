#include "widgets/tabwidget.h"

#include <QTabBar>
#include <QtTest>

class TestTabWidget : public QObject
{
    Q_OBJECT
private slots:
    void takesTheFocusWhileThereIsATab();
    void tabsShowTheirTextsAsTheyAre_data();
    void tabsShowTheirTextsAsTheyAre();
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

void TestTabWidget::tabsShowTheirTextsAsTheyAre_data()
{
    QTest::addColumn<QString>("styleSheet");
    QTest::addColumn<bool>("closable");
    for (const bool closable : {false, true}) {
        const char *buttons = closable ? "closable" : "not closable";
        QTest::addRow("plain, %s", buttons) << QString() << closable;
        QTest::addRow("styled, %s", buttons)
            << "QTabBar::tab { background-color: #e0e0e0; border-radius: 5px; padding: 5px 10px; } "
               "QTabBar::tab:selected { background-color: #1296db; color: white; }"
            << closable;
    }
}

// Against a tab widget as Qt has it, where "&&" stands for "&".
void TestTabWidget::tabsShowTheirTextsAsTheyAre()
{
    QFETCH(QString, styleSheet);
    QFETCH(bool, closable);
    TabWidget tabs;
    QTabWidget reference;
    for (const QString &text : {QString("A&B &C && D"), QString("&first"), QString("none")}) {
        tabs.addTab(new QWidget, text);
        QCOMPARE(tabs.tabText(tabs.count() - 1), text);
        reference.addTab(new QWidget, QString(text).replace('&', "&&"));
    }
    for (QTabWidget *each : {static_cast<QTabWidget *>(&tabs), &reference}) {
        each->setStyleSheet(styleSheet);
        each->setTabsClosable(closable);
        each->resize(500, 100);
        each->show();
        QVERIFY(QTest::qWaitForWindowExposed(each));
        each->tabBar()->setFocusPolicy(Qt::NoFocus);
    }
    for (int current = 0; current < tabs.count(); ++current) {
        tabs.setCurrentIndex(current);
        reference.setCurrentIndex(current);
        QCOMPARE(tabs.tabBar()->tabRect(current), reference.tabBar()->tabRect(current));
        QCOMPARE(tabs.tabBar()->grab().toImage(), reference.tabBar()->grab().toImage());
    }
}

QTEST_MAIN(TestTabWidget)
#include "tst_tabwidget.moc"

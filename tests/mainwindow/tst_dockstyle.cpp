#include "mainwindow/dockstyle.h"

#include "mainwindow/docking.h"
#include "widgets/iconground.h"
#include "widgets/svgicon.h"

#include <QAbstractButton>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QScrollArea>
#include <QTreeView>
#include <QtTest>

class TestDockStyle : public QObject
{
    Q_OBJECT
private slots:
    void signsAreLightOnADarkDesktop_data();
    void signsAreLightOnADarkDesktop();
    void focusedTabHasTheGroundOfIcons_data();
    void focusedTabHasTheGroundOfIcons();
    void titleBarsTellTheirButtons();
    void anotherSheetTakesThePlace();
    void selectionIsDarkOnLight();
};

void TestDockStyle::signsAreLightOnADarkDesktop_data()
{
    QTest::addColumn<QColor>("desktop");
    QTest::addColumn<bool>("light");
    QTest::newRow("light desktop") << QColor(Qt::white) << false;
    QTest::newRow("dark desktop") << QColor(0x30, 0x30, 0x30) << true;
}

void TestDockStyle::signsAreLightOnADarkDesktop()
{
    QFETCH(QColor, desktop);
    QFETCH(bool, light);
    QMainWindow window;
    auto *manager = new ads::CDockManager(&window);
    const QString library = manager->styleSheet();
    DockStyle::install(manager, QPalette(desktop));
    QVERIFY(manager->styleSheet().startsWith(library));
    QVERIFY(manager->styleSheet().contains(IconGround::of(QPalette(desktop)).ground.name()));
    for (const char *sign : {"close-light.svg", "detach-light.svg", "tabs-light.svg"}) {
        QCOMPARE(manager->styleSheet().contains(QLatin1String(sign)), light);
        QVERIFY(QFile::exists(QLatin1String(":/adsdemo/images/") + QLatin1String(sign)));
    }
}

void TestDockStyle::focusedTabHasTheGroundOfIcons_data()
{
    signsAreLightOnADarkDesktop_data();
}

void TestDockStyle::focusedTabHasTheGroundOfIcons()
{
    QFETCH(QColor, desktop);
    Docking::configureDocking();
    QMainWindow window;
    auto *manager = new ads::CDockManager(&window);
    DockStyle::install(manager, QPalette(desktop));
    ads::CDockWidget *dock = Docking::makeDock(manager, "Form");
    dock->setWidget(new QLabel("input"));
    dock->setIcon(svgIcon(":/adsdemo/images/edit-1.svg"));
    manager->addDockWidget(ads::CenterDockWidgetArea, dock);
    window.show();
    manager->setDockWidgetFocused(dock);
    const IconGround colours = IconGround::of(QPalette(desktop));
    auto *tab = dock->dockAreaWidget()->findChild<QWidget *>("dockWidgetTabLabel")->parentWidget();
    const auto groundOf = [tab] { return tab->grab().toImage().pixelColor(2, tab->height() / 2); };
    QTRY_COMPARE(groundOf(), colours.ground);
}

void TestDockStyle::titleBarsTellTheirButtons()
{
    QMainWindow window;
    auto *manager = new ads::CDockManager(&window);
    DockStyle::install(manager, window.palette());
    ads::CDockAreaWidget *area = nullptr;
    for (const char *title : {"One", "Two"}) { // the second joins the first one's area
        ads::CDockWidget *dock = Docking::makeDock(manager, QLatin1String(title));
        dock->setWidget(new QLabel(dock->windowTitle()));
        area = manager->addDockWidget(ads::CenterDockWidgetArea, dock, area);
    }
    const auto buttons = area->findChildren<QAbstractButton *>();
    QVERIFY(buttons.size() > 3);
    for (const QAbstractButton *button : buttons) {
        QCOMPARE(button->accessibleName(), button->toolTip());
    }
    const auto scrollAreas = manager->findChildren<QScrollArea *>("dockWidgetScrollArea");
    QVERIFY(!scrollAreas.isEmpty());
    for (const QScrollArea *scrollArea : scrollAreas) {
        QCOMPARE(scrollArea->focusPolicy(), Qt::NoFocus);
    }
}

void TestDockStyle::anotherSheetTakesThePlace()
{
    QMainWindow window;
    auto *manager = new ads::CDockManager(&window);
    DockStyle::applyVisualStudio(manager);
    QFile file(":/adsdemo/res/visual_studio_light.css");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(manager->styleSheet(), QString::fromUtf8(file.readAll()));
}

void TestDockStyle::selectionIsDarkOnLight()
{
    QTreeView tree;
    DockStyle::makeSelectionReadable(&tree);
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(tree.palette().color(group, QPalette::Highlight).name(), "#cfe6f7");
        QCOMPARE(tree.palette().color(group, QPalette::HighlightedText).name(), "#1e1e1e");
    }
}

QTEST_MAIN(TestDockStyle)
#include "tst_dockstyle.moc"

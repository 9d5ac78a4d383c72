#include "mainwindow/opendocks.h"

#include "run.h"
#include "windowundertest.h"

#include <QDir>
#include <QTemporaryDir>

using ads::CDockWidget;
using Window = WindowUnderTest;

constexpr int tolerance = 20; // pixels; the splitters' handles move what they part

static const QString editStandard = "Edit Standard";
static const QString editService = "Edit Service";

// What is open when a stored layout comes back that may not know it.
class TestOpenDocks : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void unknownFormsStayWhereTheyWere_data();
    void unknownFormsStayWhereTheyWere();
    void unknownFormsStayBesideEachOther_data();
    void unknownFormsStayBesideEachOther();
    void formsStayOneBelowTheOther();
    void floatingFormStaysAWindowOfItsOwn();
    void knownFormGoesToItsPlace();
    void knownFormThatWasHiddenStaysOpen();
    void formBesideAKnownOneStaysBesideIt();
    void formStaysWhileItsCompanionLeaves();
    void emptyTabsOfOneTitleStay_data();
    void emptyTabsOfOneTitleStay();
    void hiddenFormsStayHidden();
    void closedMessagesComeAsStored();
    void unsavedInputIsKept();
    void focusStaysWhereItIs_data();
    void focusStaysWhereItIs();

private:
    CDockWidget *dockOf(const QWidget *widget) const;
    CDockWidget *open(const QStandardItem *item, const QString &title);
    void save() { m_window->on_actionSaveState_triggered(false); }
    void restore();
    // The areas by the titles of their docks, the current one with a star.
    using Layout = QMap<QString, QRect>;
    Layout layout() const;
    void compareLayouts(const Layout &before);

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<Window> m_window;
    const QStandardItem *m_standard = nullptr;
    const QStandardItem *m_service = nullptr;
};

void TestOpenDocks::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QDir::setCurrent(m_folder->path()));
    m_window.reset(new Window);
    m_window->setGeometry(0, 0, 1200, 700);
    const QStandardItem *project = m_window->addProject("plant");
    m_standard = Window::addStandard(project, "bus", "Modbus");
    m_service = project->child(1)->child(0);
    QCoreApplication::processEvents();
    save();
}

CDockWidget *TestOpenDocks::dockOf(const QWidget *widget) const
{
    const auto docks = m_window->dockManager()->dockWidgetsMap();
    return *std::find_if(docks.begin(), docks.end(),
                         [widget](const CDockWidget *dock) { return dock->widget() == widget; });
}

CDockWidget *TestOpenDocks::open(const QStandardItem *item, const QString &title)
{
    m_window->click(item);
    return m_window->tab(title);
}

void TestOpenDocks::restore()
{
    QCoreApplication::processEvents(); // as laid out
    m_window->on_actionRestoreState_triggered(false);
    QCoreApplication::processEvents();
}

TestOpenDocks::Layout TestOpenDocks::layout() const
{
    Layout areas;
    const ads::CDockManager *manager = m_window->dockManager();
    for (int i = 0; i < manager->dockAreaCount(); ++i) {
        const ads::CDockAreaWidget *area = manager->dockArea(i);
        QStringList titles;
        const auto docks = area->openedDockWidgets();
        for (const CDockWidget *dock : docks) {
            titles.append(dock == area->currentDockWidget() ? dock->windowTitle() + "*"
                                                            : dock->windowTitle());
        }
        areas.insert(titles.join(QLatin1Char('|')), {area->mapTo(manager, QPoint()), area->size()});
    }
    return areas;
}

void TestOpenDocks::compareLayouts(const Layout &before)
{
    const Layout after = layout();
    QCOMPARE(after.keys(), before.keys());
    for (auto area = after.cbegin(); area != after.cend(); ++area) {
        const QRect was = before.value(area.key());
        const QRect widest = was.adjusted(-tolerance, -tolerance, tolerance, tolerance);
        const QRect narrowest = was.adjusted(tolerance, tolerance, -tolerance, -tolerance);
        QVERIFY2(widest.contains(*area) && area->contains(narrowest), qPrintable(area.key()));
    }
}

void TestOpenDocks::unknownFormsStayWhereTheyWere_data()
{
    QTest::addColumn<QString>("place");
    for (const char *place : {"right", "left", "bottom", "below the live values", "with the messages"}) {
        QTest::newRow(place) << QString::fromLatin1(place);
    }
}

void TestOpenDocks::unknownFormsStayWhereTheyWere()
{
    QFETCH(QString, place);
    ads::CDockManager *manager = m_window->dockManager();
    ads::CDockAreaWidget *values = dockOf(m_window->monitoringTabs())->dockAreaWidget();
    ads::CDockAreaWidget *messages = dockOf(m_window->messageEditor())->dockAreaWidget();
    const QMap<QString, QPair<ads::DockWidgetArea, ads::CDockAreaWidget *>> places{
        {"left", {ads::LeftDockWidgetArea, nullptr}},
        {"bottom", {ads::BottomDockWidgetArea, nullptr}},
        {"below the live values", {ads::BottomDockWidgetArea, values}},
        {"with the messages", {ads::CenterDockWidgetArea, messages}},
    };
    CDockWidget *standard = open(m_standard, editStandard);
    CDockWidget *service = open(m_service, editService);
    if (places.contains(place)) {
        ads::CDockAreaWidget *area =
            manager->addDockWidget(places.value(place).first, standard, places.value(place).second);
        manager->addDockWidgetTabToArea(service, area);
        standard->setAsCurrentTab();
    }
    QCoreApplication::processEvents();
    const Layout before = layout();
    restore();
    RUN(compareLayouts(before));
}

void TestOpenDocks::unknownFormsStayBesideEachOther_data()
{
    QTest::addColumn<QString>("places"); // of Service, Standard and Project
    for (const char *places :
         {"right, right", "right, left", "right, below Service, right of Standard",
          "below values, right of Service", "right of tree, below tree", "bottom, right, right of tree"}) {
        QTest::newRow(places) << QString::fromLatin1(places);
    }
}

void TestOpenDocks::unknownFormsStayBesideEachOther()
{
    QFETCH(QString, places);
    const QMap<QString, ads::DockWidgetArea> sides{{"right", ads::RightDockWidgetArea},
                                                   {"left", ads::LeftDockWidgetArea},
                                                   {"bottom", ads::BottomDockWidgetArea},
                                                   {"below", ads::BottomDockWidgetArea}};
    QMap<QString, CDockWidget *> docks{{"tree", dockOf(m_window->projectTree())},
                                       {"values", dockOf(m_window->monitoringTabs())}};
    const QStringList names{"Service", "Standard", "Project"};
    const QList<const QStandardItem *> items{m_service, m_standard, m_window->projectModel()->item(0)};
    const QStringList all = places.split(", ");
    for (int i = 0; i < all.size(); ++i) {
        docks.insert(names.at(i), open(items.at(i), "Edit " + names.at(i)));
    }
    for (int i = 0; i < all.size(); ++i) {
        const QStringList words = all.at(i).split(' ');
        CDockWidget *neighbour = docks.value(words.last());
        m_window->dockManager()->addDockWidget(sides.value(words.first()), docks.value(names.at(i)),
                                               neighbour ? neighbour->dockAreaWidget() : nullptr);
        QCoreApplication::processEvents();
    }
    const Layout before = layout();
    restore();
    RUN(compareLayouts(before));
}

void TestOpenDocks::formsStayOneBelowTheOther()
{
    CDockWidget *standard = open(m_standard, editStandard);
    CDockWidget *service = open(m_service, editService);
    m_window->dockManager()->addDockWidget(ads::BottomDockWidgetArea, service, standard->dockAreaWidget());
    restore();
    const auto placeOf = [this](const QWidget *widget) {
        return QRect(widget->mapTo(m_window.data(), QPoint()), widget->size());
    };
    const QRect above = placeOf(m_window->form(editStandard));
    const QRect below = placeOf(m_window->form(editService));
    QVERIFY(above.bottom() < below.top());
    QCOMPARE(above.left(), below.left());
    QVERIFY(above.left() > placeOf(m_window->messageEditor()).right());
}

void TestOpenDocks::floatingFormStaysAWindowOfItsOwn()
{
    CDockWidget *standard = open(m_standard, editStandard);
    standard->setFloating();
    QWidget *window = standard->widget()->window();
    window->show();
    window->setGeometry(40, 50, 420, 380);
    m_window->on_actionRestoreState_triggered(false);
    QVERIFY(standard->isInFloatingContainer() && !standard->isClosed());
    QCOMPARE(standard->widget()->window()->geometry(), QRect(40, 50, 420, 380));
    QVERIFY(standard->widget()->isVisibleTo(standard->widget()->window()));
}

void TestOpenDocks::knownFormGoesToItsPlace()
{
    CDockWidget *standard = open(m_standard, editStandard);
    QCoreApplication::processEvents();
    const Layout stored = layout();
    save();
    m_window->dockManager()->addDockWidget(ads::LeftDockWidgetArea, standard);
    restore();
    RUN(compareLayouts(stored));
}

void TestOpenDocks::knownFormThatWasHiddenStaysOpen()
{
    CDockWidget *standard = open(m_standard, editStandard);
    standard->toggleViewAction()->trigger();
    save();
    standard->toggleViewAction()->trigger();
    restore();
    QVERIFY(!standard->isClosed());
    QVERIFY(m_window->form(editStandard)->isVisible());
}

void TestOpenDocks::formBesideAKnownOneStaysBesideIt()
{
    open(m_standard, editStandard);
    save();
    open(m_service, editService);
    QCoreApplication::processEvents();
    const Layout before = layout();
    restore();
    RUN(compareLayouts(before));
}

void TestOpenDocks::formStaysWhileItsCompanionLeaves()
{
    CDockWidget *standard = open(m_standard, editStandard);
    m_window->dockManager()->addDockWidget(ads::LeftDockWidgetArea, standard);
    save();
    standard->closeDockWidget();
    Window::settle();
    CDockWidget *service = open(m_service, editService);
    standard = open(m_standard, editStandard);
    QCOMPARE(standard->dockAreaWidget(), service->dockAreaWidget());
    restore();
    const auto placeOf = [this](const CDockWidget *dock) {
        return dock->dockAreaWidget()->mapTo(m_window.data(), QPoint()).x();
    };
    QCOMPARE(placeOf(standard), 0);
    QVERIFY(placeOf(service) > placeOf(dockOf(m_window->monitoringTabs())));
    QVERIFY(m_window->form(editStandard)->isVisible() && m_window->form(editService)->isVisible());
}

// Each click on a "DIDO" node makes a further one.
void TestOpenDocks::emptyTabsOfOneTitleStay_data()
{
    QTest::addColumn<QStringList>("clicks");
    QTest::addColumn<bool>("below");
    const QStringList twice{"Service", "DIDO", "DIDO"};
    const QStringList withForm{"Service", "DIDO", "Modbus"};
    QTest::newRow("twice") << twice << false;
    QTest::newRow("with a form, below all") << withForm << true;
}

void TestOpenDocks::emptyTabsOfOneTitleStay()
{
    QFETCH(QStringList, clicks);
    QFETCH(bool, below);
    const QMap<QString, const QStandardItem *> items{
        {"Service", m_service},
        {"Modbus", m_standard},
        {"DIDO", Window::addStandard(m_service->parent()->parent(), "inputs", "DIDO")},
    };
    for (const QString &click : clicks) {
        m_window->click(items.value(click));
    }
    if (below) {
        const auto docks = m_window->dockManager()->findChildren<CDockWidget *>();
        for (CDockWidget *dock : docks) {
            if (dock->windowTitle() == editStandard) {
                m_window->dockManager()->addDockWidget(ads::BottomDockWidgetArea, dock);
            }
        }
    }
    QCoreApplication::processEvents();
    const QStringList before = layout().keys();
    const int empty = m_window->countOf(editStandard);
    for (int time = 0; time < 2; ++time) {
        restore();
        Window::settle();
        QCOMPARE(layout().keys(), before);
        QCOMPARE(m_window->countOf(editStandard), empty);
        QVERIFY(m_window->form(editService) || !clicks.contains("Service"));
    }
}

void TestOpenDocks::hiddenFormsStayHidden()
{
    CDockWidget *standard = open(m_standard, editStandard);
    standard->toggleViewAction()->trigger();
    restore();
    QVERIFY(standard->isClosed());
}

void TestOpenDocks::closedMessagesComeAsStored()
{
    CDockWidget *messages = dockOf(m_window->messageEditor());
    messages->closeDockWidget();
    save();
    messages->toggleView(true);
    restore();
    QVERIFY(messages->isClosed());
}

void TestOpenDocks::unsavedInputIsKept()
{
    open(m_standard, editStandard);
    Window::input<QLineEdit>(m_window->form(editStandard), "name")->setText("typed");
    restore();
    QCOMPARE(Window::input<QLineEdit>(m_window->form(editStandard), "name")->text(), "typed");
}

void TestOpenDocks::focusStaysWhereItIs_data()
{
    QTest::addColumn<QString>("place");
    for (const char *place : {"tree", "messages", "unknown form", "known form"}) {
        QTest::newRow(place) << QString::fromLatin1(place);
    }
}

void TestOpenDocks::focusStaysWhereItIs()
{
    QFETCH(QString, place);
    open(m_standard, editStandard);
    if (place == QLatin1String("known form")) {
        save();
    }
    QCoreApplication::processEvents();
    const QMap<QString, QWidget *> widgets{{"tree", m_window->projectTree()},
                                           {"messages", m_window->messageEditor()}};
    auto *name = Window::input<QLineEdit>(m_window->form(editStandard), "name");
    QWidget *focused = widgets.value(place, name);
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    focused->setFocus();
    restore();
    QCOMPARE(QApplication::focusWidget(), focused);
}

QTEST_MAIN(TestOpenDocks)
#include "tst_opendocks.moc"

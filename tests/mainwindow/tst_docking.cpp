#include "mainwindow/docking.h"

#include <QtTest>

// Both generations of the docking library as far as docking.h touches them, and what it did with them.
namespace {

struct OldDock {
    enum DockWidgetFeature { DockWidgetClosable = 0x001 };
    enum eState { StateHidden, StateDocked, StateFloating };
    explicit OldDock(const QString &title)
        : log{"dock " + title}
    {
    }
    void setFeature(DockWidgetFeature feature, bool on)
    {
        log.append(QString("feature %1 %2").arg(feature).arg(on));
    }
    void setToolBarStyle(Qt::ToolButtonStyle style, eState state)
    {
        log.append(QString("style %1 %2").arg(style).arg(state));
    }
    QStringList log;
};

struct OldManager {
    enum eConfigFlag { FocusHighlighting = 0x200000 };
    static void setConfigFlag(eConfigFlag flag, bool on)
    {
        log.append(QString("flag %1 %2").arg(flag).arg(on));
    }
    static QStringList log;
};
QStringList OldManager::log;

struct NewManager {
    enum eConfigFlag { FocusHighlighting = 0x200000 };
    enum eAutoHideFlag { AutoHideFeatureEnabled = 0x01, DockAreaHasAutoHideButton = 0x02 };
    Q_DECLARE_FLAGS(AutoHideFlags, eAutoHideFlag)
    static void setConfigFlag(eConfigFlag flag, bool on)
    {
        log.append(QString("flag %1 %2").arg(flag).arg(on));
    }
    static void setAutoHideConfigFlags(AutoHideFlags flags)
    {
        log.append(QString("auto-hide %1").arg(int(flags), 0, 16));
    }
    template <class State> void setDockWidgetToolBarStyle(Qt::ToolButtonStyle style, State state)
    {
        log.append(QString("style %1 %2").arg(style).arg(state));
    }
    static QStringList log;
};
QStringList NewManager::log;

struct NewDock {
    enum DockWidgetFeature { DockWidgetClosable = 0x001, DockWidgetPinnable = 0x200 };
    enum eState { StateHidden, StateDocked, StateFloating };
    NewDock(NewManager *manager, const QString &title)
        : log{QString("dock %1 of %2").arg(title, QLatin1String(manager ? "its manager" : "none"))}
    {
    }
    [[deprecated]] explicit NewDock(const QString &title)
        : log{"dock " + title}
    {
    }
    void setFeature(DockWidgetFeature feature, bool on)
    {
        log.append(QString("feature %1 %2").arg(feature).arg(on));
    }
    QStringList log;
};

} // namespace

class TestDocking : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theOldGenerationGetsWhatItHas();
    void theNewGenerationGetsEverything();
    void theInstalledLibraryIsConfigured();
};

void TestDocking::init()
{
    OldManager::log.clear();
    NewManager::log.clear();
}

void TestDocking::theOldGenerationGetsWhatItHas()
{
    OldManager manager;
    Docking::configureOf<OldManager>();
    Docking::setFloatingToolBarStyleOf<OldDock>(&manager);
    QCOMPARE(OldManager::log, QStringList("flag 2097152 1"));

    const QScopedPointer<OldDock> dock(Docking::makeDockOf<OldDock>(&manager, "Table 0"));
    Docking::setPinnableOf(dock.data(), false);
    QCOMPARE(dock->log, QStringList({"dock Table 0", "style 0 2"}));
}

void TestDocking::theNewGenerationGetsEverything()
{
    NewManager manager;
    Docking::configureOf<NewManager>();
    Docking::setFloatingToolBarStyleOf<NewDock>(&manager);
    QCOMPARE(NewManager::log, QStringList({"flag 2097152 1", "auto-hide 103", "style 0 2"}));

    const QScopedPointer<NewDock> dock(Docking::makeDockOf<NewDock>(&manager, "Table 0"));
    Docking::setPinnableOf(dock.data(), false);
    QCOMPARE(dock->log, QStringList({"dock Table 0 of its manager", "feature 512 0"}));
}

void TestDocking::theInstalledLibraryIsConfigured()
{
    const ads::CDockManager::ConfigFlags before = ads::CDockManager::configFlags();
    Docking::configureDocking();
    QCOMPARE(ads::CDockManager::configFlags(), before | ads::CDockManager::FocusHighlighting);

    ads::CDockManager manager;
    Docking::setFloatingToolBarStyle(&manager);
    ads::CDockWidget *dock = Docking::makeDock(&manager, "Table 0");
    manager.addDockWidget(ads::CenterDockWidgetArea, dock);
    QCOMPARE(dock->objectName(), "Table 0");
    QCOMPARE(dock->toolBarStyle(ads::CDockWidget::StateFloating), Qt::ToolButtonIconOnly);
    Docking::setPinnable(dock, false);
    QCOMPARE(dock->features(),
             ads::CDockWidget::DockWidgetFeatures(ads::CDockWidget::DefaultDockWidgetFeatures));
}

QTEST_MAIN(TestDocking)
#include "tst_docking.moc"

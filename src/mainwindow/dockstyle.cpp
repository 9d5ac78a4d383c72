#include "mainwindow/dockstyle.h"

#include "mainwindow/docking.h"
#include "widgets/iconground.h"

#include <QAbstractButton>
#include <QFile>
#include <QScrollArea>
#include <QTextStream>
#include <QTreeView>

namespace {

QString additions(const QPalette &desktop)
{
    const IconGround focused = IconGround::of(desktop);
    QString style =
        QStringLiteral("ads--CDockWidgetTab[focused=\"true\"] { background: %1; border-color: %1; } "
                       "ads--CDockWidgetTab[focused=\"true\"] QLabel { color: %2; } "
                       "ads--CDockAreaWidget[focused=\"true\"] ads--CDockAreaTitleBar "
                       "{ border-bottom-color: %1; } ")
            .arg(focused.ground.name(), focused.text.name());
    if (isDark(desktop)) {
        style += QStringLiteral(
            "#tabCloseButton, #dockAreaCloseButton { qproperty-icon: url(:/adsdemo/images/close-light.svg), "
            "url(:/ads/images/close-button-disabled.svg) disabled; }"
            "#detachGroupButton { qproperty-icon: url(:/adsdemo/images/detach-light.svg), "
            "url(:/ads/images/detach-button-disabled.svg) disabled; }"
            "#tabsMenuButton { qproperty-icon: url(:/adsdemo/images/tabs-light.svg); } "
            "ads--CDockWidgetTab[focused=\"true\"] > #tabCloseButton "
            "{ qproperty-icon: url(:/ads/images/close-button.svg); }");
    }
    return style;
}

// The library gives its buttons tool tips, but no names for screen readers, and its scroll areas the focus.
void makeAccessible(const QWidget *parent)
{
    const auto buttons = parent->findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        if (button->accessibleName().isEmpty()) {
            button->setAccessibleName(button->toolTip());
        }
    }
    const auto areas = parent->findChildren<QScrollArea *>(QStringLiteral("dockWidgetScrollArea"));
    for (QScrollArea *area : areas) {
        area->setFocusPolicy(Qt::NoFocus);
    }
}

} // namespace

void DockStyle::install(ads::CDockManager *manager, const QPalette &desktop)
{
    manager->setStyleSheet(manager->styleSheet() + additions(desktop));
    QObject::connect(manager, &ads::CDockManager::dockAreaCreated, manager,
                     [](const ads::CDockAreaWidget *area) { makeAccessible(area); });
    QObject::connect(manager, &ads::CDockManager::dockWidgetAdded, manager,
                     [manager] { makeAccessible(manager); });
}

void DockStyle::applyVisualStudio(ads::CDockManager *manager)
{
    QFile file(QStringLiteral(":adsdemo/res/visual_studio_light.css"));
    if (file.open(QIODevice::ReadOnly)) {
        manager->setStyleSheet(QTextStream(&file).readAll());
    }
}

// The icons of the nodes are dark and drawn for light ground: they vanish on most platforms' highlight.
void DockStyle::makeSelectionReadable(QTreeView *tree)
{
    QPalette palette;
    palette.setColor(QPalette::Highlight, QColor(0xcf, 0xe6, 0xf7));
    palette.setColor(QPalette::HighlightedText, QColor(0x1e, 0x1e, 0x1e));
    tree->setPalette(palette);
}

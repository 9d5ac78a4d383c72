#include "mainwindow/windowactions.h"

#include "ui_mainwindow.h"
#include "widgets/svgicon.h"

#include <QToolButton>

void WindowActions::setUp(const Ui::MainWindow &ui)
{
    const struct {
        QAction *action;
        QMenu *menu;
        bool onToolBar;
        const char *icon;
        QKeySequence shortcut;
    } rows[] = {
        {ui.actionNew_Project, ui.menuWindow, true, "New Project.svg", QKeySequence::New},
        {ui.actionLoad_Project, ui.menuWindow, true, "Load Project.svg", QKeySequence::Open},
        {ui.actionSave_All_Project, ui.menuWindow, true, "save.svg", Qt::CTRL + Qt::SHIFT + Qt::Key_S},
        {ui.actionAbout, ui.menuAbout, false, "logo-1.png", {}},
        {ui.actionSaveState, ui.menuFile, true, "saveini.svg", {}},
        {ui.actionRestoreState, ui.menuFile, true, "restore.svg", {}},
    };
    ui.toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const auto &row : rows) {
        row.action->setIcon(svgIcon(QStringLiteral(":/adsdemo/images/") + QLatin1String(row.icon)));
        row.action->setShortcut(row.shortcut);
        row.menu->addAction(row.action);
        if (row.onToolBar) {
            ui.toolBar->addAction(row.action);
        }
    }
    for (QAction *action : {ui.actionNew_Project, ui.actionLoad_Project, ui.actionSave_All_Project}) {
        action->setProperty("Floating", false);
    }
    auto *newButton = qobject_cast<QToolButton *>(ui.toolBar->widgetForAction(ui.actionNew_Project));
    newButton->setPopupMode(QToolButton::InstantPopup);
}

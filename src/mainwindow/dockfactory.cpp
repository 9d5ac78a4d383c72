#include "mainwindow/dockfactory.h"

#include "mainwindow/docking.h"
#include "mainwindow/windowtext.h"
#include "widgets/svgicon.h"
#include "widgets/tabwidget.h"

#include <QMenu>
#include <QPlainTextEdit>
#include <QToolBar>

using ads::CDockWidget;

CDockWidget *DockFactory::makeTable(ads::CDockManager *manager)
{
    static int counter = 0;
    CDockWidget *dock = Docking::makeDock(manager, QStringLiteral("Table %1").arg(counter++));
    auto *tabs = new TabWidget;
    tabs->setTabsClosable(true);
    tabs->setMovable(true);
    dock->setWidget(tabs);
    dock->setIcon(svgIcon(QStringLiteral(":/adsdemo/images/data monitoring.svg")));
    dock->setMinimumSizeHintMode(CDockWidget::MinimumSizeHintFromContent);
    dock->createDefaultToolBar()->hide(); // nothing is in it: it would be a blank strip above the tables
    return dock;
}

CDockWidget *DockFactory::makeEditor(ads::CDockManager *manager, const QString &title, QPlainTextEdit *editor,
                                     const QString &placeholder, const QIcon &icon)
{
    CDockWidget *dock = Docking::makeDock(manager, title);
    editor->setPlaceholderText(placeholder);
    editor->setStyleSheet(QStringLiteral("border: none"));
    dock->setWidget(editor);
    dock->setIcon(icon);

    auto *options = new QMenu(WindowText::tr("Options"), dock);
    options->setObjectName(QStringLiteral("optionsMenu"));
    options->menuAction()->setObjectName(options->objectName()); // the title bar's button is named after it
    options->setToolTip(WindowText::tr("Options"));
    options->setIcon(svgIcon(QStringLiteral(":/adsdemo/images/custom-menu-button.svg")));
    options->addAction(WindowText::tr("Clear Editor"), editor, &QPlainTextEdit::clear);
    dock->setTitleBarActions({options->menuAction()});
    return dock;
}

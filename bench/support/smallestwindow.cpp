// The least program with a window of our kind: a QMainWindow, the dock manager, three docks.

#include "mainwindow/docking.h"

#include <QApplication>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTreeView>

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    const QApplication app(argc, argv);
    QMainWindow window;
    Docking::configureDocking();
    auto *manager = new ads::CDockManager(&window);
    const struct {
        ads::DockWidgetArea area;
        const char *title;
        QWidget *widget;
    } docks[] = {{ads::CenterDockWidgetArea, "Data monitoring", new QTabWidget},
                 {ads::LeftDockWidgetArea, "Project", new QTreeView},
                 {ads::BottomDockWidgetArea, "Message", new QPlainTextEdit}};
    for (const auto &each : docks) {
        ads::CDockWidget *dock = Docking::makeDock(manager, QString::fromLatin1(each.title));
        dock->setWidget(each.widget);
        manager->addDockWidget(each.area, dock);
    }
    window.resize(1280, 720);
    window.showMaximized();
    return QApplication::exec();
}

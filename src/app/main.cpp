#include "app/messagehandler.h"
#include "mainwindow/cmainwindow.h"

#include <QApplication>
#include <QDebug>
#include <QFile>
#include <QIcon>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Marlin Gate 70"));
    QGuiApplication::setQuitOnLastWindowClosed(true);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/adsdemo/images/logo-1.png")));
    qInstallMessageHandler(messageHandler);
    qDebug() << "Message handler test";

    CMainWindow window;
    window.showMaximized();
    window.show();

    // A style sheet of this name is optional: without it the program has the platform's own style.
    QFile styleFile(QStringLiteral(":/adsdemo/app.css"));
    QTextStream style(&styleFile);
    app.setStyleSheet(styleFile.open(QIODevice::ReadOnly) ? style.readAll() : QString());
    styleFile.close();

    return QApplication::exec();
}

#include "mainwindow/windowtext.h"

#include <QDebug>
#include <QTranslator>

void WindowText::load(QTranslator *translator, const QString &file)
{
    if (translator->load(file, QLatin1String(""), QLatin1String(""), QLatin1String(""))) {
        QCoreApplication::installTranslator(translator);
    } else {
        QCoreApplication::removeTranslator(translator);
        qWarning() << "Failed to load translation file: " << file;
    }
}

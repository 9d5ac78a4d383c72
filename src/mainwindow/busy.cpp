#include "mainwindow/busy.h"

#include <QCursor>
#include <QGuiApplication>

#ifdef __GLIBC__
#include <malloc.h>
#endif

Busy::Busy()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

Busy::~Busy()
{
#ifdef __GLIBC__
    // A large project lies in millions of small blocks, and by itself the C library gives back none of the
    // freed ones while a younger block behind them is in use.
    malloc_trim(0);
#endif
    QGuiApplication::restoreOverrideCursor();
}

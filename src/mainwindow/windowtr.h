#pragma once

#include <QCoreApplication>

// The texts of the main window and of the classes that it hands its work to share one translation context.
struct WindowTr {
    Q_DECLARE_TR_FUNCTIONS(CMainWindow)
};

#pragma once

#include <QCoreApplication>

// The texts of the window's collaborators, which are in its own part of the catalogue.
struct WindowText {
    Q_DECLARE_TR_FUNCTIONS(CMainWindow)
};

#pragma once

#include <QString>

// The file in the working directory that keeps the window's layout and the perspectives.
inline const QString layoutFile = QStringLiteral("Settings.ini");

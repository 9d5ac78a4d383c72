#pragma once

#include <QString>

// In the working directory, with the window's layout and the perspectives.
inline const QString layoutFile = QStringLiteral("Settings.ini");

#pragma once

#include <QSettings>

// "Settings.ini" in the working directory, with the window's layout and the perspectives.
class LayoutFile : public QSettings
{
    // No Q_OBJECT: it adds nothing but its name.
public:
    LayoutFile()
        : QSettings(QStringLiteral("Settings.ini"), QSettings::IniFormat)
    {
    }
};

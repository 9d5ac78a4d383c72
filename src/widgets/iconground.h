#pragma once

#include <QColor>

class QPalette;

// The colours of what is chosen, where it may have an icon: the program's icons are drawn in middle tones,
// which the highlight of most desktops swallows.
struct IconGround {
    QColor ground;
    QColor text;

    // Dark on a light desktop, light on a dark one.
    static IconGround of(const QPalette &desktop);
    // Gives the entry of a menu that the user is at these colours, in all menus of the program.
    static void useInMenus(const QPalette &desktop);
};

// Whether the desktop is a dark one, where icons drawn for light ground vanish.
bool isDark(const QPalette &desktop);

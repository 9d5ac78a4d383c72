#pragma once

#include <QIcon>
#include <QString>

class QPalette;

// The icon of a tool-bar action or dock from an SVG resource, with one rendering at 92 pixels added to it.
QIcon svgIcon(const QString &path);

// Whether the desktop is a dark one, where icons drawn for light ground vanish.
bool isDark(const QPalette &desktop);

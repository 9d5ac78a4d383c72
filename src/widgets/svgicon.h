#pragma once

#include <QIcon>
#include <QString>

// The icon of a tool-bar action or dock from an SVG resource, with one rendering at 92 pixels added to it.
QIcon svgIcon(const QString &path);

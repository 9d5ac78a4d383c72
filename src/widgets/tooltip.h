#pragma once

#include <QString>

// A tool tip that shows the text as it is: names and paths come from files, and are no mark-up.
QString plainToolTip(const QString &text);

#pragma once

#include <QString>

// The time of now as the log and the pages write it: yyyy-MM-dd HH:mm:ss.
QString timeText();

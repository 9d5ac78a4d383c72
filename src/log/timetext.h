#pragma once

#include <QString>

// The present time as the log and the pages write it: yyyy-MM-dd HH:mm:ss, local time.
QString timeText();

// A time in ms since 1970 UTC in local time with its zone, by ISO 8601: 2026-11-22T16:05:01.123+01:00.
QString zonedTimeText(qint64 time);

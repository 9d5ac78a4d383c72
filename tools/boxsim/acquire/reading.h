#pragma once

#include <QMetaType>
#include <QString>

// What became of one point in one beat. A point that was not read is not valid; its text is the last one that
// it had.
struct PointReading {
    QString value;
    bool valid = false;
};

Q_DECLARE_METATYPE(PointReading)

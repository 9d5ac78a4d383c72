#pragma once

#include <QString>

// Whose values a page shows. Values that were handed in from outside a session have no Box.
struct LiveSource {
    QString project;
    QString box;
    QString address; // that the session with the Box goes to
};

inline bool operator==(const LiveSource &left, const LiveSource &right)
{
    return left.project == right.project && left.box == right.box && left.address == right.address;
}

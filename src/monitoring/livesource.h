#pragma once

#include <QString>

#include <tuple>

// Whose values a page shows. Values that were handed in from outside a session have no Box.
struct LiveSource {
    QString project;
    QString box;
    QString address; // that the session with the Box goes to
};

inline bool operator<(const LiveSource &left, const LiveSource &right)
{
    return std::tie(left.project, left.box, left.address) < std::tie(right.project, right.box, right.address);
}

#pragma once

#include <QByteArray>

// Live reports as a Box sends them.
namespace Segments {

// The text of a report with this many points, all values made from the round.
QByteArray reportText(int points, int round);
// The text as frames of command 0x0600, one behind the other.
QByteArray stream(const QByteArray &text);

} // namespace Segments

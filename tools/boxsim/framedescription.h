#pragma once

#include <QByteArray>
#include <QString>

// One readable line on a whole frame: its command by name and what its body says, cut to a few hundred
// characters. Never fails: a body that does not fit its command is shown in hexadecimal.
QString describeFrame(const QByteArray &frame);

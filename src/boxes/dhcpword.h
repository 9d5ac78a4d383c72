#pragma once

class QString;

// The words that a form shows for the DHCP flags of a Box's settings. Compat: they are compared, so they stay
// English in every language.
namespace DhcpWord {

// "1" for "Enable", "0" for "Disabled", empty for any other word.
QString toFlag(const QString &word);
// The word for a flag; an empty text, which no list has, for anything but "1" and "0".
QString fromFlag(const QString &flag);

} // namespace DhcpWord

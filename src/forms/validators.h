#pragma once

class QObject;
class QValidator;

// The validators that the forms share; each is made new with the given parent. They restrain typing only:
// no form validates before it saves or sends.
using MakeValidator = QValidator *(*)(QObject *parent);

// Four decimal parts of 0 to 255.
inline constexpr char ipv4Pattern[] = "^((25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?)\\.){3}"
                                      "(25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?)$";
QValidator *ipv4Validator(QObject *parent);
// A dotted host name whose last label has letters only. A dotted IP address can be typed: a name may begin
// so.
QValidator *hostNameValidator(QObject *parent);
// Anything but U+04BB to U+FFFD, so that Chinese can't be typed.
QValidator *noCjkValidator(QObject *parent);
// -1 to 65535.
QValidator *portValidator(QObject *parent);
// -1 to 2147483647.
QValidator *integerValidator(QObject *parent);

#include "forms/validators.h"

#include <QIntValidator>
#include <QRegExpValidator>
#include <QRegularExpressionValidator>

#include <limits>

namespace {

QValidator *patternValidator(const QString &pattern, QObject *parent)
{
    return new QRegExpValidator(QRegExp(pattern, Qt::CaseSensitive, QRegExp::RegExp), parent);
}

} // namespace

QValidator *ipv4Validator(QObject *parent)
{
    return patternValidator(QString::fromLatin1(ipv4Pattern), parent);
}

QValidator *hostNameValidator(QObject *parent)
{
    const QRegularExpression pattern(
        QStringLiteral("^([a-zA-Z0-9]([-a-zA-Z0-9]*[a-zA-Z0-9])?\\.)+[a-zA-Z]{2,}$"));
    return new QRegularExpressionValidator(pattern, parent);
}

QValidator *noCjkValidator(QObject *parent)
{
    // QRegExp spells a code point \xhhhh, where other engines write \x{hhhh}.
    return patternValidator(QStringLiteral("^[^\\x04BB-\\xFFFD]*$"), parent);
}

QValidator *portValidator(QObject *parent)
{
    return new QIntValidator(-1, 65535, parent);
}

QValidator *integerValidator(QObject *parent)
{
    return new QIntValidator(-1, std::numeric_limits<int>::max(), parent);
}

#include "parameters/parametertext.h"

#include <QCoreApplication>

namespace {

const char *const storedMethods[] = {
    QT_TRANSLATE_NOOP("ParameterTable", "Timed"),
    QT_TRANSLATE_NOOP("ParameterTable", "Change"),
    QT_TRANSLATE_NOOP("ParameterTable", "Change amplitude"),
};

const char *const storedNodeTypes[] = {
    QT_TRANSLATE_NOOP("ParameterTable", "GUID Node"),
    QT_TRANSLATE_NOOP("ParameterTable", "Numerical Node"),
    QT_TRANSLATE_NOOP("ParameterTable", "String Node"),
};

template <typename Texts> QStringList listOf(const Texts &texts)
{
    QStringList list;
    for (const char *text : texts) {
        list.append(QString::fromLatin1(text));
    }
    return list;
}

} // namespace

const QStringList &ParameterText::types()
{
    static const QStringList list{
        QStringLiteral("bool"),   QStringLiteral("int8"),   QStringLiteral("uint8"),
        QStringLiteral("int16"),  QStringLiteral("uint16"), QStringLiteral("int32"),
        QStringLiteral("uint32"), QStringLiteral("int64"),  QStringLiteral("uint64"),
        QStringLiteral("float"),  QStringLiteral("double"), QStringLiteral("string")};
    return list;
}

const QStringList &ParameterText::permissions()
{
    static const QStringList list{QStringLiteral("r"), QStringLiteral("rw")};
    return list;
}

const QStringList &ParameterText::methods()
{
    static const QStringList list = listOf(storedMethods);
    return list;
}

const QStringList &ParameterText::nodeTypes()
{
    static const QStringList list = listOf(storedNodeTypes);
    return list;
}

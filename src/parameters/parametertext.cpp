#include "parameters/parametertext.h"

#include "definitions/choices.h"

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
    static const QStringList list = Choices::list(Choices::dataTypes);
    return list;
}

const QStringList &ParameterText::permissions()
{
    static const QStringList list = Choices::list(Choices::permissions);
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

#include "plc/parametervariant.h"

#include <QCoreApplication>

namespace {

constexpr char context[] = "ParameterTable";

const char *const storedMethods[] = {
    QT_TRANSLATE_NOOP("ParameterTable", "Timed"),
    QT_TRANSLATE_NOOP("ParameterTable", "Change"),
    QT_TRANSLATE_NOOP("ParameterTable", "Change amplitude"),
};

ParameterColumn column(ParameterCell cell, int width)
{
    // "Deleat" is the word that files and users know.
    static const char *const headers[] = {
        QT_TRANSLATE_NOOP("ParameterTable", "Address"),
        QT_TRANSLATE_NOOP("ParameterTable", "Name"),
        QT_TRANSLATE_NOOP("ParameterTable", "Type"),
        QT_TRANSLATE_NOOP("ParameterTable", "Length"),
        QT_TRANSLATE_NOOP("ParameterTable", "Permissions"),
        QT_TRANSLATE_NOOP("ParameterTable", "Reporting Method"),
        QT_TRANSLATE_NOOP("ParameterTable", "Change Amplitude"),
        QT_TRANSLATE_NOOP("ParameterTable", "Collection Formula"),
        QT_TRANSLATE_NOOP("ParameterTable", "Write Formula"),
        QT_TRANSLATE_NOOP("ParameterTable", "Deleat"),
    };
    return {cell, headers[static_cast<int>(cell)], width};
}

} // namespace

int ParameterVariant::indexOf(ParameterCell cell) const
{
    for (int index = 0; index < columns.size(); ++index) {
        if (columns.at(index).cell == cell) {
            return index;
        }
    }
    return -1;
}

QStringList ParameterVariant::headers() const
{
    QStringList texts;
    for (const ParameterColumn &each : columns) {
        texts.append(ParameterText::translated(each.header));
    }
    return texts;
}

const ParameterVariant &ParameterVariant::plc()
{
    static const ParameterVariant variant{
        {column(ParameterCell::Address, 70), column(ParameterCell::Name, 70), column(ParameterCell::Type, 80),
         column(ParameterCell::Length, 70), column(ParameterCell::Permissions, 70),
         column(ParameterCell::Method, 120), column(ParameterCell::Amplitude, 80),
         column(ParameterCell::CollectionFormula, 100), column(ParameterCell::WriteFormula, 100),
         column(ParameterCell::Button, 35)},
        "PLCEditDialog",
        QT_TRANSLATE_NOOP("ParameterTable",
                          "The name of the '%1' line already exists. Please use a different name."),
        true,
        false,
        false,
        false,
        false,
        QT_TRANSLATE_NOOP("ParameterTable", "Open CSV file"),
        QT_TRANSLATE_NOOP("ParameterTable", "mistake"),
        false,
        0};
    return variant;
}

const ParameterVariant &ParameterVariant::modbus()
{
    static const ParameterVariant variant{
        {column(ParameterCell::Address, 70), column(ParameterCell::Name, 70), column(ParameterCell::Type, 80),
         column(ParameterCell::Length, 70), column(ParameterCell::Permissions, 70),
         column(ParameterCell::Button, 35)},
        "standardModbusEditDialog",
        QT_TRANSLATE_NOOP(
            "ParameterTable",
            "The name of the '%1' line already exists in this tab. Please use a different name."),
        false,
        true,
        true,
        true,
        true,
        QT_TRANSLATE_NOOP("ParameterTable", "Save CSV file"),
        QT_TRANSLATE_NOOP("ParameterTable", "Mistake"),
        true,
        600};
    return variant;
}

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
    static const QStringList list = [] {
        QStringList texts;
        for (const char *method : storedMethods) {
            texts.append(QString::fromLatin1(method));
        }
        return texts;
    }();
    return list;
}

QStringList ParameterText::shownMethods()
{
    QStringList texts;
    for (const char *method : storedMethods) {
        texts.append(translated(method));
    }
    return texts;
}

QString ParameterText::shownMethod(const QString &stored)
{
    const int index = methods().indexOf(stored);
    return index < 0 ? stored : translated(storedMethods[index]);
}

QString ParameterText::storedMethod(const QString &shown)
{
    const int index = shownMethods().indexOf(shown);
    return index < 0 ? shown : methods().at(index);
}

QString ParameterText::amplitudeMethod()
{
    return translated(storedMethods[2]);
}

QString ParameterText::translated(const char *source)
{
    return QCoreApplication::translate(context, source);
}

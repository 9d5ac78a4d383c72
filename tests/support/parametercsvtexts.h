#pragma once

#include "model/projecttree.h"
#include "parameters/parametervariant.h"

#include <QHash>
#include <QTranslator>

// What the tests of parameter rows in files share.
namespace ParameterCsvTexts {

const QByteArray plcHeader =
    "Address,Name,Type,Length,Permissions,Reporting Method,Change Amplitude,Collection Formula,Write "
    "Formula,Deleat\n";
const QByteArray modbusHeader = "Address,Name,Type,Length,Permissions,Deleat\n";

// The cells of a row, between commas.
inline QVariantList row(const QByteArray &fields)
{
    QVariantList values;
    const QStringList texts = QString::fromUtf8(fields).split(QLatin1Char(','));
    for (const QString &text : texts) {
        values.append(text);
    }
    return values;
}

inline const ParameterVariant &variantOf(bool modbus)
{
    return modbus ? ParameterVariant::modbus() : ParameterVariant::plc();
}

// A language with words for some of the entries and headers; it is to be installed.
class Chinese : public QTranslator
{
public:
    QString translate(const char *, const char *source, const char *, int) const override
    {
        static const QHash<QByteArray, QString> texts{
            {"Timed", "定时上报"}, {"Change", "变化上报"}, {"Address", "地址"}};
        return texts.value(source);
    }
    bool isEmpty() const override { return false; }
};

} // namespace ParameterCsvTexts

#pragma once

#include "boxsim/simproject.h"
#include "meteritems.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

// Projects that have all items of a meter read, and what the simulated meter says to them.

// What the simulated meter says, in the order of meterItems; "" where the older edition lacks the item.
constexpr struct {
    const char *of2007;
    const char *of1997;
} meterTexts[] = {
    {"12.34", "65.43"},     {"123.45", "654.32"},
    {"1234.56", "6543.21"}, {"12345.67", "65432.10"},
    {"104.44", ""},         {"103.33", ""},
    {"-2.22", ""},          {"101.11", ""},
    {"400.40", ""},         {"-300.30", ""},
    {"21000.21", ""},       {"41000.41", ""},
    {"61000.61", ""},       {"800", "400"},
    {"1600", "3200"},       {"217.55", ""},
    {"1.23", "3.21"},       {"5.05", "13.13"},
    {"6.06", "15.15"},      {"7.07", "0.16"},
    {"0.08", "14.14"},      {"123456.78", "654321.09"},
    {"7.4000", ""},         {"2.8018", ""},
    {"0.2500", ""},         {"4.8537", ""},
    {"0.6200", "0.33"},     {"-0.1000", "0.11"},
    {"0.0001", "10.00"},    {"0.7199", "0.22"},
    {"7.3500", "1.7325"},   {"2.8000", "0.5775"},
    {"-0.2500", "0.0000"},  {"4.8000", "1.1550"},
    {"0.993", "0.982"},     {"-0.999", "0.981"},
    {"1.000", "1.000"},     {"0.000", "0.000"},
    {"12.345", "5.25"},     {"-1.234", "0.05"},
    {"0.000", "10.00"},     {"230.1", "220"},
    {"231.2", "221"},       {"0.0", "0"},
};

// All items of an edition, as a project has them.
inline QVector<SimPoint> allPoints(bool older)
{
    QVector<SimPoint> points;
    for (const MeterItem &item : meterItems) {
        const QString identifier = QLatin1String(older ? item.address1997 : item.address2007);
        if (!identifier.isEmpty()) {
            const QLatin1String format(older ? item.format1997 : item.format2007);
            points.append({QLatin1String(item.label), identifier, format, 0});
        }
    }
    return points;
}

// What the simulated meter says to them.
inline QStringList allTexts(bool older)
{
    QStringList texts;
    for (const auto &row : meterTexts) {
        const QString text = QLatin1String(older ? row.of1997 : row.of2007);
        if (!text.isEmpty()) {
            texts.append(text);
        }
    }
    return texts;
}

// A Standard with one meter, which has all items.
inline QJsonObject meterStandard(const QString &name, const QString &port, bool older)
{
    QJsonArray points;
    const QVector<SimPoint> all = allPoints(older);
    for (const SimPoint &point : all) {
        points.append(QJsonObject{
            {"select", "true"}, {"name", point.name}, {"addr", point.addr}, {"dataType", point.dataType}});
    }
    const QJsonObject meter{
        {"slaveAddress", "AAAAAAAAAAAA"}, {"protocolVersion", older ? 2 : 1}, {"datas", points}};
    const QJsonObject line{{"serialport", port},      {"baudRate", "2400"},
                           {"dataBit", "8"},          {"stopBit", "1"},
                           {"parityBit", "EVEN"},     {"rtsEnable", "0"},
                           {"communicationGap", "0"}, {"communicationTimeout", "2000"}};
    return {{"name", name}, {"protocol", "DLT645"}, {"parameter", line}, {"datas", QJsonArray{meter}}};
}

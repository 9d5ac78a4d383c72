#include "definitions/protocols.h"

QString Protocols::standardIcon(const QString &protocol)
{
    static const struct {
        QLatin1String protocol;
        QLatin1String icon;
    } icons[] = {
        {modbus, QLatin1String(":/adsdemo/images/Modbus.svg")},
        {dlt645, QLatin1String(":/adsdemo/images/DLT645.svg")},
        {dido, QLatin1String(":/adsdemo/images/dio.svg")},
        {customPoll, QLatin1String(":/adsdemo/images/CustomPoll.svg")},
        {opcUa, QLatin1String(":/adsdemo/images/OpcUa.svg")},
    };
    for (const auto &each : icons) {
        if (protocol == each.protocol) {
            return each.icon;
        }
    }
    return QString();
}

#include "boxlink/monitoringreport.h"

MonitoringReport MonitoringReport::fromJson(const QJsonObject &json)
{
    const auto text = [&json](const char *key) { return json.value(QLatin1String(key)).toString(); };
    MonitoringReport report;
    report.projectName = text("projectName");
    report.plcName = text("plcName");
    report.description = text("description");
    report.sn = text("sn");
    report.time = text("time");
    report.datas = json.value(QLatin1String("datas")).toArray();
    report.json = json;
    return report;
}

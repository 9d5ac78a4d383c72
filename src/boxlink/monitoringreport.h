#pragma once

#include <QJsonArray>
#include <QString>

class QJsonObject;

// One report of live values. Each element of datas is an object with the strings "name", "addr", "dataType",
// "value" and "valid" ("1" valid, "0" invalid).
struct MonitoringReport {
    QString projectName;
    QString plcName;
    QString description;
    QString sn;
    QString time;
    QJsonArray datas;

    // What is missing, or is not what it should be, reads as empty.
    static MonitoringReport fromJson(const QJsonObject &json);
};

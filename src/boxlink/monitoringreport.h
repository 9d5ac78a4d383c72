#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

// One report of live values. Each element of datas is an object with the strings "name", "addr", "dataType",
// "value" and "valid" ("1" valid, "0" invalid).
struct MonitoringReport {
    QString projectName;
    QString plcName;
    QString description;
    QString sn;
    QString time;
    QJsonArray datas;
    QJsonObject json; // all of it, as it came

    // What is missing, or is not what it should be, reads as empty.
    static MonitoringReport fromJson(const QJsonObject &json);
};

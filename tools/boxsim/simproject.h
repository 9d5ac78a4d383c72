#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVector>

// What a Box takes from a project document in order to report for it.
struct SimPoint {
    QString name; // its addr where the document gives no name
    QString addr;
    QString dataType; // as it stands, blanks included
    int length = 0;   // characters of a "string" point; 0 if the document says nothing
};

// A slave or a meter: points that stand together in a Standard.
struct SimDevice {
    QMap<QString, QString> settings; // its keys beside the points: "stationNum", "slaveAddress" and so on
    int firstPoint = 0;              // in the Standard's points
    int pointCount = 0;
};

struct SimStandard {
    QString name;
    int interval = 1000; // milliseconds between two acquisitions
    QVector<SimPoint> points;
    int leftOut = 0; // points beyond those that are taken

    // What says how the points are acquired.
    QString protocol;                  // "Modbus", "DLT645" or another
    QString mode;                      // of a Modbus Standard: "ModbusTCP" or "ModbusRTU"
    QMap<QString, QString> parameters; // the keys of its "parameter", as they stand
    QVector<SimDevice> devices;        // none for points that stand in no group
};

struct SimProject {
    QString name;
    QString description;
    QVector<SimStandard> standards;
};

// Reads a project document. Points stand in groups ("datas" of "datas") or directly in a Standard's "datas".
// Left out are points with "select" other than "true" where they have that key, and points with neither name
// nor address. A Standard without a collectionInterval reports each second, none faster than each 100 ms.
// False, with the reason in error, if the text is no JSON object with a name; at most 256 Standards and
// 50000 points each are taken.
bool readSimProject(const QByteArray &document, SimProject *project, QString *error);

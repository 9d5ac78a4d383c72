#pragma once

#include <QStringList>
#include <QVector>

// What a curve shows and a row of a recording is of. Boxes that run the same project have points of their
// own; points of one name within a Standard are one, as on the reports.
struct PointId {
    QString box; // the address of the Box; empty for values from outside a session
    QString project;
    QString standard; // "plcName" of the reports
    QString name;
};

bool operator==(const PointId &left, const PointId &right);
bool operator<(const PointId &left, const PointId &right);
uint qHash(const PointId &id, uint seed = 0);

// A name for each point that tells it apart from the others: its own, with Standard, project and Box in front
// as far as needed: "Line 1 / Pressure". Points of several projects all have theirs in front, those of
// several Boxes project and Box.
QStringList distinctNames(const QVector<PointId> &ids);
// The name with all of these: "10.0.0.1 / Plant / Line 1 / Pressure".
QString fullName(const PointId &id);

// How what lies between two samples of a point is drawn.
enum class Shape {
    Line,  // measured values
    Step,  // bool and integers: states and counters hold until they change
    Event, // texts
};

// A point as the last report or a recording describes it.
struct Point {
    PointId id;
    QString address;
    QString type; // "dataType" of the reports: "float", "int16", "string", ...
};

// What the type says; a type that is not known is a line.
Shape shapeOf(const QString &type);

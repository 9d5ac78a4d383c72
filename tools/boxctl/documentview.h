#pragma once

#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVector>

class QJsonObject;

// A project document as its tree is seen in the window: nodes with their fields under the names of the forms.
// Takes a document of any shape; what the forms do not know is there under its key.
namespace DocumentView {

struct Field {
    QString key; // which no other of the node has, as "ip" or "parameter.ip"
    QString name;
    QJsonValue value;
    bool isSecret = false;

    // A string as it is, all else as JSON.
    QString text() const;
};

// A definition, a tab of it, a point, or the project itself.
struct Node {
    QStringList path; // names from below the project down, no two nodes with the same; empty for the project
    QVector<Field> fields;
};

// Each node before those below it, in the order of the document.
QVector<Node> nodesOf(const QJsonObject &project);

} // namespace DocumentView

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

class QStandardItem;

// The project document of a top-level item: the only route from the tree to JSON, for the saved file and for
// the push to a Box alike. Reads only item texts and roles; nothing of the "Data" folder is in it.
QJsonObject buildProjectJson(const QStandardItem *project);

// The document as it lies on disk: UTF-8, indented, keys in alphabetical order.
QByteArray projectDocument(const QStandardItem *project);

// Where the project is saved: its path, a separator, its present name, ".json".
QString projectFilePath(const QStandardItem *project);

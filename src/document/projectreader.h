#pragma once

#include <QJsonObject>
#include <QString>

class QStandardItem;
class QStandardItemModel;

// These fill the roles of one definition item from its object in the document and touch nothing else; a form
// sees the values when it next opens. Nothing can fail: a key that is missing or of the wrong type reads as
// empty, so it empties its role. The item must not be null.

// Reads every member for every protocol. "authentication" other than "0" and "1" leaves its role alone, and
// only "Modbus" and "DLT645" have their points read: of the other protocols standardDatasRole stays as it
// was.
void transmitStandardData(const QJsonObject &standard, QStandardItem *item);
// "authentication" other than "0" and "1" leaves its role alone.
void transmitServiceData(const QJsonObject &service, QStandardItem *item);
void transmitBoxData(const QJsonObject &box, QStandardItem *item);
// No document holds objects of these two kinds: the writer makes and drops them, so that the shape is there
// for the day on which they get a key of the root. Filled are the roles of the manufacturer and protocol of
// the object.
void transmitPlcData(const QJsonObject &plc, QStandardItem *item);
void transmitServerData(const QJsonObject &server, QStandardItem *item);

// Puts a document into the model and returns its project item. A top-level item of the document's name is
// filled as it is, keeping its path and description; otherwise a project with this folder as its path is
// appended. Missing folders are made, then each definition is filled by name: the first child of that name,
// or a new one. So an open project is merged with the document, and entries of one name end up in one item.
QStandardItem *loadProject(QStandardItemModel &model, const QJsonObject &root, const QString &folderPath);

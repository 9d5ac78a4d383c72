#pragma once

#include <QJsonObject>

class QStandardItem;

// The object of a PLC, a kind of definition that no project has yet. The writer makes the objects of a folder
// named "PLC" and leaves them out of the document, and the reader looks for none: which root key they lie
// under is up to whoever gives projects that folder. All values are strings; there are "parameter" and
// "extendedParameters" for every protocol, an unknown one included.

QJsonObject plcObject(const QStandardItem &plc);

// Fills the roles of the item from its object: those of its manufacturer and protocol only. A key that is
// missing or of the wrong type reads as empty. The item must not be null.
void transmitPlcData(const QJsonObject &plc, QStandardItem *item);

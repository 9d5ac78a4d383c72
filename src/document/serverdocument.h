#pragma once

#include <QJsonObject>

class QStandardItem;

// A Server as an object of the document. No document holds one: the writer makes and drops them, so that the
// shape is there for the day on which they get a key of the root.

// All values are texts. A protocol that is unknown gives "name" alone.
QJsonObject serverObject(const QStandardItem &server);

// Fills the roles of the item from the object: the protocol, the description, and what an object of that
// protocol has. A key that is missing or of the wrong type reads as empty. The item must not be null.
void transmitServerData(const QJsonObject &server, QStandardItem *item);

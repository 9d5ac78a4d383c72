#pragma once

#include "definitions/documentkeys.h"
#include "definitions/values.h"

#include <QJsonObject>

class QStandardItem;

// One definition as an object of the document, written and read by the rows of its kind.
namespace DefinitionObject {

// "name" and what an item of its protocol and settings has; "name" alone for a protocol that is not known.
QJsonObject write(Definitions::Kind kind, const QStandardItem &item, const DocumentKeys::Texts &texts);

// Fills the roles that are read for the protocol of the object and touches nothing else. A key that is
// missing or of the wrong type reads as empty. The item must not be null.
void read(Definitions::Kind kind, const QJsonObject &object, QStandardItem *item,
          const DocumentKeys::Texts &texts);

} // namespace DefinitionObject

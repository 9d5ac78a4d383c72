#include "document/plcdocument.h"

#include "document/definitionobject.h"

QJsonObject plcObject(const QStandardItem &plc)
{
    return DefinitionObject::write(Definitions::Kind::Plc, plc, DocumentKeys::Texts());
}

void transmitPlcData(const QJsonObject &plc, QStandardItem *item)
{
    DefinitionObject::read(Definitions::Kind::Plc, plc, item, DocumentKeys::Texts());
}

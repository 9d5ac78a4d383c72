#include "document/serverdocument.h"

#include "document/definitionobject.h"

QJsonObject serverObject(const QStandardItem &server)
{
    return DefinitionObject::write(Definitions::Kind::Server, server, DocumentKeys::Texts());
}

void transmitServerData(const QJsonObject &server, QStandardItem *item)
{
    DefinitionObject::read(Definitions::Kind::Server, server, item, DocumentKeys::Texts());
}

#include "servers/serveralimqtteditdialog.h"

#include "definitions/protocols.h"
#include "servers/serverfields.h"

ServerAliMQTTEditDialog::ServerAliMQTTEditDialog(QStandardItem *item, Workspace *workspace)
    : ServerForm(
        {staticMetaObject.className(),
         QT_TRANSLATE_NOOP("ServerAliMQTTEditDialog", "The Server AliMQTT '%1' is saved successfully.")},
        item, workspace)
{
    setWindowTitle(tr("Edit Server"));
    ServerFields::addCloud(fields(), Protocols::aliMqtt);
    ServerFields::addDevice(fields());
    ServerFields::addQos(fields(), "0 1 2");
    setParts({&fields()});
}

#include "servers/serverhuaweimqtteditdialog.h"

#include "definitions/protocols.h"
#include "model/itemroles.h"
#include "servers/serverfields.h"

ServerHuaWeiMQTTEditDialog::ServerHuaWeiMQTTEditDialog(QStandardItem *item, Workspace *workspace)
    : ServerForm({staticMetaObject.className(),
                  QT_TRANSLATE_NOOP("ServerHuaWeiMQTTEditDialog",
                                    "The Server HuaWeiMQTT '%1' is saved successfully.")},
                 item, workspace)
{
    setWindowTitle(tr("Edit Server"));
    ServerFields::addCloud(fields(), Protocols::huaWeiMqtt);
    ServerFields::addClientId(fields());
    ServerFields::addUserName(fields());
    ServerFields::addPassword(fields())->password();
    fields().add<TextField>(serverServiceIdRole, tr("Service ID:"))->check(noCjkValidator);
    ServerFields::addQos(fields(), "0 1 2");
    setParts({&fields()});
}

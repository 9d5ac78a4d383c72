#include "servers/serveronenetmqtteditdialog.h"

#include "definitions/protocols.h"
#include "servers/serverfields.h"

ServerOneNetMQTTEditDialog::ServerOneNetMQTTEditDialog(QStandardItem *item, Workspace *workspace)
    : ServerForm({staticMetaObject.className(),
                  QT_TRANSLATE_NOOP("ServerOneNetMQTTEditDialog",
                                    "The Server OneNetMQTT '%1' is saved successfully.")},
                 item, workspace)
{
    setWindowTitle(tr("Edit Server"));
    ServerFields::addCloud(fields(), Protocols::oneNetMqtt);
    ServerFields::addDevice(fields());
    // Compat: without level 2, which the other kinds have; a stored "2" is shown and saved as "1".
    ServerFields::addQos(fields(), "0 1");
    setParts({&fields()});
}

#include "servers/serverhuaweimqtteditdialog.h"

#include "model/itemroles.h"
#include "servers/serverfields.h"

namespace {

QVector<Field> cloudFields()
{
    return ServerFields::cloud(QStringLiteral("HuaWeiMQTT")) + ServerFields::clientId()
        + ServerFields::credentials()
        + QVector<Field>{{"serviceId", QT_TRANSLATE_NOOP("ServerHuaWeiMQTTEditDialog", "Service ID:"),
                          FieldKind::Text, serverServiceIdRole, FieldCheck::NoCjk}}
    + ServerFields::qos({QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")});
}

} // namespace

ServerHuaWeiMQTTEditDialog::ServerHuaWeiMQTTEditDialog(QStandardItem *item, Workspace *workspace)
    : ServerForm({"ServerHuaWeiMQTTEditDialog",
                  QT_TRANSLATE_NOOP("ServerHuaWeiMQTTEditDialog", "Edit Server"),
                  QT_TRANSLATE_NOOP("ServerHuaWeiMQTTEditDialog",
                                    "The Server HuaWeiMQTT '%1' is saved successfully.")},
                 cloudFields(), item, workspace)
{
    ServerFields::lockProtocol(fields());
    begin();
}

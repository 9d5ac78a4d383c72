#include "servers/serveralimqtteditdialog.h"

#include "servers/serverfields.h"

namespace {

QVector<Field> cloudFields()
{
    return ServerFields::cloud(QStringLiteral("AliMQTT")) + ServerFields::device()
        + ServerFields::qos({QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")});
}

} // namespace

ServerAliMQTTEditDialog::ServerAliMQTTEditDialog(QStandardItem *item, Workspace *workspace)
    : ServerForm(
        {"ServerAliMQTTEditDialog", QT_TRANSLATE_NOOP("ServerAliMQTTEditDialog", "Edit Server"),
         QT_TRANSLATE_NOOP("ServerAliMQTTEditDialog", "The Server AliMQTT '%1' is saved successfully.")},
        cloudFields(), item, workspace)
{
    ServerFields::lockProtocol(fields());
    begin();
}

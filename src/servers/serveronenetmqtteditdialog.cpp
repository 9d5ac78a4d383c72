#include "servers/serveronenetmqtteditdialog.h"

#include "servers/serverfields.h"

namespace {

QVector<Field> cloudFields()
{
    // On purpose without level 2, which the other kinds have; a stored "2" shows and saves as "1".
    return ServerFields::cloud(QStringLiteral("OneNetMQTT")) + ServerFields::device()
        + ServerFields::qos({QStringLiteral("0"), QStringLiteral("1")});
}

} // namespace

ServerOneNetMQTTEditDialog::ServerOneNetMQTTEditDialog(QStandardItem *item, Workspace *workspace)
    : ServerForm({"ServerOneNetMQTTEditDialog",
                  QT_TRANSLATE_NOOP("ServerOneNetMQTTEditDialog", "Edit Server"),
                  QT_TRANSLATE_NOOP("ServerOneNetMQTTEditDialog",
                                    "The Server OneNetMQTT '%1' is saved successfully.")},
                 cloudFields(), item, workspace)
{
    ServerFields::lockProtocol(fields());
    begin();
}

#include "servers/serveropcuaeditdialog.h"

#include "model/itemroles.h"
#include "servers/serverfields.h"

#include <QComboBox>

namespace {

QVector<Field> opcUaFields()
{
    return ServerFields::identity(QStringLiteral("OpcUaServer")) + ServerFields::port()
        + QVector<Field>{{"anonymous",
                          QT_TRANSLATE_NOOP("ServerOPCUAEditDialog", "Anonymous:"),
                          FieldKind::List,
                          serverAnonymousRole,
                          FieldCheck::None,
                          {QStringLiteral("true"), QStringLiteral("false")},
                          nullptr,
                          "false"}}
    + ServerFields::credentials();
}

} // namespace

ServerOPCUAEditDialog::ServerOPCUAEditDialog(QStandardItem *item, Workspace *workspace)
    : ServerForm({"ServerOPCUAEditDialog", QT_TRANSLATE_NOOP("ServerOPCUAEditDialog", "Edit Server"),
                  QT_TRANSLATE_NOOP("ServerOPCUAEditDialog", "The Server OpcUa '%1' is saved successfully."),
                  FieldTable::Unknown::Keep},
                 opcUaFields(), item, workspace)
{
    ServerFields::lockProtocol(fields());
    begin();
}

// On purpose: "Anonymous:" loses its entries altogether, where the lists of other forms go to their first
// one.
void ServerOPCUAEditDialog::clearData()
{
    ServerForm::clearData();
    fields().comboBox(QStringLiteral("anonymous"))->clear();
}

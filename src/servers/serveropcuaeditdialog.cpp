#include "servers/serveropcuaeditdialog.h"

#include "definitions/protocols.h"
#include "model/itemroles.h"
#include "servers/serverfields.h"

#include <QComboBox>

ServerOPCUAEditDialog::ServerOPCUAEditDialog(QStandardItem *item, Workspace *workspace)
    : ServerForm({staticMetaObject.className(),
                  QT_TRANSLATE_NOOP("ServerOPCUAEditDialog", "The Server OpcUa '%1' is saved successfully.")},
                 item, workspace)
{
    setWindowTitle(tr("Edit Server"));
    fields().keepUnknownOnRefill();
    ServerFields::addIdentity(fields(), Protocols::opcUaServer);
    ServerFields::addPort(fields());
    m_anonymous = fields()
                      .add<ListField>(serverAnonymousRole, tr("Anonymous:"))
                      ->entries("true false")
                      ->fallback("false");
    ServerFields::addUserName(fields());
    ServerFields::addPassword(fields())->password();
    setParts({&fields()});
}

// Compat: "Anonymous:" loses its entries, where the lists of other forms go to their first one.
void ServerOPCUAEditDialog::clearData()
{
    ServerForm::clearData();
    m_anonymous->list()->clear();
}

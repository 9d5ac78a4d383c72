#include "standards/standardopcuaeditdialog.h"

#include "definitions/protocols.h"
#include "forms/certificatefield.h"
#include "model/itemroles.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>

standardOPCUAEditDialog::standardOPCUAEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent)
    : StandardTableForm(
        {staticMetaObject.className(),
         QT_TRANSLATE_NOOP("standardOPCUAEditDialog", "The Standard OpcUa '%1' is saved successfully.")},
        Protocols::opcUa, ParameterVariant::opcUa(), item, workspace, parent)
{
    using CertificateKind = CertificateField::Kind;
    addConnection();
    QWidget *page = fieldLayout()->parentWidget();
    auto *certificate = new CertificateField(staticMetaObject.className(), CertificateKind::Certificate,
                                             Definitions::Kind::Standard, standardCertificatePathRole,
                                             standardCertificateRole, page);
    fieldLayout()->addRow(certificate->makeLabel(tr("Certificate:")), certificate);
    auto *key =
        new CertificateField(staticMetaObject.className(), CertificateKind::Key, Definitions::Kind::Standard,
                             standardPrivateKeyPathRole, standardPrivateKeyRole, page);
    fieldLayout()->addRow(key->makeLabel(tr("Private Key:")), key);
    addTable();
    setParts({certificate, key});
}

void standardOPCUAEditDialog::addConnection()
{
    fields().add<TextField>(standardUrlRole, tr("URL:"));
    fields()
        .add<ListField>(standardSecurityPolicyRole, tr("Security Policy:"))
        ->entries("None Basic128Rsa15 Basic256 Basic256Sha256 Aes128_Sha256_RsaOaep Aes256_Sha256_RsaPss");
    fields()
        .add<ListField>(standardMessageSecurityModeRole, tr("Message Mode:"))
        ->entries("None Sign SignAndEncrypt");
    m_authentication = fields()
                           .add<ListField>(standardAuthenticationRole, tr("Authentication:"))
                           ->entries({translated(QT_TRANSLATE_NOOP("StandardAuthentication", "anonymous")),
                                      translated(QT_TRANSLATE_NOOP("StandardAuthentication",
                                                                   "Username and password verification"))});
    m_username = fields().add<TextField>(standardUsernameRole, tr("User Name:"));
    m_password = fields().add<TextField>(standardPasswordRole, tr("Password:"))->password();
    connect(m_authentication->list(), qOverload<int>(&QComboBox::currentIndexChanged), this,
            &standardOPCUAEditDialog::updateUserVisibility);
    updateUserVisibility();
}

void standardOPCUAEditDialog::updateUserVisibility()
{
    const bool named = m_authentication->list()->currentIndex() > 0;
    m_username->setVisible(named);
    m_password->setVisible(named);
}

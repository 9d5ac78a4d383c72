#include "standards/standardopcuaeditdialog.h"

#include "forms/certificatefield.h"
#include "forms/formpage.h"
#include "model/itemroles.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>

namespace {

constexpr char context[] = "standardOPCUAEditDialog";

QVector<Field> connectionFields()
{
    const auto list = [](const char *name, const char *label, int role, const QStringList &entries) {
        return Field{name, label, FieldKind::List, role, FieldCheck::None, entries};
    };
    return {
        {"url", QT_TRANSLATE_NOOP("standardOPCUAEditDialog", "URL:"), FieldKind::Text, standardUrlRole},
        // The words of the protocol, which are data.
        list("securityPolicy", QT_TRANSLATE_NOOP("standardOPCUAEditDialog", "Security Policy:"),
             standardSecurityPolicyRole,
             {QStringLiteral("None"), QStringLiteral("Basic128Rsa15"), QStringLiteral("Basic256"),
              QStringLiteral("Basic256Sha256"), QStringLiteral("Aes128_Sha256_RsaOaep"),
              QStringLiteral("Aes256_Sha256_RsaPss")}),
        list("messageSecurityMode", QT_TRANSLATE_NOOP("standardOPCUAEditDialog", "Message Mode:"),
             standardMessageSecurityModeRole,
             {QStringLiteral("None"), QStringLiteral("Sign"), QStringLiteral("SignAndEncrypt")}),
        list("authentication", QT_TRANSLATE_NOOP("standardOPCUAEditDialog", "Authentication:"),
             standardAuthenticationRole,
             {QT_TRANSLATE_NOOP("StandardAuthentication", "anonymous"),
              QT_TRANSLATE_NOOP("StandardAuthentication", "Username and password verification")}),
        {"username", QT_TRANSLATE_NOOP("standardOPCUAEditDialog", "User Name:"), FieldKind::Text,
         standardUsernameRole},
        {"password", QT_TRANSLATE_NOOP("standardOPCUAEditDialog", "Password:"), FieldKind::Password,
         standardPasswordRole},
    };
}

} // namespace

standardOPCUAEditDialog::standardOPCUAEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent)
    : StandardTableForm(
        {"OpcUA", ParameterVariant::opcUa(),
         QT_TRANSLATE_NOOP("standardOPCUAEditDialog", "The Standard OpcUa '%1' is saved successfully."),
         "standardOPCUAEditDialog: save"},
        connectionFields(), item, workspace, parent)
    , m_certificate(new CertificateField(context, CertificateField::Kind::Certificate,
                                         QStringLiteral("certificate"), standardCertificatePathRole,
                                         standardCertificateRole, fieldLayout()->parentWidget()))
    , m_key(new CertificateField(context, CertificateField::Kind::Key, QStringLiteral("privateKey"),
                                 standardPrivateKeyPathRole, standardPrivateKeyRole,
                                 fieldLayout()->parentWidget()))
{
    fieldLayout()->addRow(m_certificate->makeLabel(tr("Certificate:")), m_certificate);
    fieldLayout()->addRow(m_key->makeLabel(tr("Private Key:")), m_key);
    QWidget *password = connection().widget(QStringLiteral("password"));
    FormPage::orderBehind(password, m_key);
    FormPage::orderBehind(password, m_certificate); // and so before the key
    connect(connection().comboBox(QStringLiteral("authentication")),
            qOverload<int>(&QComboBox::currentIndexChanged), this,
            &standardOPCUAEditDialog::updateUserVisibility);
    begin();
}

void standardOPCUAEditDialog::showItem(QStandardItem *item)
{
    StandardTableForm::showItem(item);
    m_certificate->fill(item);
    m_key->fill(item);
    updateUserVisibility();
}

bool standardOPCUAEditDialog::saveItem(QStandardItem *item)
{
    StandardTableForm::saveItem(item);
    for (CertificateField *field : {m_certificate, m_key}) {
        if (field->save(item)) {
            continue;
        }
        field->erase(item);
        const QPointer<standardOPCUAEditDialog> guard(this);
        field->warnOfOtherPath();
        if (!guard || this->item() != item) {
            return false;
        }
    }
    return true;
}

void standardOPCUAEditDialog::clearData()
{
    StandardTableForm::clearData();
    m_certificate->clear();
    m_key->clear();
}

void standardOPCUAEditDialog::updateUserVisibility()
{
    const bool named = connection().comboBox(QStringLiteral("authentication"))->currentIndex() > 0;
    for (const QString &name : {QStringLiteral("username"), QStringLiteral("password")}) {
        connection().label(name)->setVisible(named);
        connection().widget(name)->setVisible(named);
    }
}

#include "services/serviceiec61850editdialog.h"

#include "model/itemroles.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItem>

namespace {

using Kind = CertificateField::Kind;

constexpr int clients = 10;

const char *const clientLabels[clients] = {
    QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Client Certificate1:"),
    QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Client Certificate2:"),
    QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Client Certificate3:"),
    QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Client Certificate4:"),
    QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Client Certificate5:"),
    QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Client Certificate6:"),
    QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Client Certificate7:"),
    QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Client Certificate8:"),
    QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Client Certificate9:"),
    QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Client Certificate10:"),
};

} // namespace

ServiceIEC61850EditDialog::ServiceIEC61850EditDialog(QStandardItem *item, Workspace *workspace,
                                                     QWidget *parent)
    : DefinitionForm(
        {staticMetaObject.className(),
         // Compat: the message speaks of a Standard.
         QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "The Standard OpcUa '%1' is saved successfully.")},
        item, workspace, parent)
    , m_service(staticMetaObject.className())
    , m_keyPassword(staticMetaObject.className())
    , m_switches(staticMetaObject.className())
    , m_verification(staticMetaObject.className())
{
    setWindowTitle(tr("Edit Service"));
    auto *content = new QWidget(this);
    auto *form = new QFormLayout(content);
    addService(form);
    addSecurity(form);
    addClients(form);
    connect(m_authentication->box(), qOverload<int>(&QComboBox::currentIndexChanged), this,
            &ServiceIEC61850EditDialog::updatePasswordVisibility);
    connect(m_ssl->box(), &QCheckBox::stateChanged, this,
            &ServiceIEC61850EditDialog::updateSSLFieldsVisibility);
    connect(m_verify->box(), &QCheckBox::stateChanged, this,
            &ServiceIEC61850EditDialog::updateIsVerifyClientCertFieldsVisibility);
    updatePasswordVisibility();
    updateSSLFieldsVisibility();

    // Compat: only here, unlike the defaults of other forms, which come with each item that a form shows.
    if (item->data(servicePortRole).toString().isEmpty()) {
        item->setData(QStringLiteral("102"), servicePortRole);
    }
    setContent(content, parts());
    connect(saveButton(), &QPushButton::clicked, this, &ServiceIEC61850EditDialog::saveChanges);
}

void ServiceIEC61850EditDialog::addService(QFormLayout *form)
{
    m_service.setLayout(form);
    m_name = m_service.add<TextField>(Qt::DisplayRole, "name", tr("Service Name:"))->readOnly();
    m_service.add<ListField>(serviceProtocolRole, "protocol", tr("Protocol:"))
        ->entries("IEC61850")
        ->disabled();
    m_port = m_service.add<TextField>(servicePortRole, "port", tr("Port:"))->check(portValidator);
    m_authentication =
        m_service.add<ListField>(serviceAuthenticationRole, "authentication", tr("Authentication:"))
            ->entries({tr("None"), tr("Password")});
    m_password = m_service.add<TextField>(servicePasswordRole, "password", tr("Password:"))
                     ->check(noCjkValidator)
                     ->password();
}

void ServiceIEC61850EditDialog::addSecurity(QFormLayout *form)
{
    m_switches.setLayout(form);
    m_switches
        .add<CheckField>(serviceEnableGoosePublishingRole, "enableGoosePublishing",
                         tr("Enable GoosePublishing:"))
        ->unsetShowsChecked();
    m_ssl = m_switches.add<CheckField>(serviceEnableSslRole, "enableSSL", tr("Enable SSL:"));
    m_own = {
        addCertificate(form, Kind::Certificate, tr("Root Certificate:"), QStringLiteral("rootCertificate"),
                       serviceRootCertificatePathRole, serviceRootCertificateRole),
        addCertificate(form, Kind::Certificate, tr("Server Certificate:"),
                       QStringLiteral("serverCertificate"), serviceServerCertificatePathRole,
                       serviceServerCertificateRole),
        addCertificate(form, Kind::Key, tr("Server Key:"), QStringLiteral("serverKey"),
                       serviceServerKeyPathRole, serviceServerKeyRole),
    };
    m_keyPassword.setLayout(form);
    m_serverKeyPassword =
        m_keyPassword
            .add<TextField>(serviceServerKeyPasswordRole, "serverKeyPassword", tr("Server Key Password:"))
            ->check(noCjkValidator)
            ->password();
    m_verification.setLayout(form);
    m_verify = m_verification.add<CheckField>(serviceIsVerifyClientCertRole, "isVerifyClientCert",
                                              tr("IsVerifyClientCert:"));
}

void ServiceIEC61850EditDialog::addClients(QFormLayout *form)
{
    for (int client = 0; client < clients; ++client) {
        // Each client has two roles, path and content, side by side.
        const int pathRole = serviceClientCertificatePath1Role + 2 * client;
        m_clients.append(addCertificate(form, Kind::Certificate, tr(clientLabels[client]),
                                        QStringLiteral("clientCertificate%1").arg(client + 1), pathRole,
                                        pathRole + 1));
    }
    // Compat: the last client empties the roles of the one before it, a slip of one that stands.
    m_clients.last()->emptyInstead(m_clients.at(clients - 2));
}

CertificateField *ServiceIEC61850EditDialog::addCertificate(QFormLayout *form, Kind kind,
                                                            const QString &label, const QString &name,
                                                            int pathRole, int contentRole)
{
    auto *field = new CertificateField(staticMetaObject.className(), kind, name, pathRole, contentRole,
                                       form->parentWidget());
    form->addRow(field->makeLabel(label), field);
    return field;
}

QVector<FormPart *> ServiceIEC61850EditDialog::parts()
{
    QVector<FormPart *> parts{&m_service, &m_keyPassword, &m_switches};
    for (CertificateField *field : m_own + m_clients) {
        parts.append(field);
    }
    parts.append(&m_verification);
    return parts;
}

void ServiceIEC61850EditDialog::clearData()
{
    for (TextField *field : {m_name, m_port, m_password, m_serverKeyPassword}) {
        field->clear();
    }
    m_authentication->box()->clear();
    m_ssl->box()->setChecked(true); // and off again, so that the dependent fields follow whatever it was
    m_ssl->box()->setChecked(false);
    m_verify->box()->setChecked(false);
}

void ServiceIEC61850EditDialog::updateSSLFieldsVisibility()
{
    const bool ssl = m_ssl->isChecked();
    for (CertificateField *field : qAsConst(m_own)) {
        field->setLive(ssl);
    }
    m_serverKeyPassword->setEnabled(ssl);
    m_authentication->box()->setEnabled(!ssl);
    m_password->setEnabled(!ssl);
    updateIsVerifyClientCertFieldsVisibility();
}

void ServiceIEC61850EditDialog::updateIsVerifyClientCertFieldsVisibility()
{
    const bool verify = m_ssl->isChecked() && m_verify->isChecked();
    for (CertificateField *field : qAsConst(m_clients)) {
        field->setLive(verify);
    }
}

void ServiceIEC61850EditDialog::updatePasswordVisibility()
{
    m_password->setVisible(m_authentication->text() != tr("None"));
}

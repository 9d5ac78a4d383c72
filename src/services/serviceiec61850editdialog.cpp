#include "services/serviceiec61850editdialog.h"

#include "definitions/protocols.h"
#include "model/itemroles.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItem>

#include <algorithm>
#include <iterator>

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
    , m_service(staticMetaObject.className(), Definitions::Kind::Service)
    , m_keyPassword(staticMetaObject.className(), Definitions::Kind::Service)
    , m_switches(staticMetaObject.className(), Definitions::Kind::Service)
    , m_verification(staticMetaObject.className(), Definitions::Kind::Service)
{
    setWindowTitle(tr("Edit Service"));
    auto *content = new QWidget(this);
    auto *form = new QFormLayout(content);
    addService(form);
    addSecurity(form);
    addClients(form);
    connect(m_authentication->list(), qOverload<int>(&QComboBox::currentIndexChanged), this,
            &ServiceIEC61850EditDialog::updatePasswordVisibility);
    connect(m_ssl->check(), &QCheckBox::stateChanged, this,
            &ServiceIEC61850EditDialog::updateSSLFieldsVisibility);
    connect(m_verify->check(), &QCheckBox::stateChanged, this,
            &ServiceIEC61850EditDialog::updateIsVerifyClientCertFieldsVisibility);
    updatePasswordVisibility();
    updateSSLFieldsVisibility();

    setContent(content, parts());
    connect(saveButton(), &QPushButton::clicked, this, &ServiceIEC61850EditDialog::saveChanges);
}

void ServiceIEC61850EditDialog::addService(QFormLayout *form)
{
    // Compat: only the item that the form opens with, unlike the defaults of other forms, which come with
    // each item that a form shows.
    m_service.keepEmptyOnRefill();
    m_service.setLayout(form);
    m_name = m_service.add<TextField>(Qt::DisplayRole, "name", tr("Service Name:"))->readOnly();
    m_service.add<ListField>(serviceProtocolRole, tr("Protocol:"))
        ->entries({Protocols::iec61850})
        ->disabled();
    m_port = m_service.add<TextField>(servicePortRole, tr("Port:"))->check(portValidator);
    m_authentication = m_service.add<ListField>(serviceAuthenticationRole, tr("Authentication:"))
                           ->entries({tr("None"), tr("Password")});
    m_password =
        m_service.add<TextField>(servicePasswordRole, tr("Password:"))->check(noCjkValidator)->password();
}

void ServiceIEC61850EditDialog::addSecurity(QFormLayout *form)
{
    m_switches.setLayout(form);
    m_switches.add<CheckField>(serviceEnableGoosePublishingRole, tr("Enable GoosePublishing:"))
        ->unsetShowsChecked();
    m_ssl = m_switches.add<CheckField>(serviceEnableSslRole, tr("Enable SSL:"));
    m_own = {
        addCertificate(form, Kind::Certificate, tr("Root Certificate:"), serviceRootCertificatePathRole,
                       serviceRootCertificateRole),
        addCertificate(form, Kind::Certificate, tr("Server Certificate:"), serviceServerCertificatePathRole,
                       serviceServerCertificateRole),
        addCertificate(form, Kind::Key, tr("Server Key:"), serviceServerKeyPathRole, serviceServerKeyRole),
    };
    m_keyPassword.setLayout(form);
    m_serverKeyPassword =
        m_keyPassword.add<TextField>(serviceServerKeyPasswordRole, tr("Server Key Password:"))
            ->check(noCjkValidator)
            ->password();
    m_verification.setLayout(form);
    m_verify = m_verification.add<CheckField>(serviceIsVerifyClientCertRole, tr("IsVerifyClientCert:"));
}

void ServiceIEC61850EditDialog::addClients(QFormLayout *form)
{
    for (int client = 0; client < clients; ++client) {
        // Each client has two roles, path and content, side by side.
        const int pathRole = serviceClientCertificatePath1Role + 2 * client;
        m_clients.append(
            addCertificate(form, Kind::Certificate, tr(clientLabels[client]), pathRole, pathRole + 1));
    }
    // Compat: the last client empties the roles of the one before it.
    m_clients.last()->emptyInstead(m_clients.at(clients - 2));
}

CertificateField *ServiceIEC61850EditDialog::addCertificate(QFormLayout *form, Kind kind,
                                                            const QString &label, int pathRole,
                                                            int contentRole)
{
    auto *field = new CertificateField(staticMetaObject.className(), kind, Definitions::Kind::Service,
                                       pathRole, contentRole, form->parentWidget());
    form->addRow(field->makeLabel(label), field);
    return field;
}

QVector<FormPart *> ServiceIEC61850EditDialog::parts()
{
    QVector<FormPart *> parts{&m_service, &m_keyPassword, &m_switches};
    for (const auto *fields : {&m_own, &m_clients}) {
        std::copy(fields->begin(), fields->end(), std::back_inserter(parts));
    }
    parts.append(&m_verification);
    return parts;
}

void ServiceIEC61850EditDialog::clearData()
{
    for (TextField *field : {m_name, m_port, m_password, m_serverKeyPassword}) {
        field->clear();
    }
    m_authentication->list()->clear();
    m_ssl->check()->setChecked(true); // and off again, so that the dependent fields follow whatever it was
    m_ssl->check()->setChecked(false);
    m_verify->check()->setChecked(false);
}

void ServiceIEC61850EditDialog::updateSSLFieldsVisibility()
{
    const bool ssl = m_ssl->isChecked();
    for (CertificateField *field : qAsConst(m_own)) {
        field->setLive(ssl);
    }
    m_serverKeyPassword->setEnabled(ssl);
    m_authentication->list()->setEnabled(!ssl);
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

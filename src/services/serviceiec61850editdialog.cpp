#include "services/serviceiec61850editdialog.h"

#include "forms/certificatefield.h"
#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/itemroles.h"
#include "model/workspace.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItem>

namespace {

constexpr char context[] = "ServiceIEC61850EditDialog";
constexpr int clients = 10;
constexpr int firstClient = 3; // behind the root certificate, the server certificate and the server key
constexpr int lastClient = firstClient + clients - 1;

QVector<Field> serviceFields()
{
    return {
        {"name", QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Service Name:"), FieldKind::ReadOnly,
         Qt::DisplayRole},
        {"protocol",
         QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Protocol:"),
         FieldKind::List,
         serviceProtocolRole,
         FieldCheck::None,
         {QStringLiteral("IEC61850")}},
        {"port", QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Port:"), FieldKind::Text, servicePortRole,
         FieldCheck::Port},
        {"authentication",
         QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Authentication:"),
         FieldKind::List,
         serviceAuthenticationRole,
         FieldCheck::None,
         {QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "None"),
          QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Password")}},
        {"password", QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Password:"), FieldKind::Password,
         servicePasswordRole, FieldCheck::NoCjk},
    };
}

QVector<Field> switchFields()
{
    return {
        {"enableGoosePublishing", QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Enable GoosePublishing:"),
         FieldKind::Check, serviceEnableGoosePublishingRole},
        {"enableSSL", QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Enable SSL:"), FieldKind::Check,
         serviceEnableSslRole},
    };
}

QVector<Field> securityFields()
{
    return {
        {"serverKeyPassword", QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "Server Key Password:"),
         FieldKind::Password, serviceServerKeyPasswordRole, FieldCheck::NoCjk},
        {"isVerifyClientCert", QT_TRANSLATE_NOOP("ServiceIEC61850EditDialog", "IsVerifyClientCert:"),
         FieldKind::Check, serviceIsVerifyClientCertRole},
    };
}

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

QCheckBox *checkBox(const FieldTable &table, const char *name)
{
    return qobject_cast<QCheckBox *>(table.widget(QLatin1String(name)));
}

} // namespace

ServiceIEC61850EditDialog::ServiceIEC61850EditDialog(QStandardItem *item, Workspace *workspace,
                                                     QWidget *parent)
    : EditForm(parent)
    , m_item(item)
    , m_workspace(workspace)
    , m_service(context, serviceFields())
    , m_switches(context, switchFields())
    , m_security(context, securityFields())
{
    setWindowTitle(tr("Edit Service"));
    auto *content = new QWidget(this);
    buildFields(new QFormLayout(content));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(FormPage::scrollArea(content, this));
    const FormPage::Buttons buttons = FormPage::appendButtons(layout, tr("Save"), tr("Cancel"));
    connect(buttons.save, &QPushButton::clicked, this, &ServiceIEC61850EditDialog::saveChanges);
    connect(buttons.cancel, &QPushButton::clicked, this, &ServiceIEC61850EditDialog::rejected);

    if (m_item.item()->data(servicePortRole).toString().isEmpty()) {
        m_item.item()->setData(QStringLiteral("102"), servicePortRole);
    }
    fill();
    connect(m_service.comboBox(QStringLiteral("authentication")),
            qOverload<int>(&QComboBox::currentIndexChanged), this,
            &ServiceIEC61850EditDialog::updatePasswordVisibility);
    connect(checkBox(m_switches, "enableSSL"), &QCheckBox::stateChanged, this,
            &ServiceIEC61850EditDialog::updateSSLFieldsVisibility);
    connect(checkBox(m_security, "isVerifyClientCert"), &QCheckBox::stateChanged, this,
            &ServiceIEC61850EditDialog::updateIsVerifyClientCertFieldsVisibility);
    logToFile(QStringLiteral("ServiceIEC61850EditDialog: new-nuilt"));
}

ServiceIEC61850EditDialog::~ServiceIEC61850EditDialog()
{
    logToFile(QStringLiteral("ServiceIEC61850EditDialog: destroyed"));
}

void ServiceIEC61850EditDialog::replaceItem(QStandardItem *item)
{
    m_item = ItemRef(item);
    fill();
    // On purpose the role of a Standard: it is unset on a Service, so that the one entry stays selected.
    m_service.setText(QStringLiteral("protocol"), m_item.item()->data(standardProtocolRole).toString());
    logToFile(QStringLiteral("ServiceIEC61850EditDialog: replace"));
}

void ServiceIEC61850EditDialog::saveChanges()
{
    QStandardItem *item = m_item.item();
    if (!item) {
        return; // its node has left the tree: there is nothing to write into
    }
    m_service.save(item);
    item->setData(m_security.value(QStringLiteral("serverKeyPassword")), serviceServerKeyPasswordRole);
    m_switches.save(item);
    for (int index = 0; index < m_certificates.size(); ++index) {
        if (!saveCertificate(index, item)) {
            return;
        }
    }
    item->setData(m_security.value(QStringLiteral("isVerifyClientCert")), serviceIsVerifyClientCertRole);
    if (m_workspace) {
        // The wording names another kind on purpose: it is the message that users of this form know.
        m_workspace->appendMessage(
            tr("The Standard OpcUa '%1' is saved successfully.").arg(m_service.text(QStringLiteral("name"))));
    }
    logToFile(QStringLiteral("ServiceIEC61850EditDialog: save"));
}

void ServiceIEC61850EditDialog::clearData()
{
    for (const char *name : {"name", "port", "password"}) {
        m_service.lineEdit(QLatin1String(name))->clear();
    }
    m_security.lineEdit(QStringLiteral("serverKeyPassword"))->clear();
    m_service.comboBox(QStringLiteral("authentication"))->clear();
    QCheckBox *ssl = checkBox(m_switches, "enableSSL");
    ssl->setChecked(true); // and off again, so that the dependent fields follow whatever it was
    ssl->setChecked(false);
    checkBox(m_security, "isVerifyClientCert")->setChecked(false);
}

void ServiceIEC61850EditDialog::updateSSLFieldsVisibility()
{
    const bool ssl = checkBox(m_switches, "enableSSL")->isChecked();
    const auto enable = [](const FieldTable &table, const QString &name, bool on) {
        table.label(name)->setEnabled(on);
        table.widget(name)->setEnabled(on);
    };
    for (int index = 0; index < firstClient; ++index) {
        m_certificates.at(index)->setLive(ssl);
    }
    enable(m_security, QStringLiteral("serverKeyPassword"), ssl);
    m_service.widget(QStringLiteral("authentication"))->setEnabled(!ssl);
    enable(m_service, QStringLiteral("password"), !ssl);
    updateIsVerifyClientCertFieldsVisibility();
}

void ServiceIEC61850EditDialog::updateIsVerifyClientCertFieldsVisibility()
{
    const bool verify = checkBox(m_switches, "enableSSL")->isChecked()
        && checkBox(m_security, "isVerifyClientCert")->isChecked();
    for (int index = firstClient; index < m_certificates.size(); ++index) {
        m_certificates.at(index)->setLive(verify);
    }
}

void ServiceIEC61850EditDialog::buildFields(QFormLayout *form)
{
    using Kind = CertificateField::Kind;
    QWidget *parent = form->parentWidget();
    m_service.build(form);
    m_switches.build(form);
    m_service.widget(QStringLiteral("protocol"))->setEnabled(false);
    addCertificate(form, tr("Root Certificate:"),
                   new CertificateField(context, Kind::Certificate, QStringLiteral("rootCertificate"),
                                        serviceRootCertificatePathRole, serviceRootCertificateRole, parent));
    addCertificate(form, tr("Server Certificate:"),
                   new CertificateField(context, Kind::Certificate, QStringLiteral("serverCertificate"),
                                        serviceServerCertificatePathRole, serviceServerCertificateRole,
                                        parent));
    addCertificate(form, tr("Server Key:"),
                   new CertificateField(context, Kind::Key, QStringLiteral("serverKey"),
                                        serviceServerKeyPathRole, serviceServerKeyRole, parent));
    m_security.build(form);
    for (int client = 0; client < clients; ++client) {
        // Each client has two roles, path and content, side by side.
        const int pathRole = serviceClientCertificatePath1Role + 2 * client;
        addCertificate(form, tr(clientLabels[client]),
                       new CertificateField(context, Kind::Certificate,
                                            QStringLiteral("clientCertificate%1").arg(client + 1), pathRole,
                                            pathRole + 1, parent));
    }
}

void ServiceIEC61850EditDialog::addCertificate(QFormLayout *form, const QString &label,
                                               CertificateField *field)
{
    form->addRow(field->makeLabel(label), field);
    m_certificates.append(field);
}

void ServiceIEC61850EditDialog::fill()
{
    m_service.fill(m_item.item());
    m_switches.fill(m_item.item());
    if (!m_item.item()->data(serviceEnableGoosePublishingRole).isValid()) {
        checkBox(m_switches, "enableGoosePublishing")->setChecked(true);
    }
    m_security.fill(m_item.item());
    for (CertificateField *field : qAsConst(m_certificates)) {
        field->fill(m_item.item());
    }
    updatePasswordVisibility();
    updateSSLFieldsVisibility();
}

void ServiceIEC61850EditDialog::updatePasswordVisibility()
{
    const bool visible = m_service.text(QStringLiteral("authentication")) != tr("None");
    m_service.label(QStringLiteral("password"))->setVisible(visible);
    m_service.widget(QStringLiteral("password"))->setVisible(visible);
}

bool ServiceIEC61850EditDialog::saveCertificate(int index, QStandardItem *item)
{
    if (m_certificates.at(index)->save(item)) {
        return true;
    }
    const QPointer<ServiceIEC61850EditDialog> guard(this);
    m_certificates.at(index)->warnOfOtherPath();
    if (!guard || m_item.item() != item) {
        return false;
    }
    // The last client empties the roles of the one before it: a slip of one that stands, on purpose.
    m_certificates.at(index == lastClient ? index - 1 : index)->erase(item);
    return true;
}

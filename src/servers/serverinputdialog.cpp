#include "servers/serverinputdialog.h"

#include "definitions/serverprotocols.h"
#include "forms/formpage.h"
#include "log/activitylog.h"
#include "widgets/tell.h"

#include <QFormLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr char context[] = "ServerInputDialog";

} // namespace

ServerInputDialog::ServerInputDialog(QWidget *parent)
    : QDialog(parent)
    , m_fields(context, Definitions::Kind::Server)
{
    setWindowTitle(tr("Add Server"));
    setWindowIcon(QIcon(QStringLiteral(":/adsdemo/images/Server.svg")));
    resize(420, 260);

    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    fillForm(form);
    layout->addStretch();
    const QPushButton *ok = FormPage::appendDialogButtons(layout, tr("OK"), tr("Cancel"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    connect(m_protocol->list(), &QComboBox::currentTextChanged, this,
            &ServerInputDialog::updateProtocolOptions);
    QMetaObject::invokeMethod(this, "updateProtocolOptions", Qt::QueuedConnection,
                              Q_ARG(QString, m_protocol->text()));
    logToFile(QStringLiteral("ServerInputDialog: new-nuilt"));
}

ServerInputDialog::~ServerInputDialog()
{
    logToFile(QStringLiteral("ServerInputDialog: destroyed"));
}

void ServerInputDialog::fillForm(QFormLayout *form)
{
    constexpr int none = FormField::noRole;
    m_fields.setLayout(form);
    m_name = m_fields.add<TextField>(none, "name", tr("Server Name:"));
    m_description = m_fields.add<TextField>(none, "description", tr("Description:"));
    m_protocol = m_fields.add<ListField>(none, "protocol", tr("Protocol:"));
    for (const ServerProtocol &protocol : ServerProtocols::all()) {
        m_protocol->list()->addItem(protocol.shownName(context), protocol.key);
    }
    m_ip = m_fields.add<TextField>(none, "ip", tr("IP Address:"))->check(hostNameValidator);
    m_port = m_fields.add<TextField>(none, "port", tr("Port:"))->check(portValidator);
    // The one field of two labels, of which at most one is shown.
    auto *localPort = new QLabel(tr("Local port number:"), this);
    localPort->setBuddy(m_port->edit());
    form->removeWidget(m_port->label());
    auto *portLabels = new QHBoxLayout;
    portLabels->addWidget(m_port->label());
    portLabels->addWidget(localPort);
    form->setLayout(form->rowCount() - 1, QFormLayout::LabelRole, portLabels);
    auto *slaveNote = new QLabel(tr("ModbusTCP slave"), this);
    form->addRow(slaveNote);
    m_domain = m_fields.add<TextField>(none, "domainName", tr("Domain Name:"))->check(hostNameValidator);

    m_options = {
        {ServerProtocol::Address, m_ip->label()},   {ServerProtocol::Address, m_ip->edit()},
        {ServerProtocol::Port, m_port->label()},    {ServerProtocol::LocalPort, localPort},
        {ServerProtocol::SlaveNote, slaveNote},     {ServerProtocol::Domain, m_domain->label()},
        {ServerProtocol::Domain, m_domain->edit()},
    };
}

void ServerInputDialog::updateProtocolOptions(const QString &protocol)
{
    const QVector<ServerProtocol> &all = ServerProtocols::all();
    const auto chosen = std::find_if(all.begin(), all.end(), [&](const ServerProtocol &each) {
        return each.shownName(context) == protocol;
    });
    const unsigned shown = chosen == all.end() ? 0 : chosen->shown;
    for (const Option &option : qAsConst(m_options)) {
        option.widget->setVisible((option.input & shown) != 0);
    }
    if (chosen == all.end()) {
        return;
    }
    if (chosen->isSingle && m_existingProtocols.contains(chosen->key)) {
        Tell::warning(this, tr("Warning"),
                      tr("A ModbusTCP(Slave) file already exists. You cannot create another one."));
        m_protocol->list()->setCurrentIndex(0);
        return;
    }
    m_port->setText(QLatin1String(chosen->port));
    if (chosen->domain) {
        m_domain->setText(QLatin1String(chosen->domain));
    }
}

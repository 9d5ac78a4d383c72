#include "servers/serverinputdialog.h"

#include "definitions/serverprotocols.h"
#include "forms/formpage.h"
#include "forms/validators.h"
#include "log/activitylog.h"
#include "widgets/combobox.h"
#include "widgets/tell.h"

#include <QComboBox>
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
    , m_name(makeEdit("name"))
    , m_description(makeEdit("description"))
    , m_protocol(new ComboBox(this))
    , m_ip(makeEdit("ip", hostNameValidator(this)))
    , m_port(makeEdit("port", portValidator(this)))
    , m_domain(makeEdit("domainName", hostNameValidator(this)))
{
    setWindowTitle(tr("Add Server"));
    setWindowIcon(QIcon(QStringLiteral(":/adsdemo/images/Server.svg")));
    resize(420, 260);
    m_protocol->setObjectName(QStringLiteral("protocol"));
    for (const ServerProtocol &protocol : ServerProtocols::all()) {
        m_protocol->addItem(protocol.shownName(context), protocol.key);
    }

    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    fillForm(form);
    layout->addStretch();
    const QPushButton *ok = FormPage::appendDialogButtons(layout, tr("OK"), tr("Cancel"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    connect(m_protocol, &QComboBox::currentTextChanged, this, &ServerInputDialog::updateProtocolOptions);
    QMetaObject::invokeMethod(this, "updateProtocolOptions", Qt::QueuedConnection,
                              Q_ARG(QString, m_protocol->itemText(0)));
    logToFile(QStringLiteral("ServerInputDialog: new-nuilt"));
}

ServerInputDialog::~ServerInputDialog()
{
    logToFile(QStringLiteral("ServerInputDialog: destroyed"));
}

QLineEdit *ServerInputDialog::makeEdit(const char *name, QValidator *validator)
{
    auto *edit = new QLineEdit(this);
    edit->setObjectName(QLatin1String(name));
    edit->setValidator(validator);
    return edit;
}

void ServerInputDialog::fillForm(QFormLayout *form)
{
    const auto label = [this](const QString &text, QWidget *buddy) {
        auto *made = new QLabel(text, this);
        made->setBuddy(buddy);
        return made;
    };
    QLabel *ipLabel = label(tr("IP Address:"), m_ip);
    QLabel *portLabel = label(tr("Port:"), m_port);
    QLabel *localPortLabel = label(tr("Local port number:"), m_port);
    QLabel *slaveNote = label(tr("ModbusTCP slave"), nullptr);
    QLabel *domainLabel = label(tr("Domain Name:"), m_domain);

    form->addRow(label(tr("Server Name:"), m_name), m_name);
    form->addRow(label(tr("Description:"), m_description), m_description);
    form->addRow(label(tr("Protocol:"), m_protocol), m_protocol);
    form->addRow(ipLabel, m_ip);
    // The one field of two labels, of which at most one is shown.
    auto *portLabels = new QHBoxLayout;
    portLabels->addWidget(portLabel);
    portLabels->addWidget(localPortLabel);
    const int portRow = form->rowCount();
    form->setLayout(portRow, QFormLayout::LabelRole, portLabels);
    form->setWidget(portRow, QFormLayout::FieldRole, m_port);
    form->addRow(slaveNote);
    form->addRow(domainLabel, m_domain);

    m_options = {
        {ServerProtocol::Address, ipLabel},     {ServerProtocol::Address, m_ip},
        {ServerProtocol::Port, portLabel},      {ServerProtocol::LocalPort, localPortLabel},
        {ServerProtocol::SlaveNote, slaveNote}, {ServerProtocol::Domain, domainLabel},
        {ServerProtocol::Domain, m_domain},
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
        m_protocol->setCurrentIndex(0);
        return;
    }
    m_port->setText(QLatin1String(chosen->port));
    if (chosen->domain) {
        m_domain->setText(QLatin1String(chosen->domain));
    }
}

QString ServerInputDialog::name() const
{
    return m_name->text();
}

QString ServerInputDialog::description() const
{
    return m_description->text();
}

QString ServerInputDialog::protocol() const
{
    return m_protocol->currentData().toString();
}

QString ServerInputDialog::ip() const
{
    return m_ip->text();
}

QString ServerInputDialog::port() const
{
    return m_port->text();
}

QString ServerInputDialog::domain() const
{
    return m_domain->text();
}

#include "boxes/boxeditdialog.h"

#include "boxes/boxcommonpage.h"
#include "boxes/boxgroups.h"
#include "boxes/hostaddressdialog.h"
#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/workspace.h"
#include "widgets/tell.h"

#include <QComboBox>
#include <QDateTime>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int clockInterval = 1000; // ms

} // namespace

BoxEditDialog::BoxEditDialog(QStandardItem *item, Workspace *workspace)
    : m_item(item)
    , m_workspace(workspace)
    , m_hostAddress(FileTransfer::anyAddress())
    , m_fields("BoxEditDialog")
{
    setWindowTitle(tr("Edit Box"));
    resize(480, 460);
    buildForm();
    m_fields.fill(item, FieldTable::Unknown::Keep);
    // On purpose, whatever the item holds, and only here: a Box form opens with LTE on.
    m_fields.setText(QStringLiteral("lteOnOff"), QStringLiteral("on"));

    // The first session comes up without a local address, so there is nothing to bind.
    m_protocol = new Protocol(this);
    m_protocol->openConnection(m_fields.text(QStringLiteral("ip")));
    listenTo(m_protocol);
    startClock();
    logToFile(QStringLiteral("BoxEditDialog: new-nuilt"));
}

BoxEditDialog::~BoxEditDialog()
{
    endSession();
    logToFile(QStringLiteral("BoxEditDialog: destroyed"));
}

QLineEdit *BoxEditDialog::nameEdit() const
{
    return m_fields.lineEdit(QStringLiteral("name"));
}

void BoxEditDialog::buildForm()
{
    auto *layout = new QVBoxLayout(this);
    auto *head = new QFormLayout;
    layout->addLayout(head);
    m_fields.append(BoxGroups::head());
    m_fields.build(head);
    m_fields.append(BoxGroups::model());
    m_fields.buildUnseen(this);
    m_fields.comboBox(QStringLiteral("model"))->setEnabled(false);

    layout->addWidget(FormPage::scrollArea(buildPages(), this));
    const FormPage::Buttons buttons = FormPage::appendButtons(layout, tr("Save"), tr("Cancel"));
    m_saveButton = buttons.save;
    // The session ends before whoever hears the rejection closes the form.
    connect(buttons.cancel, &QPushButton::clicked, this, &BoxEditDialog::disconnectFromServer);
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::rejected);
}

QTabWidget *BoxEditDialog::buildPages()
{
    auto *tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("pages"));
    const BoxCommonPage common = BoxCommonPage::build(this);
    m_status = common.status;
    m_version = common.version;
    m_progress = common.progress;
    tabs->addTab(common.widget, tr("Commonly"));
    const QVector<BoxGroup> groups = BoxGroups::groups();
    for (const BoxGroup &group : groups) {
        QWidget *page = buildGroupPage(group);
        if (group.title) {
            tabs->addTab(page, tr(group.title));
        } else {
            page->hide();
        }
    }
    return tabs;
}

QWidget *BoxEditDialog::buildGroupPage(const BoxGroup &group)
{
    auto *page = new QWidget(this);
    auto *layout = new QFormLayout(page);
    m_fields.append(group.fields);
    m_fields.build(layout);

    const QString name = QString::fromLatin1(group.name);
    QPushButton *read = FormPage::button(tr("Read"), QStringLiteral(":/adsdemo/images/read.svg"), page);
    QPushButton *write = FormPage::button(tr("Write"), QStringLiteral(":/adsdemo/images/write.svg"), page);
    read->setObjectName(name + QLatin1String("ReadButton"));
    write->setObjectName(name + QLatin1String("WriteButton"));
    connect(read, &QPushButton::clicked, this, group.read);
    connect(write, &QPushButton::clicked, this, group.write);
    auto *row = new QHBoxLayout;
    row->addWidget(read);
    row->addWidget(write);
    layout->addRow(row);
    return page;
}

void BoxEditDialog::startClock()
{
    auto *clock = new QTimer(this);
    connect(clock, &QTimer::timeout, this, [this] {
        m_fields.setText(QStringLiteral("localTime"),
                         QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    });
    clock->start(clockInterval);
}

void BoxEditDialog::saveChanges()
{
    QStandardItem *item = m_item.item();
    if (!item) {
        return;
    }
    m_fields.save(item);
    appendMessage(tr("The box '%1' is saved successfully.").arg(nameEdit()->text()));
    logToFile(QStringLiteral("BoxEditDialog: save"));
}

void BoxEditDialog::replaceItem(QStandardItem *item)
{
    m_item = ItemRef(item);
    m_fields.fill(item, FieldTable::Unknown::Keep);
    logToFile(QStringLiteral("BoxEditDialog: replace"));
}

void BoxEditDialog::clearData()
{
    m_fields.clear();
}

void BoxEditDialog::connectToServer()
{
    const QPointer<BoxEditDialog> alive(this);
    disconnectFromServer();
    if (!alive || m_protocol) {
        return; // who heard of the end has closed the form or connected it already
    }
    m_protocol = new Protocol(this);
    listenTo(m_protocol);
    if (m_hostAddress != FileTransfer::anyAddress()) {
        m_protocol->bindToAddress(QHostAddress(m_hostAddress));
    }
    m_protocol->connectToBox(m_fields.text(QStringLiteral("ip")));
    logToFile(QStringLiteral("BoxEditDialog: connect"));
}

void BoxEditDialog::disconnectFromServer()
{
    if (!m_protocol) {
        return;
    }
    const QPointer<BoxEditDialog> alive(this);
    endSession();
    if (!alive) {
        return;
    }
    m_status->setText(tr("Connection status: Not connected"));
    logToFile(QStringLiteral("BoxEditDialog: disconnect"));
}

void BoxEditDialog::endSession()
{
    // It may be on the stack below a message box, so it is not for this form to delete it. Who hears of its
    // end may delete the form.
    if (Protocol *session = std::exchange(m_protocol, nullptr)) {
        session->dispose();
    }
}

void BoxEditDialog::listenTo(const Protocol *session)
{
    connect(session, &Protocol::connectionStatusChanged, m_status, &QLabel::setText);
    connect(session, &Protocol::versionReceived, this, &BoxEditDialog::showVersion);
    connect(session, &Protocol::offlineOccurred, this, &BoxEditDialog::tellOffline);
    connect(session, &Protocol::dataReceived, this, &BoxEditDialog::passData);
    connect(session, &Protocol::lanAllocationDataReceived, this, &BoxEditDialog::showLan);
    connect(session, &Protocol::wanAllocationDataReceived, this, &BoxEditDialog::showWan);
    connect(session, &Protocol::wifiAllocationDataReceived, this, &BoxEditDialog::showWifi);
    connect(session, &Protocol::lteAllocationDataReceived, this, &BoxEditDialog::showLte);
    connect(session, &Protocol::NTPAllocationDataReceived, this, &BoxEditDialog::showNtp);
    connect(session, &Protocol::timeAllocationDataReceived, this, &BoxEditDialog::showTime);
}

void BoxEditDialog::showChangeHostAddressDialog()
{
    auto *dialog = new HostAddressDialog(m_hostAddress, this);
    connect(dialog, &HostAddressDialog::chosen, this, &BoxEditDialog::useHostAddress);
    warnOfBindingFailure();
    dialog->exec();
}

void BoxEditDialog::useHostAddress(const QString &address)
{
    m_hostAddress = address;
    appendMessage(address == FileTransfer::anyAddress() ? tr("Selected address: 0.0.0.0 (No binding)")
                                                        : tr("Selected host address: %1").arg(address));
    connectToServer();
}

// Reaches the session of this moment only, on purpose: the one that "OK" starts has no one listening.
void BoxEditDialog::warnOfBindingFailure()
{
    if (!m_protocol) {
        return;
    }
    disconnect(m_protocol, &Protocol::bindingFailed, nullptr, nullptr);
    connect(
        m_protocol, &Protocol::bindingFailed, m_protocol,
        [form = QPointer<BoxEditDialog>(this)](const QString &error) {
            if (form) {
                Tell::warning(form, tr("Binding Failed"), error);
            }
        },
        Qt::DirectConnection);
}

void BoxEditDialog::appendMessage(const QString &line)
{
    if (m_workspace) {
        m_workspace->appendMessage(line);
    }
}

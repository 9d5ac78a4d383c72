#include "boxes/boxeditdialog.h"

#include "boxes/boxcommonpage.h"
#include "boxes/dhcpword.h"
#include "boxes/hostaddressdialog.h"
#include "boxes/linkline.h"
#include "boxes/pushpreview.h"
#include "boxes/requestline.h"
#include "forms/formpage.h"
#include "log/activitylog.h"
#include "log/timetext.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "widgets/tell.h"

#include <QDebug>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStandardItem>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int clockInterval = 1000; // ms

const BoxGroup &pageOf(SettingsGroup group)
{
    return BoxGroups::groups().at(int(group));
}

// What a field shows for a text on the wire, and the other way round.
QString fieldText(const SettingsText &text)
{
    switch (text.kind) {
    case SettingsText::Dhcp:
        return DhcpWord::fromFlag(*text.text);
    case SettingsText::OnOff:
        return text.text->toLower();
    default:
        return *text.text;
    }
}

QString wireText(SettingsText::Kind kind, const QString &shown)
{
    return kind == SettingsText::Dhcp ? DhcpWord::toFlag(shown) : shown;
}

} // namespace

BoxEditDialog::BoxEditDialog(QStandardItem *item, Workspace *workspace)
    : DefinitionForm({staticMetaObject.className(),
                      QT_TRANSLATE_NOOP("BoxEditDialog", "The box '%1' is saved successfully.")},
                     item, workspace)
    , m_hostAddress(FileTransfer::anyAddress())
    , m_fields(staticMetaObject.className(), Definitions::Kind::Box)
{
    setWindowTitle(tr("Edit Box"));
    resize(480, 460);
    addHead();
    addNotice();
    setContent(buildPages(), {&m_fields});
    // Compat: whatever the item holds, a Box form opens with LTE on. Only here, not with another item.
    fieldsOf(SettingsGroup::Lte).first()->setText(QStringLiteral("on"));

    // The first session comes up without a local address, so there is nothing to bind.
    begin();
    m_protocol->openConnection(m_ip->text());
    listenTo(m_protocol);
    startClock();
}

BoxEditDialog::~BoxEditDialog()
{
    endSession();
}

QLineEdit *BoxEditDialog::nameEdit() const
{
    return m_name->edit();
}

void BoxEditDialog::cancel()
{
    const QPointer<BoxEditDialog> alive(this);
    disconnectFromServer();
    if (alive) {
        DefinitionForm::cancel();
    }
}

void BoxEditDialog::addHead()
{
    auto *head = new QFormLayout;
    column()->addLayout(head);
    m_fields.setLayout(head);
    m_fields.keepUnknownOnRefill();
    m_name = m_fields.add<TextField>(Qt::DisplayRole, "name", tr("Name:"));
    m_ip = m_fields.add<TextField>(boxIpRole, tr("IP:"))->check(ipv4Validator);
    connect(m_ip->edit(), &QLineEdit::returnPressed, this, &BoxEditDialog::connectToServer);
    // The model, which no one sees.
    m_fields.addUnseen<ListField>(boxModelRole, nullptr, tr("Model:"))->disabled();
}

void BoxEditDialog::addNotice()
{
    m_notice = new QLabel(this);
    m_notice->setObjectName(QStringLiteral("projectNotice"));
    m_notice->setTextFormat(Qt::PlainText); // the Box's own words
    m_notice->setWordWrap(true);
    m_notice->hide();
    column()->addWidget(m_notice);
}

QTabWidget *BoxEditDialog::buildPages()
{
    auto *tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("pages"));
    const BoxCommonPage common = BoxCommonPage::build(this, workspace(), m_ip->edit());
    m_status = common.status;
    m_version = common.version;
    m_link = common.link;
    m_reboot = common.reboot;
    m_preview = common.preview;
    m_preview->setOwner([this] { return ProjectTree::projectOf(item()); });
    m_upload = new BoxUpload([this] { return route(); }, common, workspace(), this);
    tabs->addTab(common.widget, tr("Commonly"));
    const QVector<BoxGroup> &groups = BoxGroups::groups();
    for (int group = 0; group < groups.size(); ++group) {
        QWidget *page = buildGroupPage(static_cast<SettingsGroup>(group));
        if (const char *title = groups.at(group).title) {
            tabs->addTab(page, tr(title));
        } else {
            page->hide();
        }
    }
    return tabs;
}

QWidget *BoxEditDialog::buildGroupPage(SettingsGroup group)
{
    auto *page = new QWidget(this);
    auto *layout = new QFormLayout(page);
    m_fields.setLayout(layout);
    m_pages.append(pageOf(group).addRows(m_fields));

    const QString name = QString::fromLatin1(pageOf(group).name);
    auto *request = new RequestLine(page);
    request->setObjectName(name + QLatin1String("RequestLine"));
    request->showUnread();
    m_requests.append(request);
    QPushButton *read = FormPage::button(tr("Read"), QStringLiteral(":/adsdemo/images/read.svg"), page);
    QPushButton *write = FormPage::button(tr("Write"), QStringLiteral(":/adsdemo/images/write.svg"), page);
    read->setObjectName(name + QLatin1String("ReadButton"));
    write->setObjectName(name + QLatin1String("WriteButton"));
    connect(read, &QPushButton::clicked, this, [this, group] { readGroup(group); });
    connect(write, &QPushButton::clicked, this, [this, group] { writeGroup(group); });
    auto *row = new QGridLayout; // the line below the buttons, which so stay where they are
    row->addWidget(read, 0, 0);
    row->addWidget(write, 0, 1);
    row->addWidget(request, 1, 0, 1, 2);
    layout->addRow(row);
    return page;
}

void BoxEditDialog::replaceItem(QStandardItem *item)
{
    DefinitionForm::replaceItem(item);
    m_preview->showTarget();
    for (RequestLine *request : qAsConst(m_requests)) {
        request->showUnread();
    }
    m_reboot->showUnread();
    m_reboot->hide();
}

void BoxEditDialog::startClock()
{
    auto *clock = new QTimer(this);
    connect(clock, &QTimer::timeout, this,
            [this] { fieldsOf(SettingsGroup::Time).first()->setText(timeText()); });
    clock->start(clockInterval);
}

void BoxEditDialog::begin()
{
    m_protocol = new Protocol(this);
    m_sessionName = item() ? item()->text() : m_name->text();
    m_sessionAddress = m_ip->text();
    m_link->begin(m_sessionAddress);
}

void BoxEditDialog::connectToServer()
{
    const QPointer<BoxEditDialog> alive(this);
    disconnectFromServer();
    if (!alive || m_protocol) {
        return; // who heard of the end has closed the form or connected it already
    }
    begin();
    listenTo(m_protocol);
    if (m_hostAddress != FileTransfer::anyAddress()) {
        m_protocol->bindToAddress(QHostAddress(m_hostAddress));
    }
    m_protocol->connectToBox(m_ip->text());
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
    if (!m_protocol) { // who heard of the end may have connected the form again
        m_status->setText(tr("Connection status: Not connected"));
        m_link->end();
        // Of a link that was there the end has been told.
        loseRequests(&RequestLine::loseUnsent);
    }
    logToFile(QStringLiteral("BoxEditDialog: disconnect"));
}

void BoxEditDialog::endSession()
{
    // It may be on the stack below a modal message, so it is not for this form to delete it. Who hears of its
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
    connect(session->session(), &Session::statusChanged, this, &BoxEditDialog::considerStatus);
    connect(session, &Protocol::dataReceived, this, &BoxEditDialog::passData);
    const QPointer<BoxEditDialog> alive(this); // a message that the session shows may outlast this form
    m_protocol->setResultListener([alive, address = m_sessionAddress](const CommandResult &result) {
        if (alive) {
            alive->noteResult(result, address);
        }
    });
    const auto show = [this](const auto &record) { showSettings(record); };
    connect(session, &Protocol::lanAllocationDataReceived, this, show);
    connect(session, &Protocol::wanAllocationDataReceived, this, show);
    connect(session, &Protocol::wifiAllocationDataReceived, this, show);
    connect(session, &Protocol::lteAllocationDataReceived, this, show);
    connect(session, &Protocol::NTPAllocationDataReceived, this, show);
    connect(session, &Protocol::timeAllocationDataReceived, this, show);
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

// Compat: reaches the session of this moment only; the one that "OK" starts has no one listening.
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

FileTransfer::Job BoxEditDialog::route() const
{
    FileTransfer::Job job;
    job.boxAddress = m_ip->text();
    job.localAddress = m_hostAddress;
    return job;
}

// The present session, or a new one.
Protocol *BoxEditDialog::session()
{
    if (!m_protocol) {
        connectToServer();
    }
    return m_protocol;
}

void BoxEditDialog::rebootDevice()
{
    Protocol *link = session();
    m_reboot->begin(RequestLine::Reboot, m_sessionAddress);
    m_reboot->show();
    link->rebootDevice();
    logToFile(QStringLiteral("BoxEditDialog: rebooting"));
}

void BoxEditDialog::readGroup(SettingsGroup group)
{
    const QString line = QLatin1String("BoxEditDialog: read ") + QLatin1String(pageOf(group).logName);
    Protocol *link = session();
    m_requests[int(group)]->begin(RequestLine::Read, m_sessionAddress);
    link->read(group); // who hears of its status may delete the form
    logToFile(line);
}

void BoxEditDialog::writeGroup(SettingsGroup group)
{
    const QString line = QLatin1String("BoxEditDialog: write ") + QLatin1String(pageOf(group).logName);
    BoxSettings settings = emptySettings(group);
    const QVector<SettingsText> texts = textsOf(settings);
    for (int i = 0; i < texts.size(); ++i) {
        *texts[i].text = wireText(texts[i].kind, fieldsOf(group).at(i)->text());
    }
    Protocol *link = session();
    m_requests[int(group)]->begin(RequestLine::Write, m_sessionAddress);
    link->write(settings);
    logToFile(line);
}

void BoxEditDialog::noteResult(const CommandResult &result, const QString &address)
{
    RequestLine *line = m_reboot;
    RequestLine::Request request = RequestLine::Reboot;
    for (int group = 0; group < m_requests.size(); ++group) {
        if (JsonCommand::writeType(static_cast<SettingsGroup>(group)) == result.command) {
            line = m_requests.at(group);
            request = RequestLine::Write;
        }
    }
    if (result.succeeded()) {
        line->succeed(request, address);
    } else {
        line->refuse(request, address, result.code);
    }
}

void BoxEditDialog::showSettings(BoxSettings settings)
{
    const BoxGroup &page = pageOf(groupOf(settings));
    const BoxGroup::Fields &fields = fieldsOf(groupOf(settings));
    const QVector<SettingsText> texts = textsOf(settings);
    const int first = fields.size() - texts.size();
    for (int i = 0; i < texts.size(); ++i) {
        fields.at(first + i)->setText(fieldText(texts[i]));
    }
    m_requests.at(int(groupOf(settings)))->succeed(RequestLine::Read, m_sessionAddress);
    logToFile(QLatin1String("BoxEditDialog: update ") + QLatin1String(page.updateName));
    Tell::information(this, tr(page.updateTitle), tr(page.updateText));
}

void BoxEditDialog::showVersion(const QString &version)
{
    m_version->setText(tr("Program version: ") + version);
}

void BoxEditDialog::tellOffline()
{
    appendMessage(tr("!!!No communication for 30 seconds. Connection may be lost.!!!"));
    m_notice->hide();
    m_link->noteSilence();
    emit answering(false);
}

void BoxEditDialog::considerStatus(Session::Status status)
{
    switch (status) {
    case Session::Status::Connecting:
    case Session::Status::Waiting:
    case Session::Status::Reconnecting:
        m_link->begin(m_sessionAddress); // a socket that was bound has told of an end
        break;
    case Session::Status::Disconnected:
        tellEnd();
        break;
    case Session::Status::Connected:
        m_link->noteAnswer();
        emit answering(true);
        break;
    case Session::Status::HeartbeatLost:
        m_link->end();
        loseRequests(&RequestLine::loseUnsent); // no link came about: of one that ends it is told at once
        break;
    case Session::Status::RequestLost:
        loseRequests(&RequestLine::loseUnsent);
        break;
    default:
        break;
    }
}

void BoxEditDialog::tellEnd()
{
    m_notice->hide();
    m_link->end();
    loseRequests(&RequestLine::loseAnswer);
    emit sessionEnded(m_sessionAddress);
}

void BoxEditDialog::loseRequests(void (RequestLine::*loss)())
{
    for (RequestLine *request : qAsConst(m_requests)) {
        (request->*loss)();
    }
    (m_reboot->*loss)();
}

void BoxEditDialog::showReported(const QString &project, bool isOpen)
{
    m_notice->setText(tr("The Box reports values of the project '%1', which is not open: they are not shown.")
                          .arg(project));
    m_notice->setVisible(!isOpen);
}

void BoxEditDialog::passData(const Protocol::dataMonitoringData &report)
{
    qDebug() << report.projectName;
    emit reporting(m_sessionName, m_sessionAddress);
    emit sendDataToMainWindow(report);
    logToFile(QStringLiteral("BoxEditDialog: Data"));
}

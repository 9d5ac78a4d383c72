#include "boxes/boxsearchdialog.h"

#include "boxes/outcomeline.h"
#include "log/activitylog.h"
#include "widgets/combobox.h"
#include "widgets/tablecopy.h"
#include "widgets/tell.h"

#include <QComboBox>
#include <QListWidget>
#include <QNetworkInterface>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// The loopback comes first in the list, and no Box is there.
bool mayLeadToBoxes(const QNetworkInterface &networkInterface)
{
    const QList<QNetworkAddressEntry> entries = networkInterface.addressEntries();
    return !networkInterface.flags().testFlag(QNetworkInterface::IsLoopBack)
        && std::any_of(entries.cbegin(), entries.cend(), [](const QNetworkAddressEntry &entry) {
               return entry.ip().protocol() == QAbstractSocket::IPv4Protocol;
           });
}

} // namespace

BoxSearchDialog::BoxSearchDialog(QWidget *parent)
    : QDialog(parent)
    , m_list(new QListWidget(this))
    , m_interfaces(new ComboBox(this))
    , m_state(new OutcomeLine(this))
    , m_search(new BoxSearch([this] { return m_interfaces->currentData().value<QNetworkInterface>(); }, this))
{
    setWindowTitle(tr("Search Box"));
    setMinimumSize(360, 320);
    auto *search = new QPushButton(QIcon(QStringLiteral(":/adsdemo/images/look.svg")), tr("Search"), this);
    search->setObjectName(QStringLiteral("searchButton"));
    m_list->setObjectName(QStringLiteral("boxes"));
    m_list->setAlternatingRowColors(true); // a Box has three lines
    TableCopy::install(m_list);
    m_interfaces->setObjectName(QStringLiteral("interfaces"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addWidget(m_interfaces);
    layout->addWidget(search);
    m_state->setObjectName(QStringLiteral("searchState"));
    m_state->keepRoom(4);
    layout->addWidget(m_state);

    fillInterfaces();
    connect(search, &QPushButton::clicked, this, &BoxSearchDialog::searchForBoxes);
    connect(m_search, &BoxSearch::found, this, &BoxSearchDialog::showBox);
    connect(m_search, &BoxSearch::sent, this, &BoxSearchDialog::noteSent);
    connect(m_search, &BoxSearch::failed, this, &BoxSearchDialog::tellFailure);
    connect(m_search, &BoxSearch::finished, this, &BoxSearchDialog::tellEnd);
    logToFile(QStringLiteral("BoxSearchDialog new-nuilt"));
}

BoxSearchDialog::~BoxSearchDialog()
{
    logToFile(QStringLiteral("BoxSearchDialog destroyed"));
}

void BoxSearchDialog::fillInterfaces()
{
    const QList<QNetworkInterface> all = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &networkInterface : all) {
        if (networkInterface.flags().testFlag(QNetworkInterface::IsUp)
            && networkInterface.flags().testFlag(QNetworkInterface::IsRunning)) {
            m_interfaces->addItem(networkInterface.humanReadableName(),
                                  QVariant::fromValue(networkInterface));
        }
    }
    for (int index = 0; index < m_interfaces->count(); ++index) {
        if (mayLeadToBoxes(m_interfaces->itemData(index).value<QNetworkInterface>())) {
            m_interfaces->setCurrentIndex(index);
            return;
        }
    }
}

void BoxSearchDialog::searchForBoxes()
{
    m_list->clear();
    m_hasSent = false;
    m_failure = tr("The search has ended before anything was sent.");
    m_state->showLine(tr("Searching for ten seconds..."), false);
    m_search->start();
    logToFile(QStringLiteral("BoxSearchDialog: search"));
}

void BoxSearchDialog::sendSearchBroadcast()
{
    m_search->broadcast();
}

void BoxSearchDialog::readPendingDatagrams()
{
    m_search->readPendingDatagrams();
}

void BoxSearchDialog::tellFailure(const QHostAddress &address, const QString &why)
{
    m_failure = address.isNull()
        ? tr("Nothing was searched: there is no IPv4 address to search from.")
        : tr("Nothing was searched: %1 could not send from UDP port 5 (%2).").arg(address.toString(), why);
    if (!m_hasSent) {
        m_state->showLine(m_failure, true);
    }
}

void BoxSearchDialog::noteSent()
{
    if (!m_hasSent) {
        m_hasSent = true;
        m_state->showLine(tr("Searching for ten seconds..."), false);
    }
}

void BoxSearchDialog::showBox(const Discovery::Answer &box)
{
    // The three labels are the Boxes' own and stay Chinese in every language of the interface.
    m_list->addItem(QStringLiteral("设备IP: ") + box.ip + QStringLiteral("\n子网掩码: ") + box.mask
                    + QStringLiteral("\n盒子型号: ") + box.model);
}

void BoxSearchDialog::tellEnd()
{
    m_state->showLine(m_hasSent ? tr("The search has ended. Boxes found: %1.").arg(m_list->count())
                                : m_failure,
                      !m_hasSent);
    if (m_list->count() == 0) {
        Tell::information(this, tr("No Devices Found"), tr("No devices were found during the search."));
    }
    // Compat: one text for both outcomes. The dialog may have died while the message was open: no member is
    // touched here.
    logToFile(QStringLiteral("BoxSearchDialog: search timeout, no devices found."));
}

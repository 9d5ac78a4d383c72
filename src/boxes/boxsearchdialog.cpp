#include "boxes/boxsearchdialog.h"

#include "boxlink/discovery.h"
#include "boxlink/frame.h"
#include "log/activitylog.h"
#include "widgets/tablecopy.h"
#include "widgets/tell.h"

#include <QComboBox>
#include <QDebug>
#include <QListWidget>
#include <QNetworkInterface>
#include <QPushButton>
#include <QUdpSocket>
#include <QVBoxLayout>

namespace {

constexpr int broadcastInterval = 1000; // ms
constexpr int searchDuration = 10000;   // ms
constexpr quint16 localPort = 5;        // a Box answers to the port that it was asked from

QHostAddress firstIpv4(const QNetworkInterface &networkInterface)
{
    const QList<QNetworkAddressEntry> entries = networkInterface.addressEntries();
    for (const QNetworkAddressEntry &entry : entries) {
        if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol) {
            return entry.ip();
        }
    }
    return {};
}

} // namespace

BoxSearchDialog::BoxSearchDialog(QWidget *parent)
    : QDialog(parent)
    , m_list(new QListWidget(this))
    , m_interfaces(new QComboBox(this))
    , udpSocket(new QUdpSocket(this))
    , searchTimer(new QTimer(this))
{
    searchTimer->setObjectName(QStringLiteral("searchTimer"));
    setWindowTitle(tr("Search Box"));
    setMinimumSize(360, 320);
    auto *search = new QPushButton(QIcon(QStringLiteral(":/adsdemo/images/look.svg")), tr("Search"), this);
    search->setObjectName(QStringLiteral("searchButton"));
    m_list->setObjectName(QStringLiteral("boxes"));
    TableCopy::install(m_list);
    m_interfaces->setObjectName(QStringLiteral("interfaces"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addWidget(m_interfaces);
    layout->addWidget(search);

    fillInterfaces();
    connect(search, &QPushButton::clicked, this, &BoxSearchDialog::searchForBoxes);
    connect(searchTimer, &QTimer::timeout, this, &BoxSearchDialog::sendSearchBroadcast);
    searchTimer->setInterval(broadcastInterval);
    searchTimer->setSingleShot(false);
    connect(udpSocket, &QUdpSocket::readyRead, this, &BoxSearchDialog::readPendingDatagrams);
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
}

void BoxSearchDialog::searchForBoxes()
{
    m_list->clear();
    foundAddresses.clear();
    searchTimer->start();
    // A second click starts a second one on purpose: the first still ends the broadcasts, the second reports.
    auto *end = new QTimer(this);
    end->setObjectName(QStringLiteral("searchEnd"));
    end->setSingleShot(true);
    connect(end, &QTimer::timeout, this, &BoxSearchDialog::finishSearch);
    connect(end, &QTimer::timeout, end, &QObject::deleteLater);
    end->start(searchDuration);
    logToFile(QStringLiteral("BoxSearchDialog: search"));
}

void BoxSearchDialog::sendSearchBroadcast()
{
    const QHostAddress address = firstIpv4(m_interfaces->currentData().value<QNetworkInterface>());
    if (address.isNull()) {
        qDebug() << "No IPv4 address found for selected network interface!";
        return;
    }
    qDebug() << "Binding to address:" << address;
    udpSocket->close();
    if (!udpSocket->bind(address, localPort, QAbstractSocket::DefaultForPlatform)) {
        qDebug() << "Failed to bind to selected network interface!";
        return;
    }
    udpSocket->writeDatagram(Discovery::request(), QHostAddress(QHostAddress::Broadcast), Frame::boxPort);
}

void BoxSearchDialog::readPendingDatagrams()
{
    while (udpSocket->hasPendingDatagrams()) {
        QByteArray datagram(static_cast<int>(udpSocket->pendingDatagramSize()), '\0');
        const qint64 size = udpSocket->readDatagram(datagram.data(), datagram.size());
        datagram.truncate(static_cast<int>(qMax<qint64>(size, 0)));
        showAnswer(datagram);
    }
}

void BoxSearchDialog::showAnswer(const QByteArray &datagram)
{
    const Discovery::Answer answer = Discovery::parseAnswer(datagram);
    if (!answer.valid || foundAddresses.contains(answer.ip)) {
        return;
    }
    // The three labels are the Boxes' own and stay Chinese in every language of the interface.
    m_list->addItem(QStringLiteral("设备IP: ") + answer.ip + QStringLiteral("\n子网掩码: ") + answer.mask
                    + QStringLiteral("\n盒子型号: ") + answer.model);
    foundAddresses.insert(answer.ip);
}

void BoxSearchDialog::finishSearch()
{
    searchTimer->stop();
    if (m_list->count() == 0) {
        Tell::information(this, tr("No Devices Found"), tr("No devices were found during the search."));
    }
    // One text for both outcomes. The dialog may have died while the box stood: no member is touched here.
    logToFile(QStringLiteral("BoxSearchDialog: search timeout, no devices found."));
}

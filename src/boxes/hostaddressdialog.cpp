#include "boxes/hostaddressdialog.h"

#include "boxes/boxeditdialog.h"
#include "boxlink/filetransfer.h"
#include "forms/formpage.h"
#include "widgets/combobox.h"

#include <QComboBox>
#include <QHostAddress>
#include <QLabel>
#include <QNetworkInterface>
#include <QPushButton>
#include <QVBoxLayout>

HostAddressDialog::HostAddressDialog(const QString &current, QWidget *parent)
    : QDialog(parent)
    , m_address(new ComboBox(this))
{
    setWindowTitle(BoxEditDialog::tr("Select Host Address"));
    setMinimumSize(350, 100);
    m_address->setObjectName(QStringLiteral("hostAddress"));
    m_address->addItems(choices(QNetworkInterface::allAddresses()));
    m_address->setCurrentIndex(qMax(0, m_address->findText(current)));

    auto *layout = new QVBoxLayout(this);
    auto *label = new QLabel(BoxEditDialog::tr("Please select the host address:"), this);
    label->setBuddy(m_address);
    layout->addWidget(label);
    layout->addWidget(m_address);
    layout->addStretch();
    const QPushButton *ok =
        FormPage::appendDialogButtons(layout, BoxEditDialog::tr("OK"), BoxEditDialog::tr("Cancel"));
    // Two connections: what the choice sets off may cost the dialog its life.
    connect(ok, &QPushButton::clicked, this, [this] { emit chosen(m_address->currentText()); });
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
}

QStringList HostAddressDialog::choices(const QList<QHostAddress> &addresses)
{
    QStringList texts{FileTransfer::anyAddress()};
    for (const QHostAddress &address : addresses) {
        if (address.protocol() == QAbstractSocket::IPv4Protocol && !address.isLoopback()) {
            texts.append(address.toString());
        }
    }
    return texts;
}

#include "standards/standardinputdialog.h"

#include "definitions/protocols.h"
#include "forms/formpage.h"
#include "log/activitylog.h"
#include "widgets/combobox.h"

#include <QComboBox>
#include <QFormLayout>
#include <QIcon>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

standardInputDialog::standardInputDialog(QWidget *parent)
    : QDialog(parent)
    , m_name(new QLineEdit(this))
    , m_protocol(new ComboBox(this))
{
    setWindowTitle(tr("Add Standard"));
    setWindowIcon(QIcon(QStringLiteral(":/adsdemo/images/standard.svg")));
    setMinimumWidth(360);
    m_name->setObjectName(QStringLiteral("name"));
    m_protocol->setObjectName(QStringLiteral("protocol"));
    // Names of protocols are data: they are stored in the item as they are here.
    m_protocol->addItems({Protocols::dlt645, Protocols::modbus});

    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    form->addRow(tr("Name:"), m_name);
    form->addRow(tr("Protocol:"), m_protocol);

    const QPushButton *ok = FormPage::appendDialogButtons(layout, tr("OK"), tr("Cancel"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    logToFile(QStringLiteral("standardInputDialog: new-nuilt"));
}

standardInputDialog::~standardInputDialog()
{
    logToFile(QStringLiteral("standardInputDialog: destroyed"));
}

QString standardInputDialog::name() const
{
    return m_name->text();
}

QString standardInputDialog::protocol() const
{
    return m_protocol->currentText();
}

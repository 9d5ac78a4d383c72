#include "standards/standardinputdialog.h"

#include "definitions/protocols.h"
#include "forms/formpage.h"
#include "log/activitylog.h"

#include <QFormLayout>
#include <QIcon>
#include <QPushButton>
#include <QVBoxLayout>

standardInputDialog::standardInputDialog(QWidget *parent)
    : QDialog(parent)
    , m_fields(staticMetaObject.className(), Definitions::Kind::Standard)
{
    setWindowTitle(tr("Add Standard"));
    setWindowIcon(QIcon(QStringLiteral(":/adsdemo/images/standard.svg")));
    setMinimumWidth(360);

    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    m_fields.setLayout(form);
    m_name = m_fields.add<TextField>(FormField::noRole, "name", tr("Name:"));
    // Names of protocols are data: they are stored in the item as they are here.
    m_protocol = m_fields.add<ListField>(FormField::noRole, "protocol", tr("Protocol:"))
                     ->entries({Protocols::dlt645, Protocols::modbus});

    const QPushButton *ok = FormPage::appendDialogButtons(layout, tr("OK"), tr("Cancel"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    logToFile(QStringLiteral("standardInputDialog: new-nuilt"));
}

standardInputDialog::~standardInputDialog()
{
    logToFile(QStringLiteral("standardInputDialog: destroyed"));
}

#include "plc/plcinputdialog.h"

#include "definitions/plccatalogue.h"
#include "forms/formpage.h"
#include "log/activitylog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QIcon>
#include <QPushButton>
#include <QVBoxLayout>

PLCInputDialog::PLCInputDialog(QWidget *parent)
    : QDialog(parent)
    , m_fields(staticMetaObject.className(), Definitions::Kind::Plc)
{
    setWindowTitle(tr("Add PLC"));
    setWindowIcon(QIcon(QStringLiteral(":/adsdemo/images/PLC (2).png")));
    resize(500, 200);

    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    m_fields.setLayout(form);
    m_name = m_fields.add<TextField>(FormField::noRole, "name", tr("PLC Name:"));
    m_manufacturer = m_fields.add<ListField>(FormField::noRole, "manufacturer", tr("Manufacturer:"))
                         ->entries(PlcCatalogue::manufacturers());
    m_protocol = m_fields.add<ListField>(FormField::noRole, "protocol", tr("Protocol:"));
    connect(m_manufacturer->list(), &QComboBox::currentTextChanged, this, &PLCInputDialog::updateModelList);
    updateModelList(m_manufacturer->text());
    layout->addStretch();

    const QPushButton *ok = FormPage::appendDialogButtons(layout, tr("OK"), tr("Cancel"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    logToFile(QStringLiteral("PLCInputDialog: new-nuilt"));
}

PLCInputDialog::~PLCInputDialog()
{
    logToFile(QStringLiteral("PLCInputDialog: destroyed"));
}

void PLCInputDialog::updateModelList(QString manufacturer)
{
    m_protocol->list()->clear();
    m_protocol->entries(PlcCatalogue::protocols(manufacturer));
}

#include "plc/plcinputdialog.h"

#include "definitions/plccatalogue.h"
#include "forms/formpage.h"
#include "log/activitylog.h"
#include "widgets/combobox.h"

#include <QComboBox>
#include <QFormLayout>
#include <QIcon>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

PLCInputDialog::PLCInputDialog(QWidget *parent)
    : QDialog(parent)
    , m_name(new QLineEdit(this))
    , m_manufacturer(new ComboBox(this))
    , m_protocol(new ComboBox(this))
{
    setWindowTitle(tr("Add PLC"));
    setWindowIcon(QIcon(QStringLiteral(":/adsdemo/images/PLC (2).png")));
    resize(500, 200);
    m_name->setObjectName(QStringLiteral("name"));
    m_manufacturer->setObjectName(QStringLiteral("manufacturer"));
    m_protocol->setObjectName(QStringLiteral("protocol"));
    m_manufacturer->addItems(PlcCatalogue::manufacturers());
    connect(m_manufacturer, &QComboBox::currentTextChanged, this, &PLCInputDialog::updateModelList);
    updateModelList(m_manufacturer->currentText());

    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    form->addRow(tr("PLC Name:"), m_name);
    form->addRow(tr("Manufacturer:"), m_manufacturer);
    form->addRow(tr("Protocol:"), m_protocol);
    layout->addStretch();

    const QPushButton *ok = FormPage::appendDialogButtons(layout, tr("OK"), tr("Cancel"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    logToFile(QStringLiteral("PLCInputDialog: new-nuilt"));
}

PLCInputDialog::~PLCInputDialog()
{
    logToFile(QStringLiteral("PLCInputDialog: destroyed"));
}

QString PLCInputDialog::plcName() const
{
    return m_name->text();
}

QString PLCInputDialog::manufacturer() const
{
    return m_manufacturer->currentText();
}

QString PLCInputDialog::protocol() const
{
    return m_protocol->currentText();
}

void PLCInputDialog::updateModelList(QString manufacturer)
{
    m_protocol->clear();
    m_protocol->addItems(PlcCatalogue::protocols(manufacturer));
}

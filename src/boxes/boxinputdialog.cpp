#include "boxes/boxinputdialog.h"

#include "forms/formpage.h"
#include "log/activitylog.h"

#include <QFormLayout>
#include <QIcon>
#include <QPushButton>
#include <QVBoxLayout>

BoxInputDialog::BoxInputDialog(QWidget *parent)
    : QDialog(parent)
    , m_fields(staticMetaObject.className(), Definitions::Kind::Box)
{
    setWindowTitle(tr("Add Box"));
    setWindowIcon(QIcon(QStringLiteral(":/adsdemo/images/Box.png")));
    resize(500, 200);

    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    m_fields.setLayout(form);
    m_name = m_fields.add<TextField>(FormField::noRole, "name", tr("Box Name:"));
    m_ip = m_fields.add<TextField>(FormField::noRole, "ip", tr("IP Address:"))->check(ipv4Validator);
    // Compat: not in the layout, so every new Box gets the first model.
    m_model = m_fields.addUnseen<ListField>(FormField::noRole, "model", tr("Model:"))
                  ->entries("MRN-GATE-70 MRN-GATE-20");
    layout->addStretch();

    const QPushButton *ok = FormPage::appendDialogButtons(layout, tr("OK"), tr("Cancel"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    logToFile(QStringLiteral("BoxInputDialog: new-nuilt"));
}

BoxInputDialog::~BoxInputDialog()
{
    logToFile(QStringLiteral("BoxInputDialog: destroyed"));
}

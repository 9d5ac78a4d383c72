#include "boxes/boxinputdialog.h"

#include "forms/formpage.h"
#include "log/activitylog.h"

#include <QFormLayout>
#include <QIcon>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QVector<Field> addressFields()
{
    return {
        {"name", QT_TRANSLATE_NOOP("BoxInputDialog", "Box Name:"), FieldKind::Text, FieldTable::noRole},
        {"ip", QT_TRANSLATE_NOOP("BoxInputDialog", "IP Address:"), FieldKind::Text, FieldTable::noRole,
         FieldCheck::Ipv4},
    };
}

QVector<Field> modelFields()
{
    return {{"model",
             QT_TRANSLATE_NOOP("BoxInputDialog", "Model:"),
             FieldKind::List,
             FieldTable::noRole,
             FieldCheck::None,
             {QStringLiteral("MRN-GATE-70"), QStringLiteral("MRN-GATE-20")}}};
}

} // namespace

BoxInputDialog::BoxInputDialog(QWidget *parent)
    : QDialog(parent)
    , m_fields("BoxInputDialog", addressFields())
{
    setWindowTitle(tr("Add Box"));
    setWindowIcon(QIcon(QStringLiteral(":/adsdemo/images/Box.png")));
    resize(500, 200);

    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    m_fields.build(form);
    // Compat: not in the layout, so every new Box gets the first model.
    m_fields.append(modelFields());
    m_fields.buildUnseen(this);
    layout->addStretch();

    const QPushButton *ok = FormPage::appendDialogButtons(layout, tr("OK"), tr("Cancel"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    logToFile(QStringLiteral("BoxInputDialog: new-nuilt"));
}

BoxInputDialog::~BoxInputDialog()
{
    logToFile(QStringLiteral("BoxInputDialog: destroyed"));
}

QString BoxInputDialog::name() const
{
    return m_fields.text(QStringLiteral("name"));
}

QString BoxInputDialog::ip() const
{
    return m_fields.text(QStringLiteral("ip"));
}

QString BoxInputDialog::model() const
{
    return m_fields.text(QStringLiteral("model"));
}

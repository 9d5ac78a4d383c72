#include "projects/editprojectdialog.h"

#include "forms/formpage.h"
#include "log/activitylog.h"
#include "widgets/showonly.h"
#include "widgets/tell.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

EditProjectDialog::EditProjectDialog(const QString &name, const QString &path, const QString &description,
                                     QWidget *parent)
    : EditForm(parent)
    , m_name(new QLineEdit(name, this))
    , m_path(new QLineEdit(path, this))
    , m_description(new QTextEdit(this))
{
    setWindowTitle(QStringLiteral("Edit Project"));
    m_name->setObjectName(QStringLiteral("name"));
    m_path->setObjectName(QStringLiteral("path"));
    ShowOnly::make(m_path);
    m_description->setObjectName(QStringLiteral("description"));
    m_description->setAcceptRichText(false);
    m_description->setTabChangesFocus(true);
    m_description->setPlainText(description);

    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    form->addRow(tr("Name:"), m_name);
    form->addRow(tr("Path:"), m_path);
    form->addRow(tr("Description:"), m_description);

    const FormPage::Buttons buttons = FormPage::appendButtons(layout, tr("Save"), tr("Cancel"));
    connect(buttons.save, &QPushButton::clicked, this, &EditProjectDialog::saveChanges);
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::reject);
    // Compat: the log lines of this form have a full-width colon.
    logToFile(QStringLiteral("EditProjectDialog：new-nuilt"));
}

EditProjectDialog::~EditProjectDialog()
{
    logToFile(QStringLiteral("EditProjectDialog: destroyed"));
}

void EditProjectDialog::setName(const QString &name)
{
    m_name->setText(name);
}

void EditProjectDialog::setPath(const QString &path)
{
    m_path->setText(path);
}

void EditProjectDialog::setDescription(const QString &description)
{
    m_description->setPlainText(description);
}

void EditProjectDialog::saveChanges()
{
    if (m_name->text().isEmpty()) {
        Tell::warning(this, QStringLiteral("Warning"), QStringLiteral("Name cannot be empty."));
        return;
    }
    emit projectModified(m_name->text(), m_path->text(), m_description->toPlainText());
    logToFile(QStringLiteral("EditProjectDialog：save"));
}

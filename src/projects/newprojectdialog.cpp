#include "projects/newprojectdialog.h"

#include "forms/formpage.h"
#include "log/activitylog.h"
#include "widgets/showonly.h"
#include "widgets/tell.h"

#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

NewProjectDialog::NewProjectDialog(QWidget *parent)
    : QDialog(parent)
    , m_name(new QLineEdit(this))
    , m_path(new QLineEdit(this))
    , m_description(new QTextEdit(this))
{
    setWindowTitle(tr("New Project"));
    setWindowIcon(QIcon(QStringLiteral(":/adsdemo/images/New.png")));
    setMinimumSize(400, 240);

    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    appendFields(form);

    const QPushButton *ok = FormPage::appendDialogButtons(layout, tr("OK"), tr("Cancel"));
    connect(ok, &QPushButton::clicked, this, &NewProjectDialog::createProject);
    logToFile(QStringLiteral("NewProjectDialog: new-nuilt"));
}

NewProjectDialog::~NewProjectDialog()
{
    logToFile(QStringLiteral("NewProjectDialog: destroyed"));
}

void NewProjectDialog::appendFields(QFormLayout *form)
{
    m_name->setObjectName(QStringLiteral("name"));
    m_path->setObjectName(QStringLiteral("path"));
    ShowOnly::make(m_path);
    m_description->setObjectName(QStringLiteral("description"));
    m_description->setAcceptRichText(false);
    m_description->setTabChangesFocus(true);

    auto *browse = FormPage::button(tr("Browse"), QStringLiteral(":/adsdemo/images/look.svg"), this);
    browse->setObjectName(QStringLiteral("browseButton"));
    browse->setToolTip(tr("Select Directory"));
    connect(browse, &QPushButton::clicked, this, &NewProjectDialog::browsePath);

    auto *pathRow = new QHBoxLayout;
    pathRow->addWidget(m_path);
    pathRow->addWidget(browse);
    form->addRow(tr("Name:"), m_name);
    form->addRow(tr("Path:"), pathRow);
    // The row is a layout, of which the label can't guess its buddy.
    qobject_cast<QLabel *>(form->labelForField(pathRow))->setBuddy(m_path);
    form->addRow(tr("Description:"), m_description);
    setTabOrder(m_path, browse);
    setTabOrder(browse, m_description);
}

void NewProjectDialog::browsePath()
{
    const QString path = QFileDialog::getExistingDirectory(this, tr("Select Directory"), QDir::homePath(),
                                                           QFileDialog::ShowDirsOnly);
    if (!path.isEmpty()) {
        m_path->setText(path);
    }
}

void NewProjectDialog::createProject()
{
    if (m_name->text().isEmpty() || m_path->text().isEmpty()) {
        Tell::warning(this, tr("Warning"), tr("Name and Path cannot be empty."));
        return;
    }
    emit projectCreated(m_name->text(), m_path->text(), m_description->toPlainText());
    accept();
}

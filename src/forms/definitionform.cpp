#include "forms/definitionform.h"

#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/workspace.h"

#include <QCoreApplication>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItem>
#include <QVBoxLayout>

DefinitionForm::DefinitionForm(const Names &names, QStandardItem *item, Workspace *workspace, QWidget *parent)
    : EditForm(parent)
    , m_names(names)
    , m_item(item)
    , m_workspace(workspace)
    , m_column(new QVBoxLayout(this))
{
}

DefinitionForm::~DefinitionForm()
{
    log("destroyed");
}

void DefinitionForm::setContent(QWidget *content, const QVector<FormPart *> &parts)
{
    m_column->addWidget(FormPage::scrollArea(content, this));
    const FormPage::Buttons buttons =
        FormPage::appendButtons(m_column, translated(QT_TRANSLATE_NOOP("DefinitionForm", "Save")),
                                translated(QT_TRANSLATE_NOOP("DefinitionForm", "Cancel")));
    m_save = buttons.save;
    connect(buttons.cancel, &QPushButton::clicked, this, &DefinitionForm::cancel);
    m_parts = parts;
    for (FormPart *part : qAsConst(m_parts)) {
        part->fill(item());
    }
    log("new-nuilt");
}

void DefinitionForm::cancel()
{
    emit rejected();
}

void DefinitionForm::replaceItem(QStandardItem *item)
{
    m_item = ItemRef(item);
    for (FormPart *part : qAsConst(m_parts)) {
        part->refill(item);
    }
    log("replace");
}

void DefinitionForm::saveChanges()
{
    QStandardItem *saved = item();
    if (!saved) {
        return; // its node has left the tree: there is nothing to write into
    }
    const QPointer<DefinitionForm> alive(this);
    for (FormPart *part : qAsConst(m_parts)) {
        part->save(saved);
        if (!alive || item() != saved) {
            return;
        }
    }
    appendMessage(translated(m_names.savedMessage).arg(saved->text()));
    logToFile(QLatin1String(m_names.savedAs) + QStringLiteral(": save"));
}

void DefinitionForm::clearData()
{
    for (FormPart *part : qAsConst(m_parts)) {
        part->clear();
    }
}

void DefinitionForm::appendMessage(const QString &line) const
{
    if (m_workspace) {
        m_workspace->appendMessage(line);
    }
}

QString DefinitionForm::translated(const char *source) const
{
    return QCoreApplication::translate(m_names.className, source);
}

void DefinitionForm::log(const char *event) const
{
    logToFile(QLatin1String(m_names.className) + QStringLiteral(": ") + QLatin1String(event));
}

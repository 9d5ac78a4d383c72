#include "forms/definitionform.h"

#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/projecttree.h"
#include "model/workspace.h"
#include "widgets/quietline.h"

#include <QCoreApplication>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItemModel>
#include <QVBoxLayout>

DefinitionForm::DefinitionForm(const Names &names, QStandardItem *item, Workspace *workspace, QWidget *parent)
    : EditForm(parent)
    , m_names(names)
    , m_item(item)
    , m_workspace(workspace)
    , m_column(new QVBoxLayout(this))
    , m_owner(new QuietLine(this))
{
    ProjectTree::registerTypes(); // slots that take these may be called by name and queued
    m_owner->setObjectName(QStringLiteral("owner"));
    m_column->addWidget(m_owner);
    followOwner();
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
    if (item != this->item()) {
        m_owner->highlight();
    }
    m_item = ItemRef(item);
    followOwner();
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

void DefinitionForm::followOwner()
{
    disconnect(m_renames);
    if (const QStandardItemModel *model = item() ? item()->model() : nullptr) {
        m_renames = connect(model, &QAbstractItemModel::dataChanged, this, &DefinitionForm::showOwner);
    }
    showOwner();
}

void DefinitionForm::showOwner()
{
    const QStandardItem *shown = item();
    if (!shown) {
        return; // its node has left the tree; the line says where it was
    }
    QStringList names;
    for (const QStandardItem *owner = shown->parent(); owner; owner = owner->parent()) {
        names.prepend(owner->text());
    }
    m_owner->setText(names.join(QStringLiteral(" · ")));
    m_owner->setVisible(!names.isEmpty());
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

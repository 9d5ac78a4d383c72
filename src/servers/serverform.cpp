#include "servers/serverform.h"

#include <QFormLayout>
#include <QPushButton>

ServerForm::ServerForm(const Names &names, QStandardItem *item, Workspace *workspace)
    : DefinitionForm(names, item, workspace)
    , m_fields(names.className, Definitions::Kind::Server)
    , m_page(new QVBoxLayout(new QWidget(this)))
{
    auto *fieldPage = new QWidget(m_page->parentWidget());
    auto *form = new QFormLayout(fieldPage);
    form->setContentsMargins(0, 0, 0, 0);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows); // in a narrow tab, rather than to scroll sideways
    m_fields.setLayout(form);
    m_page->addWidget(fieldPage);
}

void ServerForm::setParts(const QVector<FormPart *> &parts)
{
    setContent(m_page->parentWidget(), parts);
    connect(saveButton(), &QPushButton::clicked, this, &ServerForm::saveChanges);
}

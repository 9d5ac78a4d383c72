#include "standards/standardtableform.h"

#include "model/itemroles.h"
#include "parametertable/parametertable.h"
#include "standards/standardfields.h"

#include <QFormLayout>
#include <QPushButton>
#include <QStandardItem>

namespace {

constexpr int leastTableHeight = 300; // pixels

} // namespace

StandardTableForm::StandardTableForm(const Names &names, QLatin1String protocol, const ParameterVariant &rows,
                                     QStandardItem *item, Workspace *workspace, QWidget *parent)
    : ParameterForm(names, rows, item, workspace, parent)
    , m_fields(names.className, Definitions::Kind::Standard)
    , m_stored(
          [this](QStandardItem *shown) { m_table->fill(shown->data(standardDatasRole).value<RowList>()); },
          [this](QStandardItem *saved) {
              saved->setData(QVariant::fromValue(m_table->rows()), standardDatasRole);
          },
          [this] { m_table->setRowCount(0); })
    , m_fieldLayout(new QFormLayout)
{
    setWindowTitle(translated(QT_TRANSLATE_NOOP("StandardTableForm", "Edit Standard")));
    auto *content = new QVBoxLayout(new QWidget(this));
    content->addLayout(m_fieldLayout);
    m_fields.setLayout(m_fieldLayout);
    m_name = m_fields.add<TextField>(Qt::DisplayRole, "name",
                                     QT_TRANSLATE_NOOP("StandardTableForm", "Server Name:"));
    m_fields.add<ListField>(standardProtocolRole, QT_TRANSLATE_NOOP("StandardTableForm", "Protocol:"))
        ->entries({protocol});
}

ParameterTable *StandardTableForm::addTable()
{
    QWidget *content = m_fieldLayout->parentWidget();
    auto *page = qobject_cast<QVBoxLayout *>(content->layout());
    page->addWidget(StandardFields::makeTriggerRow(m_fields, content));
    FieldGroup::align({&m_fields});
    page->addWidget(makeTableButtons(content));
    m_table = makeTable(content);
    m_table->setMinimumHeight(leastTableHeight);
    page->addWidget(m_table, 1);
    return m_table;
}

void StandardTableForm::setParts(const QVector<FormPart *> &further)
{
    setContent(m_fieldLayout->parentWidget(), QVector<FormPart *>{&m_fields, &m_stored} + further);
    connect(saveButton(), &QPushButton::clicked, this, &StandardTableForm::saveChanges);
}

#include "standards/standardtableform.h"

#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/itemroles.h"
#include "model/workspace.h"
#include "parametertable/parametertable.h"
#include "standards/standardfields.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItem>

namespace {

constexpr int leastTableHeight = 300; // pixels

QVector<Field> identityFields(const char *protocol)
{
    return {
        {"name", QT_TRANSLATE_NOOP("StandardTableForm", "Server Name:"), FieldKind::Text, Qt::DisplayRole},
        {"protocol",
         QT_TRANSLATE_NOOP("StandardTableForm", "Protocol:"),
         FieldKind::List,
         standardProtocolRole,
         FieldCheck::None,
         {QString::fromLatin1(protocol)}},
    };
}

} // namespace

StandardTableForm::StandardTableForm(const Kind &kind, const QVector<Field> &connection, QStandardItem *item,
                                     Workspace *workspace, QWidget *parent)
    : ParameterForm(kind.rows, workspace, parent)
    , m_kind(kind)
    , m_item(item)
    , m_identity(kind.rows.form, identityFields(kind.protocol))
    , m_connection(kind.rows.form, connection)
    , m_trigger(kind.rows.form, StandardFields::trigger())
{
    setWindowTitle(translated(QT_TRANSLATE_NOOP("StandardTableForm", "Edit Standard")));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(FormPage::scrollArea(buildContent(), this));
    const FormPage::Buttons buttons =
        FormPage::appendButtons(layout, translated(QT_TRANSLATE_NOOP("StandardTableForm", "Save")),
                                translated(QT_TRANSLATE_NOOP("StandardTableForm", "Cancel")));
    m_save = buttons.save;
    connect(m_save, &QPushButton::clicked, this, &StandardTableForm::saveChanges);
    connect(buttons.cancel, &QPushButton::clicked, this, &StandardTableForm::rejected);
}

StandardTableForm::~StandardTableForm()
{
    log("destroyed");
}

void StandardTableForm::begin()
{
    FieldTable::align({&m_identity, &m_connection, &m_trigger});
    showItem(item());
    log("new-nuilt");
}

QString StandardTableForm::translated(const char *source) const
{
    return QCoreApplication::translate(m_kind.rows.form, source);
}

QWidget *StandardTableForm::buildContent()
{
    auto *content = new QWidget(this);
    auto *column = new QVBoxLayout(content);
    m_fieldLayout = new QFormLayout;
    column->addLayout(m_fieldLayout);
    m_identity.build(m_fieldLayout);
    m_connection.build(m_fieldLayout);
    column->addWidget(StandardFields::triggerRow(m_trigger, content));
    column->addWidget(makeTableButtons(content));
    m_table = makeTable(content);
    m_table->setMinimumHeight(leastTableHeight);
    column->addWidget(m_table, 1);
    return content;
}

void StandardTableForm::replaceItem(QStandardItem *item)
{
    m_item = ItemRef(item);
    showItem(item);
    log("replace");
}

void StandardTableForm::showItem(QStandardItem *item)
{
    m_identity.fill(item);
    m_connection.fill(item);
    m_trigger.fill(item);
    m_table->fill(item->data(standardDatasRole).value<RowList>());
}

void StandardTableForm::saveChanges()
{
    if (!item()) {
        return; // its node has left the tree: there is nothing to write into
    }
    if (!saveItem(item())) {
        return;
    }
    if (workspace()) {
        workspace()->appendMessage(
            translated(m_kind.savedMessage).arg(m_identity.text(QStringLiteral("name"))));
    }
    logToFile(QLatin1String(m_kind.savedLine));
}

bool StandardTableForm::saveItem(QStandardItem *item)
{
    m_identity.save(item);
    m_connection.save(item);
    m_trigger.save(item);
    item->setData(QVariant::fromValue(m_table->rows()), standardDatasRole);
    return true;
}

void StandardTableForm::clearData()
{
    m_identity.clear();
    m_connection.clear();
    m_trigger.clear();
    m_table->setRowCount(0);
}

QLineEdit *StandardTableForm::nameEdit() const
{
    return m_identity.lineEdit(QStringLiteral("name"));
}

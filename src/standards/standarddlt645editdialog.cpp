#include "standards/standarddlt645editdialog.h"

#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/itemroles.h"
#include "model/workspace.h"
#include "standards/meterpage.h"
#include "standards/standardfields.h"
#include "standards/standardtabs.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItem>
#include <QTableWidget>

namespace {

constexpr char context[] = "standardDLT645EditDialog";

QVector<Field> identityFields()
{
    return {
        {"name", QT_TRANSLATE_NOOP("standardDLT645EditDialog", "Server Name:"), FieldKind::Text,
         Qt::DisplayRole},
        {"protocol",
         QT_TRANSLATE_NOOP("standardDLT645EditDialog", "Protocol:"),
         FieldKind::List,
         standardProtocolRole,
         FieldCheck::None,
         {QStringLiteral("DLT645")}},
    };
}

QVector<Field> serialFields()
{
    return StandardFields::serialLine("2400", "EVEN")
        + StandardFields::serialTimes("communicationTimeout", standardCommunicationTimeoutRole);
}

} // namespace

standardDLT645EditDialog::standardDLT645EditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent)
    : EditForm(parent)
    , m_item(item)
    , m_workspace(workspace)
    , m_identity(context, identityFields())
    , m_serial(context, serialFields())
    , m_trigger(context, StandardFields::trigger())
{
    setWindowTitle(tr("Edit Standard"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(FormPage::scrollArea(buildContent(), this));
    const FormPage::Buttons buttons = FormPage::appendButtons(layout, tr("Save"), tr("Cancel"));
    m_save = buttons.save;
    connect(buttons.cancel, &QPushButton::clicked, this, &standardDLT645EditDialog::rejected);
    fillFields();
    loadTabs();
    logToFile(QStringLiteral("standardDLT645EditDialog: new-nuilt"));
}

standardDLT645EditDialog::~standardDLT645EditDialog()
{
    logToFile(QStringLiteral("standardDLT645EditDialog: destroyed"));
}

QWidget *standardDLT645EditDialog::buildContent()
{
    auto *content = new QWidget(this);
    auto *column = new QVBoxLayout(content);
    auto *form = new QFormLayout;
    column->addLayout(form);
    m_identity.build(form);
    m_serial.build(form);
    column->addWidget(StandardFields::triggerRow(m_trigger, content));

    QPushButton *add = StandardTabs::makeAddButton(tr("Add Tab"), content);
    connect(add, &QPushButton::clicked, this, &standardDLT645EditDialog::addTab);
    column->addWidget(add, 0, Qt::AlignLeft);

    // Compat: loaded tabs bear the word of the other form.
    m_tabs = new StandardTabs(QStringLiteral("DLT645-%1"), QStringLiteral("Modbus-%1"), content);
    connect(m_tabs, &StandardTabs::tabCloseRequested, this, &standardDLT645EditDialog::deleteTab);
    column->addWidget(m_tabs);
    FieldTable::align({&m_identity, &m_serial, &m_trigger});
    return content;
}

MeterPage *standardDLT645EditDialog::makePage(const QString &title)
{
    auto *page = new MeterPage(m_serial.labelWidth(), m_tabs);
    connect(page, &MeterPage::selectAllPressed, this, [this] { toggleSelectAll(MeterPage::tickColumn); });
    connect(page->table(), &QTableWidget::cellChanged, this, &standardDLT645EditDialog::validateName);
    connect(page->table()->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &standardDLT645EditDialog::toggleSelectAll);
    connect(page->version(), qOverload<int>(&QComboBox::currentIndexChanged), this,
            &standardDLT645EditDialog::updateParameterTable);
    page->version()->installEventFilter(this);
    m_tabs->appendPage(page, title);
    return page;
}

MeterPage *standardDLT645EditDialog::currentPage() const
{
    auto *page = qobject_cast<MeterPage *>(m_tabs->currentWidget());
    return page && page->table() ? page : nullptr;
}

void standardDLT645EditDialog::fillFields()
{
    m_identity.fill(m_item.item());
    m_serial.fill(m_item.item());
    m_trigger.fill(m_item.item());
}

void standardDLT645EditDialog::loadTabs()
{
    m_tabs->load(m_item.item()->data(standardDatasRole),
                 [this](const QString &title, const RowList &rows) { loadTab(title, rows); });
}

void standardDLT645EditDialog::replaceItem(QStandardItem *item)
{
    m_item = ItemRef(item);
    fillFields();
    m_serial.resetEmptyLists(item); // on purpose other than at construction, where they go to their fallbacks
    m_tabs->deletePages();
    loadTabs();
    logToFile(QStringLiteral("standardDLT645EditDialog: replace"));
}

void standardDLT645EditDialog::addTab()
{
    makePage(m_tabs->takeTitle());
}

void standardDLT645EditDialog::loadTab(QString title, QList<QVariantList> rows)
{
    StandardPage *page = m_tabs->pageTitled(title);
    if (!page) {
        page = makePage(title);
    }
    page->setRows(rows);
    logToFile(QStringLiteral("standardDLT645EditDialog: loadParameters"));
}

void standardDLT645EditDialog::deleteTab(int index)
{
    m_tabs->deletePage(index);
}

void standardDLT645EditDialog::updateParameterTable(int index)
{
    Q_UNUSED(index)
    if (MeterPage *page = currentPage()) {
        page->showItems();
    }
}

void standardDLT645EditDialog::toggleSelectAll(int logicalIndex)
{
    MeterPage *page = currentPage();
    if (page && logicalIndex == MeterPage::tickColumn) {
        page->toggleTicks();
    }
}

void standardDLT645EditDialog::validateName(int row, int column)
{
    auto *table = qobject_cast<QTableWidget *>(sender());
    if (column != MeterPage::nameColumn || m_clearingName || !table) {
        return;
    }
    // Empty names count too, on purpose: emptying one beside another empty one brings the message.
    if (isNameDuplicate(table, row, MeterPage::nameOf(table, row))) {
        m_clearingName = true;
        if (m_workspace) {
            m_workspace->appendMessage(
                tr("The name of the '%1' line already exists. Please use a different name.").arg(row + 1));
        }
        table->item(row, MeterPage::nameColumn)->setText(QString());
        m_clearingName = false;
    }
}

bool standardDLT645EditDialog::isNameDuplicate(QTableWidget *table, int currentRow, QString currentName)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        if (row != currentRow && MeterPage::nameOf(table, row) == currentName) {
            return true;
        }
    }
    return false;
}

void standardDLT645EditDialog::saveChanges()
{
    QStandardItem *item = m_item.item();
    if (!item) {
        return; // its node has left the tree: there is nothing to write into
    }
    m_identity.save(item);
    m_serial.save(item);
    m_trigger.save(item);
    item->setData(QVariant::fromValue(m_tabs->groups()), standardDatasRole);
    if (m_workspace) {
        m_workspace->appendMessage(tr("The Standard DLT645 '%1' is saved successfully.")
                                       .arg(m_identity.text(QStringLiteral("name"))));
    }
    logToFile(QStringLiteral("standardDLT645EditDialog: save"));
}

void standardDLT645EditDialog::clearData()
{
    m_identity.clear();
    m_serial.clear();
    m_trigger.clear();
    m_tabs->deletePages();
}

QLineEdit *standardDLT645EditDialog::nameEdit() const
{
    return m_identity.lineEdit(QStringLiteral("name"));
}

bool standardDLT645EditDialog::eventFilter(QObject *obj, QEvent *event)
{
    return EditForm::eventFilter(obj, event);
}

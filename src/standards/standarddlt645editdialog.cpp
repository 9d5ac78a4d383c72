#include "standards/standarddlt645editdialog.h"

#include "definitions/protocols.h"
#include "model/itemroles.h"
#include "standards/meterpage.h"
#include "standards/standardfields.h"
#include "standards/standardtabs.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QStandardItem>
#include <QTableWidget>

standardDLT645EditDialog::standardDLT645EditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent)
    : DefinitionForm(
        {staticMetaObject.className(),
         QT_TRANSLATE_NOOP("standardDLT645EditDialog", "The Standard DLT645 '%1' is saved successfully.")},
        item, workspace, parent)
    , m_fields(staticMetaObject.className(), Definitions::Kind::Standard)
    , m_stored(
          [this](QStandardItem *shown) {
              m_tabs->deletePages();
              m_tabs->load(shown->data(standardDatasRole),
                           [this](const QString &title, const RowList &rows) { loadTab(title, rows); });
          },
          [this](QStandardItem *saved) {
              saved->setData(QVariant::fromValue(m_tabs->groups()), standardDatasRole);
          },
          [this] { m_tabs->deletePages(); })
{
    setWindowTitle(tr("Edit Standard"));
    setContent(buildContent(), {&m_fields, &m_stored});
}

QLineEdit *standardDLT645EditDialog::nameEdit() const
{
    return m_name->edit();
}

QWidget *standardDLT645EditDialog::buildContent()
{
    auto *content = new QWidget(this);
    auto *column = new QVBoxLayout(content);
    auto *form = new QFormLayout;
    column->addLayout(form);
    m_fields.setLayout(form);
    m_fields.resetEmptyOnRefill(); // Compat: at construction they go to their fallbacks instead
    m_name = m_fields.add<TextField>(Qt::DisplayRole, "name", tr("Server Name:"));
    m_fields.add<ListField>(standardProtocolRole, tr("Protocol:"))->entries({Protocols::dlt645});
    StandardFields::addSerialLine(m_fields, "2400", "EVEN");
    StandardFields::addSerialTimes(m_fields, standardCommunicationTimeoutRole);
    column->addWidget(StandardFields::makeTriggerRow(m_fields, content));
    FieldGroup::align({&m_fields});

    QPushButton *add = StandardTabs::makeAddButton(tr("Add Tab"), content);
    connect(add, &QPushButton::clicked, this, &standardDLT645EditDialog::addTab);
    column->addWidget(add, 0, Qt::AlignLeft);

    // Compat: loaded tabs bear the word of the other form.
    m_tabs = new StandardTabs(
        QStringLiteral("DLT645-%1"), QStringLiteral("Modbus-%1"), [this] { return makePage(); }, content);
    connect(m_tabs, &StandardTabs::tabCloseRequested, this, &standardDLT645EditDialog::deleteTab);
    connect(m_tabs, &StandardTabs::duplicateRequested, this, &standardDLT645EditDialog::duplicateTab);
    column->addWidget(m_tabs);
    return content;
}

MeterPage *standardDLT645EditDialog::makePage()
{
    auto *page = new MeterPage(m_fields.labelWidth(), m_tabs);
    connect(page, &MeterPage::selectAllPressed, this, [this] { toggleSelectAll(MeterPage::tickColumn); });
    connect(page->table(), &QTableWidget::cellChanged, this, &standardDLT645EditDialog::validateName);
    connect(page->table()->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &standardDLT645EditDialog::toggleSelectAll);
    connect(page->version(), qOverload<int>(&QComboBox::currentIndexChanged), this,
            &standardDLT645EditDialog::updateParameterTable);
    page->version()->installEventFilter(this);
    return page;
}

MeterPage *standardDLT645EditDialog::currentPage() const
{
    auto *page = qobject_cast<MeterPage *>(m_tabs->currentWidget());
    return page && page->table() ? page : nullptr;
}

void standardDLT645EditDialog::addTab()
{
    m_tabs->addPage();
}

void standardDLT645EditDialog::loadTab(QString title, QList<QVariantList> rows)
{
    m_tabs->pageTitled(title)->setRows(rows);
    log("loadParameters");
}

void standardDLT645EditDialog::deleteTab(int index)
{
    m_tabs->deletePage(index);
}

void standardDLT645EditDialog::duplicateTab(int index)
{
    if (const MeterPage *page = currentPage()) {
        page->table()->setFocus(); // ends the editing of a name: a click on a tab does not
    }
    m_tabs->duplicatePage(index);
}

void standardDLT645EditDialog::updateParameterTable(int)
{
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
    // Compat: two empty names are a duplicate, too.
    if (isNameDuplicate(table, row, MeterPage::nameOf(table, row))) {
        m_clearingName = true;
        appendMessage(
            tr("The name of the '%1' line already exists. Please use a different name.").arg(row + 1));
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

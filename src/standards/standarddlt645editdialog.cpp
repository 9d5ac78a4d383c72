#include "standards/standarddlt645editdialog.h"

#include "definitions/dlt645items.h"
#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/itemroles.h"
#include "model/workspace.h"
#include "standards/standardfields.h"
#include "standards/standardtabs.h"
#include "widgets/tablecopy.h"
#include "widgets/tableheader.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QStandardItem>
#include <QTableWidget>

namespace {

constexpr char context[] = "standardDLT645EditDialog";
constexpr int tickColumn = 0;
constexpr int labelColumn = 1;
constexpr int nameColumn = 2;

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

QVector<Field> meterFields()
{
    return {
        {"slaveAddressEdit", QT_TRANSLATE_NOOP("standardDLT645EditDialog", "Slave Address:"), FieldKind::Text,
         FieldTable::noRole},
        {"protocolVersionComboBox",
         QT_TRANSLATE_NOOP("standardDLT645EditDialog", "Protocol Version:"),
         FieldKind::List,
         FieldTable::noRole,
         FieldCheck::None,
         {Dlt645::versionText(Dlt645::Version2007), Dlt645::versionText(Dlt645::Version1997)}},
    };
}

QCheckBox *tickOf(const QTableWidget *table, int row)
{
    return qobject_cast<QCheckBox *>(table->cellWidget(row, tickColumn));
}

QString textOf(const QTableWidget *table, int row, int column)
{
    const QTableWidgetItem *item = table->item(row, column);
    return item ? item->text() : QString();
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

    // Loaded tabs bear the word that stored projects have, on purpose.
    m_tabs = new StandardTabs(QStringLiteral("DLT645-%1"), QStringLiteral("Modbus-%1"), content);
    connect(m_tabs, &StandardTabs::tabCloseRequested, this, &standardDLT645EditDialog::deleteTab);
    column->addWidget(m_tabs);
    FieldTable::align({&m_identity, &m_serial, &m_trigger});
    return content;
}

QWidget *standardDLT645EditDialog::makePage(const QString &title)
{
    auto *page = new QWidget(m_tabs);
    auto *column = new QVBoxLayout(page);
    auto *form = new QFormLayout;
    column->addLayout(form);
    FieldTable meter(context, meterFields());
    meter.build(form);
    meter.setLabelWidth(m_serial.labelWidth() - column->contentsMargins().left());
    QLineEdit *address = meter.lineEdit(QStringLiteral("slaveAddressEdit"));
    static const QRegularExpression digits(QStringLiteral("^[0-9A-Fa-f]{0,12}$"));
    address->setValidator(new QRegularExpressionValidator(digits, address));
    address->setText(QStringLiteral("AAAAAAAAAAAA")); // the address that every meter answers to

    QPushButton *all =
        FormPage::button(tr("Select All"), QStringLiteral(":/adsdemo/images/SelectAll.svg"), page);
    all->setObjectName(QStringLiteral("selectAllButton"));
    connect(all, &QPushButton::clicked, this, [this] { toggleSelectAll(tickColumn); });
    column->addWidget(all, 0, Qt::AlignLeft);

    QComboBox *version = meter.comboBox(QStringLiteral("protocolVersionComboBox"));
    QTableWidget *table = makeTable(page);
    column->addWidget(table);
    fillTable(table, version->currentText());
    connect(version, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &standardDLT645EditDialog::updateParameterTable);
    version->installEventFilter(this);
    column->addStretch();
    m_tabs->appendPage(page, title);
    return page;
}

QTableWidget *standardDLT645EditDialog::makeTable(QWidget *page)
{
    auto *table = new QTableWidget(0, 3, page);
    table->setHorizontalHeaderLabels({tr("Select All"), tr("Data name"), tr("Name")});
    table->setColumnWidth(tickColumn, 40);
    table->setColumnWidth(labelColumn, 150);
    table->setColumnWidth(nameColumn, 90);
    TableHeader::explain(table);
    table->setWordWrap(false);
    table->setFixedHeight(StandardTabs::tableHeight);
    table->setStyleSheet(QStringLiteral("QTableWidget { border: none; }"));
    TableHeader::makeGrey(table);
    TableCopy::install(table);
    table->setTabKeyNavigation(false); // else Tab would never leave it
    connect(table, &QTableWidget::cellChanged, this, &standardDLT645EditDialog::validateName);
    connect(table->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &standardDLT645EditDialog::toggleSelectAll);
    return table;
}

void standardDLT645EditDialog::fillTable(QTableWidget *table, const QString &version)
{
    // No check while filling: checks answer to the user's editing.
    const QSignalBlocker quiet(table);
    const QVector<const Dlt645::Item *> items = Dlt645::itemsOf(Dlt645::versionOf(version));
    table->setRowCount(0);
    table->setRowCount(items.size());
    for (int row = 0; row < items.size(); ++row) {
        table->setItem(row, tickColumn, new QTableWidgetItem);
        table->setCellWidget(row, tickColumn, new QCheckBox(table));
        auto *label = new QTableWidgetItem(Dlt645::label(*items.at(row)));
        label->setFlags(label->flags() & ~Qt::ItemIsEditable);
        label->setToolTip(label->text());
        table->setItem(row, labelColumn, label);
        table->setItem(row, nameColumn, new QTableWidgetItem);
    }
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
    QWidget *page = m_tabs->pageTitled(title);
    if (!page) {
        page = makePage(title);
    }
    auto *version = page->findChild<QComboBox *>(QStringLiteral("protocolVersionComboBox"));
    if (!rows.isEmpty()) {
        const QVariantList settings = rows.takeFirst();
        page->findChild<QLineEdit *>(QStringLiteral("slaveAddressEdit"))
            ->setText(settings.value(0).toString());
        // This page need not be the current one, on which a change of the edition would act.
        const QSignalBlocker quiet(version);
        version->setCurrentText(settings.value(1).toString());
    }
    auto *table = page->findChild<QTableWidget *>();
    fillTable(table, version->currentText());
    const QSignalBlocker quiet(table);
    for (int row = 0; row < qMin(rows.size(), table->rowCount()); ++row) {
        const QVariantList &values = rows.at(row);
        tickOf(table, row)->setChecked(ProjectTree::isTrue(values.value(0)));
        for (int column = labelColumn; column < qMin(values.size(), table->columnCount()); ++column) {
            table->item(row, column)->setText(values.at(column).toString());
        }
        table->item(row, labelColumn)->setToolTip(textOf(table, row, labelColumn));
    }
    logToFile(QStringLiteral("standardDLT645EditDialog: loadParameters"));
}

void standardDLT645EditDialog::deleteTab(int index)
{
    m_tabs->deletePage(index);
}

void standardDLT645EditDialog::updateParameterTable(int index)
{
    Q_UNUSED(index)
    const QWidget *page = m_tabs->currentWidget();
    auto *table = page ? page->findChild<QTableWidget *>() : nullptr;
    if (table) {
        fillTable(table, page->findChild<QComboBox *>()->currentText());
    }
}

void standardDLT645EditDialog::toggleSelectAll(int logicalIndex)
{
    const QWidget *page = m_tabs->currentWidget();
    const auto *table = page ? page->findChild<QTableWidget *>() : nullptr;
    if (logicalIndex != tickColumn || !table) {
        return;
    }
    bool allTicked = true;
    for (int row = 0; row < table->rowCount(); ++row) {
        allTicked = allTicked && tickOf(table, row)->isChecked();
    }
    for (int row = 0; row < table->rowCount(); ++row) {
        tickOf(table, row)->setChecked(!allTicked);
    }
}

void standardDLT645EditDialog::validateName(int row, int column)
{
    auto *table = qobject_cast<QTableWidget *>(sender());
    if (column != nameColumn || m_clearingName || !table) {
        return;
    }
    // Empty names count too, on purpose: emptying one beside another empty one brings the message.
    if (isNameDuplicate(table, row, textOf(table, row, nameColumn))) {
        m_clearingName = true;
        if (m_workspace) {
            m_workspace->appendMessage(
                tr("The name of the '%1' line already exists. Please use a different name.").arg(row + 1));
        }
        table->item(row, nameColumn)->setText(QString());
        m_clearingName = false;
    }
}

bool standardDLT645EditDialog::isNameDuplicate(QTableWidget *table, int currentRow, QString currentName)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        if (row != currentRow && textOf(table, row, nameColumn) == currentName) {
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
    const GroupMap tabs = m_tabs->groups([this](const QWidget *page) { return rowsOf(page); });
    item->setData(QVariant::fromValue(tabs), standardDatasRole);
    if (m_workspace) {
        m_workspace->appendMessage(tr("The Standard DLT645 '%1' is saved successfully.")
                                       .arg(m_identity.text(QStringLiteral("name"))));
    }
    logToFile(QStringLiteral("standardDLT645EditDialog: save"));
}

RowList standardDLT645EditDialog::rowsOf(const QWidget *page) const
{
    const auto *table = page->findChild<QTableWidget *>();
    const auto *address = page->findChild<QLineEdit *>(QStringLiteral("slaveAddressEdit"));
    const auto *version = page->findChild<QComboBox *>(QStringLiteral("protocolVersionComboBox"));
    if (!table || !address || !version) {
        return {};
    }
    RowList rows{{address->text(), version->currentText()}};
    for (int row = 0; row < table->rowCount(); ++row) {
        rows.append({tickOf(table, row)->isChecked(), textOf(table, row, labelColumn),
                     textOf(table, row, nameColumn)});
    }
    return rows;
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

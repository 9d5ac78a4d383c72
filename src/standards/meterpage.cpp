#include "standards/meterpage.h"

#include "definitions/dlt645items.h"
#include "forms/formpage.h"
#include "standards/standarddlt645editdialog.h"
#include "standards/standardtabs.h"
#include "widgets/tablecopy.h"
#include "widgets/tableheader.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>

namespace {

QCheckBox *tickOf(const QTableWidget *table, int row)
{
    return qobject_cast<QCheckBox *>(table->cellWidget(row, MeterPage::tickColumn));
}

QString textOf(const QTableWidget *table, int row, int column)
{
    const QTableWidgetItem *item = table->item(row, column);
    return item ? item->text() : QString();
}

} // namespace

MeterPage::MeterPage(int labelWidth, QWidget *parent)
    : StandardPage(parent)
    , m_settings("standardDLT645EditDialog", Definitions::Kind::Standard)
{
    auto *column = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    column->addLayout(form);
    m_settings.setLayout(form);
    m_address = m_settings
                    .add<TextField>(FormField::noRole, "slaveAddressEdit",
                                    standardDLT645EditDialog::tr("Slave Address:"))
                    ->pattern("^[0-9A-Fa-f]{0,12}$");
    m_address->setText(QStringLiteral("AAAAAAAAAAAA")); // the address that every meter answers to
    m_version =
        m_settings
            .add<ListField>(FormField::noRole, "protocolVersionComboBox",
                            standardDLT645EditDialog::tr("Protocol Version:"))
            ->entries({Dlt645::versionText(Dlt645::Version2007), Dlt645::versionText(Dlt645::Version1997)});
    m_settings.setLabelWidth(labelWidth - column->contentsMargins().left());

    QPushButton *all = FormPage::button(standardDLT645EditDialog::tr("Select All"),
                                        QStringLiteral(":/adsdemo/images/SelectAll.svg"), this);
    all->setObjectName(QStringLiteral("selectAllButton"));
    connect(all, &QPushButton::clicked, this, &MeterPage::selectAllPressed);
    m_filter = makeFilter();
    auto *above = new QHBoxLayout;
    above->addWidget(all);
    above->addWidget(m_filter);
    column->addLayout(above);
    m_table = makeTable();
    column->addWidget(m_table);
    column->addStretch();
    showItems();
}

QLineEdit *MeterPage::makeFilter()
{
    auto *filter = new QLineEdit(this);
    filter->setObjectName(QStringLiteral("filter"));
    filter->setPlaceholderText(standardDLT645EditDialog::tr("Filter by data name or name"));
    filter->setAccessibleName(filter->placeholderText());
    filter->setClearButtonEnabled(true);
    connect(filter, &QLineEdit::textChanged, this, &MeterPage::applyFilter);
    return filter;
}

QTableWidget *MeterPage::makeTable()
{
    auto *table = new QTableWidget(0, 3, this);
    table->setHorizontalHeaderLabels({standardDLT645EditDialog::tr("Select All"),
                                      standardDLT645EditDialog::tr("Data name"),
                                      standardDLT645EditDialog::tr("Name")});
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
    return table;
}

QTableWidget *MeterPage::table() const
{
    return m_table;
}

QLineEdit *MeterPage::addressInput() const
{
    return m_address->edit();
}

RowList MeterPage::rows() const
{
    if (!m_table || !m_settings.isComplete()) {
        return {};
    }
    RowList rows{m_settings.values()};
    for (int row = 0; row < m_table->rowCount(); ++row) {
        rows.append({tickOf(m_table, row)->isChecked(), textOf(m_table, row, labelColumn),
                     textOf(m_table, row, nameColumn)});
    }
    return rows;
}

void MeterPage::setRows(const RowList &rows)
{
    if (!m_table || !m_settings.isComplete()) {
        return;
    }
    if (!rows.isEmpty()) {
        // This page need not be the current one, on which a change of the edition would act.
        const QSignalBlocker quiet(version());
        m_settings.setValues(rows.first());
    }
    showItems();
    const QSignalBlocker quiet(m_table);
    for (int row = 0; row < qMin(rows.size() - 1, m_table->rowCount()); ++row) {
        const QVariantList &values = rows.at(row + 1);
        tickOf(m_table, row)->setChecked(ProjectTree::isTrue(values.value(0)));
        for (int column = labelColumn; column < qMin(values.size(), m_table->columnCount()); ++column) {
            m_table->item(row, column)->setText(values.at(column).toString());
        }
        m_table->item(row, labelColumn)->setToolTip(textOf(m_table, row, labelColumn));
    }
    applyFilter();
}

void MeterPage::showItems()
{
    // No check while filling: checks answer to the user's editing.
    const QSignalBlocker quiet(m_table);
    const QVector<const Dlt645::Item *> items = Dlt645::itemsOf(Dlt645::versionOf(version()->currentText()));
    m_table->setRowCount(0);
    m_table->setRowCount(items.size());
    QWidget *previous = m_table;
    for (int row = 0; row < items.size(); ++row) {
        m_table->setItem(row, tickColumn, new QTableWidgetItem);
        auto *tick = new QCheckBox(m_table);
        m_table->setCellWidget(row, tickColumn, tick);
        setTabOrder(previous, tick); // else it would come behind all that the form had before
        previous = tick;
        auto *label = new QTableWidgetItem(Dlt645::label(*items.at(row)));
        label->setFlags(label->flags() & ~Qt::ItemIsEditable);
        label->setToolTip(label->text());
        m_table->setItem(row, labelColumn, label);
        m_table->setItem(row, nameColumn, new QTableWidgetItem);
    }
    applyFilter();
}

void MeterPage::applyFilter()
{
    const QString wanted = m_filter ? m_filter->text() : QString();
    for (int row = 0; m_table && row < m_table->rowCount(); ++row) {
        const bool found = textOf(m_table, row, labelColumn).contains(wanted, Qt::CaseInsensitive)
            || textOf(m_table, row, nameColumn).contains(wanted, Qt::CaseInsensitive);
        m_table->setRowHidden(row, !found);
    }
}

void MeterPage::toggleTicks()
{
    bool allTicked = true;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        allTicked = allTicked && tickOf(m_table, row)->isChecked();
    }
    for (int row = 0; row < m_table->rowCount(); ++row) {
        tickOf(m_table, row)->setChecked(!allTicked);
    }
}

QString MeterPage::nameOf(const QTableWidget *table, int row)
{
    return textOf(table, row, nameColumn);
}

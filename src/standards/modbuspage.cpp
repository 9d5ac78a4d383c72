#include "standards/modbuspage.h"

#include "parametertable/parametertable.h"
#include "standards/modbusfields.h"

#include <QFormLayout>

ModbusPage::ModbusPage(int fieldColumn, QWidget *parent)
    : StandardPage(parent)
    , m_settings("standardModbusEditDialog", Definitions::Kind::Standard)
{
    auto *column = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    column->addLayout(form);
    m_settings.setLayout(form);
    m_station = ModbusFields::addSlave(m_settings);
    m_settings.setLabelWidth(fieldColumn - column->contentsMargins().left());
}

void ModbusPage::addTable(QWidget *buttons, ParameterTable *table)
{
    m_table = table;
    auto *column = static_cast<QVBoxLayout *>(layout());
    column->addWidget(buttons);
    column->addWidget(table);
    column->addStretch();
}

ParameterTable *ModbusPage::table() const
{
    return m_table;
}

QLineEdit *ModbusPage::addressInput() const
{
    return m_station->edit();
}

RowList ModbusPage::rows() const
{
    if (!m_table || !m_settings.isComplete()) {
        return {};
    }
    return RowList{m_settings.values()} + m_table->rows();
}

void ModbusPage::setRows(const RowList &rows)
{
    if (rows.isEmpty() || !m_table || !m_settings.isComplete()) {
        return;
    }
    m_settings.setValues(rows.first());
    m_table->fill(rows.mid(1));
}

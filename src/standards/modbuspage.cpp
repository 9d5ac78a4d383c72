#include "standards/modbuspage.h"

#include "parametertable/parametertable.h"
#include "standards/modbusfields.h"

#include <QFormLayout>

ModbusPage::ModbusPage(int fieldColumn, QWidget *parent)
    : StandardPage(parent)
    , m_settings(ModbusFields::context, ModbusFields::slave())
{
    auto *column = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    column->addLayout(form);
    m_settings.build(form);
    m_settings.setLabelWidth(fieldColumn - column->contentsMargins().left());
    m_settings.widget(QStringLiteral("seriesComboBox"))->setEnabled(false);
    m_settings.setText(QStringLiteral("stationNumEdit"), QStringLiteral("1"));
    m_settings.setText(QStringLiteral("startAddress0CheckBox"), QStringLiteral("true"));
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

RowList ModbusPage::rows() const
{
    if (!m_table) {
        return {};
    }
    QVariantList settings;
    for (const Field &field : m_settings.fields()) {
        settings.append(m_settings.value(QLatin1String(field.name)));
    }
    return RowList{settings} + m_table->rows();
}

void ModbusPage::setRows(const RowList &rows)
{
    if (rows.isEmpty() || !m_table) {
        return;
    }
    int index = 0;
    for (const Field &field : m_settings.fields()) {
        m_settings.setText(QLatin1String(field.name), rows.first().value(index++).toString());
    }
    m_table->fill(rows.mid(1));
}

#pragma once

#include "forms/fieldgroup.h"
#include "standards/standardpage.h"

#include <QPointer>

class ParameterTable;

// One slave of a Modbus Standard: its station number, its byte order and its parameters. Row 0 holds series,
// station number, byte order and the two flags, each further row a parameter of five texts.
class ModbusPage : public StandardPage
{
    Q_OBJECT
public:
    // The fields begin that many pixels from the left.
    ModbusPage(int fieldColumn, QWidget *parent);

    // The page takes both; called once.
    void addTable(QWidget *buttons, ParameterTable *table);
    // The table of the parameters; null if it is gone.
    ParameterTable *table() const;

    RowList rows() const override;
    // Without any row nothing changes.
    void setRows(const RowList &rows) override;
    QLineEdit *addressInput() const override;

private:
    FieldGroup m_settings;
    const TextField *m_station;
    QPointer<ParameterTable> m_table;
};

#pragma once

#include "pointformtest.h"
#include "servers/servermodbustcpeditdialog.h"

#include <QTabWidget>

// What the tests of the Modbus TCP slave share: its form, shown, on a slave at port 502.
class ModbusFormTest : public PointFormTest
{
protected:
    ModbusFormTest()
        : PointFormTest("Map", "ModbusTCP(Slave)")
    {
    }
    void prepare(QStandardItem *item) const override
    {
        PointFormTest::prepare(item);
        item->setData("502", serverPortRole);
    }

    QTableView *view(const char *name) const { return find<QTableView>(*m_form, name); }
    QAbstractItemModel *holding() const { return view("holdingRegisters")->model(); }
    QAbstractItemModel *input() const { return view("inputRegisters")->model(); }
    void showInput() const { m_form->findChild<QTabWidget *>()->setCurrentIndex(1); }
    // Shows these rows as holding registers of the item.
    void load(const RowList &rows)
    {
        setRows(m_item, serverHoldingRegistersRole, rows);
        m_form->replaceItem(m_item);
    }

    static QVariantList row(const QString &name, const QString &type, const QString &address,
                            const QString &length)
    {
        return {source(), name, type, address, length};
    }
    // Rows that follow each other without a gap, named "p0" and so on.
    static RowList rowsOfLengths(const QVector<int> &lengths)
    {
        RowList rows;
        int address = 0;
        for (int length : lengths) {
            rows.append(
                row(QString("p%1").arg(rows.size()), "t", QString::number(address), QString::number(length)));
            address += length;
        }
        return rows;
    }
    static QStringList addresses(const QAbstractItemModel *map)
    {
        QStringList texts;
        for (int index = 0; index < map->rowCount(); ++index) {
            texts.append(map->index(index, addressColumn).data().toString());
        }
        return texts;
    }
    static void setAddress(QAbstractItemModel *map, int row, const QString &address)
    {
        map->setData(map->index(row, addressColumn), address);
    }

    static constexpr int addressColumn = 3;
    static QString source() { return "Meter A"; }
    void init() override
    {
        FormTest::init();
        m_form = std::make_unique<ServerModbusTCPEditDialog>(m_item, m_workspace);
        m_form->resize(800, 700);
        m_form->show();
    }
    void cleanup() override
    {
        m_form.reset();
        FormTest::cleanup();
    }

    std::unique_ptr<ServerModbusTCPEditDialog> m_form;
};

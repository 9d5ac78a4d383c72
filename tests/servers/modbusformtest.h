#pragma once

#include "messages.h"
#include "pointformtest.h"
#include "servers/servermodbustcpeditdialog.h"
#include "workspacefake.h"

#include <QTabWidget>

// What the tests of the Modbus TCP slave share.
namespace ModbusFormTest {

using namespace PointFormTest;

constexpr int addressColumn = 3;
const QString source = "Meter A";

inline QVariantList row(const QString &name, const QString &type, const QString &address,
                        const QString &length)
{
    return {source, name, type, address, length};
}

// Rows that follow each other without a gap, named "p0" and so on.
inline RowList rowsOfLengths(const QVector<int> &lengths)
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

inline QStringList addresses(const QAbstractItemModel *map)
{
    QStringList texts;
    for (int index = 0; index < map->rowCount(); ++index) {
        texts.append(map->index(index, addressColumn).data().toString());
    }
    return texts;
}

inline QStringList texts(std::initializer_list<const char *> list)
{
    QStringList made;
    for (const char *text : list) {
        made.append(QString::fromLatin1(text));
    }
    return made;
}

inline void setAddress(QAbstractItemModel *map, int row, const char *address)
{
    map->setData(map->index(row, addressColumn), QString::fromLatin1(address));
}

// The form of an item, shown; a box that nobody expected fails the test.
class Fixture : public QObject
{
protected:
    void open()
    {
        m_item = new QStandardItem("Map");
        m_item->setData("ModbusTCP(Slave)", serverProtocolRole);
        m_item->setData("502", serverPortRole);
        m_workspace = new WorkspaceFake;
        m_messages = new Messages;
        m_form = new ServerModbusTCPEditDialog(m_item, m_workspace);
        m_form->resize(800, 700);
        m_form->show();
    }
    void close()
    {
        QCOMPARE(m_messages->pending(), 0);
        delete m_form;
        m_form = nullptr;
        delete m_messages;
        delete m_workspace;
        delete m_item;
    }

    QTableView *view(const char *name) const { return m_form->findChild<QTableView *>(QLatin1String(name)); }
    QAbstractItemModel *holding() const { return view("holdingRegisters")->model(); }
    QAbstractItemModel *input() const { return view("inputRegisters")->model(); }
    void showInput() const { m_form->findChild<QTabWidget *>()->setCurrentIndex(1); }
    // Shows these rows as holding registers of the item.
    void load(const RowList &rows)
    {
        m_item->setData(QVariant::fromValue(rows), serverHoldingRegistersRole);
        m_form->replaceItem(m_item);
    }

    QStandardItem *m_item = nullptr;
    ServerModbusTCPEditDialog *m_form = nullptr;
    WorkspaceFake *m_workspace = nullptr;
    Messages *m_messages = nullptr;
};

} // namespace ModbusFormTest

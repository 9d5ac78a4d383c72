#include "servers/servermodbustcpeditdialog.h"

#include "definitions/protocols.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "widgets/tell.h"

#include <QHeaderView>
#include <QPointer>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

namespace {

constexpr int leastWidth = 140; // pixels of a column: in a narrow tab the table scrolls

enum Column { PlcColumn, NameColumn, TypeColumn, AddressColumn, LengthColumn };

// Where the rows of each map are kept, in the order of the tabs.
const QVector<int> &mapRoles()
{
    static const QVector<int> roles = {serverHoldingRegistersRole, serverInputRegistersRole};
    return roles;
}

// How many registers a value takes. Arithmetic is in 64 bits: the numbers are what a file or a user gave.
qint64 addressLength(const QString &type, qint64 characters)
{
    static const struct {
        const char *type;
        int length;
    } lengths[] = {{"bool", 1},  {"int8", 1},   {"uint8", 1}, {"int16", 1}, {"uint16", 1}, {"bit", 1},
                   {"int32", 2}, {"uint32", 2}, {"float", 2}, {"int64", 4}, {"uint64", 4}, {"double", 4}};
    if (type == QLatin1String("string")) {
        return (characters + 1) / 2; // two characters a register
    }
    for (const auto &row : lengths) {
        if (type == QLatin1String(row.type)) {
            return row.length;
        }
    }
    return 0;
}

// A cell that is no number counts as 0.
qint64 numberAt(const QAbstractItemModel *model, int row, Column column)
{
    return model->index(row, column).data().toInt();
}

// A half-open range of registers.
struct Registers {
    qint64 first;
    qint64 length;

    bool hold(qint64 address) const { return first <= address && address < first + length; }
};

Registers registersAt(const QAbstractItemModel *model, int row)
{
    return {numberAt(model, row, AddressColumn), numberAt(model, row, LengthColumn)};
}

RowList rowsOf(const QAbstractItemModel *map)
{
    RowList rows;
    for (int row = 0; row < map->rowCount(); ++row) {
        QVariantList cells;
        for (int column = 0; column < map->columnCount(); ++column) {
            cells.append(map->index(row, column).data().toString());
        }
        rows.append(cells);
    }
    return rows;
}

QStandardItem *makeCell(const QString &text, int column)
{
    auto *cell = new QStandardItem(text);
    if (column < AddressColumn) {
        cell->setToolTip(text); // may be longer than its column
    }
    return cell;
}

} // namespace

ServerModbusTCPEditDialog::ServerModbusTCPEditDialog(QStandardItem *item, Workspace *workspace)
    : PointForm({staticMetaObject.className(),
                 QT_TRANSLATE_NOOP("ServerModbusTCPEditDialog",
                                   "The Server ModbusTCP(Slave) '%1' is saved successfully.")},
                {"ServerModbusTCPEditDialog: delete", true}, item, workspace)
    // Compat: a save writes none of the fields, so that their texts never reach the item from here.
    , m_shownFields([this](QStandardItem *shown) { fields().fill(shown); }, {}, [this] { fields().clear(); })
    , m_registers([this](QStandardItem *shown) { populateData(shown); },
                  [this](QStandardItem *saved) { saveMaps(saved); }, [this] { clearMaps(); })
{
    setWindowTitle(tr("Edit Server"));
    addFields();
    setupUI();
    setParts({&m_shownFields, &m_registers});
    // Compat: set after the fields have shown it, whatever it held.
    item->setData(QStringLiteral("Slave"), serverTypeRole);
}

void ServerModbusTCPEditDialog::addFields()
{
    fields().add<TextField>(Qt::DisplayRole, "name", tr("Server Name:"))->readOnly();
    fields().add<TextField>(serverTypeRole, tr("Type:"));
    // Compat: an empty list for another protocol, or for none, unlike in the other forms.
    fields()
        .add<CodedField>(serverProtocolRole, tr("Protocol:"))
        ->choices({{Protocols::modbusTcpSlave.latin1(), QString(Protocols::modbusTcpSlave)}})
        ->unknownShowsNone();
    fields().add<TextField>(serverPortRole, tr("Port:"));
}

void ServerModbusTCPEditDialog::setupUI()
{
    if (m_tabs) {
        return;
    }
    m_tabs = new QTabWidget(page()->parentWidget());
    m_tabs->setObjectName(QStringLiteral("maps"));
    addMap(tr("Holding Register"), QStringLiteral("holdingRegisters"));
    addMap(tr("Input Register"), QStringLiteral("inputRegisters"));
    page()->addWidget(m_tabs);
}

void ServerModbusTCPEditDialog::populateData(QStandardItem *item)
{
    for (int index = 0; item && index < m_maps.size(); ++index) {
        QStandardItemModel *map = m_maps.at(index);
        map->removeRows(0, map->rowCount());
        const auto rows = item->data(mapRoles().at(index)).value<RowList>();
        for (const QVariantList &cells : rows) {
            QList<QStandardItem *> row;
            for (int column = 0; column < map->columnCount(); ++column) {
                row.append(makeCell(cells.value(column).toString(), column));
            }
            map->appendRow(row);
        }
    }
}

void ServerModbusTCPEditDialog::saveMaps(QStandardItem *item) const
{
    for (int index = 0; index < m_maps.size(); ++index) {
        item->setData(QVariant::fromValue(rowsOf(m_maps.at(index))), mapRoles().at(index));
    }
}

void ServerModbusTCPEditDialog::clearMaps()
{
    for (QStandardItemModel *map : qAsConst(m_maps)) {
        map->removeRows(0, map->rowCount());
    }
}

void ServerModbusTCPEditDialog::saveData()
{
    saveChanges();
}

void ServerModbusTCPEditDialog::closeDialog()
{
    cancel();
}

void ServerModbusTCPEditDialog::handleImportedData(const QList<QJsonObject> &points,
                                                   const QString &currentPLC)
{
    if (pointView()) {
        PointForm::handleImportedData(points, currentPLC);
        emit dataImported(points, currentPLC);
    }
}

void ServerModbusTCPEditDialog::handleDataChanged(const QModelIndex &topLeft, const QModelIndex &)
{
    auto *map = qobject_cast<QStandardItemModel *>(sender());
    if (!m_maps.contains(map) || topLeft.column() != AddressColumn) {
        return;
    }
    if (!checkAddressConflict(map, topLeft.row())) {
        m_conflictReported = false;
        return;
    }
    const QPersistentModelIndex cell(topLeft);
    if (!m_conflictReported) {
        const QPointer<ServerModbusTCPEditDialog> guard(this);
        Tell::warning(this, tr("Warning"), tr("Address conflict detected. Please resolve the conflict."));
        if (!guard) {
            return;
        }
    }
    // Emptying the cell leads back here, where an empty cell counts as address 0 and may conflict as such.
    m_conflictReported = true;
    map->setData(cell, QString(QLatin1String("")), Qt::EditRole);
}

bool ServerModbusTCPEditDialog::checkAddressConflict(QStandardItemModel *model, int row) const
{
    const Registers own = registersAt(model, row);
    for (int other = 0; other < model->rowCount(); ++other) {
        const Registers taken = registersAt(model, other);
        if (other != row && (taken.hold(own.first) || own.hold(taken.first))) {
            return true;
        }
    }
    return false;
}

QTableView *ServerModbusTCPEditDialog::pointView() const
{
    return pointViews().value(m_tabs->currentIndex());
}

QStringList ServerModbusTCPEditDialog::leadingCells(const QJsonObject &point, const QString &currentPLC) const
{
    return {currentPLC, point.value(QLatin1String("name")).toString(),
            point.value(QLatin1String("dataType")).toString()};
}

void ServerModbusTCPEditDialog::appendPoint(const QStringList &leading, const QJsonObject &point)
{
    QStandardItemModel *map = m_maps.at(m_tabs->currentIndex());
    qint64 address = 0; // Compat: the sum of the lengths, whatever addresses were edited
    for (int row = 0; row < map->rowCount(); ++row) {
        address += numberAt(map, row, LengthColumn);
    }
    const qint64 length =
        addressLength(leading.at(TypeColumn), point.value(QLatin1String("length")).toVariant().toInt());
    QList<QStandardItem *> row;
    const QStringList cells = leading + QStringList{QString::number(address), QString::number(length)};
    for (const QString &text : cells) {
        row.append(makeCell(text, row.size()));
        row.last()->setEditable(row.size() - 1 == AddressColumn);
    }
    map->appendRow(row);
}

void ServerModbusTCPEditDialog::removePoint(QAbstractItemModel *model, int row)
{
    const qint64 length = numberAt(model, row, LengthColumn);
    model->removeRow(row);
    // Compat: by position and not by address, so that a map edited by hand may go negative or out of order.
    // Each step is checked as an edit is, and its message may outlive the form.
    const QPointer<QAbstractItemModel> map(model);
    for (int next = row; map && next < map->rowCount(); ++next) {
        map->setData(map->index(next, AddressColumn),
                     QString::number(numberAt(map, next, AddressColumn) - length), Qt::EditRole);
    }
}

void ServerModbusTCPEditDialog::addMap(const QString &title, const QString &name)
{
    auto *map = new QStandardItemModel(0, LengthColumn + 1, this);
    map->setHorizontalHeaderLabels(
        {tr("PLC Name"), tr("Variable Name"), tr("Data Type"), tr("Modbus Address"), tr("Address length")});
    connect(map, &QStandardItemModel::dataChanged, this, &ServerModbusTCPEditDialog::handleDataChanged);
    m_maps.append(map);
    auto *view = new QTableView(m_tabs);
    view->setObjectName(name);
    view->setModel(map);
    addPointView(view);
    view->horizontalHeader()->setMinimumSectionSize(leastWidth);
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_tabs->addTab(view, title);
}

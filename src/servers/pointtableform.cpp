#include "servers/pointtableform.h"

#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QHeaderView>
#include <QStandardItem>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int codeColumn = 2;
constexpr int nameWidth = 130; // pixels of a source or a name

} // namespace

PointTableForm::PointTableForm(const Names &names, const Points &points, QStandardItem *item,
                               Workspace *workspace)
    : PointForm(names, points, item, workspace)
    , m_pointTable([this](QStandardItem *shown) { fillPoints(shown); },
                   [this](QStandardItem *saved) { savePoints(saved); }, [this] { m_table->setRowCount(0); })
{
}

void PointTableForm::addPoints(const QStringList &headers)
{
    m_table = new QTableWidget(0, headers.size(), page()->parentWidget());
    m_table->setObjectName(QStringLiteral("points"));
    m_table->setHorizontalHeaderLabels(headers);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->horizontalHeader()->setDefaultSectionSize(nameWidth);
    m_table->horizontalHeader()->setStretchLastSection(true);
    addPointView(m_table);
    page()->addWidget(m_table);
    setParts({&fields(), &m_pointTable});
}

void PointTableForm::fillPoints(const QStandardItem *item)
{
    const auto points = item->data(serverPointsRole).value<RowList>();
    m_table->setRowCount(0);
    m_table->setRowCount(points.size());
    for (int row = 0; row < points.size(); ++row) {
        const QVariantList &cells = points.at(row);
        fillRow(row, {cells.value(0).toString(), cells.value(1).toString()},
                cells.value(codeColumn).toString());
    }
}

void PointTableForm::savePoints(QStandardItem *item) const
{
    RowList points;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        QVariantList cells;
        for (int column = 0; column < m_table->columnCount(); ++column) {
            const QTableWidgetItem *cell = m_table->item(row, column);
            cells.append(cell ? cell->text() : codeOf(m_table->cellWidget(row, column)));
        }
        points.append(cells);
    }
    item->setData(QVariant::fromValue(points), serverPointsRole);
}

QStringList PointTableForm::leadingCells(const QJsonObject &point, const QString &currentPLC) const
{
    return {currentPLC, point.value(QLatin1String("name")).toString()};
}

void PointTableForm::appendPoint(const QStringList &leading, const QJsonObject &)
{
    m_table->insertRow(m_table->rowCount());
    fillRow(m_table->rowCount() - 1, leading, QString());
}

void PointTableForm::fillRow(int row, const QStringList &leading, const QString &code)
{
    for (int column = 0; column < leading.size(); ++column) {
        auto *cell = new QTableWidgetItem(leading.at(column));
        cell->setFlags(cell->flags() & ~Qt::ItemIsEditable);
        cell->setToolTip(leading.at(column)); // may be longer than its column
        m_table->setItem(row, column, cell);
    }
    m_table->setCellWidget(row, codeColumn, makeCodeCell(code, m_table->viewport()));
}

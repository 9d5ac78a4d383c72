#include "servers/pointtableform.h"

#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QComboBox>
#include <QHeaderView>
#include <QStandardItem>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int codeColumn = 2;
constexpr int nameWidth = 130; // pixels of a source or a name

} // namespace

PointTableForm::PointTableForm(const Kind &kind, const Points &points, const QVector<Field> &fieldRows,
                               const QStringList &headers, QStandardItem *item, Workspace *workspace)
    : PointForm(kind, points, fieldRows, item, workspace)
    , m_table(new QTableWidget(0, headers.size(), this))
{
    fields().comboBox(QStringLiteral("protocol"))->setEnabled(false);
    m_table->setObjectName(QStringLiteral("points"));
    m_table->setHorizontalHeaderLabels(headers);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->horizontalHeader()->setDefaultSectionSize(nameWidth);
    m_table->horizontalHeader()->setStretchLastSection(true);
    addPointView(m_table);
    page()->addWidget(m_table);
    QWidget::setTabOrder(fields().widget(QLatin1String(fieldRows.last().name)), m_table);
}

void PointTableForm::showItem(QStandardItem *item)
{
    PointForm::showItem(item);
    const auto points = item->data(serverPointsRole).value<RowList>();
    m_table->setRowCount(0);
    m_table->setRowCount(points.size());
    for (int row = 0; row < points.size(); ++row) {
        const QVariantList &cells = points.at(row);
        fillRow(row, {cells.value(0).toString(), cells.value(1).toString()},
                cells.value(codeColumn).toString());
    }
}

void PointTableForm::saveItem(QStandardItem *item)
{
    PointForm::saveItem(item);
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

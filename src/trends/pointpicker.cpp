#include "trends/pointpicker.h"

#include "trends/trendtexts.h"
#include "widgets/tablecopy.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QVBoxLayout>

namespace {

constexpr int placeRole = Qt::UserRole; // in the list of points

} // namespace

PointPicker::PointPicker(const QVector<Point> &points, QWidget *parent)
    : QDialog(parent)
    , m_points(points)
    , m_filter(new QLineEdit(this))
    , m_list(new QListView(this))
    , m_add(new QPushButton(tr("Add"), this))
    , m_model(new QStandardItemModel(this))
    , m_shown(new QSortFilterProxyModel(this))
{
    setWindowTitle(tr("Add Points"));
    fill();
    layOut();
    m_shown->setSourceModel(m_model);
    m_shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_list->setModel(m_shown);
    connect(m_filter, &QLineEdit::textChanged, m_shown, &QSortFilterProxyModel::setFilterFixedString);
    connect(m_list, &QListView::doubleClicked, this, &QDialog::accept);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_add->setEnabled(m_list->selectionModel()->hasSelection()); });
}

void PointPicker::fill()
{
    QVector<PointId> ids;
    for (const Point &point : qAsConst(m_points)) {
        ids.append(point.id);
    }
    const QStringList labels = distinctNames(ids);
    for (int place = 0; place < m_points.size(); ++place) {
        auto *item = new QStandardItem(labels.at(place));
        item->setEditable(false);
        item->setToolTip(TrendTexts::ofPoint(m_points.at(place)));
        item->setData(place, placeRole);
        m_model->appendRow(item);
    }
}

void PointPicker::layOut()
{
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setPlaceholderText(tr("Filter by name"));
    m_filter->setAccessibleName(m_filter->placeholderText());
    m_filter->setClearButtonEnabled(true);
    m_list->setObjectName(QStringLiteral("points"));
    m_list->setAccessibleName(tr("Points"));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setUniformItemSizes(true);
    TableCopy::install(m_list);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(m_add, QDialogButtonBox::AcceptRole);
    buttons->addButton(new QPushButton(tr("Cancel"), buttons), QDialogButtonBox::RejectRole);
    m_add->setEnabled(false);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_filter);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    resize(420, 480);
}

void PointPicker::chooseFirst(int count)
{
    const int last = qMin(count, m_shown->rowCount()) - 1;
    const QItemSelection first(m_shown->index(0, 0), m_shown->index(last, 0));
    m_list->selectionModel()->select(first, QItemSelectionModel::Select);
}

QVector<Point> PointPicker::chosen() const
{
    QVector<Point> points;
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    for (const QModelIndex &row : rows) {
        points.append(m_points.at(row.data(placeRole).toInt()));
    }
    return points;
}

#include "trends/figuretable.h"

#include "trends/curvestyle.h"
#include "trends/figuremodel.h"
#include "trends/trendtexts.h"
#include "widgets/svgicon.h"
#include "widgets/tablecopy.h"

#include <QAction>
#include <QHeaderView>

#include <algorithm>

namespace {

constexpr int figureChars = 12; // wide enough for most numbers; a tool tip tells longer ones
constexpr int typeChars = 6;
constexpr int margins = 10; // pixels of a cell
constexpr int fewRows = 3;  // of the height that the table asks for
constexpr int manyRows = 7;

} // namespace

FigureTable::FigureTable(QWidget *parent)
    : QTableView(parent)
    , m_figures(new FigureModel(this, this))
{
    setObjectName(QStringLiteral("figures"));
    setAccessibleName(tr("Curves and their figures"));
    setModel(m_figures);
    setSelectionBehavior(SelectRows);
    setTabKeyNavigation(false); // else Tab would never leave it
    setIconSize(CurveStyle::sampleSize);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    TableCopy::install(this);
    auto *remove = new QAction(svgIcon(QStringLiteral(":/adsdemo/images/Delete.svg")), tr("Remove"), this);
    remove->setObjectName(QStringLiteral("remove"));
    remove->setShortcut(Qt::Key_Delete);
    remove->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(remove);
    connect(remove, &QAction::triggered, this, &FigureTable::askToRemove);
    setUpColumns();
}

void FigureTable::setUpColumns()
{
    QHeaderView *header = horizontalHeader();
    header->setHighlightSections(false);
    for (int column = 0; column < FigureModel::ColumnCount; ++column) {
        const int chars = column == FigureModel::Type ? typeChars : figureChars;
        const int width = fontMetrics().averageCharWidth() * chars + margins;
        header->resizeSection(column, qMax(width, header->sectionSizeHint(column)));
    }
    int breaks = 0;
    for (const SampleState state : {SampleState::NotValid, SampleState::NoNumber, SampleState::NoReport,
                                    SampleState::Ended, SampleState::Dropped}) {
        const QString text = TrendTexts::ofValue({ValueAt::Kind::Break, 0, {}, state});
        breaks = qMax(breaks, fontMetrics().horizontalAdvance(text) + margins);
    }
    // Half a reason could be read as another one, or as the begin of a text.
    for (const FigureModel::Column column : {FigureModel::Current, FigureModel::AtA, FigureModel::AtB}) {
        header->resizeSection(column, qMax(breaks, header->sectionSize(column)));
    }
    header->setMinimumSectionSize(header->sectionSizeHint(FigureModel::AtA));
    header->setSectionResizeMode(FigureModel::Name, QHeaderView::Stretch);
    showColumns(false, false);
}

void FigureTable::showColumns(bool markers, bool skipped)
{
    setColumnHidden(FigureModel::Skipped, !skipped);
    for (const int column : {int(FigureModel::AtA), int(FigureModel::AtB), int(FigureModel::Difference)}) {
        setColumnHidden(column, !markers);
    }
}

QSize FigureTable::sizeHint() const
{
    const int rows = qBound(fewRows, m_figures->rowCount(), manyRows);
    return {QTableView::sizeHint().width(),
            horizontalHeader()->sizeHint().height() + rows * verticalHeader()->defaultSectionSize()
                + 2 * frameWidth()};
}

void FigureTable::askToRemove()
{
    QVector<int> rows;
    const QModelIndexList selected = selectionModel()->selectedRows();
    for (const QModelIndex &index : selected) {
        rows.append(index.row());
    }
    std::sort(rows.rbegin(), rows.rend());
    if (!rows.isEmpty()) {
        emit removeAsked(rows);
    }
}

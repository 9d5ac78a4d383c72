#include "monitoring/monitoringpage.h"

#include "monitoring/monitoringtable.h"
#include "widgets/choosefile.h"
#include "widgets/svgicon.h"
#include "widgets/tablecopy.h"
#include "widgets/tell.h"

#include <QAction>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QSaveFile>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

// Colours the rows that are not valid. The text's colour comes with the background's, whatever the desktop's.
class ValidityDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!MonitoringTable::isValid(index)) {
            option->backgroundBrush = QColor(0xf6, 0xe6, 0xc8);
            option->palette.setColor(QPalette::Text, QColor(0x5f, 0x43, 0x0a));
        }
    }
};

QByteArray csvCell(QString text)
{
    const bool quoted = text.contains(QLatin1Char(',')) || text.contains(QLatin1Char('"'))
        || text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'));
    if (quoted) {
        text = QLatin1Char('"') + text.replace(QLatin1String("\""), QLatin1String("\"\"")) + QLatin1Char('"');
    }
    return text.toUtf8();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace

MonitoringPage::MonitoringPage(QWidget *parent)
    : QWidget(parent)
    , m_filter(new QLineEdit(this))
    , m_table(new QTableWidget(this))
{
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setPlaceholderText(tr("Filter by name or address"));
    m_filter->setAccessibleName(m_filter->placeholderText());
    m_filter->setClearButtonEnabled(true);
    // Values come from the Box; typing over them would only last until the next report.
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setItemDelegate(new ValidityDelegate(m_table));
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    TableCopy::install(m_table);
    m_table->setTabKeyNavigation(false); // else Tab would never leave it
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_filter);
    layout->addWidget(m_table);
    connect(m_filter, &QLineEdit::textChanged, this, &MonitoringPage::applyFilter);
    connect(m_table, &QWidget::customContextMenuRequested, this, &MonitoringPage::showMenu);
    const QAbstractItemModel *model = m_table->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &MonitoringPage::applyFilter);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &MonitoringPage::applyFilter);
    connect(model, &QAbstractItemModel::dataChanged, this, &MonitoringPage::applyFilter);
    connect(model, &QAbstractItemModel::layoutChanged, this, &MonitoringPage::applyFilter);
}

void MonitoringPage::applyFilter()
{
    const QString wanted = m_filter->text();
    const auto holds = [&](int row, int column) {
        const QTableWidgetItem *item = m_table->item(row, column);
        return item && item->text().contains(wanted, Qt::CaseInsensitive);
    };
    // While it shows itself the header would work all positions out anew for each row that goes or comes.
    QHeaderView *header = m_table->verticalHeader();
    const bool updates = header->updatesEnabled();
    header->setUpdatesEnabled(false);
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const bool hidden =
            !wanted.isEmpty() && !holds(row, MonitoringTable::Name) && !holds(row, MonitoringTable::Addr);
        if (m_table->isRowHidden(row) != hidden) {
            m_table->setRowHidden(row, hidden);
        }
    }
    header->setUpdatesEnabled(updates);
}

void MonitoringPage::showMenu(const QPoint &position)
{
    QMenu menu; // without a parent: the page may die below it
    menu.addAction(m_table->findChild<QAction *>(QStringLiteral("copy")));
    const QAction *exporting =
        menu.addAction(svgIcon(QStringLiteral(":/adsdemo/images/write.svg")), tr("Export..."));
    const QPointer<MonitoringPage> self(this);
    if (menu.exec(m_table->viewport()->mapToGlobal(position)) == exporting && self) {
        exportShown();
    }
}

void MonitoringPage::exportShown()
{
    const QPointer<MonitoringPage> self(this);
    const QString path =
        chooseSaveFile(this, tr("Export Values"), lastUsedFolder(), tr("CSV Files (*.csv)"), windowTitle());
    if (!path.isEmpty() && self && !writeFile(path, shownAsCsv())) {
        Tell::warning(this, tr("Export Values"), tr("The file %1 could not be written.").arg(path));
    }
}

QByteArray MonitoringPage::shownAsCsv() const
{
    const auto line = [this](const auto &textAt) {
        QList<QByteArray> cells;
        for (int column = 0; column < m_table->columnCount(); ++column) {
            const QTableWidgetItem *item = textAt(column);
            cells.append(item ? csvCell(item->text()) : QByteArray());
        }
        return cells.join(',') + "\r\n";
    };
    QByteArray csv("\xef\xbb\xbf"); // without it spreadsheets take the text for another encoding
    csv += line([this](int column) { return m_table->horizontalHeaderItem(column); });
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (!m_table->isRowHidden(row)) {
            csv += line([this, row](int column) { return m_table->item(row, column); });
        }
    }
    return csv;
}

#include "monitoringpage.moc"

#include "servers/importdatadialog.h"

#include "document/datapoints.h"
#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "widgets/tablecopy.h"

#include <QHeaderView>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

// What a point shows and hands on; its other members stay behind, since a form has defaults of its own.
const struct {
    QLatin1String key;
    const char *header;
} columns[] = {
    {QLatin1String("name"), QT_TRANSLATE_NOOP("ImportDataDialog", "Name")},
    {QLatin1String("addr"), QT_TRANSLATE_NOOP("ImportDataDialog", "Address")},
    {QLatin1String("dataType"), QT_TRANSLATE_NOOP("ImportDataDialog", "DataType")},
    {QLatin1String("length"), QT_TRANSLATE_NOOP("ImportDataDialog", "Length")},
};

constexpr int minimumColumnWidth = 100;

// A copy of the folder with those of its definitions that declare points; null for any other folder.
QStandardItem *cloneFolder(const QStandardItem &folder)
{
    const bool standards = folder.text() == ProjectTree::standardFolder;
    if (!standards && folder.text() != ProjectTree::plcFolder) {
        return nullptr;
    }
    QStandardItem *clone = folder.clone();
    for (int row = 0; row < folder.rowCount(); ++row) {
        const QStandardItem *definition = folder.child(row);
        if (definition
            && (!standards
                || DataPoints::declaresPoints(definition->data(standardProtocolRole).toString()))) {
            clone->appendRow(definition->clone());
        }
    }
    return clone;
}

} // namespace

ImportDataDialog::ImportDataDialog(QWidget *parent)
    : QDialog(parent)
    , m_model(new QStandardItemModel(this))
    , m_tree(new QTreeView)
    , m_table(new QTableView)
{
    resize(800, 500);
    m_tree->setObjectName(QStringLiteral("definitions"));
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers); // lists are found by these texts
    m_table->setObjectName(QStringLiteral("points"));
    m_table->setModel(m_model);
    m_table->setSelectionMode(QAbstractItemView::MultiSelection);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->setTabKeyNavigation(false); // else Tab would never leave it
    TableCopy::install(m_table);

    auto *splitter = new QSplitter(Qt::Horizontal, this);
    splitter->addWidget(m_tree);
    splitter->addWidget(m_table);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 3);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    const FormPage::Buttons buttons = FormPage::appendButtons(layout, tr("OK"), tr("Cancel"));
    buttons.save->setObjectName(QStringLiteral("okButton"));
    connect(buttons.save, &QPushButton::clicked, this, &ImportDataDialog::onOkButtonClicked);
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_tree, &QTreeView::clicked, this, &ImportDataDialog::onTreeViewClicked);
    logToFile(QStringLiteral("ImportDataDialog：new-nuilt"));
}

ImportDataDialog::~ImportDataDialog()
{
    logToFile(QStringLiteral("ImportDataDialog：destroyed"));
}

void ImportDataDialog::addPoints(const QString &definition, const QList<QJsonObject> &points)
{
    m_points.insert(definition, points);
}

void ImportDataDialog::buildTree(const QStandardItemModel &projects, const QString &name)
{
    auto *model = new QStandardItemModel(this);
    m_tree->setHeaderHidden(true);
    if (const QStandardItem *project = ProjectTree::projectNamed(projects, name)) {
        QStandardItem *root = project->clone();
        for (int row = 0; row < project->rowCount(); ++row) {
            QStandardItem *folder = project->child(row) ? cloneFolder(*project->child(row)) : nullptr;
            if (folder) {
                root->appendRow(folder);
            }
        }
        model->appendRow(root);
    }
    m_tree->setModel(model);
    // The arrow keys lead to points as clicks do, so that the table is always of the current definition.
    // The definition that is shown already keeps its rows as they are selected.
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &current) {
                if (current != m_shown) {
                    onTreeViewClicked(current);
                }
            });
}

void ImportDataDialog::onTreeViewClicked(const QModelIndex &index)
{
    m_shown = index;
    m_model->clear();
    const auto points = m_points.constFind(index.data().toString());
    if (points != m_points.constEnd()) {
        showPoints(points.value());
    }
}

void ImportDataDialog::showPoints(const QList<QJsonObject> &points)
{
    for (const QJsonObject &point : points) {
        QList<QStandardItem *> row;
        for (const auto &column : columns) {
            row.append(new QStandardItem(point.value(column.key).toString()));
        }
        m_model->appendRow(row);
    }
    QStringList headers;
    for (const auto &column : columns) {
        headers.append(tr(column.header));
    }
    m_model->setHorizontalHeaderLabels(headers);
    for (int column = 0; column < m_model->columnCount(); ++column) {
        m_table->resizeColumnToContents(column);
        m_table->setColumnWidth(column, qMax(m_table->columnWidth(column), minimumColumnWidth));
    }
}

void ImportDataDialog::onOkButtonClicked()
{
    QList<QJsonObject> points;
    const QModelIndexList rows = m_table->selectionModel()->selectedRows(0);
    for (const QModelIndex &row : rows) {
        QJsonObject point;
        int cell = 0;
        for (const auto &column : columns) {
            point.insert(column.key, row.sibling(row.row(), cell++).data().toString());
        }
        points.append(point);
    }
    const QPointer<ImportDataDialog> alive(this); // whoever takes the points may run an event loop of its own
    emit dataSelected(points, m_tree->currentIndex().data().toString());
    if (alive) {
        m_table->clearSelection();
        logToFile(QStringLiteral("ImportDataDialo: Onboard data"));
    }
}

#include "monitoring/monitoringview.h"

#include "boxlink/monitoringreport.h"
#include "log/timetext.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "monitoring/monitoringpage.h"
#include "monitoring/monitoringtable.h"

#include <QDebug>
#include <QFont>
#include <QIcon>
#include <QItemSelectionModel>
#include <QJsonArray>
#include <QJsonObject>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeView>

namespace {

const char tabStyle[] =
    "QTabBar::tab { font-size: 16px; color: black; background-color: #e0e0e0; border-radius: 5px; "
    "min-width: 80px; height: 20px; padding: 5px 10px; } "
    "QTabBar::tab:selected { background-color: #1296db; color: white; } "
    "QTabBar::tab:hover { background-color: #7dc5eb; }";

constexpr int tabTextSize = 16; // pixels, as in tabStyle

void styleTabs(QTabWidget *tabs)
{
    // Setting a style sheet polishes every widget below, so not anew with each report.
    const QString style = QLatin1String(tabStyle);
    if (tabs->styleSheet() != style) {
        tabs->setStyleSheet(style);
    }
    // A tab bar measures its tabs with its own font, whatever the style sheet draws them with.
    QFont font = tabs->tabBar()->font();
    if (font.pixelSize() != tabTextSize) {
        font.setPixelSize(tabTextSize);
        tabs->tabBar()->setFont(font);
    }
}

// The rows of a node: each point of a report that is an object, its values as texts.
QVariantList rowsOf(const QJsonArray &datas)
{
    const QString time = timeText();
    QVariantList rows;
    rows.reserve(datas.size());
    for (const QJsonValue &data : datas) {
        if (!data.isObject()) {
            continue;
        }
        const QJsonObject point = data.toObject();
        QVariantMap row;
        for (const QString &key : {QStringLiteral("name"), QStringLiteral("addr"), QStringLiteral("dataType"),
                                   QStringLiteral("value"), QStringLiteral("valid")}) {
            row.insert(key, point.value(key).toString());
        }
        if (row.value(QStringLiteral("valid")).toString().isEmpty()) {
            row.insert(QStringLiteral("valid"), QStringLiteral("Invalid"));
        }
        row.insert(QStringLiteral("updateTime"), time);
        rows.append(row);
    }
    return rows;
}

QStandardItem *dataFolderOf(QStandardItem *project)
{
    QStandardItem *folder = ProjectTree::childNamed(project, ProjectTree::dataFolder);
    if (!folder) {
        // Compat: the bitmap, not the icon of a new project's folder.
        folder = ProjectTree::appendDefinition(project, ProjectTree::dataFolder,
                                               QStringLiteral(":/adsdemo/images/Data.png"));
    }
    return folder;
}

// Whether it is the project whose values are shown. Of one that has been closed only the name is left.
bool isProject(const QModelIndex &project, const QPersistentModelIndex &shown, const QString &shownName)
{
    return shown.isValid() ? shown == project : project.data().toString() == shownName;
}

} // namespace

MonitoringView::MonitoringView(QTabWidget *tabs, QStandardItemModel *model, QTreeView *tree, QObject *parent)
    : QObject(parent)
    , m_tabs(tabs)
    , m_model(model)
    , m_tree(tree)
{
    if (tree && tree->selectionModel()) {
        connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
                &MonitoringView::noteProjects);
    }
    if (model) {
        connect(model, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex &first) {
            if (!first.parent().isValid()) { // a project, which may have a new name
                noteProjects();
            }
        });
    }
}

void MonitoringView::noteProjects()
{
    const QModelIndex node = m_tree ? m_tree->currentIndex() : QModelIndex();
    const QModelIndex folder = node.parent();
    const bool isLive = folder.parent().isValid() && folder.data().toString() == ProjectTree::dataFolder;
    const QVector<MonitoringPage *> pages = livePages();
    for (MonitoringPage *page : pages) {
        const QPersistentModelIndex shown = m_projects.value(page->windowTitle());
        if (shown.isValid()) {
            page->setProject(shown.data().toString());
        }
        const bool isOfNode = isLive && page->windowTitle() == node.data().toString();
        const bool isOther = isOfNode && !isProject(folder.parent(), shown, page->project());
        page->setWanted(isOther ? folder.parent().data().toString() : QString());
    }
}

void MonitoringView::setBox(const QString &name, const QString &address)
{
    m_box = {QString(), name, address};
}

void MonitoringView::endSession(const QString &address)
{
    m_box = {};
    m_notShown.clear();
    const QVector<MonitoringPage *> pages = livePages();
    for (MonitoringPage *page : pages) {
        page->endSession();
    }
    if (!address.isEmpty()) {
        emit sessionEnded(address);
    }
}

void MonitoringView::setAnswering(bool answers)
{
    const QVector<MonitoringPage *> pages = livePages();
    for (MonitoringPage *page : pages) {
        page->setAnswering(answers);
    }
}

QVector<MonitoringPage *> MonitoringView::livePages() const
{
    QVector<MonitoringPage *> pages;
    for (int tab = 0; m_tabs && tab < m_tabs->count(); ++tab) {
        if (auto *page = qobject_cast<MonitoringPage *>(m_tabs->widget(tab))) {
            pages.append(page);
        }
    }
    return pages;
}

LiveSource MonitoringView::sourceOf(QStandardItem *item) const
{
    LiveSource source = m_box;
    if (item->parent()) { // else it is in no project
        source.project = ProjectTree::projectOf(item)->text();
    }
    return source;
}

void MonitoringView::receive(const MonitoringReport &report)
{
    qDebug().noquote().nospace() << "Main: " << report.projectName;
    QStandardItem *project = m_model ? ProjectTree::projectNamed(*m_model, report.projectName) : nullptr;
    if (!project) {
        emit received(report.projectName, false);
        return;
    }
    QStandardItem *folder = dataFolderOf(project);
    const QVariantList rows = rowsOf(report.datas);
    if (QStandardItem *node = ProjectTree::childNamed(folder, report.plcName)) {
        node->setData(rows, dataRowsRole);
        showData(node, timeText(), report.plcName);
    } else {
        // Compat: without a tab. A PLC's first report makes its node, the tab comes with the second.
        node = new QStandardItem(QIcon(ProjectTree::dataIcon), report.plcName);
        node->setData(rows, dataRowsRole);
        node->setData(QStringLiteral("NoDisplay"), dataDisplayRole);
        folder->appendRow(node);
        m_notShown[report.plcName].insert(sourceOf(node), m_clock());
    }
    if (m_tree) {
        m_tree->expandAll();
    }
    emit received(report.projectName, true);
}

void MonitoringView::showData(QStandardItem *item, const QString &time, const QString &plcName)
{
    if (!m_tabs || !item) {
        return;
    }
    m_tabs->setTabsClosable(false);
    QWidget *page = pageOf(plcName);
    const QVariantList rows = item->data(dataRowsRole).toList();
    if (auto *live = qobject_cast<MonitoringPage *>(page)) {
        // So that the first page already knows how often its source reports.
        const QMap<LiveSource, qint64> notShown = m_notShown.take(plcName);
        for (auto report = notShown.begin(); report != notShown.end(); ++report) {
            live->noteReport(report.key(), report.value());
        }
        live->showReport(rows, time, sourceOf(item));
        m_projects[plcName] = item->parent() ? ProjectTree::projectOf(item)->index() : QModelIndex();
        noteProjects();
        emit shown(live, live->source(), rows);
    } else if (auto *table = page->findChild<QTableWidget *>()) {
        MonitoringTable::update(table, rows, time);
    } else {
        return;
    }
    styleTabs(m_tabs);
}

MonitoringPage *MonitoringView::currentPage() const
{
    return m_tabs ? qobject_cast<MonitoringPage *>(m_tabs->currentWidget()) : nullptr;
}

void MonitoringView::showTab(const QString &name)
{
    const int tab = tabNamed(name);
    if (tab >= 0) {
        m_tabs->setCurrentIndex(tab);
    }
}

void MonitoringView::closeTab(const QString &name)
{
    const int tab = tabNamed(name);
    if (tab >= 0) {
        auto *page = qobject_cast<MonitoringPage *>(m_tabs->widget(tab));
        // Compat: the page is not deleted. It stays a child of the tab widget and dies with it.
        m_tabs->removeTab(tab);
        if (page) {
            emit pageClosed(page);
        }
    }
}

int MonitoringView::tabNamed(const QString &name) const
{
    for (int tab = 0; m_tabs && tab < m_tabs->count(); ++tab) {
        if (m_tabs->tabText(tab) == name) {
            return tab;
        }
    }
    return -1;
}

QWidget *MonitoringView::pageOf(const QString &plcName)
{
    const int tab = tabNamed(plcName);
    if (tab >= 0) {
        return m_tabs->widget(tab);
    }
    auto *page = new MonitoringPage;
    page->setClock(m_clock);
    page->setWindowTitle(plcName);
    m_tabs->addTab(page, plcName);
    emit pageMade(page);
    return page;
}

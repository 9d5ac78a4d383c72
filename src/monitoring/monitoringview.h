#pragma once

#include "boxlink/liveclock.h"
#include "monitoring/livesource.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QVariantList>
#include <QVector>

class MonitoringPage;
struct MonitoringReport;
class QStandardItem;
class QStandardItemModel;
class QTabWidget;
class QTreeView;
class QWidget;

// Keeps the values that Boxes report in the project tree, one node a PLC under "Data", and shows them in one
// table a PLC, in a tab with the PLC's name. A table is updated in place: sort order, scroll position,
// current cell and selection stay with the user through each report.
class MonitoringView : public QObject
{
    Q_OBJECT
public:
    // None of the three is owned. A view without tabs or tree only keeps the values.
    MonitoringView(QTabWidget *tabs, QStandardItemModel *model, QTreeView *tree, QObject *parent = nullptr);

    // Sets the clock of this view and of the pages that are made from now on; by default it is the system's.
    void setClock(const LiveClock &clock) { m_clock = clock; }

    // The Box that reports come from, from now until endSession().
    void setBox(const QString &name, const QString &address);
    // Whether that Box answers; a report says so, too.
    void setAnswering(bool answers);
    // The session with the Box of the address has ended: the values that the pages show have none any more.
    void endSession(const QString &address);

    // Takes one report and drops it if no open project has its name. The first report of a PLC makes the
    // PLC's node; each later one updates the node and shows its values.
    void receive(const MonitoringReport &report);

    // Shows the rows of a node under "Data" in the tab plcName, which is made if need be. The rows are
    // QVariantMaps of the texts name, addr, dataType, value, valid ("1", "0" or anything else) and
    // updateTime; a time that is not empty replaces the rows' own.
    void showData(QStandardItem *item, const QString &time, const QString &plcName);

    // The live page in front, or null.
    MonitoringPage *currentPage() const;
    // Brings the first tab with this text to the front, if there is one.
    void showTab(const QString &name);
    // Takes the first tab with this text out; its page lives on for as long as the tab widget.
    void closeTab(const QString &name);

signals:
    // A report of the project has come. That of a project that is not open was dropped.
    void received(const QString &project, bool isOpen);
    // A page was made for the PLC that is its window title.
    void pageMade(MonitoringPage *page);
    // A page shows the rows of a node, as showData() takes them, for the first time or anew.
    void shown(MonitoringPage *page, const LiveSource &source, const QVariantList &rows);
    // A page was taken out of the tabs, and is shown no more.
    void pageClosed(MonitoringPage *page);
    // The session with the Box of the address has ended.
    void sessionEnded(const QString &address);

private:
    // Tells the pages what the project is called whose values they show, and which is wanted in its place.
    void noteProjects();
    LiveSource sourceOf(QStandardItem *item) const;
    int tabNamed(const QString &name) const;
    QWidget *pageOf(const QString &plcName);
    QVector<MonitoringPage *> livePages() const;

    QPointer<QTabWidget> m_tabs;
    QPointer<QStandardItemModel> m_model;
    QPointer<QTreeView> m_tree;
    LiveSource m_box;                                 // without a project
    QHash<QString, QPersistentModelIndex> m_projects; // whose values are shown, by PLC
    LiveClock m_clock = liveTime;
    // When reports came in this session that made a node and were not shown, by PLC.
    QHash<QString, QMap<LiveSource, qint64>> m_notShown;
};

#pragma once

#include "boxlink/monitoringreport.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "modelwatch.h"
#include "monitoring/monitoringview.h"

#include <QHeaderView>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeView>
#include <QtTest>

// What the tests of the live values share: reports as a Box sends them, and a view of one project,
// "Riverside".

// A point as a Box sends it: all five values are texts.
inline QJsonObject point(const QString &name, const QString &value, const QString &valid = "1")
{
    return {{"name", name}, {"addr", "@" + name}, {"dataType", "float"}, {"value", value}, {"valid", valid}};
}

inline MonitoringReport report(const QString &project, const QString &plc, const QJsonArray &datas)
{
    MonitoringReport data;
    data.projectName = project;
    data.plcName = plc;
    data.time = "1999-12-31 23:59:59";
    data.datas = datas;
    return data;
}

// The cells of a table, a text a row with the cells between bars; without the time.
inline QStringList rowsOf(const QTableWidget *table)
{
    QStringList rows;
    for (int row = 0; row < table->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < 5; ++column) {
            const QTableWidgetItem *item = table->item(row, column);
            cells.append(item ? item->text() : "(no cell)");
        }
        rows.append(cells.join(QLatin1Char('|')));
    }
    return rows;
}

inline QStringList column(const QTableWidget *table, int column)
{
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row) {
        texts.append(table->item(row, column)->text());
    }
    return texts;
}

inline const QRegularExpression timePattern("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d$");

class MonitoringTest : public QObject
{
    // No Q_OBJECT: the slots are those of the test.
protected:
    void setUp()
    {
        m_model.reset(new QStandardItemModel);
        watchModel(m_model.data());
        m_tree.reset(new QTreeView);
        m_tree->setModel(m_model.data());
        m_tabs.reset(new QTabWidget);
        m_tabs->setTabsClosable(true);
        m_view.reset(new MonitoringView(m_tabs.data(), m_model.data(), m_tree.data()));
        addProject("Riverside");
    }
    void tearDown()
    {
        m_view.reset();
        m_tabs.reset();
        m_tree.reset();
        m_model.reset();
    }

    QStandardItem *addProject(const QString &name)
    {
        QStandardItem *project = ProjectTree::makeProject(name, QString(), QString());
        ProjectTree::appendMissingFolders(project);
        m_model->appendRow(project);
        return project;
    }
    void receive(const QJsonArray &datas, const QString &plc = "Meter 1")
    {
        m_view->receive(report("Riverside", plc, datas));
    }
    // Two reports: the first makes the node only.
    QTableWidget *showPoints(const QJsonArray &datas, const QString &plc = "Meter 1")
    {
        receive(datas, plc);
        receive(datas, plc);
        if (QTableWidget *shown = table(plc)) {
            watchModel(shown->model());
        }
        return table(plc);
    }
    QStandardItem *dataFolder() const
    {
        return ProjectTree::childNamed(m_model->item(0), ProjectTree::dataFolder);
    }
    int tabNamed(const QString &name) const
    {
        for (int tab = 0; tab < m_tabs->count(); ++tab) {
            if (m_tabs->tabText(tab) == name) {
                return tab;
            }
        }
        return -1;
    }
    QTableWidget *table(const QString &plc = "Meter 1") const
    {
        const int tab = tabNamed(plc);
        return tab >= 0 ? m_tabs->widget(tab)->findChild<QTableWidget *>() : nullptr;
    }

    QScopedPointer<QStandardItemModel> m_model;
    QScopedPointer<QTreeView> m_tree;
    QScopedPointer<QTabWidget> m_tabs;
    QScopedPointer<MonitoringView> m_view;
};

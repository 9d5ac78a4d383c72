#pragma once

#include "formtest.h"
#include "model/itemroles.h"
#include "servers/pointform.h"

#include <QContextMenuEvent>
#include <QJsonObject>
#include <QMenu>
#include <QTableWidget>

// What the tests of the Server forms with points share.
class PointFormTest : public FormTest
{
protected:
    PointFormTest(QString name, QString protocol)
        : FormTest(std::move(name), serverProtocolRole, std::move(protocol))
    {
    }

    // The table of the forms that have one only.
    static QTableWidget *pointTable(const QWidget &form) { return form.findChild<QTableWidget *>("points"); }
    static RowList pointsOf(const QStandardItem &item) { return rowsOf(item, serverPointsRole); }
    static void setPoints(QStandardItem *item, const RowList &rows) { setRows(item, serverPointsRole, rows); }

    static QVariantList pointRow(const QString &plc, const QString &name, const QString &code)
    {
        return {plc, name, code};
    }
    // A point as the import hands it over.
    static QJsonObject point(const QString &name, const QString &type = "bool", const QString &length = "1")
    {
        return {{"name", name}, {"addr", "400"}, {"dataType", type}, {"length", length}};
    }

    // A row for each language of the interface.
    static void addCatalogues()
    {
        QTest::addColumn<QString>("catalogue");
        QTest::newRow("English") << ":/adsdemo/english.qm";
        QTest::newRow("Chinese") << ":/adsdemo/chinese.qm";
    }

    // Presses the right button on a cell and, in the menu that comes up, the left one on the entry. Gives the
    // menu's title and entries.
    QStringList chooseInMenu(const QTableView *view, const QModelIndex &cell, const QString &entry)
    {
        QStringList shown;
        m_dialogs->expect([&](QWidget *popup) {
            auto *menu = qobject_cast<QMenu *>(popup);
            QVERIFY(menu);
            shown.append(menu->title());
            const auto actions = menu->actions();
            for (QAction *action : actions) {
                shown.append(action->text());
                if (action->text() == entry) {
                    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
                }
            }
        });
        const QPoint place = cell.isValid() ? view->visualRect(cell).center() : QPoint(5, 5);
        QTest::mouseClick(view->viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent request(QContextMenuEvent::Mouse, place, view->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view->viewport(), &request);
        return shown;
    }
};

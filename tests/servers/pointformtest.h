#pragma once

#include "modaldialogs.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "servers/pointform.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStandardItem>
#include <QTableView>
#include <QTableWidget>
#include <QtTest>

// What the tests of the Server forms with points share.
namespace PointFormTest {

inline QLineEdit *edit(const QWidget &form, const char *name)
{
    return form.findChild<QLineEdit *>(QLatin1String(name));
}

inline QComboBox *list(const QWidget &form, const char *name)
{
    return form.findChild<QComboBox *>(QLatin1String(name));
}

inline void press(const QWidget &form, const char *name)
{
    form.findChild<QPushButton *>(QLatin1String(name))->click();
}

// The table of the forms that have one only.
inline QTableWidget *pointTable(const QWidget &form)
{
    return form.findChild<QTableWidget *>("points");
}

inline QVariantList pointRow(const char *plc, const char *name, const char *code)
{
    return {QString::fromLatin1(plc), QString::fromLatin1(name), QString::fromLatin1(code)};
}

// The texts of these line edits, in this order.
inline QStringList textsOf(const QWidget &form, std::initializer_list<const char *> names)
{
    QStringList shown;
    for (const char *name : names) {
        shown.append(edit(form, name)->text());
    }
    return shown;
}

// Opens the form on these points and saves it: they are to stay as they are.
template <typename Form> void comparePointsAfterSave(QStandardItem *item, const RowList &stored)
{
    item->setData(QVariant::fromValue(stored), serverPointsRole);
    Form form(item, nullptr);
    press(form, "saveButton");
    QCOMPARE(item->data(serverPointsRole).value<RowList>(), stored);
}

// A row for each language of the interface.
inline void catalogues()
{
    QTest::addColumn<QString>("catalogue");
    QTest::newRow("English") << ":/adsdemo/english.qm";
    QTest::newRow("Chinese") << ":/adsdemo/chinese.qm";
}

// A point as the import hands it over.
inline QJsonObject point(const QString &name, const QString &type = "bool", const QString &length = "1")
{
    return {{"name", name}, {"addr", "400"}, {"dataType", type}, {"length", length}};
}

inline QStringList headers(const QTableView *view)
{
    QStringList texts;
    for (int column = 0; column < view->model()->columnCount(); ++column) {
        texts.append(view->model()->headerData(column, Qt::Horizontal).toString());
    }
    return texts;
}

// "label|objectName" of each labelled input, in the order of the form.
inline QStringList inputs(const QWidget &form)
{
    QStringList found;
    const auto labels = form.findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->buddy()) {
            found.append(label->text() + QLatin1Char('|') + label->buddy()->objectName());
        }
    }
    return found;
}

// Every role that the item holds beside its name and its icon.
inline QMap<int, QVariant> rolesOf(const QStandardItem &item)
{
    QMap<int, QVariant> roles;
    for (int role = Qt::UserRole; role <= serviceServerKeyPasswordRole; ++role) {
        if (item.data(role).isValid()) {
            roles.insert(role, item.data(role));
        }
    }
    return roles;
}

inline RowList rowsOf(const QStandardItem &item, int role)
{
    return item.data(role).value<RowList>();
}

// Presses the right button on a cell and, in the menu that comes up, the left one on the entry. Gives the
// menu's title and entries.
inline QStringList chooseInMenu(const QTableView *view, const QModelIndex &cell, const QString &entry)
{
    QStringList shown;
    ModalDialogs menus;
    menus.expect([&](QWidget *popup) {
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

} // namespace PointFormTest

#pragma once

#include "servers/serverform.h"

#include <QJsonObject>
#include <QList>

class QAbstractItemModel;
class QTableView;

// Base of the Server forms with data points: below the fields are tables of points, whose context menu
// imports points and deletes them. The leading cells of a row tell its point from the others.
class PointForm : public ServerForm
{
    Q_OBJECT
public slots:
    // Appends the picked points of one source to the table that is shown, but for those that it has. Each
    // point has the texts "name", "addr", "dataType" and "length".
    virtual void handleImportedData(const QList<QJsonObject> &points, const QString &currentPLC);
    // Takes the place in the table that is shown.
    void showContextMenu(const QPoint &pos);
    // Has the workspace open the import, or tells that there is none.
    void importDataPoints();
    // Removes the row of the first selected cell, if one is selected.
    void deleteSelectedItem();

protected:
    struct Points {
        const char *deletedLine; // what the activity log gets for a deleted point
        bool tellsDuplicates;    // whether the workspace is told of a point that is there already
    };

    PointForm(const Names &names, const Points &points, QStandardItem *item, Workspace *workspace);

    // Takes a table, which already has its model, as one of the form's tables of points.
    void addPointView(QTableView *view);
    // The table that is shown, or null.
    virtual QTableView *pointView() const;

    // The leading cells of a point's row, by which it is found again.
    virtual QStringList leadingCells(const QJsonObject &point, const QString &currentPLC) const = 0;
    // Appends a row for a point that the table does not have.
    virtual void appendPoint(const QStringList &leading, const QJsonObject &point) = 0;
    // May run an event loop in which the form is closed.
    virtual void removePoint(QAbstractItemModel *model, int row);

    const QVector<QTableView *> &pointViews() const { return m_views; }

private:
    Points m_points;
    QVector<QTableView *> m_views; // children of the form
};

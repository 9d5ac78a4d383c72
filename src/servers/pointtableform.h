#pragma once

#include "servers/pointform.h"

class QTableWidget;

// Base of the Server forms that give each point a code: a table of source, name and code, kept in the
// item's serverPointsRole. The code is edited by a widget in its cell.
class PointTableForm : public PointForm
{
    Q_OBJECT
protected:
    // The headers of the three columns are already translated.
    PointTableForm(const Kind &kind, const Points &points, const QVector<Field> &fieldRows,
                   const QStringList &headers, QStandardItem *item, Workspace *workspace);

    // Shows the item's points in place of those that are there.
    void showItem(QStandardItem *item) override;
    void saveItem(QStandardItem *item) override;
    QStringList leadingCells(const QJsonObject &point, const QString &currentPLC) const override;
    void appendPoint(const QStringList &leading, const QJsonObject &point) override;

    // A new widget, child of the parent, that shows a stored code; a new point has an empty one.
    virtual QWidget *makeCodeCell(const QString &code, QWidget *parent) = 0;
    // What is to be stored for such a widget.
    virtual QString codeOf(const QWidget *cell) const = 0;

private:
    void fillRow(int row, const QStringList &leading, const QString &code);

    QTableWidget *m_table;
};

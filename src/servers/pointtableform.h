#pragma once

#include "servers/pointform.h"

class QTableWidget;

// Base of the Server forms that give each point a code: a table of source, name and code, kept in the
// item's serverPointsRole. The code is edited by a widget in its cell.
class PointTableForm : public PointForm
{
    Q_OBJECT
protected:
    PointTableForm(const Names &names, const Points &points, QStandardItem *item, Workspace *workspace);

    // Puts the table below the fields, which are complete by now, and shows the item. The headers of the
    // three columns are already translated.
    void addPoints(const QStringList &headers);

    QStringList leadingCells(const QJsonObject &point, const QString &currentPLC) const override;
    void appendPoint(const QStringList &leading, const QJsonObject &point) override;

    // A new widget, child of the parent, that shows a stored code; a new point has an empty one.
    virtual QWidget *makeCodeCell(const QString &code, QWidget *parent) = 0;
    // What is to be stored for such a widget.
    virtual QString codeOf(const QWidget *cell) const = 0;
    // Shows the item's points in place of those that are there.
    virtual void fillPoints(const QStandardItem *item);

private:
    void savePoints(QStandardItem *item) const;
    void fillRow(int row, const QStringList &leading, const QString &code);

    QTableWidget *m_table = nullptr;
    CustomPart m_pointTable;
};

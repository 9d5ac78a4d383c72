#pragma once

#include "history/point.h"

#include <QDialog>

class QLineEdit;
class QListView;
class QPushButton;
class QSortFilterProxyModel;
class QStandardItemModel;

// Lets the user choose of the points that there are.
class PointPicker : public QDialog
{
    Q_OBJECT
public:
    PointPicker(const QVector<Point> &points, QWidget *parent);

    // Chooses the first ones to begin with.
    void chooseFirst(int count);
    QVector<Point> chosen() const;

private:
    void layOut();
    void fill();

    QVector<Point> m_points;
    QLineEdit *m_filter;
    QListView *m_list;
    QPushButton *m_add;
    QStandardItemModel *m_model;
    QSortFilterProxyModel *m_shown;
};

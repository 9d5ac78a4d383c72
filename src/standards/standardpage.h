#pragma once

#include "model/projecttree.h"

#include <QWidget>

class QLineEdit;

// The page of a tab of a Standard: one device on its link.
class StandardPage : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;

    // What the page shows as it is stored: in row 0 its own settings, then a row for each of its table. No
    // rows at all from a page whose table is gone.
    virtual RowList rows() const = 0;
    // Shows what is stored; without a row 0 the settings stay.
    virtual void setRows(const RowList &rows) = 0;
    // By which the device is told from the others on its link; null if it is gone.
    virtual QLineEdit *addressInput() const = 0;
};

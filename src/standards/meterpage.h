#pragma once

#include "forms/fieldgroup.h"
#include "standards/standardpage.h"

#include <QPointer>

class QComboBox;
class QTableWidget;

// One meter of a DLT645 Standard: its address, its edition of DL/T 645 and the items ticked for reading. Row
// 0 holds address and edition, each further row, by position, a tick, an item label and the user's name. A
// filter hides rows from sight; nothing else goes by it.
class MeterPage : public StandardPage
{
    Q_OBJECT
public:
    static constexpr int tickColumn = 0;
    static constexpr int labelColumn = 1;
    static constexpr int nameColumn = 2;

    // The labels of the fields are that many pixels wide, less the page's margin.
    MeterPage(int labelWidth, QWidget *parent);

    QComboBox *version() const { return m_version->list(); }
    // The table of the items; null if it is gone.
    QTableWidget *table() const;

    RowList rows() const override;
    void setRows(const RowList &rows) override;
    QLineEdit *addressInput() const override;

    // Fills the table with the items of the edition; ticks and names go.
    void showItems();
    // Ticks all rows, or none if all were ticked.
    void toggleTicks();
    // What the user calls the value of a row.
    static QString nameOf(const QTableWidget *table, int row);

signals:
    void selectAllPressed();

private:
    QLineEdit *makeFilter();
    QTableWidget *makeTable();
    void applyFilter();

    FieldGroup m_settings;
    TextField *m_address = nullptr;
    ListField *m_version = nullptr;
    QPointer<QLineEdit> m_filter;
    QPointer<QTableWidget> m_table;
};

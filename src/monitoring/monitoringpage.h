#pragma once

#include <QWidget>

class QLineEdit;
class QTableWidget;

// The page of one PLC's live values: a filter above the table, and a menu on it that copies the selection
// and exports what is shown. Rows that are not valid have a colour of their own.
class MonitoringPage : public QWidget
{
    Q_OBJECT
public:
    explicit MonitoringPage(QWidget *parent = nullptr);

    // The cells shown, with a line of headers: UTF-8 with a byte order mark, commas, CRLF, cells in quotes
    // where they hold a comma, a quote or a line break (RFC 4180).
    QByteArray shownAsCsv() const;

private:
    // Hides the rows whose name and address both lack the filter's text, whatever its case. A row is hidden
    // by its number, so this runs anew whenever rows come, move or change.
    void applyFilter();
    void showMenu(const QPoint &position);
    void exportShown();

    QLineEdit *m_filter;
    QTableWidget *m_table;
};

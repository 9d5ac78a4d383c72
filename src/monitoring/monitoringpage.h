#pragma once

#include "boxlink/liveclock.h"
#include "monitoring/livesource.h"

#include <QBasicTimer>
#include <QVariantList>
#include <QWidget>

class LiveDelegate;
class QCheckBox;
class QLabel;
class QHBoxLayout;
class QLineEdit;
class QMenu;
class QTableWidget;
class QVBoxLayout;
class SourceLine;

// The page of one PLC's live values: above the table the line of their source, a filter and a check for rows
// that are not valid; on it a menu that copies the selection and exports what is shown. Values that are out
// of date are grey.
class MonitoringPage : public QWidget
{
    Q_OBJECT
public:
    explicit MonitoringPage(QWidget *parent = nullptr);

    // By default the clock is the system's.
    void setClock(const LiveClock &clock);

    // These are handed on to the line of the source, see SourceLine.
    void noteReport(const LiveSource &source, qint64 time);
    void endSession();
    void setAnswering(bool answers);
    void setProject(const QString &name);
    void setWanted(const QString &project);
    const QString &project() const;
    // Shows the rows of a report, as MonitoringTable::update() takes them, and whose they are.
    void showReport(const QVariantList &rows, const QString &time, const LiveSource &source);
    // Brings line and colours up to the clock. While the page is on screen it does so each second.
    void refresh();

    // What has been shown last, and whose it is.
    QTableWidget *table() const { return m_table; }
    const LiveSource &source() const;

    // Puts a tool behind the check, or a line between the tools and the table. The page owns them.
    void addTool(QWidget *tool);
    void addLine(QWidget *line);

    // The cells shown, with a line of headers: UTF-8 with a byte order mark, commas, CRLF, cells in quotes
    // where they hold a comma, a quote or a line break (RFC 4180).
    QByteArray shownAsCsv() const;

signals:
    // The menu of the table is about to open; what is added to it stands above "Export...".
    void menuOpening(QMenu *menu);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void layOut();
    void awaitEndOfMarks();
    // Hides the rows whose name and address both lack the filter's text, whatever its case, and with the
    // check those that are valid. A row is hidden by its number, so this runs anew whenever rows come, move
    // or change.
    void applyFilter();
    // The third click in a row on one header undoes the sort that the first two made.
    void considerClick(int section);
    // Until the user sets a width all columns are seen, if there is room.
    void fitColumns();
    void showMenu(const QPoint &position);
    void exportShown();

    struct Sort {
        int section;
        Qt::SortOrder order;
    };

    QVBoxLayout *m_layout;
    QHBoxLayout *m_tools;
    SourceLine *m_source;
    QLineEdit *m_filter;
    QCheckBox *m_onlyNotValid;
    QLabel *m_shown; // how many of the rows are, while not all are
    QTableWidget *m_table;
    LiveDelegate *m_delegate;
    Sort m_sort{-1, Qt::AscendingOrder};
    Sort m_sortBefore = m_sort;
    bool m_fitting = false; // the program sets widths
    bool m_widthsOfUser = false;

    LiveClock m_clock;
    QBasicTimer m_second;
    QBasicTimer m_mark; // runs while a value may be marked as just changed
    qint64 m_marksEnd = 0;
};

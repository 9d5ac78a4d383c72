#pragma once

#include "mainwindow/docking.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QSet>

class QSplitter;

// Keeps what is open in sight when a stored layout comes back. A dock that the layout does not know stays
// where it was; a form that it knows as closed opens at its place there. The focus stays where it is, too.
//
// Before the layout comes back, the docks of each window are remembered as rows: what a splitter holds, areas
// and inner splitters. Afterwards a dock that has no place is put beside one of its row that stands where it
// did, tabs are joined again, and a row that is whole gets its old sizes.
class OpenDocks : public QObject
{
    Q_OBJECT
public:
    // The manager owns this.
    explicit OpenDocks(ads::CDockManager *manager);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Where an area is: in a window of its own, or in the main window. There it is told by the sides at which
    // it stands of the docks that never move.
    struct Place {
        QRect window; // null for the main window
        QList<ads::DockWidgetArea> sides;

        bool operator==(const Place &other) const { return window == other.window && sides == other.sides; }
    };
    using Docks = QList<QPointer<ads::CDockWidget>>;
    // The docks of an area, in the order of the tabs.
    struct Area {
        Docks docks;
        QPointer<ads::CDockWidget> current;
    };
    // A part of a row: an area, or an inner row with all of its docks.
    struct Part {
        Docks docks;
        int extent = 0; // pixels along the row
    };
    // What stands side by side, or one below the other, in a splitter.
    struct Row {
        Qt::Orientation orientation;
        QRect window; // null for the main window
        QList<Part> parts;
    };

    // Which docks are put back: those that stood at an edge of the main window, or all.
    enum class Where { AtEdges, Everywhere };

    Place placeOf(const ads::CDockAreaWidget *area) const;
    void remember();
    Docks rememberArea(const ads::CDockAreaWidget *area);
    Docks rememberRow(const QSplitter *splitter, const QRect &window);
    void takeOutUnregistered();

    void bringBack();
    bool stands(const ads::CDockWidget *dock) const;
    bool stands(const Part &part) const;
    bool isWhole(const Row &row) const;
    void putBack(const Row &row, Where where);
    int floatFirst(const Row &row);
    void putBeside(const Row &row, int index, bool before, Where where);
    void putTabs(const Area &area);
    void resize(const Row &row);
    void resize(ads::CDockAreaWidget *area, int extent);

    ads::CDockManager *m_manager;
    QHash<const ads::CDockWidget *, Place> m_places; // of all docks that were open
    QList<Area> m_areas;
    QList<Row> m_rows;                     // inner ones first
    QSet<const ads::CDockWidget *> m_back; // those that were put back
    QPointer<QWidget> m_focus;             // had it before
};

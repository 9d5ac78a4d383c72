#pragma once

#include "mainwindow/docking.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QRect>

class QSplitter;

// Keeps what is open in sight when a stored layout comes back. A dock that the layout does not know stays
// where it was; a form that it knows as closed opens at its place there. The focus stays where it is, too.
class OpenDocks : public QObject
{
    Q_OBJECT
public:
    // The manager owns this.
    explicit OpenDocks(ads::CDockManager *manager);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // A side of something, and the extent in pixels from there.
    struct Side {
        ads::DockWidgetArea side = ads::RightDockWidgetArea;
        int extent = 0;
    };
    // Where an area stands: in a window of its own or in the main window, there beside a neighbour, and at an
    // edge of the whole.
    struct Place {
        QRect window; // null for the main window
        QPointer<ads::CDockWidget> neighbour;
        Side beside; // the neighbour, if there is one
        Side edge;

        bool operator==(const Place &other) const
        {
            return window == other.window && neighbour == other.neighbour && beside.side == other.beside.side
                && edge.side == other.edge.side;
        }
    };
    struct OpenDock {
        QPointer<ads::CDockWidget> dock;
        QList<QPointer<ads::CDockWidget>> companions; // of its area, in the order of the tabs
        bool isCurrent;
        Place place;
    };

    static Side sideOf(const QSplitter *splitter, QWidget *part);
    static Place placeOf(ads::CDockAreaWidget *area);
    void remember();
    void takeOutUnregistered();
    void bringBack();
    void put(const OpenDock &open);
    void resize(ads::CDockAreaWidget *area, int extent);

    ads::CDockManager *m_manager;
    QList<OpenDock> m_open;
    QPointer<QWidget> m_focus;
};

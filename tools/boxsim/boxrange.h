#pragma once

#include "boxsim/boxsim.h"

#include <memory>
#include <vector>

// Simulated Boxes on addresses in a row, all with the same faults, each with settings, a project and
// connections of its own.
class BoxRange : public QObject
{
    Q_OBJECT

public:
    // The options are those of the first Box; optionsAt() tells what differs.
    BoxRange(const BoxSimOptions &options, int count, QObject *parent = nullptr);

    // Of the Box at a place, counted from 0: its address is so many further on; so is its seed, for values of
    // its own, and the number that ends its serial number. A serial number without one gets one from 1 on.
    static BoxSimOptions optionsAt(const BoxSimOptions &options, int place);

    // Starts all, or none: false, with the reason in errorString(), if one cannot start.
    bool start();
    void stop();
    QString errorString() const { return m_error; }

    const std::vector<std::unique_ptr<BoxSim>> &boxes() const { return m_boxes; }
    bool isConnected() const; // whether any has an open connection

signals:
    void connectionClosed();

private:
    std::vector<std::unique_ptr<BoxSim>> m_boxes;
    QString m_error;
};

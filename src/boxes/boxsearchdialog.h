#pragma once

#include "boxlink/boxsearch.h"

#include <QDialog>

class OutcomeLine;
class QComboBox;
class QListWidget;

// Searches for Boxes on the local network and lists what they say about themselves. For reading only: the
// user copies an address into a Box by hand.
class BoxSearchDialog : public QDialog
{
    Q_OBJECT
public:
    explicit BoxSearchDialog(QWidget *parent = nullptr);
    ~BoxSearchDialog() override;

public slots:
    // Clears the list and starts a search; one that finds nothing is told when it ends.
    void searchForBoxes();
    // One broadcast on the selected interface.
    void sendSearchBroadcast();
    void readPendingDatagrams();

private:
    void fillInterfaces();
    void tellFailure(const QHostAddress &address, const QString &why);
    void noteSent();
    void showBox(const Discovery::Answer &box);
    void tellEnd();

    QListWidget *m_list;
    QComboBox *m_interfaces; // user data: the QNetworkInterface
    OutcomeLine *m_state;    // that a search is under way, or what keeps it from the network
    BoxSearch *m_search;
    // Of the latest search:
    bool m_hasSent = false; // a broadcast, so that it is a search
    QString m_failure;      // what to tell if it has not
};

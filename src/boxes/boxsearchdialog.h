#pragma once

#include <QDialog>
#include <QSet>
#include <QTimer>

class QComboBox;
class QListWidget;
class QUdpSocket;

// Finds Boxes on the local network by UDP broadcast and lists what they say about themselves. For reading
// only: the user copies an address into a Box by hand.
class BoxSearchDialog : public QDialog
{
    Q_OBJECT
public:
    explicit BoxSearchDialog(QWidget *parent = nullptr);
    ~BoxSearchDialog() override;

    // Lists the Box of one datagram as a new last row; anything but a first answer of its address is dropped
    // in silence.
    void showAnswer(const QByteArray &datagram);

public slots:
    // Clears the list and broadcasts once a second for ten seconds.
    void searchForBoxes();
    // One broadcast from the first IPv4 address of the selected interface; failures are debug lines.
    void sendSearchBroadcast();
    void readPendingDatagrams();

private:
    void fillInterfaces();
    void finishSearch();

    QListWidget *m_list;
    QComboBox *m_interfaces; // user data: the QNetworkInterface
    QUdpSocket *udpSocket;
    QTimer *searchTimer;
    QSet<QString> foundAddresses; // of the current search
};

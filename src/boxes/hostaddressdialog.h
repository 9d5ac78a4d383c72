#pragma once

#include <QDialog>
#include <QStringList>

class QComboBox;
class QHostAddress;

// Asks for the local address from which to reach a Box.
class HostAddressDialog : public QDialog
{
    Q_OBJECT
public:
    // Offers the addresses of this machine, with the current one selected if it is among them.
    HostAddressDialog(const QString &current, QWidget *parent);

    // "0.0.0.0" for any, then those of the addresses that are IPv4 and no loopback, in the order given.
    static QStringList choices(const QList<QHostAddress> &addresses);

signals:
    // "OK" was pressed; the dialog is accepted next.
    void chosen(const QString &address);

private:
    QComboBox *m_address;
};

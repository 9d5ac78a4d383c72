#pragma once

#include <QString>
#include <QVector>

// What differs between the protocols of a Server when one is made.
struct ServerProtocol {
    // Inputs of the dialog that only some protocols show.
    enum Input : unsigned {
        Address = 0x01,
        Port = 0x02, // the label; the field is always there
        LocalPort = 0x04,
        SlaveNote = 0x08,
        Domain = 0x10,
    };

    QString key;           // as items and the document hold it
    bool isTranslated;     // shown as the provider is called in the user's language
    const char *icon;      // file among the images
    const char *port;      // preset
    const char *domain;    // preset; null leaves what was typed
    unsigned shown;        // Inputs
    bool isSingle = false; // a folder has at most one of it

    // The name that a dialog shows; the context is the class name of the dialog.
    QString shownName(const char *context) const;
};

namespace ServerProtocols {

// In the order in which they are offered.
const QVector<ServerProtocol> &all();
// Icon resource of a Server by protocol; empty for an unknown one.
QString icon(const QString &key);

} // namespace ServerProtocols

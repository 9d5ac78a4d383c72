#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// A Box that a command is to work on.
struct BoxTarget {
    QString address; // dotted IPv4, each number as short as can be
    QString name;    // of its list or project; may be empty

    // The address, and the name in brackets if there is one.
    QString label() const;
    static bool isAddress(const QString &text);
    // As address has it; empty for what is none.
    static QString addressOf(const QString &text);
};

// The Boxes of a call: each argument an address, "@FILE", "PROJECT.json:" or "PROJECT.json:NAME".
struct BoxList {
    QVector<BoxTarget> boxes; // in the order of the call, each address once
    QStringList notes;        // to be told, of Boxes that are named twice
    QString error;            // why the list is none; empty if it is one
    bool isBadDocument = false;

    bool ok() const { return error.isEmpty(); }

    // Nothing is sent here. A list that names no Box at all is an error.
    static BoxList read(const QStringList &arguments);
};

#pragma once

#include "boxsim/acquire/dlt645frame.h"

#include <QString>

enum class Dlt645Edition { Of2007, Of1997 };

// The six bytes of an address as on the line, of at most twelve digits with the highest first; missing ones
// are zeros. A pair AA stands for any two digits. Empty if the text is no such address.
QByteArray dlt645Address(const QString &text);

// The bytes of a data identifier as on the line, of its eight hexadecimal digits, or four in 1997. Empty if
// the text is no such identifier.
QByteArray dlt645Item(Dlt645Edition edition, const QString &text);

// What a meter answers to a question for one item.
struct Dlt645Answer {
    enum class Kind {
        None,    // to something else, or no answer at all
        Value,   // the bytes of the item, lowest first
        Refused, // the meter has an error to tell
    };

    Kind kind = Kind::None;
    QByteArray value;
    bool more = false; // there is more of it, which a continuation asks for
    quint8 error = 0;
};

// The question for one item of one meter.
struct Dlt645Query {
    Dlt645Edition edition = Dlt645Edition::Of2007;
    QByteArray address; // by dlt645Address()
    QByteArray item;    // by dlt645Item()

    // What is sent, with the bytes that wake a meter before it.
    QByteArray request() const;
    // The same for the next part of an item that does not fit into one frame: part 1 follows the first
    // answer. There are at most 255.
    QByteArray continuation(int part) const;

    // What a frame says to the request, or with a part to its continuation. A frame with a wrong checksum,
    // from another meter or about another item is none.
    Dlt645Answer answer(const Dlt645Frame &frame, int part = 0) const;

    // The errors that a meter tells, in words.
    QString errorText(quint8 error) const;
};

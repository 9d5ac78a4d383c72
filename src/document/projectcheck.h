#pragma once

#include <QString>
#include <QVector>

class QDateTime;
class QJsonObject;
class QStandardItem;

// What in a project a Box can't do, or hardly does as it was meant. It is told before a push.
namespace ProjectCheck {

enum class Severity {
    Error,   // the Box can't do it
    Warning, // it can, but hardly as it was meant
};

struct Remark {
    Severity severity;
    QString folder; // of the project tree, as "Standard"; empty for the project itself
    int row;        // of the definition in its folder and in the array of the document, from 0; -1 for none
    QString name;   // of the definition or the project
    QString text;   // a sentence in the language in force; it never holds a password or a key

    // "Error: Standard/Feeder: " and the text.
    QString line() const;
};

// Remarks on a document of any shape, in its order: a value of another type than the document has is one.
// Certificates are judged as of now, and not at all where Qt has no SSL library.
QVector<Remark> remarksOn(const QJsonObject &project, const QDateTime &now);

// The item of the tree that a remark on the project's document is about; null if it has gone since.
QStandardItem *itemOf(const Remark &remark, QStandardItem *project);

} // namespace ProjectCheck

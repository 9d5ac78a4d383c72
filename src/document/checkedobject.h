#pragma once

#include "definitions/values.h"
#include "document/projectcheck.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>

// An object of the document while it is checked, and what is remarked on it.
class CheckedObject
{
public:
    using Severity = ProjectCheck::Severity;

    // Remarks are appended to the list, which must outlive the object.
    CheckedObject(const QJsonObject &object, const QString &folder, int row,
                  QVector<ProjectCheck::Remark> *remarks);

    QString name() const;
    const QJsonObject &json() const { return m_object; }
    // As the program reads it: a value that is no text is an empty one.
    QString text(const char *key, Definitions::Place place = Definitions::Place::Object) const;
    // An array that is something else is an error.
    QJsonArray array(const char *key);

    void add(Severity severity, const QString &text);
    void error(const QString &text) { add(Severity::Error, text); }
    void warning(const QString &text) { add(Severity::Warning, text); }

    // The same for an empty text under the key.
    void needText(Severity severity, const char *key, Definitions::Place place = Definitions::Place::Object);
    // The same for values that are no text, and for those that their lists do not have, by the rows of the
    // kind. An empty one passes where the form was never saved: not with a list that has to be set.
    void checkValues(Severity severity, Definitions::Kind kind, unsigned subKinds, bool listsAreSet);

private:
    QJsonValue value(const char *key, Definitions::Place place) const;

    QJsonObject m_object;
    QString m_folder;
    int m_row;
    QVector<ProjectCheck::Remark> *m_remarks;
};

// The words of the check, in the language in force.
struct CheckText {
    Q_DECLARE_TR_FUNCTIONS(ProjectCheck)
public:
    // What the user knows a value of the document by; the key itself if that is all there is.
    static QString labelOf(const QString &key);
    static QString empty(const QString &label);
    static QString noText(const QString &label);
    static QString noList(const QString &key);
    static QString notInList(const QString &label, const QString &value);
    // In one line of bearable length, for texts from outside.
    static QString shortened(const QString &text);
};

#pragma once

#include "definitions/values.h"
#include "document/projectcheck.h"

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
    // The text under the key; empty for a value that is no text, since the program reads it so.
    QString text(const char *key, Definitions::Place place = Definitions::Place::Object) const;
    // The array under the key. Adds an error if something else is there.
    QJsonArray array(const char *key);

    // Adds a remark on the object.
    void add(Severity severity, const QString &text);
    void error(const QString &text) { add(Severity::Error, text); }
    void warning(const QString &text) { add(Severity::Warning, text); }

    // Adds a remark if there is nothing under the key, or a text of white space alone.
    void needText(Severity severity, const char *key, Definitions::Place place = Definitions::Place::Object);
    // Adds a remark on each value that is no text and on each that its list does not have, by the rows of the
    // kind. An empty text passes, since the form may never have been saved, unless the lists have to be set.
    void checkValues(Severity severity, Definitions::Kind kind, unsigned subKinds, bool listsAreSet);

private:
    QJsonValue value(const char *key, Definitions::Place place) const;

    QJsonObject m_object;
    QString m_folder;
    int m_row;
    QVector<ProjectCheck::Remark> *m_remarks;
};

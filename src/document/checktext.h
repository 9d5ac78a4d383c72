#pragma once

#include <QCoreApplication>
#include <QString>

// The words of the check before a push, in the language in force. Those of several checks stand here.
struct CheckText {
    Q_DECLARE_TR_FUNCTIONS(ProjectCheck)
public:
    // What the user knows a value of the document by; the key itself if that is all there is.
    static QString labelOf(const QString &key);
    static QString empty(const QString &label);
    static QString noText(const QString &label);
    static QString noList(const QString &key);
    static QString notInList(const QString &label, const QString &value);
    // A text from outside in one line of at most 40 characters.
    static QString shortened(const QString &text);
};

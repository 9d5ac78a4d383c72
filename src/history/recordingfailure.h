#pragma once

#include "history/recordingtarget.h"

#include <QCoreApplication>

class QSqlError;

// Why the database of a recording fails.
struct RecordingFailure {
    Q_DECLARE_TR_FUNCTIONS(RecordingDatabase)
public:
    enum class Access { Read, Write };

    QString text{};        // in the words of the user
    bool isLocked = false; // which others give back
    // A program was killed in a transaction, which one that may write is to roll back.
    bool isLeftOver = false;

    // What the database was opened for, and whether it was.
    static RecordingFailure of(const RecordingTarget &target, Access access, bool isOpen,
                               const QSqlError &error);
    // The file is no longer where it was.
    static RecordingFailure moved(const RecordingTarget &target);

private:
    static QString accessWords(const RecordingTarget &target, Access access, bool isOpen,
                               const QSqlError &error);
    static QString serverWords(const QString &server, const QSqlError &error);
};

#pragma once

#include "history/valuetable.h"

#include <QPointer>
#include <QThread>

#include <atomic>

class QProgressDialog;

// Writes values into a file beside the window, which goes on meanwhile; a dialog tells how far it has come
// and lets the user cancel it. The file is written whole or not at all, and what goes wrong is told over the
// window. It deletes itself when it is done; a window that closes cancels it.
class ValueSaver : public QThread
{
    Q_OBJECT
public:
    // The columns are of that range.
    ValueSaver(std::vector<ValueTable::Column> columns, const TimeRange &range, const QString &path,
               QWidget *window);
    ~ValueSaver() override;

    inline static int patience = 700; // ms, until the dialog is shown; for tests to shorten

signals:
    void progressed(int percent);

protected:
    void run() override;

private:
    void showProgress();
    void end();

    std::vector<ValueTable::Column> m_columns; // this and the percent are the thread's, once it runs
    int m_percent = 0;
    QString m_path;
    QPointer<QProgressDialog> m_progress;
    std::atomic<bool> m_isCancelled{false};
    bool m_isSaved = false; // this and the error are read when the thread has finished
    QString m_error;
};

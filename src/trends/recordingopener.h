#pragma once

#include "history/point.h"
#include "history/recordingtarget.h"

#include <QObject>
#include <QPointer>
#include <QVector>

class QProgressDialog;
class QWidget;
class RecordingReader;

// Opens one recording: asks for it, reads what is in it, and asks which points to show. What goes wrong is
// told. It deletes itself when it is done.
class RecordingOpener : public QObject
{
    Q_OBJECT
public:
    // Asks over the widget.
    RecordingOpener(QWidget *over, QObject *parent);

    void ask();
    void open(const RecordingTarget &target);

signals:
    // The reader has no other owner than the receiver from now on.
    void opened(RecordingReader *reader, const QVector<Point> &points);

private:
    void choosePoints();
    void endProgress();
    void fail(const QString &why);

    QPointer<QWidget> m_over;
    RecordingReader *m_reader = nullptr;
    QPointer<QProgressDialog> m_progress;
};

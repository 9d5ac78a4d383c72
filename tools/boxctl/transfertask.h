#pragma once

#include "boxctl/boxtask.h"
#include "boxlink/transferrun.h"

#include <QElapsedTimer>

class Call;

// Pushes one file to a Box.
class TransferTask : public BoxTask
{
    Q_OBJECT
public:
    // The name is that of the file, for people. The time-out, in milliseconds, is for connecting.
    TransferTask(TransferFrames frames, const QString &name, int timeout);

    void start(const BoxTarget &box) override;
    QString state() const override;

private:
    void end(TransferEnding ending, const QString &detail);

    TransferRun *m_run;
    QString m_name;
    QElapsedTimer m_clock;
    int m_percentage = -1; // nothing is sent yet
};

// Pushes what is opened to each of the Boxes of a call. Its digest is made once: a Box that gets other bytes
// refuses them. The name is that of the file, for people. Gives the exit status.
int pushToAll(const Call &call, const QStringList &boxes, Frame::Command command, const QString &name,
              const TransferFrames::Opener &opener);

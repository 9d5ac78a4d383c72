#pragma once

#include "boxes/outcomeline.h"
#include "boxlink/transferframes.h"

// The line that keeps what was pushed last, where to and when, and how it ended. Hidden until the first push.
class PushOutcome : public OutcomeLine
{
    Q_OBJECT
public:
    explicit PushOutcome(QWidget *parent);

    // One push, as the line names it.
    struct Push {
        QString what; // a project or a program
        QString address;
    };

    // Says that the push is under way, and gives its number. The line is on the screen when this returns: the
    // window is blocked next.
    int begin(const Push &push);
    // Says that all of it has gone out: the Box has the say now.
    void await(int number, const Push &push);
    // Says how the push of that number has ended, unless a later one has taken the line meanwhile.
    void end(int number, const Push &push, TransferEnding ending);
    // For a push that did not come to a transfer; a translated clause.
    void fail(const Push &push, const QString &why);

private:
    void showFailure(const Push &push, const QString &why);

    int m_latest = 0; // number of the push in the line
};

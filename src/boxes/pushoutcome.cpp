#include "boxes/pushoutcome.h"

#include "log/timetext.h"
#include "widgets/scrollintosight.h"

#include <QCoreApplication>
#include <QEvent>

namespace {

const char *reason(TransferEnding ending)
{
    switch (ending) {
    case TransferEnding::Delivered:
        break;
    case TransferEnding::NotBound:
        return QT_TRANSLATE_NOOP("PushOutcome", "this computer does not have the chosen host address");
    case TransferEnding::NotConnected:
        return QT_TRANSLATE_NOOP("PushOutcome", "no connection to the Box");
    case TransferEnding::FileUnreadable:
        return QT_TRANSLATE_NOOP("PushOutcome", "the file could not be read");
    case TransferEnding::LinkLost:
        return QT_TRANSLATE_NOOP("PushOutcome", "the connection broke before all was sent");
    case TransferEnding::NoVerdict:
        return QT_TRANSLATE_NOOP("PushOutcome",
                                 "the Box gave no verdict in time, so nobody knows what it has");
    case TransferEnding::BrokenVerdict:
        return QT_TRANSLATE_NOOP("PushOutcome", "the Box gave no whole verdict, so nobody knows what it has");
    case TransferEnding::WrongVerdict:
        return QT_TRANSLATE_NOOP("PushOutcome", "the Box gave the verdict on something else");
    case TransferEnding::Refused:
        return QT_TRANSLATE_NOOP("PushOutcome", "the Box says that the checksum is wrong");
    }
    return "";
}

} // namespace

PushOutcome::PushOutcome(QWidget *parent)
    : OutcomeLine(parent)
{
    hide();
}

int PushOutcome::begin(const Push &push)
{
    const int number = ++m_latest;
    showLine(tr("%1: pushing '%2' to %3...").arg(timeText(), push.what, push.address), false);
    show();
    // No other event may come in between: the push blocks from its first moment on.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    scrollIntoSight(this);
    repaint();
    return number;
}

void PushOutcome::await(int number, const Push &push)
{
    if (number == m_latest) {
        showLine(tr("%1: all of '%2' was sent to %3, whose verdict is still to come...")
                     .arg(timeText(), push.what, push.address),
                 false);
    }
}

void PushOutcome::end(int number, const Push &push, TransferEnding ending)
{
    if (number != m_latest) {
        return;
    }
    if (ending == TransferEnding::Delivered) {
        showLine(tr("%1: '%2' is on %3. The verdict of the Box: checksum successful.")
                     .arg(timeText(), push.what, push.address),
                 false);
    } else {
        showFailure(push, tr(reason(ending)));
    }
}

void PushOutcome::fail(const Push &push, const QString &why)
{
    ++m_latest;
    showFailure(push, why);
}

void PushOutcome::showFailure(const Push &push, const QString &why)
{
    showLine(tr("%1: FAILED: '%2' to %3: %4.").arg(timeText(), push.what, push.address, why), true);
    show();
}

#include "boxes/requestline.h"

#include "log/timetext.h"

namespace {

// By Request; with the time and the address.
const char *const awaited[] = {
    QT_TRANSLATE_NOOP("RequestLine", "%1: asked %2 for its values, no answer yet."),
    QT_TRANSLATE_NOOP("RequestLine", "%1: sent to %2, no answer yet."),
    QT_TRANSLATE_NOOP("RequestLine", "%1: asked %2 to restart, no answer yet."),
};
const char *const done[] = {
    QT_TRANSLATE_NOOP("RequestLine", "%1: read from %2."),
    QT_TRANSLATE_NOOP("RequestLine", "%1: written to %2."),
    QT_TRANSLATE_NOOP("RequestLine", "%1: %2 restarts."),
};

} // namespace

RequestLine::RequestLine(QWidget *parent)
    : OutcomeLine(parent)
{
}

void RequestLine::showUnread()
{
    m_isAwaited = false;
    showLine(tr("Nothing on this page has been read from the Box."), false);
}

void RequestLine::begin(Request request, const QString &address)
{
    m_isAwaited = true;
    m_address = address;
    showLine(tr(awaited[request]).arg(timeText(), address), false);
}

void RequestLine::succeed(Request request, const QString &address)
{
    m_isAwaited = false;
    showLine(tr(done[request]).arg(timeText(), address), false);
}

void RequestLine::refuse(const QString &address, const QString &code)
{
    m_isAwaited = false;
    showLine(tr("%1: FAILED: %2 refused, error code %3.").arg(timeText(), address, code), true);
}

void RequestLine::loseUnsent()
{
    fail(tr("nothing was sent, there is no link to %1").arg(m_address));
}

void RequestLine::loseAnswer()
{
    fail(tr("the link to %1 ended before an answer").arg(m_address));
}

void RequestLine::fail(const QString &clause)
{
    if (m_isAwaited) {
        m_isAwaited = false;
        showLine(tr("%1: FAILED: %2.").arg(timeText(), clause), true);
    }
}

#include "boxes/requestline.h"

#include "log/timetext.h"

namespace {

// By Request; with the time and the address.
const char *const awaited[] = {
    QT_TRANSLATE_NOOP("RequestLine", "%1: reading from %2, no answer yet."),
    QT_TRANSLATE_NOOP("RequestLine", "%1: writing to %2, no answer yet."),
    QT_TRANSLATE_NOOP("RequestLine", "%1: asking %2 to restart, no answer yet."),
};
const char *const done[] = {
    QT_TRANSLATE_NOOP("RequestLine", "%1: read from %2."),
    QT_TRANSLATE_NOOP("RequestLine", "%1: written to %2."),
    QT_TRANSLATE_NOOP("RequestLine", "%1: %2 restarts."),
};
const char *const lost[] = {
    QT_TRANSLATE_NOOP("RequestLine", "%1: NO ANSWER: the link to %2 ended before it."),
    QT_TRANSLATE_NOOP(
        "RequestLine",
        "%1: NO ANSWER: the link to %2 ended before it. Nobody knows whether %2 was written to."),
    QT_TRANSLATE_NOOP("RequestLine",
                      "%1: NO ANSWER: the link to %2 ended before it. Nobody knows whether %2 restarts."),
};

} // namespace

RequestLine::RequestLine(QWidget *parent)
    : OutcomeLine(parent)
{
}

void RequestLine::showUnread()
{
    m_awaited.fill(0);
    showLine(tr("Nothing on this page has been read from the Box."), false);
}

void RequestLine::begin(Request request, const QString &address)
{
    ++m_awaited[request];
    m_latest = request;
    m_address = address;
    showLine(tr(awaited[request]).arg(timeText(), address), false);
}

void RequestLine::succeed(Request request, const QString &address)
{
    if (takeAnswer(request)) {
        showLine(tr(done[request]).arg(timeText(), address), false);
    }
}

void RequestLine::refuse(Request request, const QString &address, const QString &code)
{
    if (takeAnswer(request)) {
        showLine(tr("%1: FAILED: %2 refused, error code %3.").arg(timeText(), address, code), true);
    }
}

// Whether it is to be shown: the line is that of the latest request, as long as this waits.
bool RequestLine::takeAnswer(Request request)
{
    // The values of any read are those of the Box.
    if (request == Read) {
        m_awaited[Read] = 0;
        return m_awaited[m_latest] == 0;
    }
    // Each write has an answer of its own. One that is not awaited belongs to another item, or to none.
    if (m_awaited[request] == 0) {
        return false;
    }
    --m_awaited[request];
    return m_awaited[m_latest] == 0;
}

void RequestLine::loseUnsent()
{
    if (m_awaited != Counts{}) {
        m_awaited.fill(0);
        showLine(tr("%1: FAILED: nothing was sent, there is no link to %2.").arg(timeText(), m_address),
                 true);
    }
}

void RequestLine::loseAnswer()
{
    for (const Request request : {Reboot, Write, Read}) { // what may have changed the Box comes first
        if (m_awaited[request] > 0) {
            m_awaited.fill(0);
            showLine(tr(lost[request]).arg(timeText(), m_address), true);
            return;
        }
    }
}

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
const char *const overdue[] = {
    QT_TRANSLATE_NOOP("RequestLine", "%1: NO ANSWER from %2 within ten seconds."),
    QT_TRANSLATE_NOOP(
        "RequestLine",
        "%1: NO ANSWER from %2 within ten seconds. Nobody knows whether all was written to %2."),
    QT_TRANSLATE_NOOP("RequestLine",
                      "%1: NO ANSWER from %2 within ten seconds. Nobody knows whether %2 restarts."),
};

} // namespace

RequestLine::RequestLine(QWidget *parent)
    : OutcomeLine(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &RequestLine::giveUp);
}

void RequestLine::showUnread()
{
    forget();
    showLine(tr("Nothing on this page has been read from the Box."), false);
}

void RequestLine::begin(Request request, const QString &address)
{
    ++m_awaited[request];
    m_latest = request;
    m_address = address;
    m_timer.start(patience);
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
    Counts &counts = m_awaited[request] > 0 ? m_awaited : m_overdue;
    if (counts[request] == 0) {
        return false;
    }
    --counts[request];
    return m_awaited[m_latest] == 0;
}

// One answer that is lost must not keep those to later requests from being shown.
void RequestLine::giveUp()
{
    showLoss(overdue);
    for (std::size_t request = 0; request < m_awaited.size(); ++request) {
        m_overdue[request] += m_awaited[request];
    }
    m_awaited.fill(0);
}

void RequestLine::loseUnsent()
{
    if (m_awaited != Counts{} || m_overdue != Counts{}) {
        showLine(tr("%1: FAILED: nothing was sent, there is no link to %2.").arg(timeText(), m_address),
                 true);
    }
    forget();
}

void RequestLine::loseAnswer()
{
    showLoss(lost);
    forget();
}

void RequestLine::showLoss(const Texts &texts)
{
    for (const Request request : {Reboot, Write, Read}) { // what may have changed the Box comes first
        if (m_awaited[request] > 0) {
            showLine(tr(texts[request]).arg(timeText(), m_address), true);
            return;
        }
    }
}

void RequestLine::forget()
{
    m_timer.stop();
    m_awaited.fill(0);
    m_overdue.fill(0);
}

#pragma once

#include "boxes/outcomeline.h"

// Keeps what became of the last request of a page, so that one without an answer is seen, and with it where
// the values above come from.
class RequestLine : public OutcomeLine
{
    Q_OBJECT
public:
    enum Request { Read, Write, Reboot };

    explicit RequestLine(QWidget *parent);

    // The values above are those of the project, or of this computer.
    void showUnread();
    // A request is about to be made of the Box at the address.
    void begin(Request request, const QString &address);
    // The Box has answered it.
    void succeed(Request request, const QString &address);
    void refuse(const QString &address, const QString &code);
    // These are without effect while no answer is awaited.
    void loseUnsent();
    void loseAnswer();

private:
    void fail(const QString &clause);

    bool m_isAwaited = false;
    QString m_address; // that the request went to
};

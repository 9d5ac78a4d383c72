#pragma once

#include "boxes/outcomeline.h"

#include <QTimer>

#include <array>

// Keeps what became of the latest request of a page, so that one without an answer is seen, and with it where
// the values come from. Answers are not matched to requests, so they are counted.
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
    // The Box has answered one.
    void succeed(Request request, const QString &address);
    void refuse(Request request, const QString &address, const QString &code);
    // These are without effect while no answer is awaited. The link was never there, or has ended.
    void loseUnsent();
    void loseAnswer();

    inline static int patience = 10000; // before a request counts as unanswered, in ms; for tests to shorten

private:
    using Counts = std::array<int, 3>; // by Request
    using Texts = const char *const[3];

    bool takeAnswer(Request request);
    void giveUp();
    void showLoss(const Texts &texts);
    void forget();

    Counts m_awaited{};
    Counts m_overdue{}; // given up, though their answers may still come
    QTimer m_timer;
    Request m_latest = Read;
    QString m_address; // that the latest went to
};

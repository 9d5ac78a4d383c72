#pragma once

#include "boxes/outcomeline.h"

class QLineEdit;

// Says beside status and version which Box the link goes to and when that told its version last, which it
// does with each heartbeat answer: both labels keep what it said, however long ago, and the field with the
// address may have changed since the connect.
class LinkLine : public OutcomeLine
{
    Q_OBJECT
public:
    // The field with the Box's address is not owned.
    LinkLine(const QLineEdit *field, QWidget *parent);

    // A session to the address begins.
    void begin(const QString &address);
    // The Box has answered a heartbeat.
    void noteAnswer();
    // It has not for 30 seconds.
    void noteSilence();
    // The link is down, or did not come about.
    void end();

private:
    enum class State { None, Up, Silent, Ended };

    void refresh();
    QString sentence() const;

    const QLineEdit *m_field;
    State m_state = State::None;
    QString m_address;
    QString m_lastAnswer; // its time, empty before the first of this session
};

#pragma once

#include "boxes/outcomeline.h"

class QLineEdit;

// Says beside the status of the link which Box it goes to and when that answered last: status and version are
// those of the last answer, however long ago, and the field with the address may have changed since the
// connect.
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
    // It has not for 30 seconds, or the link did not come about.
    void noteSilence();
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

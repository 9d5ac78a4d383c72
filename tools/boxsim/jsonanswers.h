#pragma once

#include <QByteArray>
#include <QString>

struct BoxSimFaults;
class SettingsMemory;

// What a Box does with one 0x0500 request.
struct JsonOutcome {
    QByteArray answer;    // frame to send; empty if there is none
    QString violation;    // what is wrong with the request; empty if nothing is
    bool reboots = false; // the answer is the last thing before the Box goes down
};

// Takes a whole 0x0500 frame, carries a write out on settings and words the answer, spoiled as faults say.
// A Box is strict: a read or reboot has type as a string, a write as a number, pares is an object, the text
// length fits the frame. What breaks this gets no answer. A write that cannot be applied gets the code "400".
JsonOutcome answerJson(const QByteArray &frame, SettingsMemory *settings, const BoxSimFaults &faults);

#pragma once

#include <QElapsedTimer>

#include <functional>

class StopFlag;

// The silence that a serial line needs before the next request. After one without an answer that may still
// come, and could not be told from an answer to the next. This belongs to the line: to whoever opens it next
// as well, with other settings or for another project. It is used by one thread at a time. All times are
// milliseconds.
class LineSilence
{
public:
    enum class Ending {
        Silent,
        Stopped,
        HungUp,   // the line has failed
        Restless, // somebody else talks on the line without an end
    };
    // Waits for bytes and throws away what comes: 1 for some, 0 for the end of the time or a stop, -1 for a
    // line that hung up.
    using Listener = std::function<int(qint64 time)>;

    LineSilence() { m_sinceLastByte.start(); }

    // There was no answer: from now on it must be silent for so long.
    void need(int time);
    // Whether it has not been silent for as long as it must be.
    bool isNeeded() const { return m_needed > 0; }
    // A byte came or went.
    void noteByte() { m_sinceLastByte.restart(); }
    qint64 sinceLastByte() const { return m_sinceLastByte.elapsed(); }
    // Waits until it was silent for as long as it must be. One on which bytes still come so long after the
    // first, and longer than an answer takes, is restless. What is needed stays so until it was silent.
    Ending wait(const Listener &listen, const StopFlag &stop, int longestAnswer);

private:
    QElapsedTimer m_sinceLastByte; // or since the last request was over
    int m_needed = 0;
};

#pragma once

#include <QtGlobal>

// Whether a device, or a line, is there: lost after some attempts in vain, back with the first success.
class Health
{
public:
    // Attempts in vain after which it is lost.
    static constexpr int patience = 3;

    // Notes an attempt; true if it is lost, or back, from now on. attempts() tells after how many.
    bool fail();
    bool succeed();

    bool isLost() const { return m_lost; }
    // Attempts in vain since the last success.
    int failures() const { return m_failures; }
    int attempts() const { return m_told; }

private:
    int m_failures = 0;
    int m_told = 0; // failures when it was last lost or back
    bool m_lost = false;
};

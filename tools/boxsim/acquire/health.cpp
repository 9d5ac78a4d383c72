#include "boxsim/acquire/health.h"

bool Health::fail()
{
    ++m_failures;
    if (m_lost || m_failures < patience) {
        return false;
    }
    m_lost = true;
    m_told = m_failures;
    return true;
}

bool Health::succeed()
{
    const bool back = m_lost;
    if (back) {
        m_told = m_failures;
    }
    m_failures = 0;
    m_lost = false;
    return back;
}

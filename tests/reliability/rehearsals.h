#pragma once

#include <QtGlobal>

// How often a test rehearses one thing: its own number, times the environment variable REHEARSALS.
inline int rehearsals(int usual)
{
    return usual * qMax(1, qEnvironmentVariableIntValue("REHEARSALS"));
}

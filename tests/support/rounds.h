#pragma once

#include <QtGlobal>

// How often a test of random input tries: the short form that every run takes, or TEST_ROUNDS.
inline int rounds(int shortForm)
{
    bool given = false;
    const int wanted = qEnvironmentVariableIntValue("TEST_ROUNDS", &given);
    return given ? wanted : shortForm;
}

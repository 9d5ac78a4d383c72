#pragma once

#include <QtTest>

#define RUN(...)                                                                                             \
    do {                                                                                                     \
        __VA_ARGS__;                                                                                         \
        if (QTest::currentTestFailed()) {                                                                    \
            return;                                                                                          \
        }                                                                                                    \
    } while (false)

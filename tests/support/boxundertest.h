#pragma once

#include "boxsim/boxsim.h"

#include <memory>

// The Box that a test talks to: a simulated one, or the real one whose address BOX_ADDRESS holds. A real Box
// is only read, unless BOX_MAY_CHANGE is set.
class BoxUnderTest
{
public:
    // The options are those of the simulated Box.
    explicit BoxUnderTest(const BoxSimOptions &options)
        : m_address(options.address)
    {
        if (isReal()) {
            m_address = QHostAddress(qEnvironmentVariable("BOX_ADDRESS"));
        } else {
            m_simulated = std::make_unique<BoxSim>(options);
        }
    }

    static bool isReal() { return !qEnvironmentVariableIsEmpty("BOX_ADDRESS"); }
    static bool mayChange() { return !isReal() || !qEnvironmentVariableIsEmpty("BOX_MAY_CHANGE"); }

    bool start() { return m_simulated ? m_simulated->start() : !m_address.isNull(); }
    QHostAddress address() const { return m_address; }
    // Null for a real Box.
    BoxSim *simulated() const { return m_simulated.get(); }

private:
    QHostAddress m_address;
    std::unique_ptr<BoxSim> m_simulated;
};

// Ends the test function where it would change a real Box that nobody gave free.
#define SKIP_UNLESS_BOX_MAY_CHANGE()                                                                         \
    if (!BoxUnderTest::mayChange())                                                                          \
    QSKIP("changes the Box: set BOX_MAY_CHANGE=1 to have it done to a real one")

// Ends the test function where only the simulated Box will do.
#define SKIP_WITHOUT_SIMULATOR(why)                                                                          \
    if (BoxUnderTest::isReal())                                                                              \
    QSKIP(why)

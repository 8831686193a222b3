#pragma once

#include "Result.h"

namespace kova {

/// Names one held assertion.
using AssertionID = quint32;

/// Holds the machine awake. Main thread; a call takes half a second at the very most.
class PowerAssertions {
public:
    virtual ~PowerAssertions() = default;

    /// Holds off idle sleep of the system, not of the screen, until released; the desktop shows the name as
    /// its reason. The error is the service's result code, never 0.
    virtual Result<AssertionID, qint32> createPreventUserIdleSystemSleep(const QString &name) = 0;

    virtual void release(AssertionID id) = 0;
};

} // namespace kova

#pragma once

#include "Result.h"

#include <QObject>
#include <memory>

namespace kova {

using AssertionID = quint32;

/// Prevents idle sleep of the system, not of the screen. The desktop shows the name or reason. Main thread.
class PowerAssertions {
public:
    virtual ~PowerAssertions() = default;

    /// Prevents idle sleep until release(); blocks for at most half a second. The error is the service's
    /// result code, never 0.
    virtual Result<AssertionID, qint32> createPreventUserIdleSystemSleep(const QString &name) = 0;

    virtual void release(AssertionID id) = 0;

    /// Declares that this process performs a task for the user, until the returned activity is destroyed:
    /// prevents idle sleep, and termination of the process by the system. Cannot fail, and does not block.
    virtual std::unique_ptr<QObject> beginUserInitiated(const QString &reason) = 0;
};

} // namespace kova

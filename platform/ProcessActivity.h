#pragma once

#include <QString>
#include <memory>

namespace kova {

/// An activity, which ends when the token is destroyed.
class ActivityToken {
public:
    virtual ~ActivityToken() = default;
};

/// Declares to the system that this process performs a task for the user.
class ProcessActivity {
public:
    virtual ~ProcessActivity() = default;

    /// Prevents idle sleep of the system, not of the screen, and termination of the process by the system.
    /// Cannot fail, and does not block.
    virtual std::unique_ptr<ActivityToken> beginUserInitiated(const QString &reason) = 0;
};

} // namespace kova

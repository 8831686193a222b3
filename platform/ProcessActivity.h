#pragma once

#include <QString>
#include <memory>

namespace kova {

/// A begun activity; destroying it ends it.
class ActivityToken {
public:
    virtual ~ActivityToken() = default;
};

/// Tells the system that this process does something that the user asked for.
class ProcessActivity {
public:
    virtual ~ProcessActivity() = default;

    /// Returns at once and can't fail. Holds off idle system sleep and the process's own ending, not the
    /// screen's sleep.
    virtual std::unique_ptr<ActivityToken> beginUserInitiated(const QString &reason) = 0;
};

} // namespace kova

#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <optional>

namespace kova {

struct NotificationRequest {
    QString identifier;                 ///< unique, so that no notification replaces another
    QString title;                      ///< plain text, shown as typed
    QString body;                       ///< plain text, shown as typed on one line
    std::chrono::milliseconds lifetime; ///< on the screen, if the service supports it
};

/// The desktop's notifications. No call blocks. Main thread.
class NotificationCenter {
public:
    /// Called once, at any time, on any thread.
    using Authorized = std::function<void(bool granted, const std::optional<QString> &error)>;

    virtual ~NotificationCenter() = default;

    /// Requests permission for alerts and sounds.
    virtual void requestAuthorization(Authorized result) = 0;

    /// Delivers immediately. Failures are not reported.
    virtual void add(const NotificationRequest &request) = 0;
};

} // namespace kova

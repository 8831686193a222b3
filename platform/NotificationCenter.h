#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <optional>

namespace kova {

struct NotificationRequest {
    QString identifier;                 ///< never used twice, so that no notification replaces another
    QString title;                      ///< plain text, shown as typed
    QString body;                       ///< plain text, shown as typed on one line
    std::chrono::milliseconds lifetime; ///< on the screen, where the service can
};

/// The desktop's notifications. Neither call waits for the service. Main thread.
class NotificationCenter {
public:
    /// Runs once, on any thread, at any later time.
    using Authorized = std::function<void(bool granted, const std::optional<QString> &error)>;

    virtual ~NotificationCenter() = default;

    /// For alerts and sounds.
    virtual void requestAuthorization(Authorized answer) = 0;

    /// Delivers at once; a failure is not reported.
    virtual void add(const NotificationRequest &request) = 0;
};

} // namespace kova

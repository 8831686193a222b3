#pragma once

#include <QFlags>
#include <QString>
#include <functional>
#include <optional>

namespace kova {

struct NotificationRequest {
    QString identifier; ///< never used twice, so that no notification replaces another
    QString title;      ///< plain text, shown as typed
    QString body;       ///< plain text, shown as typed on one line
    bool defaultSound = true;
};

/// The desktop's notifications. Neither call waits for the service. Main thread.
class NotificationCenter {
public:
    enum AuthorizationOption { Sound = 2, Alert = 4 };
    Q_DECLARE_FLAGS(AuthorizationOptions, AuthorizationOption)

    /// Runs once, on any thread, at any later time.
    using Authorized = std::function<void(bool granted, const std::optional<QString> &error)>;

    virtual ~NotificationCenter() = default;

    virtual void requestAuthorization(AuthorizationOptions options, Authorized answer) = 0;

    /// Delivers at once; a failure is not reported.
    virtual void add(const NotificationRequest &request) = 0;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(NotificationCenter::AuthorizationOptions)

} // namespace kova

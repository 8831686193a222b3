#pragma once

#include "NotificationCenter.h"

#include <atomic>

namespace kova {

class MessageBuses;

/// The session's notification service. Where there is one it shows notifications to everybody, so its answer
/// is the permission.
class FreedesktopNotificationCenter : public NotificationCenter {
public:
    explicit FreedesktopNotificationCenter(MessageBuses &buses) : m_buses(buses) {}

    void requestAuthorization(AuthorizationOptions options, Authorized answer) override;
    void add(const NotificationRequest &request) override;

private:
    void askCapabilities(const Authorized &answer);

    MessageBuses &m_buses;
    std::atomic<bool> m_takesMarkup = true; ///< most services do, so it holds until one says no
};

} // namespace kova

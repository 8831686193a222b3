#pragma once

#include "NotificationCenter.h"

namespace kova {

class MessageBuses;

/// The notifications of a sandboxed program. The portal does not tell whether the user wants to see them, so
/// its being there is the permission.
class PortalNotificationCenter : public NotificationCenter {
public:
    explicit PortalNotificationCenter(MessageBuses &buses) : m_buses(buses) {}

    void requestAuthorization(AuthorizationOptions options, Authorized answer) override;
    void add(const NotificationRequest &request) override;

private:
    MessageBuses &m_buses;
};

} // namespace kova

#pragma once

#include "NotificationCenter.h"

namespace kova {

class Application;
class MessageBuses;

/// The notifications of a sandboxed program. The portal does not tell whether the user wants to see them, so
/// its being there is the permission. A click on a notification brings the application to the front.
class PortalNotificationCenter : public NotificationCenter {
public:
    PortalNotificationCenter(MessageBuses &buses, Application &application)
        : m_buses(buses),
          m_application(application) {}

    void requestAuthorization(Authorized answer) override;
    void add(const NotificationRequest &request) override;

private:
    MessageBuses &m_buses;
    Application &m_application;
};

} // namespace kova

#pragma once

#include "NotificationCenter.h"

namespace kova {

class Application;
class MessageBuses;

/// The notifications of a sandboxed application. The portal does not report whether the user permits them, so
/// authorization is granted if it is available. A click brings the application to the front.
class PortalNotificationCenter : public NotificationCenter {
public:
    PortalNotificationCenter(MessageBuses &buses, Application &application)
        : m_buses(buses),
          m_application(application) {}

    void requestAuthorization(Authorized result) override;
    void add(const NotificationRequest &request) override;

private:
    MessageBuses &m_buses;
    Application &m_application;
};

} // namespace kova

#pragma once

#include "NotificationCenter.h"

#include <QByteArray>
#include <QSet>
#include <atomic>

namespace kova {

class Application;
class MessageBuses;

/// The session's notification service. It needs no permission, so authorization is granted if it replies. A
/// click on a notification brings the application to the front.
class FreedesktopNotificationCenter : public NotificationCenter {
public:
    FreedesktopNotificationCenter(MessageBuses &buses, Application &application)
        : m_buses(buses),
          m_application(application) {}

    void requestAuthorization(Authorized result) override;
    void add(const NotificationRequest &request) override;

private:
    void requestCapabilities(const Authorized &result);
    void listenForClicks();

    MessageBuses &m_buses;
    Application &m_application;
    std::atomic<bool> m_supportsMarkup = true; ///< as most services do, until one replies otherwise
    QSet<uint> m_shown; ///< by the current service; on the buses' thread, like the token
    QByteArray m_activationToken;
};

} // namespace kova

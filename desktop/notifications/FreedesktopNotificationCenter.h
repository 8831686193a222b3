#pragma once

#include "NotificationCenter.h"

#include <QByteArray>
#include <QSet>
#include <atomic>

namespace kova {

class Application;
class MessageBuses;

/// The session's notification service. Where there is one it shows notifications to everybody, so its answer
/// is the permission. A click on a notification brings the application to the front.
class FreedesktopNotificationCenter : public NotificationCenter {
public:
    FreedesktopNotificationCenter(MessageBuses &buses, Application &application)
        : m_buses(buses),
          m_application(application) {}

    void requestAuthorization(Authorized answer) override;
    void add(const NotificationRequest &request) override;

private:
    void askCapabilities(const Authorized &answer);
    void listenForClicks();

    MessageBuses &m_buses;
    Application &m_application;
    std::atomic<bool> m_takesMarkup = true; ///< most services do, so it holds until one says no
    QSet<uint> m_shown;                     ///< by the present service; on the buses' thread, as the token
    QByteArray m_activationToken;
};

} // namespace kova

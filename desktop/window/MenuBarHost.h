#pragma once

#include <QObject>

namespace kova {

class MessageBuses;

/// Waits for the desktop's place for a menu-bar item: a host of status notifiers, or a tray of the X11
/// screen. An alarm clock is often started at login, before the panel. Main thread; no call waits for the
/// bus.
class MenuBarHost : public QObject {
    Q_OBJECT

public:
    /// The buses must outlive it.
    explicit MenuBarHost(MessageBuses &buses) : m_buses(buses) {}

    void watch();

Q_SIGNALS:
    /// At most once. A host takes the item's menu from the bus, a tray leaves it to the program to draw.
    void available(bool isOnBus);

private:
    void ask();
    void answer(bool isRegistered);

    MessageBuses &m_buses;
    bool m_isAvailable = false;
};

} // namespace kova

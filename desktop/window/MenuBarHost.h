#pragma once

#include <QObject>

namespace kova {

class MessageBuses;

/// Watches for a panel that shows the menu-bar item: a status notifier host, or a tray of the X11 screen.
/// Main thread; does not block.
class MenuBarHost : public QObject {
    Q_OBJECT

public:
    /// The buses must outlive it.
    explicit MenuBarHost(MessageBuses &buses) : m_buses(buses) {}

    void watch();

Q_SIGNALS:
    /// Emitted at most once. A host reads the item's menu from the bus; with a tray the application draws it.
    void available(bool isOnBus);

private:
    void requestState();
    void update(bool isRegistered);

    MessageBuses &m_buses;
    bool m_isAvailable = false;
};

} // namespace kova

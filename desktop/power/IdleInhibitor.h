#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace kova {

class MessageBuses;

/// Holds off idle sleep of the system, not of the screen: by a lock of logind's, and by the session's own
/// inhibitor, since some desktops don't look at logind's idle locks. What answers late still counts, and what
/// a service forgot when it restarted is asked for again. Any thread.
class IdleInhibitor {
public:
    /// Runs once on the buses' thread, as soon as one of the two holds or both have failed: 0, or a negative
    /// error number.
    using Settled = std::function<void(qint32 code)>;

    explicit IdleInhibitor(MessageBuses &buses);
    /// Lets go.
    ~IdleInhibitor();
    IdleInhibitor(const IdleInhibitor &) = delete;
    IdleInhibitor &operator=(const IdleInhibitor &) = delete;

    /// The desktop shows the reason. Takes the place of what was held.
    void hold(const QString &reason, Settled settled = {});
    void letGo();

private:
    class Locks;

    MessageBuses &m_buses;
    const std::shared_ptr<std::shared_ptr<Locks>> m_present; ///< used on the buses' thread only
};

} // namespace kova

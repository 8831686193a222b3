#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace kova {

class MessageBuses;

/// Holds off idle sleep of the system, not of the screen, until destroyed: by a lock of logind's, and by the
/// session's own inhibitor, since some desktops don't look at logind's idle locks. What answers late still
/// counts. Any thread.
class IdleInhibitor {
public:
    /// Runs once on the buses' thread, as soon as one of the two holds or both have failed: 0, or a negative
    /// error number.
    using Settled = std::function<void(qint32 code)>;

    IdleInhibitor(MessageBuses &buses, const QString &reason, Settled settled = {});
    ~IdleInhibitor();
    IdleInhibitor(const IdleInhibitor &) = delete;
    IdleInhibitor &operator=(const IdleInhibitor &) = delete;

private:
    class Locks;

    MessageBuses &m_buses;
    std::shared_ptr<Locks> m_locks; ///< used on the buses' thread only
};

} // namespace kova

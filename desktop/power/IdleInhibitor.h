#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <vector>

namespace kova {

class MessageBuses;

/// Inhibits idle sleep of the system, not of the screen: by a lock of logind, and by the session's own
/// inhibitor, since some desktops ignore logind's idle locks. A late reply still takes effect, and a service
/// that restarts is asked again. Any thread.
class IdleInhibitor : public QObject {
public:
    /// Runs once on the buses' thread: with 0 when the first of the two is acquired, or with a negative error
    /// number when both have failed.
    using ResultCallback = std::function<void(qint32 code)>;

    explicit IdleInhibitor(MessageBuses &buses);
    ~IdleInhibitor() override;

    /// The desktop shows the reason. Replaces a former request.
    void acquire(const QString &reason, ResultCallback result = {});
    void release();

private:
    class Lock;
    using Locks = std::vector<std::shared_ptr<Lock>>;

    MessageBuses &m_buses;
    const std::shared_ptr<Locks> m_locks; ///< used on the buses' thread only
};

} // namespace kova

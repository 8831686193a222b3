#include "IdleInhibitor.h"

#include "MessageBuses.h"
#include "Portal.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <array>
#include <cerrno>
#include <optional>

namespace kova {

namespace {

// One way to ask the session: the call, and what takes it back once it was answered.
struct SessionInhibitor {
    QDBusMessage call;
    QDBusMessage (*release)(const QDBusMessage &reply);
};

QDBusMessage portalInhibit(const QString &reason) {
    constexpr quint32 suspend = 4;
    return portalCall(QStringLiteral("org.freedesktop.portal.Inhibit"), QStringLiteral("Inhibit"))
           << QString() << suspend << QVariantMap{{QStringLiteral("reason"), reason}};
}

QDBusMessage portalRelease(const QDBusMessage &reply) {
    const auto request = reply.arguments().value(0).value<QDBusObjectPath>();
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"), request.path(),
                                          QStringLiteral("org.freedesktop.portal.Request"),
                                          QStringLiteral("Close"));
}

QDBusMessage gnomeCall(const QString &method) {
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.gnome.SessionManager"),
                                               QStringLiteral("/org/gnome/SessionManager"),
                                               QStringLiteral("org.gnome.SessionManager"), method);
    call.setAutoStartService(false);
    return call;
}

QDBusMessage gnomeInhibit(const QString &reason) {
    constexpr quint32 noWindow = 0;
    constexpr quint32 suspend = 4; // 8, the idle session, would keep the screen on as well
    return gnomeCall(QStringLiteral("Inhibit"))
           << QStringLiteral("jp.kova.Alarm") << noWindow << reason << suspend;
}

QDBusMessage gnomeRelease(const QDBusMessage &reply) {
    return gnomeCall(QStringLiteral("Uninhibit")) << reply.arguments().value(0);
}

QDBusMessage powerManagementCall(const QString &method) {
    auto call =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.PowerManagement"),
                                       QStringLiteral("/org/freedesktop/PowerManagement/Inhibit"),
                                       QStringLiteral("org.freedesktop.PowerManagement.Inhibit"), method);
    call.setAutoStartService(false);
    return call;
}

QDBusMessage powerManagementInhibit(const QString &reason) {
    return powerManagementCall(QStringLiteral("Inhibit")) << QStringLiteral("KOVA Alarm") << reason;
}

QDBusMessage powerManagementRelease(const QDBusMessage &reply) {
    return powerManagementCall(QStringLiteral("UnInhibit")) << reply.arguments().value(0);
}

// In the order of trying: the portal knows its desktop best.
std::vector<SessionInhibitor> sessionInhibitors(const QString &reason) {
    return {{portalInhibit(reason), &portalRelease},
            {gnomeInhibit(reason), &gnomeRelease},
            {powerManagementInhibit(reason), &powerManagementRelease}};
}

qint32 errorNumber(const QDBusMessage &reply) {
    if (reply.errorName() == u"org.freedesktop.DBus.Error.NameHasNoOwner") {
        return -ENOENT;
    }
    switch (QDBusError(reply).type()) {
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
        return -ENOTCONN;
    case QDBusError::AccessDenied:
        return -EACCES;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return -ETIMEDOUT;
    case QDBusError::ServiceUnknown:
        return -ENOENT;
    default:
        return -EIO;
    }
}

bool isError(const QDBusMessage &reply) {
    return reply.type() != QDBusMessage::ReplyMessage;
}

} // namespace

class IdleInhibitor::Locks : public std::enable_shared_from_this<IdleInhibitor::Locks> {
public:
    Locks(MessageBuses &buses, Settled settled) : m_buses(buses), m_settled(std::move(settled)) {}

    void acquire(const QString &reason) {
        acquireFromSystem(reason);
        acquireFromSession(sessionInhibitors(reason), 0);
    }

    void release() {
        m_isReleased = true;
        m_system = QDBusUnixFileDescriptor();
        if (m_sessionRelease) {
            m_buses.send(Bus::Session, *m_sessionRelease);
            m_sessionRelease.reset();
        }
    }

private:
    void acquireFromSystem(const QString &reason) {
        auto call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
            QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
        call << QStringLiteral("idle") << QStringLiteral("KOVA Alarm") << reason << QStringLiteral("block");
        m_buses.call(Bus::System, call, [self = shared_from_this()](const QDBusMessage &reply) {
            if (isError(reply)) {
                self->failed(errorNumber(reply));
                return;
            }
            if (!self->m_isReleased) {
                self->m_system = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
            }
            self->settle(0);
        });
    }

    void acquireFromSession(const std::vector<SessionInhibitor> &inhibitors, size_t index) {
        m_buses.call(Bus::Session, inhibitors[index].call,
                     [self = shared_from_this(), inhibitors, index](const QDBusMessage &reply) {
                         if (!isError(reply)) {
                             self->sessionHolds(inhibitors[index].release(reply));
                         } else if (index + 1 < inhibitors.size() && !self->m_isReleased) {
                             self->acquireFromSession(inhibitors, index + 1);
                         } else {
                             self->failed(errorNumber(reply));
                         }
                     });
    }

    void sessionHolds(const QDBusMessage &release) {
        m_sessionRelease = release;
        if (m_isReleased) {
            this->release();
        }
        settle(0);
    }

    void failed(qint32 code) {
        m_failures += 1;
        if (m_failures == 2) {
            settle(code);
        }
    }

    void settle(qint32 code) {
        if (const Settled settled = std::exchange(m_settled, {})) {
            settled(code);
        }
    }

    MessageBuses &m_buses;
    Settled m_settled;
    int m_failures = 0;
    bool m_isReleased = false;
    QDBusUnixFileDescriptor m_system;
    std::optional<QDBusMessage> m_sessionRelease;
};

IdleInhibitor::IdleInhibitor(MessageBuses &buses, const QString &reason, Settled settled)
    : m_buses(buses),
      m_locks(std::make_shared<Locks>(buses, std::move(settled))) {
    m_buses.run([locks = m_locks, reason] { locks->acquire(reason); });
}

IdleInhibitor::~IdleInhibitor() {
    m_buses.run([locks = std::move(m_locks)] { locks->release(); });
}

} // namespace kova

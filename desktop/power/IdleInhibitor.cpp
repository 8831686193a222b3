#include "IdleInhibitor.h"

#include "MessageBuses.h"
#include "Portal.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <cerrno>
#include <optional>

namespace kova {

namespace {

const QString logind = QStringLiteral("org.freedesktop.login1");

// An interface of the session: the call that inhibits, and the one that releases, made from the reply.
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

// Does not start the service.
QDBusMessage sessionCall(const char *service, const char *path, const char *interface, const char *method) {
    auto call = QDBusMessage::createMethodCall(QString::fromLatin1(service), QString::fromLatin1(path),
                                               QString::fromLatin1(interface), QString::fromLatin1(method));
    call.setAutoStartService(false);
    return call;
}

QDBusMessage gnomeCall(const char *method) {
    constexpr const char *service = "org.gnome.SessionManager";
    return sessionCall(service, "/org/gnome/SessionManager", service, method);
}

QDBusMessage gnomeInhibit(const QString &reason) {
    constexpr quint32 noWindow = 0;
    constexpr quint32 suspend = 4; // 8, idle, would keep the screen on as well
    return gnomeCall("Inhibit") << QStringLiteral("jp.kova.Alarm") << noWindow << reason << suspend;
}

QDBusMessage gnomeRelease(const QDBusMessage &reply) {
    return gnomeCall("Uninhibit") << reply.arguments().value(0);
}

QDBusMessage powerManagementCall(const char *method) {
    return sessionCall("org.freedesktop.PowerManagement", "/org/freedesktop/PowerManagement/Inhibit",
                       "org.freedesktop.PowerManagement.Inhibit", method);
}

QDBusMessage powerManagementInhibit(const QString &reason) {
    return powerManagementCall("Inhibit") << QStringLiteral("KOVA Alarm") << reason;
}

QDBusMessage powerManagementRelease(const QDBusMessage &reply) {
    return powerManagementCall("UnInhibit") << reply.arguments().value(0);
}

// Tried in this order.
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
    Locks(MessageBuses &buses, const QString &reason, ResultCallback result)
        : m_buses(buses),
          m_reason(reason),
          m_inhibitors(sessionInhibitors(reason)),
          m_result(std::move(result)) {}

    void acquire() {
        acquireFromSystem();
        acquireFromSession(0);
    }

    // The new owner of the name has none of our locks. While a session request is pending, that request may
    // itself have started the service; it is repeated only if it fails.
    void restarted(const QString &service) {
        if (service == logind) {
            acquireFromSystem();
        } else if (m_isRequestPending) {
            m_isRetryRequested = true;
        } else if (!m_sessionRelease || m_sessionRelease->service() == service) {
            m_sessionRelease.reset();
            acquireFromSession(0);
        }
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
    void acquireFromSystem() {
        auto call = QDBusMessage::createMethodCall(logind, QStringLiteral("/org/freedesktop/login1"),
                                                   QStringLiteral("org.freedesktop.login1.Manager"),
                                                   QStringLiteral("Inhibit"));
        call << QStringLiteral("idle") << QStringLiteral("KOVA Alarm") << m_reason << QStringLiteral("block");
        m_buses.call(Bus::System, call, [self = shared_from_this()](const QDBusMessage &reply) {
            if (isError(reply)) {
                self->failed(errorNumber(reply));
                return;
            }
            if (!self->m_isReleased) {
                self->m_system = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
            }
            self->finish(0);
        });
    }

    void acquireFromSession(size_t index) {
        m_isRequestPending = true;
        m_buses.call(Bus::Session, m_inhibitors[index].call,
                     [self = shared_from_this(), index](const QDBusMessage &reply) {
                         self->m_isRequestPending = false;
                         if (!isError(reply)) {
                             self->m_isRetryRequested = false;
                             self->sessionAcquired(self->m_inhibitors[index].release(reply));
                         } else if (index + 1 < self->m_inhibitors.size() && !self->m_isReleased) {
                             self->acquireFromSession(index + 1);
                         } else {
                             self->sessionFailed(errorNumber(reply));
                         }
                     });
    }

    void sessionFailed(qint32 code) {
        if (std::exchange(m_isRetryRequested, false) && !m_isReleased) {
            acquireFromSession(0);
        } else {
            failed(code);
        }
    }

    void sessionAcquired(const QDBusMessage &release) {
        m_sessionRelease = release;
        if (m_isReleased) {
            this->release();
        }
        finish(0);
    }

    void failed(qint32 code) {
        m_failures += 1;
        if (m_failures == 2) {
            finish(code);
        }
    }

    void finish(qint32 code) {
        if (const ResultCallback result = std::exchange(m_result, {})) {
            result(code);
        }
    }

    MessageBuses &m_buses;
    const QString m_reason;
    const std::vector<SessionInhibitor> m_inhibitors;
    ResultCallback m_result;
    int m_failures = 0;
    bool m_isReleased = false;
    bool m_isRequestPending = false; ///< of the session
    bool m_isRetryRequested = false;
    QDBusUnixFileDescriptor m_system;
    std::optional<QDBusMessage> m_sessionRelease;
};

IdleInhibitor::IdleInhibitor(MessageBuses &buses)
    : m_buses(buses),
      m_locks(std::make_shared<std::shared_ptr<Locks>>()) {
    m_buses.run([&buses, locks = m_locks] {
        const auto watch = [&](Bus bus, const QString &service) {
            buses.watch(bus, service, [locks, service] {
                if (*locks) {
                    (*locks)->restarted(service);
                }
            });
        };
        watch(Bus::System, logind);
        for (const SessionInhibitor &inhibitor : sessionInhibitors({})) {
            watch(Bus::Session, inhibitor.call.service());
        }
    });
}

IdleInhibitor::~IdleInhibitor() {
    release();
}

void IdleInhibitor::acquire(const QString &reason, ResultCallback result) {
    release();
    m_buses.run([locks = m_locks, acquired = std::make_shared<Locks>(m_buses, reason, std::move(result))] {
        *locks = acquired;
        acquired->acquire();
    });
}

void IdleInhibitor::release() {
    m_buses.run([locks = m_locks] {
        if (const auto released = std::exchange(*locks, nullptr)) {
            released->release();
        }
    });
}

} // namespace kova

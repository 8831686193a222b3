#include "IdleInhibitor.h"

#include "MessageBuses.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <array>
#include <cerrno>
#include <span>

namespace kova {

namespace {

// A service with a method `Inhibit`.
struct Service {
    Bus bus;
    const char *name;
    const char *path;
    const char *interface;
    const char *release; ///< the method that takes what Inhibit returned; null for a file descriptor
    bool isStarted;      ///< by the bus, if it does not run
    QVariantList (*arguments)(const QString &reason);
};

constexpr quint32 suspend = 4; // for the portal and GNOME; 8, idle, would keep the screen on as well

// The session's services are tried in this order.
const std::array<Service, 4> services{{
    {Bus::System, "org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
     nullptr, true,
     [](const QString &reason) {
         return QVariantList{QStringLiteral("idle"), QStringLiteral("KOVA Alarm"), reason,
                             QStringLiteral("block")};
     }},
    {Bus::Session, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
     "org.freedesktop.portal.Inhibit", "Close", true,
     [](const QString &reason) {
         return QVariantList{QString(), suspend, QVariantMap{{QStringLiteral("reason"), reason}}};
     }},
    {Bus::Session, "org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager",
     "Uninhibit", false,
     [](const QString &reason) {
         constexpr quint32 noWindow = 0;
         return QVariantList{QStringLiteral("jp.kova.Alarm"), noWindow, reason, suspend};
     }},
    {Bus::Session, "org.freedesktop.PowerManagement", "/org/freedesktop/PowerManagement/Inhibit",
     "org.freedesktop.PowerManagement.Inhibit", "UnInhibit", false,
     [](const QString &reason) {
         return QVariantList{QStringLiteral("KOVA Alarm"), reason};
     }},
}};
const std::span systemServices = std::span<const Service>(services).first(1);
const std::span sessionServices = std::span<const Service>(services).subspan(1);

QDBusMessage inhibitCall(const Service &service, const QString &reason) {
    auto call = QDBusMessage::createMethodCall(QLatin1String(service.name), QLatin1String(service.path),
                                               QLatin1String(service.interface), QStringLiteral("Inhibit"));
    call.setArguments(service.arguments(reason));
    call.setAutoStartService(service.isStarted);
    return call;
}

// The portal returned the path of an object, the others a number.
QDBusMessage releaseCall(const Service &service, const QVariant &cookie) {
    const QString request = cookie.value<QDBusObjectPath>().path();
    auto call = QDBusMessage::createMethodCall(
        QLatin1String(service.name), request.isEmpty() ? QLatin1String(service.path) : request,
        request.isEmpty() ? QLatin1String(service.interface)
                          : QLatin1String("org.freedesktop.portal.Request"),
        QLatin1String(service.release));
    call.setArguments(request.isEmpty() ? QVariantList{cookie} : QVariantList());
    call.setAutoStartService(false);
    return call;
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

} // namespace

// An inhibitor, held by the first of the candidates that grants it.
class IdleInhibitor::Lock : public std::enable_shared_from_this<IdleInhibitor::Lock> {
public:
    Lock(MessageBuses &buses, std::span<const Service> candidates, QString reason, ResultCallback result)
        : m_buses(buses),
          m_candidates(candidates),
          m_reason(std::move(reason)),
          m_result(std::move(result)) {}

    void acquire(size_t index = 0) {
        m_isPending = true;
        m_buses.call(m_candidates[index].bus, inhibitCall(m_candidates[index], m_reason),
                     [self = shared_from_this(), index](const QDBusMessage &reply) {
                         self->m_isPending = false;
                         self->handleReply(index, reply);
                     });
    }

    // The new owner of the name has no lock of ours. While a request is pending, that request may itself have
    // started the service; it is repeated only if it fails.
    void restarted(const Service &service) {
        if (service.bus != m_candidates.front().bus) {
            return;
        }
        if (m_isPending) {
            m_isRetryRequested = true;
        } else if (!m_holder || m_holder == &service) {
            m_holder = nullptr;
            acquire();
        }
    }

    void release() {
        m_isReleased = true;
        if (m_holder && m_holder->release) {
            m_buses.call(m_holder->bus, releaseCall(*m_holder, m_cookie));
        }
        m_holder = nullptr;
        m_cookie.clear(); // closes a file descriptor
    }

private:
    void handleReply(size_t index, const QDBusMessage &reply) {
        if (reply.type() == QDBusMessage::ReplyMessage) {
            m_isRetryRequested = false;
            m_holder = &m_candidates[index];
            m_cookie = reply.arguments().value(0);
            if (m_isReleased) {
                release();
            }
            m_result(0);
        } else if (!m_isReleased && index + 1 < m_candidates.size()) {
            acquire(index + 1);
        } else if (!m_isReleased && std::exchange(m_isRetryRequested, false)) {
            acquire();
        } else {
            m_result(errorNumber(reply));
        }
    }

    MessageBuses &m_buses;
    const std::span<const Service> m_candidates;
    const QString m_reason;
    const ResultCallback m_result;
    const Service *m_holder = nullptr; ///< which granted the lock
    QVariant m_cookie;
    bool m_isPending = false;
    bool m_isRetryRequested = false;
    bool m_isReleased = false;
};

IdleInhibitor::IdleInhibitor(MessageBuses &buses) : m_buses(buses), m_locks(std::make_shared<Locks>()) {
    m_buses.run([&buses, locks = m_locks] {
        for (const Service &service : services) {
            buses.watch(service.bus, QLatin1String(service.name), [locks, &service] {
                for (const auto &lock : *locks) {
                    lock->restarted(service);
                }
            });
        }
    });
}

IdleInhibitor::~IdleInhibitor() {
    release();
}

void IdleInhibitor::acquire(const QString &reason, ResultCallback result) {
    release();
    const auto report =
        std::make_shared<ResultCallback>([result = std::move(result), pending = 2](qint32 code) mutable {
            pending -= 1;
            if (result && (code == 0 || pending == 0)) {
                std::exchange(result, {})(code);
            }
        });
    m_buses.run([&buses = m_buses, locks = m_locks, reason, report] {
        for (const auto candidates : {systemServices, sessionServices}) {
            locks->push_back(std::make_shared<Lock>(buses, candidates, reason,
                                                    [report](qint32 code) { (*report)(code); }));
            locks->back()->acquire();
        }
    });
}

void IdleInhibitor::release() {
    m_buses.run([locks = m_locks] {
        for (const auto &lock : std::exchange(*locks, {})) {
            lock->release();
        }
    });
}

} // namespace kova

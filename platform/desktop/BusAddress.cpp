#include "BusAddress.h"

#include <QUrl>
#include <algorithm>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace kova {

namespace {

// "unix:path=/run/bus,guid=…": the value of a key of one address.
QString valueOf(const QString &key, const QString &address) {
    for (const QString &pair : address.section(u':', 1).split(u',')) {
        if (pair.section(u'=', 0, 0) == key) {
            return QUrl::fromPercentEncoding(pair.section(u'=', 1).toUtf8());
        }
    }
    return {};
}

// The first line of the handshake: a bus that is well accepts or refuses it at once. An abstract name begins
// with a zero.
bool answersAt(const QByteArray &name, std::chrono::milliseconds patience) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() >= static_cast<qsizetype>(sizeof address.sun_path)) {
        return false;
    }
    std::memcpy(address.sun_path, name.constData(), static_cast<size_t>(name.size()));
    const bool isAbstract = name.startsWith('\0');
    const auto length =
        offsetof(sockaddr_un, sun_path) + static_cast<size_t>(name.size()) + (isAbstract ? 0 : 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const QByteArray line =
        QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(getuid()).toHex() + "\r\n";
    pollfd answer{.fd = descriptor, .events = POLLIN, .revents = 0};
    const bool isThere =
        connect(descriptor, reinterpret_cast<const sockaddr *>(&address), static_cast<socklen_t>(length)) ==
            0 &&
        send(descriptor, line.constData(), static_cast<size_t>(line.size()), MSG_NOSIGNAL) == line.size() &&
        poll(&answer, 1, static_cast<int>(patience.count())) == 1 && (answer.revents & POLLIN) != 0;
    close(descriptor);
    return isThere;
}

bool answers(const QString &address, std::chrono::milliseconds patience) {
    if (const QString path = valueOf(QStringLiteral("path"), address); !path.isEmpty()) {
        return answersAt(path.toUtf8(), patience);
    }
    if (const QString name = valueOf(QStringLiteral("abstract"), address); !name.isEmpty()) {
        return answersAt('\0' + name.toUtf8(), patience);
    }
    return true; // another transport: connecting will tell
}

} // namespace

QString busAddress(Bus bus) {
    if (bus == Bus::System) {
        return qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS",
                                    QStringLiteral("unix:path=/run/dbus/system_bus_socket"));
    }
    return qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS", QStringLiteral("unix:path=") +
                                                                qEnvironmentVariable("XDG_RUNTIME_DIR") +
                                                                QStringLiteral("/bus"));
}

bool busAnswers(const QString &address, std::chrono::milliseconds patience) {
    const QStringList alternatives = address.split(u';', Qt::SkipEmptyParts);
    return std::any_of(alternatives.cbegin(), alternatives.cend(),
                       [patience](const QString &one) { return answers(one, patience); });
}

} // namespace kova

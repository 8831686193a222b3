#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace kova {

namespace {

constexpr std::chrono::seconds patience{2};
constexpr std::chrono::milliseconds retryInterval{20};
constexpr qint64 longestToken = 4096;

class Descriptor {
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor() {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
    }
    Q_DISABLE_COPY_MOVE(Descriptor)
    operator int() const { return m_fd; }

private:
    int m_fd;
};

// One line with the token there, one byte back: the owner has heard it.
bool tell(const QByteArray &socketPath, const QByteArray &line) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.isEmpty() || socketPath.size() >= qsizetype(sizeof address.sun_path)) {
        return false;
    }
    std::memcpy(address.sun_path, socketPath.constData(), size_t(socketPath.size()));
    const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const timeval timeout{.tv_sec = patience.count(), .tv_usec = 0};
    ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
    if (::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        return false;
    }
    char heard = 0;
    return ::send(socket, line.constData(), size_t(line.size()), MSG_NOSIGNAL) == line.size() &&
           ::recv(socket, &heard, 1, 0) == 1;
}

// Each start in a Flatpak sandbox has a runtime folder of its own; this part of it is the same for all.
QString runtimeFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    const QString shared = folder + QStringLiteral("/app/") + qEnvironmentVariable("FLATPAK_ID");
    return qEnvironmentVariableIsEmpty("FLATPAK_ID") ? folder : shared;
}

} // namespace

SingleInstance::SingleInstance(const QString &configFolder)
    : m_lockPath(configFolder + QStringLiteral("/instance")) {
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::hear);
}

SingleInstance::~SingleInstance() {
    if (m_lock >= 0) {
        ::close(m_lock);
    }
}

// The descriptor is closed in child processes: a speech service that outlives us must not keep the lock.
bool SingleInstance::acquire() {
    const QString folder = QFileInfo(m_lockPath).path();
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_lock = ::open(QFile::encodeName(m_lockPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    return m_lock < 0 || ::flock(m_lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

// The owner may have the lock and not listen yet, so the file is read and tried again.
bool SingleInstance::activateOwner(const QByteArray &activationToken) const {
    const QByteArray line = activationToken.simplified().left(longestToken) + '\n';
    for (const QDeadlineTimer deadline(patience); !deadline.hasExpired();) {
        QFile file(m_lockPath);
        if (file.open(QIODevice::ReadOnly) && tell(file.readLine().trimmed(), line)) {
            return true;
        }
        QThread::msleep(retryInterval.count());
    }
    return false;
}

bool SingleInstance::listen() {
    const QString path = socketPath();
    QLocalServer::removeServer(path); // left behind by a process that was killed
    if (!m_server.listen(path) || m_lock < 0) {
        return false;
    }
    const QByteArray line = QFile::encodeName(path) + '\n';
    return ::ftruncate(m_lock, 0) == 0 && ::pwrite(m_lock, line.constData(), size_t(line.size()), 0) > 0;
}

// Short, since a socket's path may have about 100 bytes; one for each place where a list is saved.
QString SingleInstance::socketPath() const {
    const QByteArray name = QCryptographicHash::hash(
        QFile::encodeName(QFileInfo(m_lockPath).absoluteFilePath()), QCryptographicHash::Sha1);
    return runtimeFolder() + QStringLiteral("/kova-alarm-") + QString::fromLatin1(name.toHex().left(16));
}

void SingleInstance::hear() {
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (socket->canReadLine()) {
                const QByteArray token = socket->readLine(longestToken + 2).trimmed();
                socket->write("!");
                socket->disconnectFromServer();
                Q_EMIT activated(token);
            } else if (socket->bytesAvailable() > longestToken) {
                socket->abort();
            }
        });
    }
}

} // namespace kova

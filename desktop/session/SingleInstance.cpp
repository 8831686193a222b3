#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kova {

namespace {

constexpr std::chrono::seconds patience{2};
constexpr std::chrono::milliseconds retryInterval{20};
constexpr qint64 longestToken = 4096;

// Each start in a Flatpak sandbox has a runtime folder of its own; this part of it is the same for all.
QString runtimeFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    const QString shared = folder + QStringLiteral("/app/") + qEnvironmentVariable("FLATPAK_ID");
    return qEnvironmentVariableIsEmpty("FLATPAK_ID") ? folder : shared;
}

// Short, since a socket's path may have about 100 bytes; one for each place where a list is saved.
QString socketPathFor(const QString &configFolder) {
    const QByteArray name = QCryptographicHash::hash(QFile::encodeName(QDir(configFolder).absolutePath()),
                                                     QCryptographicHash::Sha1);
    return runtimeFolder() + QStringLiteral("/kova-alarm-") + QString::fromLatin1(name.toHex().left(16));
}

// Also when so many wait already that one more has to.
bool isListenedTo(const QString &path) {
    QLocalSocket socket;
    socket.connectToServer(path);
    return socket.state() != QLocalSocket::UnconnectedState;
}

// One line with the token there, one byte back: the owner has heard it.
bool tell(const QString &path, const QByteArray &line, QDeadlineTimer deadline) {
    QLocalSocket socket;
    socket.connectToServer(path);
    return socket.waitForConnected(int(deadline.remainingTime())) && socket.write(line) == line.size() &&
           socket.waitForReadyRead(int(deadline.remainingTime()));
}

} // namespace

SingleInstance::SingleInstance(const QString &configFolder)
    : m_lockPath(configFolder + QStringLiteral("/instance")),
      m_socketPath(socketPathFor(configFolder)) {
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::hear);
}

SingleInstance::~SingleInstance() {
    if (m_lock >= 0) {
        ::close(m_lock);
    }
}

bool SingleInstance::acquire() {
    return lock() && !isListenedTo(m_socketPath);
}

// Not the toolkit's lock file, which names its process by a number: each sandbox counts its own. The
// descriptor is closed in child processes: a speech service that outlives us must not keep the lock.
bool SingleInstance::lock() {
    const QString folder = QFileInfo(m_lockPath).path();
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_lock = ::open(QFile::encodeName(m_lockPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    return m_lock < 0 || ::flock(m_lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool SingleInstance::holdsLock() const {
    struct stat ours {};
    struct stat present {};
    return ::fstat(m_lock, &ours) == 0 && ::stat(QFile::encodeName(m_lockPath).constData(), &present) == 0 &&
           ours.st_ino == present.st_ino && ours.st_dev == present.st_dev;
}

// The owner may have the lock and not listen yet, so it is tried again.
bool SingleInstance::activateOwner(const QByteArray &activationToken) const {
    const QByteArray line = activationToken.simplified().left(longestToken) + '\n';
    for (const QDeadlineTimer deadline(patience); !deadline.hasExpired();) {
        if (tell(m_socketPath, line, deadline)) {
            return true;
        }
        QThread::msleep(retryInterval.count());
    }
    return false;
}

void SingleInstance::listen() {
    QLocalServer::removeServer(m_socketPath); // left behind by a process that was killed
    m_server.listen(m_socketPath);
    m_watcher = std::make_unique<QFileSystemWatcher>(QStringList{m_lockPath, m_socketPath});
    connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, this, &SingleInstance::renew);
}

// A start that has taken the free lock meanwhile finds us by the socket and lets go again.
void SingleInstance::renew() {
    if (!holdsLock()) {
        ::close(m_lock);
        if (!lock()) {
            QTimer::singleShot(std::chrono::seconds(1), this, &SingleInstance::renew);
        }
    }
    if (!QFile::exists(m_socketPath)) {
        m_server.close();
        m_server.listen(m_socketPath);
    }
    m_watcher->removePaths(m_watcher->files());
    m_watcher->addPaths({m_lockPath, m_socketPath});
}

void SingleInstance::hear() {
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        socket->setReadBufferSize(2 * longestToken);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (socket->canReadLine()) {
                const QByteArray token = socket->readLine(longestToken + 2).trimmed();
                socket->write("!");
                socket->flush(); // not after what the activation does, which may take long
                socket->disconnectFromServer();
                Q_EMIT activated(token);
            } else if (socket->bytesAvailable() > longestToken) {
                socket->abort();
            }
        });
    }
}

} // namespace kova

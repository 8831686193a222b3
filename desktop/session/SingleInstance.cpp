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

constexpr std::chrono::seconds activationTimeout{2};
constexpr std::chrono::milliseconds retryInterval{20};
constexpr qint64 maxTokenSize = 4096;

// Each Flatpak sandbox has a runtime folder of its own; this part of it is shared by all of an application.
QString runtimeFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    const QString shared = folder + QStringLiteral("/app/") + qEnvironmentVariable("FLATPAK_ID");
    return qEnvironmentVariableIsEmpty("FLATPAK_ID") ? folder : shared;
}

// Each configuration folder has its own socket; hashed, since a socket's path is limited to 107 bytes.
QString socketPathFor(const QString &configFolder) {
    const QByteArray name = QCryptographicHash::hash(QFile::encodeName(QDir(configFolder).absolutePath()),
                                                     QCryptographicHash::Sha1);
    return runtimeFolder() + QStringLiteral("/kova-alarm-") + QString::fromLatin1(name.toHex().left(16));
}

// Returns true also if the queue of connections is full.
bool isListenedTo(const QString &path) {
    QLocalSocket socket;
    socket.connectToServer(path);
    return socket.state() != QLocalSocket::UnconnectedState;
}

// Sends the line and waits for the acknowledgement, one byte.
bool requestActivation(const QString &path, const QByteArray &line, QDeadlineTimer deadline) {
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
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::acceptConnections);
}

SingleInstance::~SingleInstance() {
    stopListening(); // before another process can own the lock and a socket of the same name
    if (m_lock >= 0) {
        ::close(m_lock);
    }
}

bool SingleInstance::acquire() {
    return lock() && !isListenedTo(m_socketPath);
}

// Close-on-exec, since a spawned speech service that outlives this process must not keep the lock.
bool SingleInstance::lock() {
    const QString folder = QFileInfo(m_lockPath).path();
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_lock = ::open(QFile::encodeName(m_lockPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    return m_lock < 0 || ::flock(m_lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool SingleInstance::holdsLock() const {
    struct stat ours {};
    struct stat current {};
    return ::fstat(m_lock, &ours) == 0 && ::stat(QFile::encodeName(m_lockPath).constData(), &current) == 0 &&
           ours.st_ino == current.st_ino && ours.st_dev == current.st_dev;
}

// Retries, since the owner may hold the lock but not listen yet.
bool SingleInstance::activateOwner(const QByteArray &activationToken) const {
    const QByteArray line = activationToken.simplified().left(maxTokenSize) + '\n';
    for (const QDeadlineTimer deadline(activationTimeout); !deadline.hasExpired();) {
        if (requestActivation(m_socketPath, line, deadline)) {
            return true;
        }
        QThread::msleep(retryInterval.count());
    }
    return false;
}

void SingleInstance::listen() {
    QLocalServer::removeServer(m_socketPath); // of a process that was killed
    m_server.listen(m_socketPath);
    m_watcher = std::make_unique<QFileSystemWatcher>(QStringList{m_lockPath, m_socketPath});
    connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, this, &SingleInstance::restoreFiles);
}

// Another process that has locked a new file meanwhile finds this one's socket and exits.
void SingleInstance::restoreFiles() {
    if (!holdsLock()) {
        ::close(m_lock);
        if (!lock()) {
            QTimer::singleShot(std::chrono::seconds(1), this, &SingleInstance::restoreFiles);
        }
    }
    if (!QFile::exists(m_socketPath)) {
        m_server.close();
        m_server.listen(m_socketPath);
    }
    m_watcher->removePaths(m_watcher->files());
    m_watcher->addPaths({m_lockPath, m_socketPath});
}

void SingleInstance::acceptConnections() {
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        socket->setReadBufferSize(2 * maxTokenSize);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (socket->canReadLine()) {
                const QByteArray token = socket->readLine(maxTokenSize + 2).trimmed();
                socket->write("!");
                socket->flush(); // before the activation, which may take long
                socket->disconnectFromServer();
                Q_EMIT activated(token);
            } else if (socket->bytesAvailable() > maxTokenSize) {
                socket->abort();
            }
        });
    }
}

} // namespace kova

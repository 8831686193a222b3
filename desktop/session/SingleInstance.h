#pragma once

#include <QFileSystemWatcher>
#include <QLocalServer>
#include <QObject>
#include <QString>
#include <memory>

namespace kova {

/// Ensures that one process at a time owns the saved list. The owner locks a file beside the list, which the
/// kernel unlocks whenever the process ends, and listens on a socket named after the list. Either excludes
/// others, and either is re-created if deleted. Main thread.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// Opens nothing before acquire().
    explicit SingleInstance(const QString &configFolder);
    /// Removes the socket and releases the lock.
    ~SingleInstance() override;

    /// Returns true if this process is now the owner, until it exits. A lock file that cannot be opened, or a
    /// file system without locks, does not prevent the start. Needs no application object.
    bool acquire();

    /// Asks the owner to show its window. Returns whether it acknowledged that within two seconds. The token
    /// is the desktop's permission to take the focus, or empty. Needs an application object.
    bool activateOwner(const QByteArray &activationToken) const;

    /// Creates the socket and watches both files. Requests of other processes are handled by the event loop.
    void listen();

    /// Removes the socket, but keeps the lock.
    void stopListening() { m_server.close(); }

Q_SIGNALS:
    /// Another process was started with this token.
    void activated(const QByteArray &activationToken);

private:
    bool lock();
    bool holdsLock() const;
    void restoreFiles();
    void acceptConnections();

    const QString m_lockPath;
    const QString m_socketPath;
    int m_lock = -1;
    QLocalServer m_server;
    std::unique_ptr<QFileSystemWatcher> m_watcher; ///< of the lock file and the socket; null before listen()
};

} // namespace kova

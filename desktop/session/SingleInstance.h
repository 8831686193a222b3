#pragma once

#include <QFileSystemWatcher>
#include <QLocalServer>
#include <QObject>
#include <QString>
#include <memory>

namespace kova {

/// Makes sure that one process at a time owns the saved list. The owner holds a lock on a file beside the
/// list, which the system drops with the process however it ends, and listens under a name of the list's.
/// Either keeps others out; one that is deleted is made anew. Main thread.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// Nothing is touched before `acquire`.
    explicit SingleInstance(const QString &configFolder);
    ~SingleInstance() override;

    /// True when this process is the one; it stays so until it ends. True also where the file system knows no
    /// locks: an alarm clock that does not start is worse. Needs no application object.
    bool acquire();

    /// Asks the owner to show its window and waits, two seconds at most, until it has heard it. The token is
    /// the desktop's permission to take the focus, or empty. Needs an application object.
    bool activateOwner(const QByteArray &activationToken) const;

    /// Starts to hear other starts; needs the event loop.
    void listen();

Q_SIGNALS:
    void activated(const QByteArray &activationToken);

private:
    bool lock();
    bool holdsLock() const;
    void renew();
    void hear();

    const QString m_lockPath;
    const QString m_socketPath;
    int m_lock = -1;
    QLocalServer m_server;
    std::unique_ptr<QFileSystemWatcher> m_watcher; ///< of both files, from `listen` on
};

} // namespace kova

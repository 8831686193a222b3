#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

namespace kova {

/// Makes sure that one process at a time owns the saved list. The owner holds a lock on a file beside the list,
/// which the system drops with the process however it ends; the file says where the owner listens. Main thread.
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
    /// the desktop's permission to take the focus, or empty. Needs no application object.
    bool activateOwner(const QByteArray &activationToken) const;

    /// Starts to hear other starts; needs the event loop.
    bool listen();

Q_SIGNALS:
    void activated(const QByteArray &activationToken);

private:
    QString socketPath() const;
    void hear();

    QString m_lockPath;
    int m_lock = -1;
    QLocalServer m_server;
};

} // namespace kova

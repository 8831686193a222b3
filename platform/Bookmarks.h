#pragma once

#include "Result.h"

#include <QByteArray>
#include <functional>

class QObject;

namespace kova {

/// Persistent references to the user's files that survive a rename in the same folder. Disks may sleep and
/// mounts hang, so a result is passed on before the call returns if it is available within 40 ms, otherwise
/// from the event loop; never after `owner` is destroyed. Main thread.
class Bookmarks {
public:
    using Created = std::function<void(const Result<QByteArray> &bookmark)>;
    using Resolved = std::function<void(const Result<QString> &path)>;

    virtual ~Bookmarks() = default;

    virtual void create(const QString &path, QObject *owner, Created done) = 0;

    /// Passes on the path of the file, which may still be unreadable. Accepts arbitrary bytes.
    virtual void resolve(const QByteArray &bookmark, QObject *owner, Resolved done) = 0;
};

} // namespace kova

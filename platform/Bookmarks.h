#pragma once

#include "Result.h"

#include <QByteArray>
#include <functional>
#include <optional>

class QObject;

namespace kova {

/// A file of the user's, found again. Access to it lasts as long as the process.
struct ResolvedBookmark {
    QString path;
    std::optional<QString> obstacle; ///< why it can't be read
};

/// Lasting references to files of the user's that survive a rename in the same folder. A disk may sleep and a
/// mount may hang: an answer runs before the call returns where it is there within 40 ms, else from the event
/// loop, and not at all once its owner is gone. Main thread.
class Bookmarks {
public:
    using Created = std::function<void(const Result<QByteArray> &bookmark)>;
    using Resolved = std::function<void(const Result<ResolvedBookmark> &file)>;

    virtual ~Bookmarks() = default;

    virtual void create(const QString &path, QObject *owner, Created answer) = 0;

    /// Any bytes may come in.
    virtual void resolve(const QByteArray &bookmark, QObject *owner, Resolved answer) = 0;
};

} // namespace kova

#pragma once

#include "Result.h"

#include <QByteArray>

namespace kova {

struct ResolvedBookmark {
    QString path;
    bool isStale; ///< the file was found, but not where the bookmark says
};

/// Lasting references to files of the user's that survive a rename in the same folder. Main thread.
class Bookmarks {
public:
    virtual ~Bookmarks() = default;

    virtual Result<QByteArray> create(const QString &path) const = 0;

    /// Any bytes may come in.
    virtual Result<ResolvedBookmark> resolve(const QByteArray &bookmark) const = 0;

    /// Access lasts as long as the process; false when the file can't be reached.
    virtual bool startAccessing(const QString &path) const = 0;
};

} // namespace kova

#pragma once

#include "Bookmarks.h"

namespace kova {

/// Bookmarks of a path with the file's identity. Whatever file lies at the path is taken, since editors save
/// by replacing; only when none does, the file is looked for under another name in its folder.
class InodeBookmarks : public Bookmarks {
public:
    Result<QByteArray> create(const QString &path) const override;
    Result<ResolvedBookmark> resolve(const QByteArray &bookmark) const override;
    bool startAccessing(const QString &path) const override;
};

} // namespace kova

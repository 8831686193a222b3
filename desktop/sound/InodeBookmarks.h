#pragma once

#include "Background.h"
#include "Bookmarks.h"

namespace kova {

/// A bookmark of a path with the file's identity. Any thread; may wait for a disk.
Result<QByteArray> createBookmark(const QString &path);

/// Whatever file lies at the path is taken, since editors save by replacing; only when none does, the file is
/// looked for under another name in its folder. Any thread; may wait for a disk.
Result<ResolvedBookmark> resolveBookmark(const QByteArray &bookmark);

/// Both, in the background.
class InodeBookmarks : public Bookmarks {
public:
    void create(const QString &path, QObject *owner, Created answer) override {
        m_background.run(
            owner, [path] { return createBookmark(path); }, std::move(answer));
    }
    void resolve(const QByteArray &bookmark, QObject *owner, Resolved answer) override {
        m_background.run(
            owner, [bookmark] { return resolveBookmark(bookmark); }, std::move(answer));
    }

    /// False while a disk holds up a thread of ours.
    bool isIdle() { return m_background.isIdle(); }

private:
    Background m_background;
};

} // namespace kova

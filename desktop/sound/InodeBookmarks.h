#pragma once

#include "Bookmarks.h"
#include "FileWorker.h"

namespace kova {

/// Creates a bookmark with the path and the identity of a file. Any thread; may block on a disk.
Result<QByteArray> createBookmark(const QString &path);

/// Returns the file that is now at the path, since editors save by replacing; if there is none, searches the
/// folder for the original file under another name. Any thread; may block on a disk.
Result<QString> resolveBookmark(const QByteArray &bookmark);

/// Creates and resolves bookmarks on worker threads.
class InodeBookmarks : public Bookmarks {
public:
    void create(const QString &path, QObject *owner, Created done) override {
        m_worker.run(
            owner, [path] { return createBookmark(path); }, std::move(done));
    }
    void resolve(const QByteArray &bookmark, QObject *owner, Resolved done) override {
        m_worker.run(
            owner, [bookmark] { return resolveBookmark(bookmark); }, std::move(done));
    }

    /// Returns false while a worker thread is blocked.
    bool isIdle() { return m_worker.isIdle(); }

private:
    FileWorker m_worker;
};

} // namespace kova

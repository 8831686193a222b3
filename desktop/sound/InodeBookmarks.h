#pragma once

#include "Bookmarks.h"
#include "FileWorker.h"

namespace kova {

/// The content of a bookmark: a path, and what identifies its file independently of it.
struct BookmarkRecord {
    QByteArray path; ///< absolute, in the encoding of the file system
    quint64 device = 0;
    quint64 inode = 0;
    qint64 birth = 0; ///< nanoseconds since 1970; 0 if the file system does not record it
};

QByteArray encodeBookmark(const BookmarkRecord &record);

/// Returns `nullopt` unless the bytes are a complete bookmark. Accepts arbitrary bytes.
std::optional<BookmarkRecord> decodeBookmark(const QByteArray &bytes);

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

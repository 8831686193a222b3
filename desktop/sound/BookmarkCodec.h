#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <optional>

namespace kova {

/// Identifies a file independently of its path.
struct FileIdentity {
    quint64 device;
    quint64 inode;
    qint64 birth; ///< nanoseconds since 1970; 0 if the file system does not record it

    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

/// The content of a bookmark.
struct BookmarkRecord {
    QByteArray path; ///< absolute, in the encoding of the file system
    FileIdentity file;

    friend bool operator==(const BookmarkRecord &, const BookmarkRecord &) = default;
};

QByteArray encodeBookmark(const BookmarkRecord &record);

/// Returns `nullopt` unless the bytes are a complete bookmark. Accepts arbitrary bytes.
std::optional<BookmarkRecord> decodeBookmark(const QByteArray &bytes);

} // namespace kova

#pragma once

#include <QByteArray>
#include <optional>

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

} // namespace kova

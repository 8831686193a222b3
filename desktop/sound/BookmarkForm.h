#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <optional>

namespace kova {

/// Which file lay at a path.
struct FileIdentity {
    quint64 device;
    quint64 inode;
    qint64 birth; ///< nanoseconds since 1970, 0 where the file system keeps none

    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

/// What a bookmark remembers of a file.
struct BookmarkRecord {
    QByteArray path; ///< absolute, in the file system's own encoding
    FileIdentity file;

    friend bool operator==(const BookmarkRecord &, const BookmarkRecord &) = default;
};

QByteArray encodeBookmark(const BookmarkRecord &record);

/// None unless the bytes are a whole bookmark. Any bytes may come in.
std::optional<BookmarkRecord> decodeBookmark(const QByteArray &bytes);

} // namespace kova

#include "BookmarkCodec.h"

#include <QDataStream>
#include <QIODevice>
#include <climits>

namespace kova {

// Format: magic with version, three big-endian numbers of 8 bytes, and the path up to the end.
namespace {

constexpr quint64 magic = 0x4B4F'5641'626D'6B31; // "KOVAbmk1"
constexpr qsizetype pathOffset = 4 * sizeof(quint64);

} // namespace

QByteArray encodeBookmark(const BookmarkRecord &record) {
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << magic << record.device << record.inode << record.birth;
    return bytes + record.path;
}

std::optional<BookmarkRecord> decodeBookmark(const QByteArray &bytes) {
    quint64 begin = 0;
    BookmarkRecord record{.path = bytes.mid(pathOffset)};
    QDataStream(bytes) >> begin >> record.device >> record.inode >> record.birth;
    const bool isPath =
        record.path.startsWith('/') && record.path.size() < PATH_MAX && !record.path.contains('\0');
    return begin == magic && isPath ? std::optional(record) : std::nullopt;
}

} // namespace kova

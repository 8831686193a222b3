#include "BookmarkCodec.h"

#include <QtEndian>
#include <climits>

namespace kova {

// Format: magic with version, three big-endian numbers of 8 bytes, and the path up to the end.
namespace {

constexpr char magic[] = {'K', 'O', 'V', 'A', 'b', 'm', 'k', '1'};
constexpr qsizetype numberSize = sizeof(quint64);
constexpr qsizetype pathOffset = sizeof magic + 3 * numberSize;

void append(QByteArray &bytes, quint64 number) {
    number = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char *>(&number), numberSize);
}

quint64 numberAt(const QByteArray &bytes, int index) {
    return qFromBigEndian<quint64>(bytes.constData() + sizeof magic + index * numberSize);
}

bool canBePath(const QByteArray &path) {
    return path.startsWith('/') && path.size() < PATH_MAX && !path.contains('\0');
}

} // namespace

QByteArray encodeBookmark(const BookmarkRecord &record) {
    QByteArray bytes(magic, sizeof magic);
    append(bytes, record.file.device);
    append(bytes, record.file.inode);
    append(bytes, static_cast<quint64>(record.file.birth));
    return bytes + record.path;
}

std::optional<BookmarkRecord> decodeBookmark(const QByteArray &bytes) {
    if (bytes.size() <= pathOffset || !bytes.startsWith(QByteArrayView(magic, sizeof magic))) {
        return std::nullopt;
    }
    BookmarkRecord record{
        .path = bytes.mid(pathOffset),
        .file = {.device = numberAt(bytes, 0),
                 .inode = numberAt(bytes, 1),
                 .birth = static_cast<qint64>(numberAt(bytes, 2))},
    };
    return canBePath(record.path) ? std::optional(std::move(record)) : std::nullopt;
}

} // namespace kova

#include "InodeBookmarks.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace kova {

namespace {

// Format: magic with version, three big-endian numbers of 8 bytes, and the path up to the end.
constexpr quint64 magic = 0x4B4F'5641'626D'6B31; // "KOVAbmk1"
constexpr qsizetype pathOffset = 4 * sizeof(quint64);

// Returns `nullopt` and sets errno unless a regular file exists at the path.
std::optional<BookmarkRecord> fileAt(const QByteArray &path) {
    struct statx status {};
    if (statx(AT_FDCWD, path.constData(), AT_STATX_SYNC_AS_STAT, STATX_TYPE | STATX_INO | STATX_BTIME,
              &status) != 0) {
        return std::nullopt;
    }
    if (!S_ISREG(status.stx_mode)) {
        errno = S_ISDIR(status.stx_mode) ? EISDIR : EINVAL;
        return std::nullopt;
    }
    constexpr qint64 nanoseconds = 1'000'000'000;
    const statx_timestamp &birth = status.stx_btime; // zero if it is not recorded
    return BookmarkRecord{.path = path,
                          .device = makedev(status.stx_dev_major, status.stx_dev_minor),
                          .inode = status.stx_ino,
                          .birth = birth.tv_sec * nanoseconds + birth.tv_nsec};
}

// Device numbers may change when the machine is restarted, and inode numbers are reused. The time of birth
// identifies the file reliably, where it is known.
bool isSameFile(const BookmarkRecord &a, const BookmarkRecord &b) {
    const bool isBirthKnown = a.birth != 0 && b.birth != 0;
    return a.inode == b.inode && (isBirthKnown ? a.birth == b.birth : a.device == b.device);
}

// Returns the path of the file's new name in its folder, empty if there is none.
QByteArray findRenamed(const BookmarkRecord &file) {
    const QByteArray folder = file.path.left(file.path.lastIndexOf('/') + 1);
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir(folder.constData()), &closedir);
    while (const dirent *entry = entries ? readdir(entries.get()) : nullptr) {
        if (entry->d_ino == file.inode) {
            const auto found = fileAt(folder + entry->d_name);
            if (found && isSameFile(*found, file)) {
                return found->path;
            }
        }
    }
    return {};
}

QString reason(int error, const QString &path) {
    return qt_error_string(error) + QStringLiteral(": ") + path;
}

// Reads a byte, which spins up a sleeping disk: the player would be taken for hung meanwhile. Does not block
// on a pipe. The player reports errors.
QString awakened(const QByteArray &path) {
    const int descriptor = open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (char byte = 0; descriptor >= 0) {
        [[maybe_unused]] const ssize_t size = read(descriptor, &byte, 1);
        close(descriptor);
    }
    return QFile::decodeName(path);
}

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

Result<QByteArray> createBookmark(const QString &path) {
    const auto file = fileAt(QFile::encodeName(QDir::cleanPath(QFileInfo(path).absoluteFilePath())));
    return file ? Result(encodeBookmark(*file)) : Failure{reason(errno, path)};
}

Result<QString> resolveBookmark(const QByteArray &bookmark) {
    const std::optional<BookmarkRecord> record = decodeBookmark(bookmark);
    if (!record) {
        return Failure{QStringLiteral("The data is not a bookmark")};
    }
    if (fileAt(record->path)) {
        return awakened(record->path);
    }
    const int error = errno;
    const QByteArray renamed = findRenamed(*record);
    return renamed.isEmpty() ? Failure{reason(error, QFile::decodeName(record->path))}
                             : Result(awakened(renamed));
}

} // namespace kova

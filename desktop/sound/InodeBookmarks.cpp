#include "InodeBookmarks.h"

#include "BookmarkCodec.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace kova {

namespace {

// Returns `nullopt` and sets errno unless a regular file exists at the path.
std::optional<FileIdentity> fileAt(const QByteArray &path) {
    struct statx status {};
    if (statx(AT_FDCWD, path.constData(), AT_STATX_SYNC_AS_STAT, STATX_TYPE | STATX_INO | STATX_BTIME,
              &status) != 0) {
        return std::nullopt;
    }
    if (!S_ISREG(status.stx_mode)) {
        errno = S_ISDIR(status.stx_mode) ? EISDIR : EINVAL;
        return std::nullopt;
    }
    const bool hasBirth = (status.stx_mask & STATX_BTIME) != 0;
    constexpr qint64 nanoseconds = 1'000'000'000;
    return FileIdentity{
        .device = makedev(status.stx_dev_major, status.stx_dev_minor),
        .inode = status.stx_ino,
        .birth = hasBirth ? status.stx_btime.tv_sec * nanoseconds + status.stx_btime.tv_nsec : 0,
    };
}

// Device numbers may change when the machine is restarted, and inode numbers are reused. The time of birth
// identifies the file reliably, where it is known.
bool isSameFile(const FileIdentity &a, const FileIdentity &b) {
    if (a.inode != b.inode) {
        return false;
    }
    return a.birth != 0 && b.birth != 0 ? a.birth == b.birth : a.device == b.device;
}

std::optional<QByteArray> findInFolder(const QByteArray &folder, const FileIdentity &file) {
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir(folder.constData()), &closedir);
    while (const dirent *entry = entries ? readdir(entries.get()) : nullptr) {
        if (entry->d_ino != file.inode) {
            continue;
        }
        const QByteArray path = folder + entry->d_name;
        const std::optional<FileIdentity> found = fileAt(path);
        if (found && isSameFile(*found, file)) {
            return path;
        }
    }
    return std::nullopt;
}

QString reason(int error, const QString &path) {
    return QString::fromLocal8Bit(std::strerror(error)) + QStringLiteral(": ") + path;
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

Result<QByteArray> createBookmark(const QString &path) {
    const QByteArray absolutePath = QFile::encodeName(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    const std::optional<FileIdentity> file = fileAt(absolutePath);
    if (!file) {
        return Failure{reason(errno, path)};
    }
    return encodeBookmark({.path = absolutePath, .file = *file});
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
    const QByteArray folder = record->path.left(record->path.lastIndexOf('/') + 1);
    if (const std::optional<QByteArray> renamed = findInFolder(folder, record->file)) {
        return awakened(*renamed);
    }
    return Failure{reason(error, QFile::decodeName(record->path))};
}

} // namespace kova

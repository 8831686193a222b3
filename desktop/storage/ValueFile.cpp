#include "ValueFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtDebug>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kova {

namespace {

// One writer at a time: the same names each time leave at most two files behind.
constexpr char saving[] = ".saving";

QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool writeAll(int descriptor, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t written = write(descriptor, bytes.data(), static_cast<size_t>(bytes.size()));
        if (written > 0) {
            bytes = bytes.sliced(written);
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

// With the bytes on the disk, and for the user's eyes only. False, with errno set, leaves no file.
bool makeFile(const QByteArray &path, const QByteArray &bytes) {
    unlink(path.constData());
    const int descriptor = open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        return false;
    }
    const bool isWritten = writeAll(descriptor, bytes) && fsync(descriptor) == 0;
    const int error = errno;
    close(descriptor);
    if (!isWritten) {
        unlink(path.constData());
        errno = error;
    }
    return isWritten;
}

// On file systems without hard links.
bool copyFile(const QByteArray &from, const QByteArray &to) {
    const std::optional<QByteArray> bytes = readValueFile(QFile::decodeName(from));
    return bytes && makeFile(to, *bytes);
}

// A second name for the present file, put in place of the one kept before. The file itself is not touched.
void keepReplaced(const QByteArray &present) {
    struct stat status {};
    if (stat(present.constData(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return;
    }
    const QByteArray kept = present + '~';
    const QByteArray name = kept + saving;
    unlink(name.constData());
    const bool isKept =
        (linkat(AT_FDCWD, present.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0 ||
         copyFile(present, name)) &&
        rename(name.constData(), kept.constData()) == 0;
    unlink(name.constData()); // renaming onto another name of the same file does nothing
    if (!isKept) {
        qWarning().noquote() << "kova-alarm: the replaced file can't be kept as" << QFile::decodeName(kept);
    }
}

// The new name is on the disk only when the folder is.
void syncFolder(const QByteArray &path) {
    const QByteArray folder = path.left(path.lastIndexOf('/') + 1);
    const int descriptor = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

bool makeFolder(const QString &folder) {
    return QDir().mkpath(QFileInfo(folder).absolutePath()) &&
           (mkdir(QFile::encodeName(folder).constData(), S_IRWXU) == 0 || errno == EEXIST);
}

// A link stays a link: what it points to is replaced.
QByteArray realPath(const QString &path) {
    const QString real = QFileInfo(path).canonicalFilePath();
    return QFile::encodeName(real.isEmpty() ? path : real);
}

} // namespace

std::optional<QByteArray> readValueFile(const QString &path) {
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return std::nullopt;
    }
    struct stat status {};
    QFile file;
    const bool isOpen = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                        status.st_size <= mostValueBytes &&
                        file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    if (!isOpen) {
        close(descriptor);
        return std::nullopt;
    }
    QByteArray bytes = file.read(mostValueBytes);
    return file.error() == QFileDevice::NoError ? std::optional(std::move(bytes)) : std::nullopt;
}

bool isAbsent(const QString &path) {
    struct stat status {};
    return lstat(QFile::encodeName(path).constData(), &status) != 0 && errno == ENOENT;
}

std::optional<QString> replaceValueFile(const QString &path, const QByteArray &bytes) {
    if (bytes.size() > mostValueBytes) {
        return QStringLiteral("too large");
    }
    if (readValueFile(path) == bytes) {
        return std::nullopt;
    }
    const QByteArray target = realPath(path);
    const QByteArray fresh = target + saving;
    if (!makeFolder(QFileInfo(path).absolutePath()) || !makeFile(fresh, bytes)) {
        return systemError();
    }
    keepReplaced(QFile::encodeName(path));
    if (rename(fresh.constData(), target.constData()) != 0) {
        const QString reason = systemError();
        unlink(fresh.constData());
        return reason;
    }
    syncFolder(target);
    return std::nullopt;
}

std::optional<QString> setAsideValueFile(const QString &path) {
    const QByteArray present = QFile::encodeName(path);
    QByteArray aside = present + ".unreadable";
    struct stat status {};
    for (int number = 2; lstat(aside.constData(), &status) == 0; ++number) {
        aside = present + ".unreadable." + QByteArray::number(number);
    }
    if (rename(present.constData(), aside.constData()) == 0) {
        syncFolder(aside);
        qWarning().noquote() << "kova-alarm: can't read" << path << "and keeps it as"
                             << QFile::decodeName(aside);
        return std::nullopt;
    }
    return errno == ENOENT ? std::nullopt : std::optional(systemError());
}

void removeLeftovers(const QString &path) {
    unlink((realPath(path) + saving).constData());
    unlink((QFile::encodeName(path) + '~' + saving).constData());
}

} // namespace kova

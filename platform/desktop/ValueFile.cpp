#include "ValueFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QtDebug>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kova {

namespace {

QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

std::optional<QString> writeFile(QSaveFile &file, const QByteArray &bytes) {
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        const QString reason = file.errorString();
        file.cancelWriting();
        return reason;
    }
    return std::nullopt;
}

// On file systems without hard links.
bool copyFile(const QByteArray &from, const QByteArray &to) {
    const std::optional<QByteArray> bytes = readValueFile(QFile::decodeName(from));
    if (!bytes) {
        return false;
    }
    QSaveFile copy(QFile::decodeName(to));
    return !writeFile(copy, *bytes) && copy.commit();
}

// A second name for the present file, put in place of the one kept before. The file itself is not touched.
void keepReplaced(const QString &path) {
    const QByteArray present = QFile::encodeName(path);
    struct stat status {};
    if (stat(present.constData(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return;
    }
    const QByteArray kept = present + '~';
    const QByteArray link = present + "~.new";
    unlink(link.constData());
    bool isKept = linkat(AT_FDCWD, present.constData(), AT_FDCWD, link.constData(), AT_SYMLINK_FOLLOW) == 0 &&
                  rename(link.constData(), kept.constData()) == 0;
    unlink(link.constData()); // renaming onto another name of the same file does nothing
    isKept = isKept || copyFile(present, kept);
    if (!isKept) {
        qWarning().noquote() << "kova-alarm: the replaced file can't be kept as" << path + u'~';
    }
}

// The new name is on the disk only when the folder is.
void syncFolder(const QString &path) {
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
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

std::optional<QString> replaceValueFile(const QString &path, const QByteArray &bytes) {
    if (bytes.size() > mostValueBytes) {
        return QStringLiteral("too large");
    }
    if (readValueFile(path) == bytes) {
        return std::nullopt;
    }
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    constexpr mode_t forTheUser = 0700;
    if (!QDir().mkpath(QFileInfo(QFile::decodeName(folder)).absolutePath()) ||
        (mkdir(folder.constData(), forTheUser) != 0 && errno != EEXIST)) {
        return systemError();
    }
    QSaveFile file(path);
    if (std::optional<QString> reason = writeFile(file, bytes)) {
        return reason;
    }
    keepReplaced(path);
    if (!file.commit()) { // it also brings the bytes to the disk before the name
        return file.errorString();
    }
    syncFolder(path);
    return std::nullopt;
}

} // namespace kova

#include "AtomicFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QtDebug>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kova {

namespace {

// True if the bytes are on the disk. They appear under the file's name only after commit().
bool stage(QSaveFile &file, const QByteArray &bytes) {
    return file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
           file.write(bytes) == bytes.size() && file.flush() && fsync(file.handle()) == 0;
}

// A new name is on the disk only when its folder is.
void syncFolder(const QString &path) {
    const int descriptor =
        open(QFile::encodeName(QFileInfo(path).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

bool makeFolder(const QString &folder) {
    return QDir().mkpath(QFileInfo(folder).path()) &&
           (QDir(folder).exists() || mkdir(QFile::encodeName(folder).constData(), S_IRWXU) == 0);
}

bool isAnything(const QString &path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

} // namespace

bool AtomicFile::exists() const {
    return isAnything(m_path);
}

Result<QByteArray> AtomicFile::read() const {
    const QFileInfo info(m_path);
    if (!info.isFile()) { // opening a pipe would block
        return Failure{QStringLiteral("not a regular file")};
    }
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        return Failure{file.errorString()};
    }
    if (file.size() > maxSize) {
        return Failure{QStringLiteral("larger than %1 MB").arg(maxSize / 1024 / 1024)};
    }
    QByteArray bytes = file.read(maxSize);
    return file.error() == QFileDevice::NoError ? Result<QByteArray>(std::move(bytes))
                                                : Failure{file.errorString()};
}

std::optional<QString> AtomicFile::replace(const QByteArray &bytes) const {
    if (bytes.size() > maxSize) {
        return QStringLiteral("too large");
    }
    const Result<QByteArray> present = read();
    if (present && present.value() == bytes) {
        return std::nullopt;
    }
    if (!makeFolder(QFileInfo(m_path).path())) {
        return qt_error_string();
    }
    QSaveFile file(m_path);
    if (!stage(file, bytes)) {
        return file.error() == QFileDevice::NoError ? qt_error_string() : file.errorString();
    }
    QSaveFile backup(m_path + u'~');
    if (present && !(stage(backup, present.value()) && backup.commit())) {
        qWarning().noquote() << "kova-alarm: cannot back up" << m_path << "as" << backup.fileName();
    }
    if (!file.commit()) {
        return file.errorString();
    }
    syncFolder(QFileInfo(m_path).canonicalFilePath());
    return std::nullopt;
}

std::optional<QString> AtomicFile::moveAside() const {
    QString aside = m_path + QStringLiteral(".unreadable");
    for (int number = 2; isAnything(aside); ++number) {
        aside = m_path + QStringLiteral(".unreadable.%1").arg(number);
    }
    if (rename(QFile::encodeName(m_path).constData(), QFile::encodeName(aside).constData()) != 0) {
        return errno == ENOENT ? std::nullopt : std::optional(qt_error_string());
    }
    syncFolder(aside);
    qWarning().noquote() << "kova-alarm: cannot read" << m_path + QStringLiteral(", moved to") << aside;
    return std::nullopt;
}

} // namespace kova

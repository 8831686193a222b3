#include "InstalledResources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <fcntl.h>
#include <unistd.h>

namespace kova {

namespace {

QString resourceFolder() {
    const QDir program(QCoreApplication::applicationDirPath());
    const QString installed = QDir::cleanPath(program.filePath(QStringLiteral(KOVA_DATA_FROM_BIN)));
    return QFileInfo(installed).isDir() ? installed : program.filePath(QStringLiteral("resources"));
}

QDir helpersFolder() {
    const QDir program(QCoreApplication::applicationDirPath());
    const QDir installed(program.filePath(QStringLiteral(KOVA_LIBEXEC_FROM_BIN)));
    return installed.exists(QStringLiteral("kova-alarm-player")) ? installed : program;
}

int openAbove(int lowest, const QString &path) {
    const int opened = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    const int descriptor = fcntl(opened, F_DUPFD_CLOEXEC, lowest);
    close(opened);
    return descriptor;
}

} // namespace

InstalledResources::InstalledResources() : m_folder(resourceFolder()) {
    constexpr int lowest = 16;
    const QDir sounds(m_folder + QStringLiteral("/Sounds"));
    const QStringList names = sounds.entryList({QStringLiteral("*.mp3")}, QDir::Files);
    for (const QString &name : names) {
        m_sounds.insert(sounds.filePath(name), openAbove(lowest, sounds.filePath(name)));
    }
    const QDir helpers = helpersFolder();
    m_player = openAbove(lowest, helpers.filePath(QStringLiteral("kova-alarm-player")));
    m_ffmpegModule = openAbove(lowest, helpers.filePath(QStringLiteral("kova-alarm-ffmpeg.so")));
}

InstalledResources::~InstalledResources() {
    for (const int descriptor : std::as_const(m_sounds)) {
        close(descriptor);
    }
    close(m_player);
    close(m_ffmpegModule);
}

std::optional<QString> InstalledResources::path(const QString &name) const {
    const QString path = m_folder + u'/' + name;
    return QFileInfo(path).isFile() || sound(path) >= 0 ? std::optional(path) : std::nullopt;
}

} // namespace kova

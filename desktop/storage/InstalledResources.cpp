#include "InstalledResources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace kova {

namespace {

QString resourceFolder() {
    const QDir program(QCoreApplication::applicationDirPath());
    const QString installed = QDir::cleanPath(program.filePath(QStringLiteral(KOVA_DATA_FROM_BIN)));
    return QFileInfo(installed).isDir() ? installed : program.filePath(QStringLiteral("resources"));
}

} // namespace

InstalledResources::InstalledResources() : m_folder(resourceFolder()) {
    const QDir sounds(m_folder + QStringLiteral("/Sounds"));
    m_sounds.add(sounds.path());
    const QStringList names = sounds.entryList({QStringLiteral("*.mp3")}, QDir::Files);
    for (const QString &name : names) {
        m_sounds.add(sounds.filePath(name));
    }
}

std::optional<QString> InstalledResources::path(const QString &name, const QString &extension) const {
    const QString path = m_folder + u'/' + name + (extension.isEmpty() ? QString() : u'.' + extension);
    const QFileInfo resource(path);
    const bool exists = extension.isEmpty() ? resource.isDir() : resource.isFile();
    return exists || m_sounds.contains(path) ? std::optional(path) : std::nullopt;
}

bool InstalledResources::fileExists(const QString &path) const {
    return QFileInfo::exists(path) || m_sounds.contains(path);
}

} // namespace kova

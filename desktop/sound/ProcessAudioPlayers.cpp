#include "ProcessAudioPlayers.h"

#include "InstalledResources.h"
#include "PlayerProcess.h"
#include "SoundForms.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <unistd.h>

namespace kova {

namespace {

const auto playersProgram = QStringLiteral("/kova-alarm-player");
const auto ffmpegModule = QStringLiteral("/kova-alarm-ffmpeg.so");

QString helpersFolder() {
    const QDir program(QCoreApplication::applicationDirPath());
    const QString installed = QDir::cleanPath(program.filePath(QStringLiteral(KOVA_LIBEXEC_FROM_BIN)));
    return QFile::exists(installed + playersProgram) ? installed : program.path();
}

// As a process of ours that is not confined yet opens it.
QByteArray nameOf(int descriptor) {
    return QStringLiteral("/proc/%1/fd/%2").arg(getpid()).arg(descriptor).toLatin1();
}

} // namespace

ProcessAudioPlayers::ProcessAudioPlayers(const InstalledResources &resources)
    : m_resources(resources),
      m_folder(helpersFolder()) {
    m_files.hold(m_folder + playersProgram);
    m_files.hold(m_folder + ffmpegModule);
}

Result<std::unique_ptr<AudioPlayer>> ProcessAudioPlayers::open(const QString &path, Refusal refused) {
    const std::string name = QFile::encodeName(path).toStdString();
    if (soundFormOf(name) == nullptr) {
        return Failure{QStringLiteral("Not a kind of sound that is played: ") + path};
    }
    const int sound = m_resources.descriptor(path);
    const std::vector held{m_files.descriptor(m_folder + ffmpegModule), sound};
    return std::unique_ptr<AudioPlayer>(
        std::make_unique<PlayerProcess>(nameOf(m_files.descriptor(m_folder + playersProgram)),
                                        sound < 0 ? name : message::ownSound, std::move(refused), held));
}

} // namespace kova

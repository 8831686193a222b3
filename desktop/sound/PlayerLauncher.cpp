#include "PlayerLauncher.h"

#include "InstalledResources.h"
#include "PlayerProcess.h"
#include "SoundFormats.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <unistd.h>

namespace kova {

namespace {

const auto playerProgram = QStringLiteral("/kova-alarm-player");
const auto ffmpegModule = QStringLiteral("/kova-alarm-ffmpeg.so");

QString helpersFolder() {
    const QDir program(QCoreApplication::applicationDirPath());
    const QString installed = QDir::cleanPath(program.filePath(QStringLiteral(KOVA_LIBEXEC_FROM_BIN)));
    return QFile::exists(installed + playerProgram) ? installed : program.path();
}

// The path at which a child process that is not yet confined can open the descriptor.
QString pathOf(int descriptor) {
    return QStringLiteral("/proc/%1/fd/%2").arg(getpid()).arg(descriptor);
}

// Only what the libraries need to find the sound server and their configuration. Without a display or a
// message bus none of them waits for one: SDL and PipeWire would ask both buses for real-time priority before
// the first sample, without a timeout.
QProcessEnvironment playerEnvironment() {
    static const QRegularExpression needed(
        QStringLiteral("^(HOME|XDG_CONFIG_HOME|XDG_RUNTIME_DIR|(ALSA|JACK|LD|PIPEWIRE|PULSE|SDL|SPA)_.*)$"));
    const QProcessEnvironment system = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment environment;
    for (const QString &name : system.keys()) {
        if (needed.match(name).hasMatch()) {
            environment.insert(name, system.value(name));
        }
    }
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), QStringLiteral("disabled:"));
    return environment;
}

} // namespace

PlayerLauncher::PlayerLauncher(const InstalledResources &resources)
    : m_resources(resources),
      m_folder(helpersFolder()),
      m_environment(playerEnvironment()) {
    m_files.add(m_folder + playerProgram);
    m_files.add(m_folder + ffmpegModule);
}

Result<std::unique_ptr<AudioPlayer>> PlayerLauncher::open(const QString &path, ErrorCallback onError) {
    const std::string name = QFile::encodeName(path).toStdString();
    if (soundFormatOf(name) == nullptr || name.size() >= PATH_MAX) {
        return Failure{QStringLiteral("Not a supported sound format: ") + path};
    }
    const int sound = m_resources.descriptor(path);
    const PlayerProcess::Program program{.path = pathOf(m_files.descriptor(m_folder + playerProgram)),
                                         .environment = m_environment,
                                         .descriptors = {m_files.descriptor(m_folder + ffmpegModule), sound}};
    return std::unique_ptr<AudioPlayer>(std::make_unique<PlayerProcess>(
        program, sound < 0 ? name : protocol::builtInSound, std::move(onError)));
}

} // namespace kova

#include "PlayerLauncher.h"

#include "InstalledResources.h"
#include "PlayerProcess.h"
#include "SoundFormats.h"

#include <QFile>
#include <QRegularExpression>
#include <cmath>
#include <unistd.h>

namespace kova {

namespace {

// The path at which a child process that is not yet confined can open the descriptor.
QString pathOf(int descriptor) {
    return QStringLiteral("/proc/%1/fd/%2").arg(getpid()).arg(descriptor);
}

// Only what the libraries need to find the sound server and their configuration: they would wait for a
// display or a message bus that does not respond.
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
      m_environment(playerEnvironment()) {}

Result<std::unique_ptr<AudioPlayer>> PlayerLauncher::play(const AudioRequest &request,
                                                          ErrorCallback onError) {
    const std::string path = QFile::encodeName(request.path).toStdString();
    if (soundFormatOf(path) == nullptr || path.size() >= PATH_MAX) {
        return Failure{QStringLiteral("Not a supported sound format: ") + request.path};
    }
    const int sound = m_resources.sound(request.path);
    const PlayerProcess::Program program{.path = pathOf(m_resources.player()),
                                         .environment = m_environment,
                                         .descriptors = {m_resources.ffmpegModule(), sound}};
    // An invalid volume is loud, since silence wakes nobody.
    const protocol::Request message{
        .volume = std::isnan(request.volume) ? 1 : std::clamp(request.volume, 0.0F, 1.0F),
        .loops = request.loops,
        .maxDuration = static_cast<std::int32_t>(request.maxDuration.count()),
        .path = sound < 0 ? std::string_view(path) : protocol::builtInSound};
    return std::unique_ptr<AudioPlayer>(
        std::make_unique<PlayerProcess>(program, message, std::move(onError)));
}

} // namespace kova

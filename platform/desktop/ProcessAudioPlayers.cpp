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

class Player : public AudioPlayer {
public:
    Player(QByteArray program, std::vector<int> held, std::string path, AudioPlayers::Refusal refused)
        : m_program(std::move(program)),
          m_held(std::move(held)),
          m_refused(std::move(refused)) {
        m_request.path = std::move(path);
        m_request.longest = std::chrono::hours(1);
    }

    void setVolume(float volume) override {
        m_request.volume = message::clampedVolume(volume);
        if (m_process) {
            m_process->setVolume(volume);
        }
    }
    void setNumberOfLoops(int loops) override { m_request.loops = loops; }
    void setLongestTime(std::chrono::milliseconds time) override { m_request.longest = time; }
    void play() override {
        m_process = std::make_unique<PlayerProcess>(m_program, m_request, m_refused, m_held);
    }
    void stop() override { m_process.reset(); }

private:
    const QByteArray m_program;
    const std::vector<int> m_held;
    const AudioPlayers::Refusal m_refused;
    message::Play m_request;
    std::unique_ptr<PlayerProcess> m_process;
};

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
        std::make_unique<Player>(nameOf(m_files.descriptor(m_folder + playersProgram)), held,
                                 sound < 0 ? name : message::ownSound, std::move(refused)));
}

} // namespace kova

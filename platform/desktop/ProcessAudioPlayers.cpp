#include "ProcessAudioPlayers.h"

#include "PlayerProcess.h"
#include "SoundForms.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace kova {

namespace {

QByteArray playersProgram() {
    const QDir program(QCoreApplication::applicationDirPath());
    const QString name = QStringLiteral("/kova-alarm-player");
    const QString installed = QDir::cleanPath(program.filePath(QStringLiteral(KOVA_LIBEXEC_FROM_BIN)) + name);
    return QFile::encodeName(QFile::exists(installed) ? installed : program.path() + name);
}

class Player : public AudioPlayer {
public:
    Player(const QByteArray &program, const QByteArray &path, AudioPlayers::Refusal refused)
        : m_program(program),
          m_refused(std::move(refused)) {
        m_request.path = path.toStdString();
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
    void play() override { m_process = std::make_unique<PlayerProcess>(m_program, m_request, m_refused); }
    void stop() override { m_process.reset(); }

private:
    const QByteArray m_program;
    const AudioPlayers::Refusal m_refused;
    message::Play m_request;
    std::unique_ptr<PlayerProcess> m_process;
};

} // namespace

ProcessAudioPlayers::ProcessAudioPlayers() : m_program(playersProgram()) {}

Result<std::unique_ptr<AudioPlayer>> ProcessAudioPlayers::open(const QString &path, Refusal refused) {
    const QByteArray name = QFile::encodeName(path);
    if (soundFormOf(name.toStdString()) == nullptr) {
        return Failure{QStringLiteral("Not a kind of sound that is played: ") + path};
    }
    return std::unique_ptr<AudioPlayer>(std::make_unique<Player>(m_program, name, std::move(refused)));
}

} // namespace kova

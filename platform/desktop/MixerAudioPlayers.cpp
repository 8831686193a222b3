#include "MixerAudioPlayers.h"

#include <QFile>
#include <QTimer>

namespace kova {

class MixerAudioPlayers::Player : public AudioPlayer {
public:
    Player(MixerAudioPlayers &players, const QByteArray &path, Refusal refused)
        : m_players(players),
          m_path(path),
          m_refused(std::move(refused)) {}

    ~Player() override { Player::stop(); }

    void setVolume(float volume) override {
        m_volume = volume;
        m_players.m_thread.setVolume(m_sound, volume);
    }

    void setNumberOfLoops(int loops) override { m_loops = loops; }

    void play() override {
        stop();
        m_sound = ++m_players.m_lastSound;
        m_players.m_refusals.insert(m_sound, m_refused);
        m_players.m_thread.play({.id = m_sound, .path = m_path, .loops = m_loops}, m_volume);
    }

    void stop() override {
        m_players.m_refusals.remove(m_sound);
        m_players.m_thread.stop(m_sound);
    }

private:
    MixerAudioPlayers &m_players;
    const QByteArray m_path;
    const Refusal m_refused;
    float m_volume = 1.0F;
    int m_loops = 0;
    quint64 m_sound = 0; ///< none yet
};

MixerAudioPlayers::MixerAudioPlayers()
    : m_thread([this](quint64 sound, const QString &reason) {
          QMetaObject::invokeMethod(
              &m_mainThread, [this, sound, reason] { refuse(sound, reason); }, Qt::QueuedConnection);
      }) {
    constexpr std::chrono::seconds untilStartIsOver{2};
    QTimer::singleShot(untilStartIsOver, &m_mainThread, [this] { m_thread.prepare(); });
}

Result<std::unique_ptr<AudioPlayer>> MixerAudioPlayers::open(const QString &path, Refusal refused) {
    return std::unique_ptr<AudioPlayer>(
        std::make_unique<Player>(*this, QFile::encodeName(path), std::move(refused)));
}

// The player may be gone, or end in the call.
void MixerAudioPlayers::refuse(quint64 sound, const QString &reason) {
    if (const Refusal refused = m_refusals.take(sound)) {
        refused(reason);
    }
}

} // namespace kova

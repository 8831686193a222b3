#pragma once

#include "AudioPlayer.h"

#include <QList>
#include <QMap>

namespace kova {

/// Records the sounds that play. Paths in `unreadable` cannot be opened.
class FakeAudioPlayers : public AudioPlayers {
public:
    struct Sound {
        QString path;
        float volume = 1;
        int loops = 0;

        friend bool operator==(const Sound &, const Sound &) = default;
    };

    QMap<QString, QString> unreadable; ///< path to reason
    QList<Sound> sounding;             ///< playing now
    int opened = 0;
    std::chrono::milliseconds maximumDuration{}; ///< as last set

    Result<std::unique_ptr<AudioPlayer>> open(const QString &path, ErrorCallback onError) override {
        if (unreadable.contains(path)) {
            return Failure{unreadable.value(path)};
        }
        opened += 1;
        m_onError = std::move(onError);
        return std::unique_ptr<AudioPlayer>(std::make_unique<Player>(*this, path));
    }

    /// Reports an error of the file opened last.
    void fail(const QString &reason, bool isFinal = false) {
        const ErrorCallback onError = m_onError;
        onError({reason, isFinal});
    }

private:
    class Player : public AudioPlayer {
    public:
        Player(FakeAudioPlayers &players, const QString &path) : m_players(players), m_sound{path} {}
        ~Player() override { stop(); }
        void setVolume(float volume) override { m_sound.volume = volume; }
        void setNumberOfLoops(int loops) override { m_sound.loops = loops; }
        void setMaximumDuration(std::chrono::milliseconds duration) override {
            m_players.maximumDuration = duration;
        }
        void play() override { m_players.sounding.append(m_sound); }
        void stop() override { m_players.sounding.removeOne(m_sound); }

    private:
        FakeAudioPlayers &m_players;
        Sound m_sound;
    };

    ErrorCallback m_onError;
};

} // namespace kova

#pragma once

#include "AudioPlayer.h"

#include <QList>
#include <QMap>

namespace kova {

/// Plays nothing and remembers what sounds. Paths in `unreadable` can't be opened.
class FakeAudioPlayers : public AudioPlayers {
public:
    struct Sound {
        QString path;
        float volume = 1;
        int loops = 0;

        friend bool operator==(const Sound &, const Sound &) = default;
    };

    QMap<QString, QString> unreadable; ///< path to reason
    QList<Sound> sounding;             ///< what plays now
    int opened = 0;
    std::chrono::milliseconds longestTime{}; ///< that was asked for last

    Result<std::unique_ptr<AudioPlayer>> open(const QString &path, Refusal refused) override {
        if (unreadable.contains(path)) {
            return Failure{unreadable.value(path)};
        }
        opened += 1;
        m_refused = std::move(refused);
        return std::unique_ptr<AudioPlayer>(std::make_unique<Player>(*this, path));
    }

    /// The content of the file opened last turns out not to be sound.
    void refuse(const QString &reason) {
        const Refusal refused = m_refused;
        refused(reason);
    }

private:
    class Player : public AudioPlayer {
    public:
        Player(FakeAudioPlayers &players, const QString &path) : m_players(players), m_sound{path} {}
        ~Player() override { stop(); }
        void setVolume(float volume) override { m_sound.volume = volume; }
        void setNumberOfLoops(int loops) override { m_sound.loops = loops; }
        void setLongestTime(std::chrono::milliseconds time) override { m_players.longestTime = time; }
        void play() override { m_players.sounding.append(m_sound); }
        void stop() override { m_players.sounding.removeOne(m_sound); }

    private:
        FakeAudioPlayers &m_players;
        Sound m_sound;
    };

    Refusal m_refused;
};

} // namespace kova

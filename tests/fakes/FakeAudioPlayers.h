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
        float volume;
        int loops;

        friend bool operator==(const Sound &, const Sound &) = default;
    };

    QMap<QString, QString> unreadable; ///< path to reason
    QList<Sound> sounding;             ///< playing now
    int opened = 0;
    std::chrono::milliseconds maximumDuration{}; ///< of the last request

    Result<std::unique_ptr<AudioPlayer>> play(const AudioRequest &request, ErrorCallback onError) override {
        if (unreadable.contains(request.path)) {
            return Failure{unreadable.value(request.path)};
        }
        opened += 1;
        maximumDuration = request.maxDuration;
        m_onError = std::move(onError);
        return std::unique_ptr<AudioPlayer>(
            std::make_unique<Player>(sounding, Sound{request.path, request.volume, request.loops}));
    }

    /// Reports an error of the file opened last.
    void fail(const QString &reason, bool isFinal = false) {
        const ErrorCallback onError = m_onError;
        onError({reason, isFinal});
    }

private:
    class Player : public AudioPlayer {
    public:
        Player(QList<Sound> &sounding, const Sound &sound) : m_sounding(sounding), m_sound(sound) {
            m_sounding.append(m_sound);
        }
        ~Player() override { m_sounding.removeOne(m_sound); }

    private:
        QList<Sound> &m_sounding;
        const Sound m_sound;
    };

    ErrorCallback m_onError;
};

} // namespace kova

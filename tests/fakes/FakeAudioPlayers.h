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
    struct Player : AudioPlayer {
        Player(QList<Sound> &sounds, const Sound &sound) : all(sounds), own(sound) { all.append(own); }
        ~Player() override { all.removeOne(own); }
        QList<Sound> &all;
        const Sound own;
    };

    ErrorCallback m_onError;
};

} // namespace kova

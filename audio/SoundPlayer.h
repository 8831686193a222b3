#pragma once

#include "AlarmGroup.h"
#include "AudioPlayer.h"

#include <QObject>

namespace kova {

class Bookmarks;
class Log;
class Resources;
class RunLoop;

/// Plays one sound at a time: a ringing alarm's in a loop, a preview's once. Errors are logged, not returned.
/// The end of a sound is not observed: a started sound counts as playing until stop(). A custom file on a
/// slow disk starts once the disk responds, unless play(), preview() or stop() is called first. Main thread.
class SoundPlayer : public QObject {
    Q_OBJECT

public:
    SoundPlayer(AudioPlayers &audioPlayers, Bookmarks &bookmarks, Resources &resources, RunLoop &runLoop,
                Log &log);

    /// Returns the shared instance, which uses the installed ports.
    static SoundPlayer &shared();

    bool isPlaying() const { return m_player != nullptr; }

    /// The sound that was started last: a group's id text, "alarm" or "__preview__"; null after stop().
    QString currentPreviewId() const { return m_currentPreviewId; }

    /// Starts the group's sound at its volume. The caller must call stop() before.
    void play(const AlarmGroup &group, bool loop, const QString &previewId);

    /// Stops the current sound and plays a built-in sound once.
    void preview(const QString &soundName, float volume);

    void togglePreview(const AlarmGroup &group);

    void stop();

    /// Returns the path of a built-in sound; `nullopt` if there is no such file.
    std::optional<QString> builtInSoundURL(const QString &soundName) const;

Q_SIGNALS:
    void currentPreviewIdChanged();

private:
    struct Sound {
        QString path;
        float volume;
        bool isLooped;
        QString previewId;
        std::chrono::seconds pauses{}; ///< sum of the delays of its retries since its alarm fired
    };

    void playSound(const Sound &sound);
    void onError(const Sound &sound, const PlaybackError &error);
    void printError(const Sound &sound, const QString &reason);
    void setCurrentPreviewId(const QString &previewId);

    AudioPlayers &m_audioPlayers;
    Bookmarks &m_bookmarks;
    Resources &m_resources;
    RunLoop &m_runLoop;
    Log &m_log;

    QString m_currentPreviewId;
    QString m_pendingPreviewId; ///< of a file whose disk has not yet responded
    std::unique_ptr<AudioPlayer> m_player;
    std::unique_ptr<QObject> m_context; ///< of delayed calls for the current sound
    int m_earlyFailures = 0;            ///< of the current sound in a row
};

} // namespace kova

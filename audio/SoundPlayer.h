#pragma once

#include "AlarmGroup.h"
#include "AudioPlayer.h"

#include <QObject>

namespace kova {

class Bookmarks;
class Log;
class Resources;
class RunLoop;
struct ResolvedBookmark;

/// Plays one sound at a time: a ringing alarm's in a loop, a preview's once. Failures are logged, never
/// returned. It does not notice the end of a sound: what was started counts as playing until `stop`. A file
/// of the user's on a slow disk starts when it is there, unless something was played or stopped meanwhile.
/// Main thread.
class SoundPlayer : public QObject {
    Q_OBJECT

public:
    SoundPlayer(AudioPlayers &audioPlayers, Bookmarks &bookmarks, Resources &resources, RunLoop &runLoop,
                Log &log);

    /// The one player of the process, on the installed ports.
    static SoundPlayer &shared();

    bool isPlaying() const { return m_player != nullptr; }

    /// What was started last: a group's id text, "alarm" or "__preview__"; null after `stop`.
    QString currentPreviewId() const { return m_currentPreviewId; }

    /// Starts the group's sound at its volume. The caller stops what plays already.
    void play(const AlarmGroup &group, bool loop, const QString &previewId);

    /// Stops what plays and plays a built-in sound once.
    void preview(const QString &soundName, float volume);

    /// Starts or stops the preview of the group's own sound.
    void togglePreview(const AlarmGroup &group);

    void stop();

    /// The file of a built-in sound; none when there is no such file.
    std::optional<QString> builtInSoundURL(const QString &soundName) const;

Q_SIGNALS:
    void currentPreviewIdChanged();

private:
    struct Sound {
        QString path;
        float volume;
        bool isLooped;
        bool isOurs; ///< not a file of the user's
        QString previewId;
        std::chrono::seconds elapsed{}; ///< since its alarm fired
    };

    void playFoundFile(const Result<ResolvedBookmark> &file, const AlarmGroup &group, bool loop,
                       const QString &previewId);
    void playFile(const std::optional<QString> &path, const AlarmGroup &group, bool loop,
                  const QString &previewId);
    void playSound(const Sound &sound);
    void setCurrentPreviewId(const QString &previewId);

    AudioPlayers &m_audioPlayers;
    Bookmarks &m_bookmarks;
    Resources &m_resources;
    RunLoop &m_runLoop;
    Log &m_log;

    QString m_currentPreviewId;
    std::unique_ptr<AudioPlayer> m_player;
    std::unique_ptr<QObject> m_request; ///< owns what starts a sound later
};

} // namespace kova

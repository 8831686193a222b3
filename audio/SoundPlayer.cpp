#include "SoundPlayer.h"

#include "Bookmarks.h"
#include "Log.h"
#include "Platform.h"
#include "Resources.h"
#include "RunLoop.h"

namespace kova {

using namespace std::chrono_literals;

namespace {

const auto tryOut = QStringLiteral("__preview__");
const auto playError = QStringLiteral("[SoundPlayer] play error: ");

} // namespace

SoundPlayer::SoundPlayer(AudioPlayers &audioPlayers, Bookmarks &bookmarks, Resources &resources,
                         RunLoop &runLoop, Log &log)
    : m_audioPlayers(audioPlayers),
      m_bookmarks(bookmarks),
      m_resources(resources),
      m_runLoop(runLoop),
      m_log(log) {}

SoundPlayer &SoundPlayer::shared() {
    static const Platform &platform = Platform::installed();
    static auto *const player = new SoundPlayer(platform.audioPlayers, platform.bookmarks, platform.resources,
                                                platform.runLoop, platform.log);
    return *player;
}

// A group with a file of the user's never falls back to its built-in sound.
void SoundPlayer::play(const AlarmGroup &group, bool loop, const QString &previewId) {
    m_request.reset();
    const QString customSoundPath = group.customSoundPath.value_or(QString());
    if (customSoundPath.isEmpty()) {
        playFile(builtInSoundURL(group.soundName), group, loop, previewId);
        return;
    }
    const auto bookmark =
        QByteArray::fromBase64Encoding(customSoundPath.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    if (!bookmark) {
        playFile(std::nullopt, group, loop, previewId);
        return;
    }
    m_request = std::make_unique<QObject>();
    m_bookmarks.resolve(*bookmark, m_request.get(), [=, this](const Result<ResolvedBookmark> &file) {
        playFoundFile(file, group, loop, previewId);
    });
}

void SoundPlayer::playFoundFile(const Result<ResolvedBookmark> &file, const AlarmGroup &group, bool loop,
                                const QString &previewId) {
    if (!file) {
        m_log.print(QStringLiteral("[SoundPlayer] resolve bookmark error: ") + file.error());
        playFile(std::nullopt, group, loop, previewId);
    } else if (file.value().obstacle) {
        m_log.print(playError + *file.value().obstacle);
    } else {
        playFile(file.value().path, group, loop, previewId);
    }
}

void SoundPlayer::playFile(const std::optional<QString> &path, const AlarmGroup &group, bool loop,
                           const QString &previewId) {
    if (!path) {
        m_log.print(QStringLiteral("[SoundPlayer] Sound not found: ") + group.soundName);
        return;
    }
    const bool isOurs = group.customSoundPath.value_or(QString()).isEmpty();
    playSound({*path, group.volume, loop, isOurs, previewId});
}

// A sound of our own that fails while its alarm rings is tried again each second: what broke it may pass.
void SoundPlayer::playSound(const Sound &sound) {
    const QString error =
        sound.previewId == tryOut ? QStringLiteral("[SoundPlayer] preview error: ") : playError;
    auto player = m_audioPlayers.open(sound.path, [this, sound, error](const QString &reason) {
        if (sound.elapsed == 0s) {
            m_log.print(error + reason);
        }
        stop();
        if (sound.isLooped && sound.isOurs && sound.elapsed + 1s < longestRinging) {
            Sound again = sound;
            again.elapsed += 1s;
            m_request = std::make_unique<QObject>();
            m_runLoop.after(1s, m_request.get(), [this, again] { playSound(again); });
        }
    });
    if (!player) {
        m_log.print(error + player.error());
        return;
    }
    player.value()->setVolume(sound.volume);
    player.value()->setNumberOfLoops(sound.isLooped ? -1 : 0);
    if (sound.isLooped) {
        player.value()->setLongestTime(longestRinging - sound.elapsed);
    }
    m_player = std::move(player).value();
    m_player->play();
    setCurrentPreviewId(sound.previewId);
}

void SoundPlayer::preview(const QString &soundName, float volume) {
    stop();
    if (const std::optional<QString> path = builtInSoundURL(soundName)) {
        playSound({*path, volume, false, true, tryOut});
    }
}

void SoundPlayer::togglePreview(const AlarmGroup &group) {
    const QString key = group.idText();
    const bool isPreviewed = m_currentPreviewId == key;
    stop();
    if (!isPreviewed) {
        play(group, false, key);
    }
}

void SoundPlayer::stop() {
    m_request.reset();
    if (m_player) {
        m_player->stop();
        m_player.reset();
    }
    setCurrentPreviewId(QString());
}

std::optional<QString> SoundPlayer::builtInSoundURL(const QString &soundName) const {
    const QString extension = QStringLiteral("mp3");
    if (const auto folder = m_resources.path(QStringLiteral("Sounds"), QString())) {
        const QString path = *folder + u'/' + soundName + u'.' + extension;
        if (m_resources.fileExists(path)) {
            return path;
        }
    }
    return m_resources.path(soundName, extension);
}

void SoundPlayer::setCurrentPreviewId(const QString &previewId) {
    if (m_currentPreviewId != previewId) {
        m_currentPreviewId = previewId;
        Q_EMIT currentPreviewIdChanged();
    }
}

} // namespace kova

#include "SoundPlayer.h"

#include "Bookmarks.h"
#include "Log.h"
#include "Platform.h"
#include "Resources.h"

namespace kova {

SoundPlayer::SoundPlayer(AudioPlayers &audioPlayers, Bookmarks &bookmarks, Resources &resources, Log &log)
    : m_audioPlayers(audioPlayers),
      m_bookmarks(bookmarks),
      m_resources(resources),
      m_log(log) {}

SoundPlayer &SoundPlayer::shared() {
    static const Platform &platform = Platform::installed();
    static auto *const player =
        new SoundPlayer(platform.audioPlayers, platform.bookmarks, platform.resources, platform.log);
    return *player;
}

void SoundPlayer::play(const AlarmGroup &group, bool loop, const QString &previewId) {
    const std::optional<QString> path = soundURL(group);
    if (!path) {
        m_log.print(QStringLiteral("[SoundPlayer] Sound not found: ") + group.soundName);
        return;
    }
    std::unique_ptr<AudioPlayer> player = open(*path, QStringLiteral("[SoundPlayer] play error: "));
    if (!player) {
        return;
    }
    player->setVolume(group.volume);
    player->setNumberOfLoops(loop ? -1 : 0);
    start(std::move(player), previewId);
}

void SoundPlayer::preview(const QString &soundName, float volume) {
    stop();
    const std::optional<QString> path = builtInSoundURL(soundName);
    if (!path) {
        return;
    }
    std::unique_ptr<AudioPlayer> player = open(*path, QStringLiteral("[SoundPlayer] preview error: "));
    if (!player) {
        return;
    }
    player->setVolume(volume);
    start(std::move(player), QStringLiteral("__preview__"));
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
    if (m_player) {
        m_player->stop();
        m_player.reset();
    }
    setCurrentPreviewId(QString());
    setIsPlaying(false);
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

// A group with a file of the user's never falls back to its built-in sound.
std::optional<QString> SoundPlayer::soundURL(const AlarmGroup &group) const {
    const QString customSoundPath = group.customSoundPath.value_or(QString());
    return customSoundPath.isEmpty() ? builtInSoundURL(group.soundName) : customSoundURL(customSoundPath);
}

std::optional<QString> SoundPlayer::customSoundURL(const QString &customSoundPath) const {
    const auto bytes =
        QByteArray::fromBase64Encoding(customSoundPath.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    if (!bytes) {
        return std::nullopt;
    }
    const Result<ResolvedBookmark> bookmark = m_bookmarks.resolve(*bytes);
    if (!bookmark) {
        m_log.print(QStringLiteral("[SoundPlayer] resolve bookmark error: ") + bookmark.error());
        return std::nullopt;
    }
    m_bookmarks.startAccessing(bookmark.value().path);
    return bookmark.value().path;
}

// A content that is refused after the opening ends like a file that could not be opened: logged, and idle.
std::unique_ptr<AudioPlayer> SoundPlayer::open(const QString &path, const QString &errorPrefix) {
    auto player = m_audioPlayers.open(path, [this, errorPrefix](const QString &reason) {
        m_log.print(errorPrefix + reason);
        stop();
    });
    if (!player) {
        m_log.print(errorPrefix + player.error());
        return nullptr;
    }
    return std::move(player).value();
}

void SoundPlayer::start(std::unique_ptr<AudioPlayer> player, const QString &previewId) {
    m_player = std::move(player);
    m_player->play();
    setCurrentPreviewId(previewId);
    setIsPlaying(true);
}

void SoundPlayer::setCurrentPreviewId(const QString &previewId) {
    if (m_currentPreviewId != previewId) {
        m_currentPreviewId = previewId;
        Q_EMIT currentPreviewIdChanged();
    }
}

void SoundPlayer::setIsPlaying(bool isPlaying) {
    if (m_isPlaying != isPlaying) {
        m_isPlaying = isPlaying;
        Q_EMIT isPlayingChanged();
    }
}

} // namespace kova

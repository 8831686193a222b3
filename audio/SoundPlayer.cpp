#include "SoundPlayer.h"

#include "Bookmarks.h"
#include "Log.h"
#include "Platform.h"
#include "Resources.h"
#include "RunLoop.h"

namespace kova {

using namespace std::chrono_literals;

namespace {

constexpr auto earlyFailureLimit = 3s; // longer than it takes to detect an unresponsive player
const auto editorPreview = QStringLiteral("__preview__");

// Qt accepts Base64 without its padding.
std::optional<QByteArray> decodeBase64(const QString &text) {
    const QByteArray base64 = text.toUtf8();
    auto decoded = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    return decoded && base64.size() % 4 == 0 ? std::optional(std::move(*decoded)) : std::nullopt;
}

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

// A group with a custom file never falls back to its built-in sound.
void SoundPlayer::play(const AlarmGroup &group, bool loop, const QString &previewId) {
    m_context.reset();
    m_earlyFailures = 0;
    const auto playFile = [=, this](const std::optional<QString> &path) {
        if (path) {
            playSound({*path, group.volume, loop, previewId});
        } else {
            m_log.print(QStringLiteral("[SoundPlayer] Sound not found: ") + group.soundName);
        }
    };
    const QString customSoundPath = group.customSoundPath.value_or(QString());
    if (customSoundPath.isEmpty()) {
        playFile(builtInSoundURL(group.soundName));
        return;
    }
    const std::optional<QByteArray> bookmark = decodeBase64(customSoundPath);
    if (!bookmark) {
        playFile(std::nullopt);
        return;
    }
    m_context = std::make_unique<QObject>();
    m_pendingPreviewId = previewId;
    m_bookmarks.resolve(*bookmark, m_context.get(), [=, this](const Result<QString> &path) {
        m_pendingPreviewId.clear();
        if (!path) {
            m_log.print(QStringLiteral("[SoundPlayer] resolve bookmark error: ") + path.error());
        }
        playFile(path ? std::optional(path.value()) : std::nullopt);
    });
}

void SoundPlayer::playSound(const Sound &sound) {
    AudioRequest request{.path = sound.path, .volume = sound.volume};
    if (sound.isLooped) {
        request.loops = -1;
        request.maxDuration = longestRinging - sound.pauses;
    }
    auto player =
        m_audioPlayers.play(request, [this, sound](const PlaybackError &error) { onError(sound, error); });
    if (!player) {
        printError(sound, player.error());
        return;
    }
    m_player = std::move(player).value();
    m_context = std::make_unique<QObject>();
    m_runLoop.after(earlyFailureLimit, m_context.get(), [this] { m_earlyFailures = 0; });
    setCurrentPreviewId(sound.previewId);
}

// Retries an alarm's sound, less often if it keeps failing early, as a file that crashes its decoder does.
void SoundPlayer::onError(const Sound &sound, const PlaybackError &error) {
    constexpr int maxFastRetries = 3;
    if (sound.pauses == 0s || error.isFinal) {
        printError(sound, error.reason);
    }
    stop();
    m_earlyFailures += 1;
    const std::chrono::seconds pause = m_earlyFailures > maxFastRetries ? 5s : 1s;
    if (sound.isLooped && !error.isFinal && sound.pauses + pause < longestRinging) {
        Sound again = sound;
        again.pauses += pause;
        m_context = std::make_unique<QObject>();
        m_runLoop.after(pause, m_context.get(), [this, again] { playSound(again); });
    }
}

void SoundPlayer::printError(const Sound &sound, const QString &reason) {
    const bool isEditorPreview = sound.previewId == editorPreview;
    m_log.print((isEditorPreview ? QStringLiteral("[SoundPlayer] preview error: ")
                                 : QStringLiteral("[SoundPlayer] play error: ")) +
                reason);
}

void SoundPlayer::preview(const QString &soundName, float volume) {
    stop();
    if (const std::optional<QString> path = builtInSoundURL(soundName)) {
        playSound({*path, volume, false, editorPreview});
    }
}

void SoundPlayer::togglePreview(const AlarmGroup &group) {
    const QString key = group.idText();
    const bool isPreviewed = m_currentPreviewId == key || m_pendingPreviewId == key;
    stop();
    if (!isPreviewed) {
        play(group, false, key);
    }
}

void SoundPlayer::stop() {
    m_context.reset();
    m_pendingPreviewId.clear();
    m_player.reset();
    setCurrentPreviewId(QString());
}

std::optional<QString> SoundPlayer::builtInSoundURL(const QString &soundName) const {
    const QString file = soundName + QStringLiteral(".mp3");
    const std::optional<QString> path = m_resources.path(QStringLiteral("Sounds/") + file);
    return path ? path : m_resources.path(file);
}

void SoundPlayer::setCurrentPreviewId(const QString &previewId) {
    if (m_currentPreviewId != previewId) {
        m_currentPreviewId = previewId;
        Q_EMIT currentPreviewIdChanged();
    }
}

} // namespace kova

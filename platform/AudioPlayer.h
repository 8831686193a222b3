#pragma once

#include "Result.h"

#include <chrono>
#include <functional>
#include <memory>

namespace kova {

/// Plays one sound file. No call blocks on the sound server or the file. The destructor stops the sound. Main
/// thread.
class AudioPlayer {
public:
    virtual ~AudioPlayer() = default;

    /// 0 to 1.
    virtual void setVolume(float volume) = 0;

    /// A negative count repeats endlessly, 0 plays once.
    virtual void setNumberOfLoops(int loops) = 0;

    /// The sound ends after this time, even if this thread is blocked. Default: one hour.
    virtual void setMaximumDuration(std::chrono::milliseconds duration) = 0;

    /// Starts the sound, as soon as the sound server is available.
    virtual void play() = 0;

    virtual void stop() = 0;
};

/// Why a sound cannot be played, or not to its end.
struct PlaybackError {
    QString reason;
    bool isFinal = false; ///< the file is missing or no sound; otherwise another try may succeed
};

class AudioPlayers {
public:
    /// Called from the event loop at most once while the player exists, and never after its stop(). May
    /// destroy the player.
    using ErrorCallback = std::function<void(const PlaybackError &error)>;

    virtual ~AudioPlayers() = default;

    /// Fails immediately if the file's suffix is not supported. Errors in the file, its content or during
    /// playback are reported to `onError` after play().
    virtual Result<std::unique_ptr<AudioPlayer>> open(const QString &path, ErrorCallback onError) = 0;
};

} // namespace kova

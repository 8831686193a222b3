#pragma once

#include "Result.h"

#include <chrono>
#include <functional>
#include <memory>

namespace kova {

struct AudioRequest {
    QString path;
    float volume = 1; ///< 0 to 1
    int loops = 0;    ///< repetitions after the first time; negative repeats endlessly
    std::chrono::milliseconds maxDuration = std::chrono::hours(1); ///< holds even if this thread is blocked
};

/// A sound that plays until its end or the destruction of this object.
class AudioPlayer {
public:
    virtual ~AudioPlayer() = default;
};

/// Why a sound cannot be played, or not to its end.
struct PlaybackError {
    QString reason;
    bool isFinal = false; ///< the file is missing or no sound; otherwise another try may succeed
};

/// Plays sound files. No call blocks on the sound server or the file. Main thread.
class AudioPlayers {
public:
    /// Called from the event loop at most once while the player exists. May destroy the player.
    using ErrorCallback = std::function<void(const PlaybackError &error)>;

    virtual ~AudioPlayers() = default;

    /// Starts the sound as soon as the sound server is available. Fails immediately if the file's suffix is
    /// not supported; errors in the file, its content or during playback are reported to `onError`.
    virtual Result<std::unique_ptr<AudioPlayer>> play(const AudioRequest &request, ErrorCallback onError) = 0;
};

} // namespace kova

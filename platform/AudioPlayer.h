#pragma once

#include "Result.h"

#include <chrono>
#include <functional>
#include <memory>

namespace kova {

/// One sound file. No call waits for the sound server or touches the file. Destroying the player ends its
/// sound. Main thread.
class AudioPlayer {
public:
    virtual ~AudioPlayer() = default;

    /// 0 to 1.
    virtual void setVolume(float volume) = 0;

    /// A negative count repeats until stopped, 0 plays once.
    virtual void setNumberOfLoops(int loops) = 0;

    /// How long the sound may last, even if this thread is held up meanwhile: an hour where nothing is said.
    virtual void setLongestTime(std::chrono::milliseconds time) = 0;

    /// Starts the sound as soon as the sound server is there.
    virtual void play() = 0;

    virtual void stop() = 0;
};

class AudioPlayers {
public:
    /// Why the file can't be played, or not any further. Runs from the event loop while the player lives, at
    /// most once; it may destroy the player.
    using Refusal = std::function<void(const QString &reason)>;

    virtual ~AudioPlayers() = default;

    /// Refuses at once what its name tells to be no sound that is played; what is wrong with the file or with
    /// its content is told to `refused` once it plays.
    virtual Result<std::unique_ptr<AudioPlayer>> open(const QString &path, Refusal refused) = 0;
};

} // namespace kova

#pragma once

#include "Result.h"

#include <functional>
#include <memory>

namespace kova {

/// One sound file, opened. No call waits for the sound server. Destroying the player ends its sound.
/// Main thread.
class AudioPlayer {
public:
    virtual ~AudioPlayer() = default;

    /// 0 to 1.
    virtual void setVolume(float volume) = 0;

    /// A negative count repeats until stopped, 0 plays once.
    virtual void setNumberOfLoops(int loops) = 0;

    /// Starts the sound as soon as the sound server is there.
    virtual void play() = 0;

    virtual void stop() = 0;
};

class AudioPlayers {
public:
    /// Why the file's content can't be played. Runs from the event loop while the player lives, at most once;
    /// it may destroy the player.
    using Refusal = std::function<void(const QString &reason)>;

    virtual ~AudioPlayers() = default;

    /// Opens a file, or says at once why it can't be read. A content that turns out not to be sound is told
    /// to `refused` shortly after.
    virtual Result<std::unique_ptr<AudioPlayer>> open(const QString &path, Refusal refused) = 0;
};

} // namespace kova

#pragma once

#include "Result.h"

#include <QByteArray>
#include <SDL2/SDL_events.h>
#include <SDL2/SDL_mixer.h>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>

union SDL_Event;

namespace kova {

/// The open sound device, silent or playing one file. At most one at a time. All calls come from one thread,
/// which the sound server may hold up in any of them.
class MixerDevice {
public:
    /// The volume, 0 to 1, is followed while the sound plays. `changed` runs on a thread of the mixer's when
    /// the sound has ended or the device was lost, and must not call the mixer.
    static Result<std::unique_ptr<MixerDevice>> open(const std::atomic<float> &volume,
                                                     std::function<void()> changed);
    ~MixerDevice();
    MixerDevice(const MixerDevice &) = delete;
    MixerDevice &operator=(const MixerDevice &) = delete;

    /// Plays a file in place of the present one, again and again when `loops` is negative. The answer is why
    /// its content can't be played.
    std::optional<QString> play(const QByteArray &path, int loops);

    void stop();

    bool hasEnded() const { return m_hasEnded; }
    bool isLost() const { return m_isLost; }

private:
    MixerDevice(const std::atomic<float> &volume, std::function<void()> changed);
    static void postMix(void *device, Uint8 *stream, int length);
    static int eventArrived(void *device, SDL_Event *event);

    const std::atomic<float> &m_volume;
    const std::function<void()> m_changed;
    std::unique_ptr<Mix_Music, decltype(&Mix_FreeMusic)> m_music{nullptr, &Mix_FreeMusic};
    std::atomic<bool> m_isPlaying = false;
    std::atomic<bool> m_hasEnded = false;
    std::atomic<bool> m_isLost = false;
};

} // namespace kova

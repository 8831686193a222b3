#pragma once

#include <SDL2/SDL_audio.h>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace kova {

/// The open sound device. The sound server may hold up its opening and closing.
class SoundDevice {
public:
    /// Fills one piece; runs on the device's thread.
    using Fill = std::function<void(std::span<float> samples)>;

    /// Null and a reason when there is none. It asks for the first piece at once.
    static std::unique_ptr<SoundDevice> open(int rate, int channels, Fill fill, std::string &reason);
    ~SoundDevice();
    SoundDevice(const SoundDevice &) = delete;
    SoundDevice &operator=(const SoundDevice &) = delete;

    /// The server has gone.
    bool isLost() const { return SDL_GetAudioDeviceStatus(m_device) == SDL_AUDIO_STOPPED; }

private:
    explicit SoundDevice(Fill fill) : m_fill(std::move(fill)) {}
    bool openDevice(int rate, int channels);
    static void fill(void *device, Uint8 *bytes, int size);

    const Fill m_fill;
    SDL_AudioDeviceID m_device = 0;
};

} // namespace kova

#pragma once

#include <SDL2/SDL_audio.h>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace kova {

/// The open sound device. Opening and closing block while the sound server is unresponsive.
class SoundDevice {
public:
    /// Fills one buffer. Runs on the device's thread.
    using Fill = std::function<void(std::span<float> samples)>;

    /// Returns null and sets `reason` if there is no device. Otherwise `fill` is called immediately.
    static std::unique_ptr<SoundDevice> open(int rate, int channels, Fill fill, std::string &reason);
    ~SoundDevice();
    SoundDevice(const SoundDevice &) = delete;
    SoundDevice &operator=(const SoundDevice &) = delete;

    /// Returns true once the sound server has disconnected.
    bool isLost() const { return SDL_GetAudioDeviceStatus(m_device) == SDL_AUDIO_STOPPED; }

private:
    explicit SoundDevice(Fill fill) : m_fill(std::move(fill)) {}
    bool openDevice(int rate, int channels);
    static void fill(void *device, Uint8 *bytes, int size);

    const Fill m_fill;
    SDL_AudioDeviceID m_device = 0;
};

} // namespace kova

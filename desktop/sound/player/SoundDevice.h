#pragma once

#include <SDL2/SDL_audio.h>
#include <functional>
#include <span>
#include <string>

namespace kova {

/// The sound device. Opening and closing block while the sound server is unresponsive.
class SoundDevice {
public:
    /// Fills one buffer. Runs on the device's thread.
    using Fill = std::function<void(std::span<float> samples)>;

    /// Opens the device, upon which `fill` is called immediately.
    SoundDevice(int rate, int channels, Fill fill);
    ~SoundDevice();
    SoundDevice(const SoundDevice &) = delete;
    SoundDevice &operator=(const SoundDevice &) = delete;

    /// Returns why the device could not be opened; empty if it is open.
    const std::string &error() const { return m_error; }

    /// Returns true once the sound server has disconnected.
    bool isLost() const { return SDL_GetAudioDeviceStatus(m_device) == SDL_AUDIO_STOPPED; }

private:
    static void fill(void *device, Uint8 *bytes, int size);

    const Fill m_fill;
    SDL_AudioDeviceID m_device = 0;
    std::string m_error;
};

} // namespace kova

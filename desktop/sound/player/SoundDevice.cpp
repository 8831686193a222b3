#include "SoundDevice.h"

#include <SDL2/SDL.h>
#include <cstdlib>

namespace kova {

namespace {

// A smaller buffer plays the first sample earlier.
constexpr Uint16 framesPerBuffer = 1024;

// The name and role in the desktop's volume control. Not the role "event", whose volume many users turn down.
// SDL passes the role only to some servers; PulseAudio reads it from PULSE_PROP.
void describeStream() {
    SDL_SetMainReady();
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "KOVA Alarm");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_NAME, "KOVA Alarm");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_ROLE, "alarm");
    setenv("PULSE_PROP", "media.role=alarm application.id=jp.kova.Alarm application.icon_name=jp.kova.Alarm",
           1);
    // The server's buffer bridges scheduling delays on a busy machine.
    setenv("PULSE_LATENCY_MSEC", "250", 0);
}

} // namespace

SoundDevice::SoundDevice(int rate, int channels, Fill fill) : m_fill(std::move(fill)) {
    describeStream();
    SDL_AudioSpec format{};
    format.freq = rate;
    format.format = AUDIO_F32SYS;
    format.channels = static_cast<Uint8>(channels);
    format.samples = framesPerBuffer;
    format.callback = &SoundDevice::fill;
    format.userdata = this;
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) == 0) {
        m_device = SDL_OpenAudioDevice(nullptr, 0, &format, nullptr, 0);
    }
    if (m_device == 0) {
        m_error = SDL_GetError();
    } else {
        SDL_PauseAudioDevice(m_device, 0);
    }
}

SoundDevice::~SoundDevice() {
    SDL_CloseAudioDevice(m_device);
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

void SoundDevice::fill(void *device, Uint8 *bytes, int size) {
    static_cast<SoundDevice *>(device)->m_fill(
        {reinterpret_cast<float *>(bytes), static_cast<size_t>(size) / sizeof(float)});
}

} // namespace kova

#include "SoundDevice.h"

#include <SDL2/SDL.h>
#include <cstdlib>

namespace kova {

namespace {

// The smaller, the sooner the first sound is heard.
constexpr Uint16 framesInAPiece = 1024;

// What the user meets in the volume control. Not the role "event": whoever turned down the sounds of events
// still wants to be woken. SDL hands the role only to some servers; PulseAudio takes it from its variable.
void describeStream() {
    SDL_SetMainReady();
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_APP_NAME, "KOVA Alarm");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "KOVA Alarm");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_NAME, "KOVA Alarm");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_ROLE, "alarm");
    setenv("PULSE_PROP", "media.role=alarm application.id=jp.kova.Alarm application.icon_name=jp.kova.Alarm",
           1);
    // What the server holds in store bridges the time in which a busy machine does not get round to us.
    setenv("PULSE_LATENCY_MSEC", "250", 0);
}

} // namespace

std::unique_ptr<SoundDevice> SoundDevice::open(int rate, int channels, Fill fill, std::string &reason) {
    describeStream();
    std::unique_ptr<SoundDevice> device(new SoundDevice(std::move(fill)));
    if (!device->openDevice(rate, channels)) {
        reason = SDL_GetError();
        return nullptr;
    }
    return device;
}

bool SoundDevice::openDevice(int rate, int channels) {
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
        return false;
    }
    SDL_AudioSpec form{};
    form.freq = rate;
    form.format = AUDIO_F32SYS;
    form.channels = static_cast<Uint8>(channels);
    form.samples = framesInAPiece;
    form.callback = &SoundDevice::fill;
    form.userdata = this;
    m_device = SDL_OpenAudioDevice(nullptr, 0, &form, nullptr, 0);
    SDL_PauseAudioDevice(m_device, 0);
    return m_device != 0;
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

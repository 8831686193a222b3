#include "MixerDevice.h"

#include <SDL2/SDL.h>
#include <span>

namespace kova {

namespace {

QString mixerError() {
    return QString::fromUtf8(Mix_GetError());
}

void describeStream() {
    SDL_SetMainReady();
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_APP_NAME, "KOVA Alarm");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "KOVA Alarm");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_NAME, "KOVA Alarm");
    // Not "event": whoever turned down the sounds of events still wants to be woken.
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_ROLE, "alarm");
}

} // namespace

Result<std::unique_ptr<MixerDevice>> MixerDevice::open(const std::atomic<float> &volume,
                                                       std::function<void()> changed) {
    describeStream();
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
        return Failure{mixerError()};
    }
    // Samples as floats take any volume without loss; 1024 of them last 23 ms.
    if (Mix_OpenAudioDevice(44100, AUDIO_F32SYS, 2, 1024, nullptr, 0) != 0) {
        const QString reason = mixerError();
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return Failure{reason};
    }
    return std::unique_ptr<MixerDevice>(new MixerDevice(volume, std::move(changed)));
}

MixerDevice::MixerDevice(const std::atomic<float> &volume, std::function<void()> changed)
    : m_volume(volume),
      m_changed(std::move(changed)) {
    SDL_AddEventWatch(&eventArrived, this);
    Mix_SetPostMix(&postMix, this);
}

MixerDevice::~MixerDevice() {
    stop();
    Mix_SetPostMix(nullptr, nullptr);
    SDL_DelEventWatch(&eventArrived, this);
    Mix_CloseAudio();
    Mix_Quit();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

std::optional<QString> MixerDevice::play(const QByteArray &path, int loops) {
    stop();
    m_music.reset(Mix_LoadMUS(path.constData()));
    if (!m_music || Mix_PlayMusic(m_music.get(), loops < 0 ? -1 : loops + 1) != 0) {
        const QString reason = mixerError();
        m_music.reset();
        return reason;
    }
    m_isPlaying = true;
    return std::nullopt;
}

void MixerDevice::stop() {
    m_isPlaying = false;
    if (m_music) {
        Mix_HaltMusic();
        m_music.reset();
    }
    m_hasEnded = false;
}

// Runs for each piece of sound, so it is also the place that notices the end.
void MixerDevice::postMix(void *device, Uint8 *stream, int length) {
    auto *const self = static_cast<MixerDevice *>(device);
    const float volume = self->m_volume;
    for (float &sample : std::span(reinterpret_cast<float *>(stream), static_cast<size_t>(length) / sizeof(float))) {
        sample *= volume;
    }
    if (self->m_isPlaying && Mix_PlayingMusic() == 0 && !self->m_hasEnded.exchange(true)) {
        self->m_changed();
    }
}

int MixerDevice::eventArrived(void *device, SDL_Event *event) {
    auto *const self = static_cast<MixerDevice *>(device);
    // One that was not open has no number.
    const bool isOurs = event->type == SDL_AUDIODEVICEREMOVED && event->adevice.which != 0;
    if (isOurs && !self->m_isLost.exchange(true)) {
        self->m_changed();
    }
    return 0;
}

} // namespace kova

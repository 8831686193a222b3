#include "MixerDevice.h"

#include <span>

namespace kova {

namespace {

QString mixerError(const MixerLibrary &library) {
    return QString::fromUtf8(library.SDL_GetError());
}

void describeStream(const MixerLibrary &library) {
    library.SDL_SetMainReady();
    library.SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    library.SDL_SetHint(SDL_HINT_APP_NAME, "KOVA Alarm");
    library.SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "KOVA Alarm");
    library.SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_NAME, "KOVA Alarm");
    // Not "event": whoever turned down the sounds of events still wants to be woken.
    library.SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_ROLE, "alarm");
}

} // namespace

Result<std::unique_ptr<MixerDevice>> MixerDevice::open(const std::atomic<float> &volume,
                                                       std::function<void()> changed) {
    const Result<const MixerLibrary *> loaded = MixerLibrary::load();
    if (!loaded) {
        return Failure{loaded.error()};
    }
    const MixerLibrary &library = *loaded.value();
    describeStream(library);
    if (library.SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
        return Failure{mixerError(library)};
    }
    // Samples as floats take any volume without loss; 1024 of them last 23 ms.
    if (library.Mix_OpenAudioDevice(44100, AUDIO_F32SYS, 2, 1024, nullptr, 0) != 0) {
        const QString reason = mixerError(library);
        library.SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return Failure{reason};
    }
    return std::unique_ptr<MixerDevice>(new MixerDevice(library, volume, std::move(changed)));
}

MixerDevice::MixerDevice(const MixerLibrary &library, const std::atomic<float> &volume,
                         std::function<void()> changed)
    : m_library(library),
      m_volume(volume),
      m_changed(std::move(changed)),
      m_music(nullptr, library.Mix_FreeMusic) {
    m_library.SDL_AddEventWatch(&eventArrived, this);
    m_library.Mix_SetPostMix(&postMix, this);
}

MixerDevice::~MixerDevice() {
    stop();
    m_library.Mix_SetPostMix(nullptr, nullptr);
    m_library.SDL_DelEventWatch(&eventArrived, this);
    m_library.Mix_CloseAudio();
    m_library.Mix_Quit();
    m_library.SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

std::optional<QString> MixerDevice::play(const QByteArray &path, int loops) {
    stop();
    m_music.reset(m_library.Mix_LoadMUS(path.constData()));
    if (!m_music || m_library.Mix_PlayMusic(m_music.get(), loops < 0 ? -1 : loops + 1) != 0) {
        const QString reason = mixerError(m_library);
        m_music.reset();
        return reason;
    }
    m_isPlaying = true;
    return std::nullopt;
}

void MixerDevice::stop() {
    m_isPlaying = false;
    if (m_music) {
        m_library.Mix_HaltMusic();
        m_music.reset();
    }
    m_hasEnded = false;
}

// Runs for each piece of sound, so it is also the place that notices the end.
void MixerDevice::postMix(void *device, Uint8 *stream, int length) {
    auto *const self = static_cast<MixerDevice *>(device);
    const float volume = self->m_volume;
    for (float &sample :
         std::span(reinterpret_cast<float *>(stream), static_cast<size_t>(length) / sizeof(float))) {
        sample *= volume;
    }
    if (self->m_isPlaying && self->m_library.Mix_PlayingMusic() == 0 && !self->m_hasEnded.exchange(true)) {
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

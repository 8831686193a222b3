#include "Sound.h"

#include <SDL2/SDL_error.h>
#include <algorithm>

namespace kova {

namespace {

constexpr size_t framesPerBlock = 1024;

} // namespace

std::unique_ptr<Sound> Sound::open(const std::string &path, int loops, DecoderError &error) {
    std::unique_ptr<Decoder> decoder = openDecoder(path, error);
    if (!decoder) {
        return nullptr;
    }
    Stream stream(SDL_NewAudioStream(AUDIO_F32SYS, static_cast<Uint8>(std::min(decoder->channels(), 255)),
                                     decoder->rate(), AUDIO_F32SYS, channels, rate),
                  &SDL_FreeAudioStream);
    if (!stream) {
        error = {SDL_GetError()};
        return nullptr;
    }
    std::unique_ptr<Sound> sound(new Sound(path, std::move(decoder), std::move(stream), loops));
    if (!sound->decode()) {
        error = {"The file contains no sound: " + path};
        return nullptr;
    }
    return sound;
}

Sound::Sound(std::string path, std::unique_ptr<Decoder> decoder, Stream stream, int loops)
    : m_path(std::move(path)),
      m_decoder(std::move(decoder)),
      m_stream(std::move(stream)),
      m_block(framesPerBlock * static_cast<size_t>(m_decoder->channels())),
      m_loopsLeft(loops) {}

void Sound::fill(std::span<float> samples) {
    const auto wanted = static_cast<int>(samples.size_bytes());
    while (SDL_AudioStreamAvailable(m_stream.get()) < wanted && decode()) {
    }
    const int got = std::max(SDL_AudioStreamGet(m_stream.get(), samples.data(), wanted), 0);
    m_hasEnded = got < wanted;
    std::ranges::fill(samples.subspan(static_cast<size_t>(got) / sizeof(float)), 0.0F);
}

// Decodes the next block, rewinding between repetitions. Returns false if there is none. A file that is empty
// after a rewind has ended, so that it is not read again and again.
bool Sound::decode() {
    if (m_isDecoded) {
        return false;
    }
    if (const size_t size = m_decoder->read(m_block)) {
        m_isAtBeginning = false;
        return SDL_AudioStreamPut(m_stream.get(), m_block.data(), static_cast<int>(size * sizeof(float))) ==
               0;
    }
    if (m_isAtBeginning || m_loopsLeft == 0 || !rewind()) {
        m_isDecoded = true;
        SDL_AudioStreamFlush(m_stream.get());
        return !m_isAtBeginning;
    }
    m_loopsLeft -= m_loopsLeft > 0 ? 1 : 0;
    m_isAtBeginning = true;
    return true;
}

// Opens the file again if its decoder cannot continue, as after damaged data.
bool Sound::rewind() {
    if (m_decoder->rewind()) {
        return true;
    }
    DecoderError error;
    auto decoder = openDecoder(m_path, error);
    if (!decoder || decoder->channels() != m_decoder->channels() || decoder->rate() != m_decoder->rate()) {
        return false;
    }
    m_decoder = std::move(decoder);
    return true;
}

} // namespace kova

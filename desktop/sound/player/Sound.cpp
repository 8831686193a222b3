#include "Sound.h"

#include <SDL2/SDL_error.h>
#include <algorithm>

namespace kova {

namespace {

constexpr size_t framesInAPiece = 1024;

} // namespace

std::unique_ptr<Sound> Sound::open(const std::string &path, int loops, std::string &reason) {
    std::unique_ptr<Decoder> decoder = openDecoder(path, reason);
    if (!decoder) {
        return nullptr;
    }
    Stream stream(SDL_NewAudioStream(AUDIO_F32SYS, static_cast<Uint8>(std::min(decoder->channels(), 255)),
                                     decoder->rate(), AUDIO_F32SYS, channels, rate),
                  &SDL_FreeAudioStream);
    if (!stream) {
        reason = SDL_GetError();
        return nullptr;
    }
    std::unique_ptr<Sound> sound(new Sound(std::move(decoder), std::move(stream), loops));
    if (!sound->decode()) {
        reason = "There is no sound in it: " + path;
        return nullptr;
    }
    return sound;
}

Sound::Sound(std::unique_ptr<Decoder> decoder, Stream stream, int loops)
    : m_decoder(std::move(decoder)),
      m_stream(std::move(stream)),
      m_piece(framesInAPiece * static_cast<size_t>(m_decoder->channels())),
      m_loopsLeft(loops) {}

void Sound::fill(std::span<float> samples) {
    const auto wanted = static_cast<int>(samples.size_bytes());
    while (SDL_AudioStreamAvailable(m_stream.get()) < wanted && decode()) {
    }
    const int got = std::max(SDL_AudioStreamGet(m_stream.get(), samples.data(), wanted), 0);
    m_hasEnded = got < wanted;
    std::ranges::fill(samples.subspan(static_cast<size_t>(got) / sizeof(float)), 0.0F);
}

// The next piece, from the beginning again where it loops; false when there is none. What stays empty after
// it began again ends too.
bool Sound::decode() {
    if (m_isRead) {
        return false;
    }
    if (const size_t size = m_decoder->read(m_piece)) {
        m_isAtBeginning = false;
        return SDL_AudioStreamPut(m_stream.get(), m_piece.data(), static_cast<int>(size * sizeof(float))) ==
               0;
    }
    if (m_isAtBeginning || m_loopsLeft == 0 || !m_decoder->rewind()) {
        m_isRead = true;
        SDL_AudioStreamFlush(m_stream.get());
        return !m_isAtBeginning;
    }
    m_loopsLeft -= m_loopsLeft > 0 ? 1 : 0;
    m_isAtBeginning = true;
    return true;
}

} // namespace kova

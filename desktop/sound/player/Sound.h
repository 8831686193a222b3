#pragma once

#include "Decoder.h"

#include <SDL2/SDL_audio.h>
#include <vector>

namespace kova {

/// A sound file in the device's form, as often as it is to be heard. One thread at a time.
class Sound {
public:
    static constexpr int rate = 44100;
    static constexpr int channels = 2;

    /// A negative number of loops repeats for ever, 0 plays once. Null and a reason when the file holds no
    /// sound that can be played.
    static std::unique_ptr<Sound> open(const std::string &path, int loops, std::string &reason);

    /// Fills all of it, with silence after the end.
    void fill(std::span<float> samples);

    bool hasEnded() const { return m_hasEnded; }

private:
    using Stream = std::unique_ptr<SDL_AudioStream, decltype(&SDL_FreeAudioStream)>;

    Sound(std::unique_ptr<Decoder> decoder, Stream stream, int loops);
    bool decode();

    const std::unique_ptr<Decoder> m_decoder;
    const Stream m_stream; ///< from the file's form to the device's
    std::vector<float> m_piece;
    int m_loopsLeft;
    bool m_isAtBeginning = true;
    bool m_isRead = false;
    bool m_hasEnded = false;
};

} // namespace kova

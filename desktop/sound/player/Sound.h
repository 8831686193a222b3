#pragma once

#include "Decoder.h"

#include <SDL2/SDL_audio.h>
#include <vector>

namespace kova {

/// A sound file, decoded, resampled and repeated. One thread at a time.
class Sound {
public:
    static constexpr int rate = 44100;
    static constexpr int channels = 2;

    /// A negative number of loops repeats endlessly, 0 plays once. Returns null and sets `error` if the file
    /// cannot be played.
    static std::unique_ptr<Sound> open(const std::string &path, int loops, DecoderError &error);

    /// Fills all of `samples`, with silence after the end.
    void fill(std::span<float> samples);

    /// Also true if an endless sound can no longer be decoded.
    bool hasEnded() const { return m_hasEnded; }

private:
    using Stream = std::unique_ptr<SDL_AudioStream, decltype(&SDL_FreeAudioStream)>;

    Sound(std::string path, std::unique_ptr<Decoder> decoder, Stream stream, int loops);
    bool decode();
    bool rewind();

    const std::string m_path;
    std::unique_ptr<Decoder> m_decoder;
    const Stream m_stream; ///< from the file's sample format to the device's
    std::vector<float> m_block;
    int m_loopsLeft;
    bool m_isAtBeginning = true;
    bool m_isDecoded = false; ///< all samples are in the stream
    bool m_hasEnded = false;
};

} // namespace kova

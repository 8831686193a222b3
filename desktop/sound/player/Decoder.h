#pragma once

#include <memory>
#include <span>
#include <string>

namespace kova {

/// Why a file cannot be decoded.
struct DecoderError {
    std::string reason;
    bool isTemporary = false; ///< the error of a disk, or lack of memory or descriptors
};

/// Decodes one sound file. One thread at a time.
class Decoder {
public:
    virtual ~Decoder() = default;

    virtual int channels() const = 0; ///< at least 1
    virtual int rate() const = 0;     ///< frames per second

    /// Fills `samples` with whole frames of interleaved samples from -1 to 1 and returns the number of
    /// samples. Continues behind damaged blocks where the library can; returns 0 if nothing more can be
    /// decoded.
    virtual size_t read(std::span<float> samples) = 0;

    /// Continues at the beginning. Returns false on failure; the decoder is then unusable.
    virtual bool rewind() = 0;
};

/// Opens a file with the library for its suffix, libsndfile by default. Returns null and sets `error` on
/// failure.
std::unique_ptr<Decoder> openDecoder(const std::string &path, DecoderError &error);

/// As openDecoder(), with libsndfile.
std::unique_ptr<Decoder> openSndfileDecoder(const std::string &path, DecoderError &error);

/// The one function of the module with FFmpeg's decoder, as openDecoder(). The caller owns the decoder.
using OpenFfmpegDecoder = Decoder *(const std::string &path, DecoderError &error);
constexpr const char *openFfmpegDecoderName = "openFfmpegDecoder";

} // namespace kova

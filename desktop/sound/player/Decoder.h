#pragma once

#include <memory>
#include <span>
#include <string>

namespace kova {

/// Reads the samples of one sound file. One thread at a time.
class Decoder {
public:
    virtual ~Decoder() = default;

    virtual int channels() const = 0; ///< at least 1
    virtual int rate() const = 0;     ///< frames a second

    /// Fills with whole frames of floats from -1 to 1, one sample for each channel in turn. The number of
    /// samples; 0 at the end, and when nothing more can be read.
    virtual size_t read(std::span<float> samples) = 0;

    /// Back to the beginning; false when that can't be done.
    virtual bool rewind() = 0;
};

/// Opens a file as its name tells, one without a name of its own as libsndfile does; null and a reason when
/// it can't be.
std::unique_ptr<Decoder> openDecoder(const std::string &path, std::string &reason);

} // namespace kova

#pragma once

#include "Decoder.h"

#include <sndfile.h>

namespace kova {

/// A file as libsndfile reads it.
class SndfileDecoder : public Decoder {
public:
    /// Null and a reason when the file can't be read.
    static std::unique_ptr<Decoder> open(const std::string &path, std::string &reason);

    int channels() const override { return m_info.channels; }
    int rate() const override { return m_info.samplerate; }
    size_t read(std::span<float> samples) override;
    bool rewind() override;

private:
    using File = std::unique_ptr<SNDFILE, decltype(&sf_close)>;

    SndfileDecoder(File file, const SF_INFO &info) : m_file(std::move(file)), m_info(info) {}

    const File m_file;
    const SF_INFO m_info;
};

} // namespace kova

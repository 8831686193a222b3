#pragma once

#include "Decoder.h"

#include <sndfile.h>

namespace kova {

/// Decodes with libsndfile.
class SndfileDecoder : public Decoder {
public:
    /// Returns null and sets `error` if the file cannot be decoded.
    static std::unique_ptr<Decoder> open(const std::string &path, DecoderError &error);

    int channels() const override { return m_info.channels; }
    int rate() const override { return m_info.samplerate; }
    size_t read(std::span<float> samples) override;
    bool rewind() override;

private:
    using File = std::unique_ptr<SNDFILE, decltype(&sf_close)>;

    SndfileDecoder(std::string path, File file, const SF_INFO &info)
        : m_path(std::move(path)),
          m_file(std::move(file)),
          m_info(info) {}
    sf_count_t readFrames(std::span<float> samples);
    bool reopenAt(sf_count_t position);

    const std::string m_path;
    File m_file;
    const SF_INFO m_info;
    sf_count_t m_position = 0; ///< frames
};

} // namespace kova

#include "Decoder.h"

#include <sndfile.h>

namespace kova {

namespace {

using File = std::unique_ptr<SNDFILE, decltype(&sf_close)>;

class SndfileDecoder : public Decoder {
public:
    SndfileDecoder(std::string path, File file, const SF_INFO &info)
        : m_path(std::move(path)),
          m_file(std::move(file)),
          m_info(info) {}

    int channels() const override { return m_info.channels; }
    int rate() const override { return m_info.samplerate; }
    size_t read(std::span<float> samples) override;
    bool rewind() override;

private:
    sf_count_t readFrames(std::span<float> samples);
    bool reopenAt(sf_count_t position);

    const std::string m_path;
    File m_file;
    const SF_INFO m_info;
    sf_count_t m_position = 0; ///< frames
};

// After an error libsndfile neither continues nor seeks, so the file is opened again behind the damaged part,
// whose length is found by doubling.
size_t SndfileDecoder::read(std::span<float> samples) {
    constexpr sf_count_t firstStep = 4096;
    sf_count_t got = readFrames(samples);
    const bool isLengthKnown = m_info.frames < SF_COUNT_MAX;
    for (sf_count_t step = firstStep; got == 0 && isLengthKnown && step < m_info.frames - m_position;
         step *= 2) {
        if (reopenAt(m_position + step)) {
            got = readFrames(samples);
        }
    }
    return static_cast<size_t>(got * m_info.channels);
}

sf_count_t SndfileDecoder::readFrames(std::span<float> samples) {
    const auto wanted = static_cast<sf_count_t>(samples.size()) / m_info.channels;
    const sf_count_t got = std::max<sf_count_t>(sf_readf_float(m_file.get(), samples.data(), wanted), 0);
    m_position += got;
    return got;
}

bool SndfileDecoder::rewind() {
    m_position = 0;
    return sf_seek(m_file.get(), 0, SEEK_SET) == 0 || reopenAt(0);
}

bool SndfileDecoder::reopenAt(sf_count_t position) {
    SF_INFO info{};
    File file(sf_open(m_path.c_str(), SFM_READ, &info), &sf_close);
    if (!file || info.channels != m_info.channels || sf_seek(file.get(), position, SEEK_SET) != position) {
        return false;
    }
    m_file = std::move(file);
    m_position = position;
    return true;
}

} // namespace

std::unique_ptr<Decoder> openSndfileDecoder(const std::string &path, DecoderError &error) {
    SF_INFO info{};
    File file(sf_open(path.c_str(), SFM_READ, &info), &sf_close);
    if (!file) {
        error = {"Not a supported sound file", sf_error(nullptr) == SF_ERR_SYSTEM};
        return nullptr;
    }
    return std::make_unique<SndfileDecoder>(path, std::move(file), info);
}

} // namespace kova

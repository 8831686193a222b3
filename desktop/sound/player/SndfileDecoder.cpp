#include "SndfileDecoder.h"

namespace kova {

std::unique_ptr<Decoder> SndfileDecoder::open(const std::string &path, std::string &reason) {
    SF_INFO info{};
    File file(sf_open(path.c_str(), SFM_READ, &info), &sf_close);
    if (!file) {
        reason = "There is no sound in it that can be played: " + path;
        return nullptr;
    }
    return std::unique_ptr<Decoder>(new SndfileDecoder(std::move(file), info));
}

size_t SndfileDecoder::read(std::span<float> samples) {
    const auto frames = static_cast<sf_count_t>(samples.size()) / m_info.channels;
    const sf_count_t got = sf_readf_float(m_file.get(), samples.data(), frames);
    return got > 0 ? static_cast<size_t>(got * m_info.channels) : 0;
}

bool SndfileDecoder::rewind() {
    return sf_seek(m_file.get(), 0, SEEK_SET) == 0;
}

} // namespace kova

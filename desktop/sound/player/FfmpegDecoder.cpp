#include "FfmpegDecoder.h"

#include "FfmpegModule.h"

#include <algorithm>
#include <array>

namespace kova {

namespace {

// FFmpeg reads far more than sound, lists of other files among it.
constexpr const char *formats = "mov,mp4,m4a,3gp,3g2,mj2,aac,asf";
constexpr const char *codecs = "aac,alac,mp3,mp3float,wmav1,wmav2,wmapro,wmalossless,wmavoice";

std::string errorText(int error) {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(error, text.data(), text.size());
    return text.data();
}

} // namespace

std::unique_ptr<FfmpegDecoder> FfmpegDecoder::open(const std::string &path, std::string &reason) {
    av_log_set_level(AV_LOG_QUIET);
    auto decoder = std::make_unique<FfmpegDecoder>();
    int error = decoder->openFile(path);
    if (error >= 0) {
        error = decoder->openStream();
    }
    if (error < 0) {
        reason = errorText(error) + ": " + path;
        return nullptr;
    }
    return decoder;
}

int FfmpegDecoder::openFile(const std::string &path) {
    AVDictionary *options = nullptr;
    av_dict_set(&options, "format_whitelist", formats, 0);
    av_dict_set(&options, "codec_whitelist", codecs, 0);
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    AVFormatContext *file = nullptr;
    const int error = avformat_open_input(&file, ("file:" + path).c_str(), nullptr, &options);
    av_dict_free(&options);
    m_file.reset(file);
    return error < 0 ? error : avformat_find_stream_info(file, nullptr);
}

int FfmpegDecoder::openStream() {
    const AVCodec *codec = nullptr;
    m_stream = av_find_best_stream(m_file.get(), AVMEDIA_TYPE_AUDIO, -1, -1, &codec, 0);
    if (m_stream < 0) {
        return m_stream;
    }
    for (unsigned int i = 0; i < m_file->nb_streams; ++i) {
        m_file->streams[i]->discard = static_cast<int>(i) == m_stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
    m_codec.reset(avcodec_alloc_context3(codec));
    const AVStream &stream = *m_file->streams[m_stream];
    m_codec->pkt_timebase = stream.time_base; // to leave out the silence that the encoder has put before
    const int error = avcodec_parameters_to_context(m_codec.get(), stream.codecpar);
    AVDictionary *options = nullptr;
    av_dict_set(&options, "codec_whitelist", codecs, 0);
    const int opened = error < 0 ? error : avcodec_open2(m_codec.get(), codec, &options);
    m_channels = std::clamp(m_codec->ch_layout.nb_channels, 1, 2);
    av_dict_free(&options);
    return opened;
}

size_t FfmpegDecoder::read(std::span<float> samples) {
    const auto frames = static_cast<int>(samples.size()) / channels();
    auto *bytes = reinterpret_cast<std::uint8_t *>(samples.data());
    for (;;) {
        const bool isFull = m_converter && swr_get_out_samples(m_converter.get(), 0) >= frames;
        if (!isFull && !m_isOver) {
            m_isOver = !decodeFrame();
            continue;
        }
        const int got = m_converter ? swr_convert(m_converter.get(), &bytes, frames, nullptr, 0) : 0;
        return got > 0 ? static_cast<size_t>(got * channels()) : 0;
    }
}

// Hands the next frame to the converter; false at the end, and after what can't be read.
bool FfmpegDecoder::decodeFrame() {
    for (;;) {
        const int error = avcodec_receive_frame(m_codec.get(), m_frame.get());
        if (error == 0) {
            return fitConverter() && swr_convert(m_converter.get(), nullptr, 0,
                                                 const_cast<const std::uint8_t **>(m_frame->extended_data),
                                                 m_frame->nb_samples) >= 0;
        }
        if (error != AVERROR(EAGAIN) || !feedDecoder()) {
            return false;
        }
    }
}

// A packet that is damaged is passed over.
bool FfmpegDecoder::feedDecoder() {
    while (av_read_frame(m_file.get(), m_packet.get()) >= 0) {
        const bool isOurs = m_packet->stream_index == m_stream;
        const int error = isOurs ? avcodec_send_packet(m_codec.get(), m_packet.get()) : 0;
        av_packet_unref(m_packet.get());
        if (isOurs && error >= 0) {
            return true;
        }
    }
    return avcodec_send_packet(m_codec.get(), nullptr) >= 0;
}

// The frames' form may change within a file; what the old converter still holds is lost then.
bool FfmpegDecoder::fitConverter() {
    if (m_converter && m_frame->sample_rate == m_frameRate && m_frame->format == m_frameFormat &&
        av_channel_layout_compare(&m_frame->ch_layout, &m_frameLayout) == 0) {
        return true;
    }
    AVChannelLayout layout{};
    av_channel_layout_default(&layout, m_channels);
    SwrContext *converter = nullptr;
    m_frameRate = m_frame->sample_rate;
    m_frameFormat = m_frame->format;
    av_channel_layout_copy(&m_frameLayout, &m_frame->ch_layout);
    swr_alloc_set_opts2(&converter, &layout, AV_SAMPLE_FMT_FLT, rate(), &m_frame->ch_layout,
                        static_cast<AVSampleFormat>(m_frameFormat), m_frameRate, 0, nullptr);
    m_converter.reset(converter);
    return m_converter && swr_init(converter) >= 0;
}

bool FfmpegDecoder::rewind() {
    avcodec_flush_buffers(m_codec.get());
    m_converter.reset();
    m_isOver = false;
    return avformat_seek_file(m_file.get(), m_stream, INT64_MIN, 0, 0, 0) >= 0 ||
           avformat_seek_file(m_file.get(), m_stream, INT64_MIN, 0, 0, AVSEEK_FLAG_BYTE) >= 0;
}

} // namespace kova

extern "C" kova::Decoder *openFfmpegDecoder(const std::string &path, std::string &reason) {
    return kova::FfmpegDecoder::open(path, reason).release();
}

#include "Decoder.h"

#include <algorithm>
#include <array>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

namespace kova {

namespace {

struct Freed {
    void operator()(AVFormatContext *context) const { avformat_close_input(&context); }
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(SwrContext *context) const { swr_free(&context); }
};
template <typename T> using Owned = std::unique_ptr<T, Freed>;

// Decodes the best audio stream of a file, to mono or stereo at 44.1 kHz.
class FfmpegDecoder : public Decoder {
public:
    // Returns a negative error code if the file cannot be decoded.
    int open(const std::string &path);

    int channels() const override { return m_channels; }
    int rate() const override { return 44100; }
    size_t read(std::span<float> samples) override;
    bool rewind() override;

private:
    int openFile(const std::string &path);
    int openStream();
    bool decodeFrame();
    bool feedDecoder();
    bool convertFrame();

    Owned<AVFormatContext> m_file;
    Owned<AVCodecContext> m_codec;
    Owned<SwrContext> m_converter; ///< from the frames' format, once it is known
    const Owned<AVFrame> m_frame{av_frame_alloc()};
    const Owned<AVPacket> m_packet{av_packet_alloc()};
    int m_channels = 2;
    int m_stream = 0;
    bool m_isDecoded = false; ///< all frames are in the converter
};

// FFmpeg also reads formats that refer to other files or to the network.
constexpr const char *formats = "mov,mp4,m4a,3gp,3g2,mj2,aac,asf";
constexpr const char *codecs = "aac,alac,mp3,mp3float,wmav1,wmav2,wmapro,wmalossless,wmavoice";

std::string errorText(int error) {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(error, text.data(), text.size());
    return text.data();
}

int FfmpegDecoder::open(const std::string &path) {
    const int error = openFile(path);
    return error < 0 ? error : openStream();
}

int FfmpegDecoder::openFile(const std::string &path) {
    AVFormatContext *file = avformat_alloc_context();
    av_opt_set(file, "format_whitelist", formats, 0);
    av_opt_set(file, "codec_whitelist", codecs, 0);
    av_opt_set(file, "protocol_whitelist", "file", 0);
    const int error = avformat_open_input(&file, ("file:" + path).c_str(), nullptr, nullptr);
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
    m_codec->pkt_timebase = stream.time_base; // needed to skip the encoder's leading silence
    const int error = avcodec_parameters_to_context(m_codec.get(), stream.codecpar);
    av_opt_set(m_codec.get(), "codec_whitelist", codecs, 0);
    const int opened = error < 0 ? error : avcodec_open2(m_codec.get(), codec, nullptr);
    m_channels = std::clamp(m_codec->ch_layout.nb_channels, 1, 2);
    return opened;
}

size_t FfmpegDecoder::read(std::span<float> samples) {
    const auto frames = static_cast<int>(samples.size()) / channels();
    auto *bytes = reinterpret_cast<std::uint8_t *>(samples.data());
    for (;;) {
        const bool isFull = m_converter && swr_get_out_samples(m_converter.get(), 0) >= frames;
        if (!isFull && !m_isDecoded) {
            m_isDecoded = !decodeFrame();
            continue;
        }
        const int got = m_converter ? swr_convert(m_converter.get(), &bytes, frames, nullptr, 0) : 0;
        return got > 0 ? static_cast<size_t>(got * channels()) : 0;
    }
}

// Passes the next frame to the converter. Returns false at the end.
bool FfmpegDecoder::decodeFrame() {
    for (;;) {
        const int error = avcodec_receive_frame(m_codec.get(), m_frame.get());
        if (error == 0) {
            return convertFrame();
        }
        if (error == AVERROR_EOF || !feedDecoder()) {
            return false;
        }
    }
}

// Skips damaged packets.
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

// The sample format may change within a file. The samples left in the old converter are then lost.
bool FfmpegDecoder::convertFrame() {
    if (m_frame->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) { // as of WMA; the converter would see a change
        av_channel_layout_default(&m_frame->ch_layout, m_frame->ch_layout.nb_channels);
    }
    if (m_converter && swr_convert_frame(m_converter.get(), nullptr, m_frame.get()) >= 0) {
        return true;
    }
    AVChannelLayout layout{};
    av_channel_layout_default(&layout, m_channels);
    SwrContext *converter = nullptr;
    swr_alloc_set_opts2(&converter, &layout, AV_SAMPLE_FMT_FLT, rate(), &m_frame->ch_layout,
                        static_cast<AVSampleFormat>(m_frame->format), m_frame->sample_rate, 0, nullptr);
    m_converter.reset(converter);
    return m_converter && swr_init(converter) >= 0 &&
           swr_convert_frame(converter, nullptr, m_frame.get()) >= 0;
}

bool FfmpegDecoder::rewind() {
    avcodec_flush_buffers(m_codec.get());
    m_converter.reset();
    m_isDecoded = false;
    return avformat_seek_file(m_file.get(), m_stream, INT64_MIN, 0, 0, 0) >= 0 ||
           avformat_seek_file(m_file.get(), m_stream, INT64_MIN, 0, 0, AVSEEK_FLAG_BYTE) >= 0;
}

} // namespace

extern "C" Decoder *openFfmpegDecoder(const std::string &path, DecoderError &error) {
    av_log_set_level(AV_LOG_QUIET);
    auto decoder = std::make_unique<FfmpegDecoder>();
    if (const int result = decoder->open(path); result < 0) {
        error = {errorText(result)};
        return nullptr;
    }
    return decoder.release();
}

} // namespace kova

#pragma once

#include "Decoder.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

namespace kova {

/// Decodes the best audio stream of a file with FFmpeg, to mono or stereo at 44.1 kHz.
class FfmpegDecoder : public Decoder {
public:
    /// Returns null and sets `error` if the file cannot be decoded.
    static std::unique_ptr<FfmpegDecoder> open(const std::string &path, DecoderError &error);

    int channels() const override { return m_channels; }
    int rate() const override { return 44100; }
    size_t read(std::span<float> samples) override;
    bool rewind() override;

private:
    template <typename T> struct Freed {
        void operator()(AVFormatContext *context) const { avformat_close_input(&context); }
        void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
        void operator()(AVFrame *frame) const { av_frame_free(&frame); }
        void operator()(AVPacket *packet) const { av_packet_free(&packet); }
        void operator()(SwrContext *context) const { swr_free(&context); }
    };
    template <typename T> using Owned = std::unique_ptr<T, Freed<T>>;

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

} // namespace kova

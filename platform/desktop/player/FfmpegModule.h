#pragma once

#include "Decoder.h"

namespace kova {

/// The module that holds FFmpeg, beside the player's program.
constexpr const char *ffmpegModule = "kova-alarm-ffmpeg.so";

/// Its one function: the caller owns the decoder; null and a reason when the file can't be played.
using OpenFfmpegDecoder = Decoder *(const std::string &path, std::string &reason);
constexpr const char *openFfmpegDecoderName = "openFfmpegDecoder";

} // namespace kova

#pragma once

#include "Decoder.h"

namespace kova {

/// The one function of the module that holds FFmpeg: the caller owns the decoder; null and a reason when the
/// file can't be played.
using OpenFfmpegDecoder = Decoder *(const std::string &path, std::string &reason);
constexpr const char *openFfmpegDecoderName = "openFfmpegDecoder";

} // namespace kova

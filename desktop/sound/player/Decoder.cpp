#include "Decoder.h"

#include "FfmpegModule.h"
#include "Messages.h"
#include "SndfileDecoder.h"
#include "SoundForms.h"

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kova {

namespace {

// Why the file can't be read, or nothing. It does not wait for a pipe's other end.
std::string obstacle(const std::string &path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return std::strerror(errno);
    }
    struct stat status {};
    const bool isFile = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    close(descriptor);
    return isFile ? "" : "Not a regular file";
}

// FFmpeg's libraries take longer to load than all else together, so they come only with a file that needs
// them.
std::unique_ptr<Decoder> openWithFfmpeg(const std::string &path, std::string &reason) {
    void *const module = dlopen(message::ffmpegModule, RTLD_NOW | RTLD_LOCAL);
    void *const function = module == nullptr ? nullptr : dlsym(module, openFfmpegDecoderName);
    if (function == nullptr) {
        const char *const error = dlerror();
        reason = error == nullptr ? "FFmpeg can't be loaded" : error;
        return nullptr;
    }
    return std::unique_ptr<Decoder>(reinterpret_cast<OpenFfmpegDecoder *>(function)(path, reason));
}

} // namespace

std::unique_ptr<Decoder> openDecoder(const std::string &path, std::string &reason) {
    if (reason = obstacle(path); !reason.empty()) {
        reason += ": " + path;
        return nullptr;
    }
    const SoundForm *const form = soundFormOf(path);
    const bool isForFfmpeg = form != nullptr && form->reader == SoundReader::Ffmpeg;
    return isForFfmpeg ? openWithFfmpeg(path, reason) : SndfileDecoder::open(path, reason);
}

} // namespace kova

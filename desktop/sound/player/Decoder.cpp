#include "Decoder.h"

#include "PlayerProtocol.h"
#include "SoundFormats.h"

#include <cerrno>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kova {

namespace {

bool isTemporary(int error) {
    return error == EIO || error == EMFILE || error == ENFILE || error == ENOMEM;
}

// Returns false and sets `error` unless a regular file can be opened. Does not block on a pipe.
bool checkFile(const std::string &path, DecoderError &error) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        error = {std::strerror(errno), isTemporary(errno)};
        return false;
    }
    struct stat status {};
    const bool isFile = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    close(descriptor);
    if (!isFile) {
        error = {"Not a regular file"};
    }
    return isFile;
}

std::unique_ptr<Decoder> openWithFfmpeg(const std::string &path, DecoderError &error) {
    void *const module = dlopen(protocol::ffmpegModule, RTLD_NOW | RTLD_LOCAL);
    void *const function = module == nullptr ? nullptr : dlsym(module, openFfmpegDecoderName);
    if (function == nullptr) {
        const char *const reason = dlerror();
        error = {reason == nullptr ? "FFmpeg cannot be loaded" : reason};
        return nullptr;
    }
    return std::unique_ptr<Decoder>(reinterpret_cast<OpenFfmpegDecoder *>(function)(path, error));
}

} // namespace

std::unique_ptr<Decoder> openDecoder(const std::string &path, DecoderError &error) {
    std::unique_ptr<Decoder> decoder;
    if (checkFile(path, error)) {
        const SoundFormat *const format = soundFormatOf(path);
        const bool isForFfmpeg = format != nullptr && format->library == DecoderLibrary::Ffmpeg;
        decoder = isForFfmpeg ? openWithFfmpeg(path, error) : openSndfileDecoder(path, error);
    }
    if (!decoder) {
        error.reason += ": " + path;
    }
    return decoder;
}

} // namespace kova

#include "Decoder.h"

#include "FfmpegModule.h"
#include "SndfileDecoder.h"
#include "SoundForms.h"

#include <array>
#include <cerrno>
#include <climits>
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

std::string programsFolder() {
    std::array<char, PATH_MAX> program{};
    const ssize_t size = readlink("/proc/self/exe", program.data(), program.size() - 1);
    const std::string path(program.data(), size > 0 ? static_cast<size_t>(size) : 0);
    return path.substr(0, path.rfind('/') + 1);
}

// FFmpeg's libraries take longer to load than all else together, so they come only with a file that needs
// them.
std::unique_ptr<Decoder> openWithFfmpeg(const std::string &path, std::string &reason) {
    void *const module = dlopen((programsFolder() + ffmpegModule).c_str(), RTLD_NOW | RTLD_LOCAL);
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
    const SoundForm *const form = soundFormOf(path);
    if (form == nullptr) {
        reason = "Not a kind of sound that is played: " + path;
        return nullptr;
    }
    if (reason = obstacle(path); !reason.empty()) {
        reason += ": " + path;
        return nullptr;
    }
    return form->reader == SoundReader::Ffmpeg ? openWithFfmpeg(path, reason)
                                               : SndfileDecoder::open(path, reason);
}

} // namespace kova

// Any packet may reach the player and the program. What is understood is within its bounds, and tells the
// same again; a file is known by the end of its name alone.

#include "Messages.h"
#include "SoundForms.h"
#include "require.h"

using namespace kova;

namespace {

void keepRequest(const message::Request &request) {
    if (const auto *const play = std::get_if<message::Play>(&request)) {
        require(play->path.starts_with('/') && play->path.find('\0') == std::string::npos);
        require(play->loops >= -1 && play->longest.count() > 0);
        require(play->volume >= 0 && play->volume <= 1);
        const SoundForm *const form = soundFormOf(play->path);
        require(form == nullptr || form == soundFormOf('x' + play->path.substr(play->path.rfind('.'))));
    } else if (const auto *const volume = std::get_if<message::Volume>(&request)) {
        require(volume->volume >= 0 && volume->volume <= 1);
    }
    require(message::decodeRequest(message::encode(request)) == request);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string_view packet(reinterpret_cast<const char *>(data), size);
    if (const auto request = message::decodeRequest(packet)) {
        keepRequest(*request);
    }
    if (const auto answer = message::decodeAnswer(packet)) {
        for (const unsigned char letter : answer->reason) {
            require(letter >= ' ' && letter != 0x7F);
        }
        require(message::decodeAnswer(message::encode(*answer)) == answer);
    }
    return 0;
}

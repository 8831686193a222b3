// Validates arbitrary packets as the player and the application do. An accepted message is within its limits;
// a sound format depends on the suffix alone.

#include "PlayerProtocol.h"
#include "SoundFormats.h"
#include "require.h"

using namespace kova;

namespace {

void checkRequest(const protocol::Request &request) {
    require(request.volume >= 0 && request.volume <= 1);
    const std::string path = request.path.toString();
    require(request.maxDuration > 0 && path.starts_with('/') && path.size() < PATH_MAX);
    const SoundFormat *const format = soundFormatOf(path);
    require(format == nullptr || format == soundFormatOf('x' + path.substr(path.rfind('.'))));
}

void checkEvent(const protocol::Event &event) {
    const std::string reason = event.reason.toString();
    require(reason.size() < event.reason.bytes.size());
    require(event.kind <= protocol::Event::Kind::Ended);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::span packet(reinterpret_cast<const char *>(data), size);
    if (const auto request = protocol::decode<protocol::Request>(packet)) {
        checkRequest(*request);
    }
    if (const auto event = protocol::decode<protocol::Event>(packet)) {
        checkEvent(*event);
    }
    (void)soundFormatOf({packet.data(), packet.size()});
    return 0;
}

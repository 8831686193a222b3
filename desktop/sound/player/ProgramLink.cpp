#include "ProgramLink.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

namespace kova {

namespace {

// Whether there is something to be read, or the end.
bool waitUntil(std::optional<ProgramLink::Deadline> deadline) {
    using namespace std::chrono;
    pollfd socket{.fd = message::playersSocket, .events = POLLIN, .revents = 0};
    for (;;) {
        const auto left =
            deadline ? std::max(ceil<milliseconds>(*deadline - steady_clock::now()), milliseconds(0)) : -1ms;
        const int ready = poll(&socket, 1, static_cast<int>(left.count()));
        if (ready >= 0 || errno != EINTR) {
            return ready > 0;
        }
    }
}

} // namespace

std::optional<message::Request> ProgramLink::receive(std::optional<Deadline> deadline) const {
    std::array<char, message::longest> packet{};
    if (!waitUntil(deadline)) {
        return std::nullopt;
    }
    const ssize_t size = recv(message::playersSocket, packet.data(), packet.size(), MSG_TRUNC | MSG_DONTWAIT);
    if (size <= 0 || static_cast<size_t>(size) > packet.size()) {
        return std::nullopt;
    }
    return message::decodeRequest({packet.data(), static_cast<size_t>(size)});
}

void ProgramLink::tell(message::Answer::Kind kind, const std::string &reason) const {
    const std::string packet = message::encode({kind, reason});
    send(message::playersSocket, packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

} // namespace kova

#include "ApplicationLink.h"

#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

namespace kova {

namespace {

// Returns false at the deadline.
bool waitForPacket(std::optional<ApplicationLink::Deadline> deadline) {
    using namespace std::chrono;
    pollfd socket{.fd = protocol::socket, .events = POLLIN, .revents = 0};
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

std::optional<protocol::Request> ApplicationLink::receive(std::optional<Deadline> deadline) const {
    std::array<char, sizeof(protocol::Request)> packet{};
    if (!waitForPacket(deadline)) {
        return std::nullopt;
    }
    const ssize_t size = recv(protocol::socket, packet.data(), packet.size(), MSG_TRUNC | MSG_DONTWAIT);
    return size == static_cast<ssize_t>(packet.size()) ? protocol::decode<protocol::Request>(packet)
                                                       : std::nullopt;
}

void ApplicationLink::send(protocol::Event::Kind kind, std::string_view reason) const {
    const protocol::Event event{.kind = kind, .reason = reason};
    ::send(protocol::socket, &event, sizeof event, MSG_NOSIGNAL | MSG_DONTWAIT);
}

} // namespace kova

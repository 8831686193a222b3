#include "ApplicationLink.h"

#include <sys/socket.h>

namespace kova::protocol {

std::optional<Request> receive() {
    std::array<char, sizeof(Request)> packet{};
    const ssize_t size = recv(socket, packet.data(), packet.size(), MSG_TRUNC);
    return size == static_cast<ssize_t>(packet.size()) ? decode<Request>(packet) : std::nullopt;
}

void send(Event::Kind kind, std::string_view reason) {
    const Event event{.kind = kind, .reason = reason};
    ::send(socket, &event, sizeof event, MSG_NOSIGNAL | MSG_DONTWAIT);
}

} // namespace kova::protocol

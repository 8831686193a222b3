#pragma once

#include "PlayerProtocol.h"

namespace kova {

/// The player's end of the socket pair. Any thread.
class ApplicationLink {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    /// Waits for the next request. Returns `nullopt` at the deadline, at the end of the application, and for
    /// an invalid packet.
    std::optional<protocol::Request> receive(std::optional<Deadline> deadline = std::nullopt) const;

    /// Never blocks; an event that does not fit into the socket's buffer is dropped.
    void send(protocol::Event::Kind kind, std::string_view reason = {}) const;
};

} // namespace kova

#pragma once

#include "PlayerProtocol.h"

/// The player's end of the socket pair. Any thread.
namespace kova::protocol {

/// Waits for the next request. Returns `nullopt` at the end of the application and for an invalid packet.
std::optional<Request> receive();

/// Never blocks; an event that does not fit into the socket's buffer is dropped.
void send(Event::Kind kind, std::string_view reason = {});

} // namespace kova::protocol

#pragma once

#include "Messages.h"

#include <chrono>
#include <optional>

namespace kova {

/// The player's end of the socket pair. Any thread.
class ProgramLink {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    /// The next request; nothing once the program is gone, tells something else, or the time is over.
    std::optional<message::Request> receive(std::optional<Deadline> deadline = std::nullopt) const;

    /// Waits for nobody: what does not fit is dropped, since the program is then busy or gone.
    void tell(message::Answer::Kind kind, const std::string &reason = {}) const;
};

} // namespace kova

#pragma once

#include "Clock.h"

namespace kova {

/// The system clock in the system's time zone. A zone that changes while we run is followed from the next
/// second 0 on.
class DesktopClock : public Clock {
public:
    Instant now() const override;
    std::optional<LocalTime> localTime(Instant moment) const override;
};

} // namespace kova

#pragma once

#include "Clock.h"

namespace kova {

/// The system clock in the system's time zone. A change of the zone takes effect at the next second 0.
class DesktopClock : public Clock {
public:
    Instant now() const override;
    std::optional<LocalTime> localTime(Instant moment) const override;
};

} // namespace kova

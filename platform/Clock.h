#pragma once

#include <optional>

namespace kova {

/// A point in time: seconds since 2001-01-01 00:00:00 UTC, with their fraction.
using Instant = double;

/// The epoch of Instant, in seconds since 1970-01-01 00:00:00 UTC.
inline constexpr double instantEpoch = 978307200.0;

/// A point in time in the user's calendar and time zone.
struct LocalTime {
    int hour;    ///< 0 to 23
    int minute;  ///< 0 to 59
    int second;  ///< 0 to 59, 60 in a leap second
    int weekday; ///< 1 = Sunday to 7 = Saturday
};

/// The wall clock. Any thread.
class Clock {
public:
    virtual ~Clock() = default;

    virtual Instant now() const = 0;

    /// Returns nullopt if the calendar cannot represent the moment.
    virtual std::optional<LocalTime> localTime(Instant moment) const = 0;
};

} // namespace kova

#pragma once

namespace kova {

/// A point in time: seconds since 2001-01-01 00:00:00 UTC, with their fraction.
using Instant = double;

/// The epoch of Instant, in seconds since 1970-01-01 00:00:00 UTC.
inline constexpr double instantEpoch = 978307200.0;

} // namespace kova

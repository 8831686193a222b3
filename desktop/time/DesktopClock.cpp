#include "DesktopClock.h"

#include <cmath>
#include <ctime>

namespace kova {

Instant DesktopClock::now() const {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return (static_cast<double>(now.tv_sec) - instantEpoch) + static_cast<double>(now.tv_nsec) * 1e-9;
}

std::optional<LocalTime> DesktopClock::localTime(Instant moment) const {
    const double seconds = std::floor(moment + instantEpoch);
    constexpr double maxSeconds = 1e17; // exceeds any calendar, and fits into time_t
    if (!(std::abs(seconds) < maxSeconds)) {
        return std::nullopt;
    }
    const auto time = static_cast<time_t>(seconds);
    if (time % 60 == 0) {
        tzset(); // localtime_r keeps the zone that it read first; not every second, since this accesses files
    }
    tm local{};
    if (localtime_r(&time, &local) == nullptr) {
        return std::nullopt;
    }
    return LocalTime{local.tm_hour, local.tm_min, local.tm_sec, local.tm_wday + 1};
}

} // namespace kova

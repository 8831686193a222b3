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
    tm local{};
    if (localtime_r(&time, &local) == nullptr) {
        return std::nullopt;
    }
    if (local.tm_sec == 0) {
        // localtime_r keeps the zone that it read first. tzset() accesses files, so it is called only in the
        // second in which alarms fire.
        tzset();
        if (localtime_r(&time, &local) == nullptr) {
            return std::nullopt;
        }
    }
    return LocalTime{local.tm_hour, local.tm_min, local.tm_sec, local.tm_wday + 1};
}

} // namespace kova

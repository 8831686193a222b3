#pragma once

#include "Clock.h"

#include <QDateTime>
#include <cmath>
#include <ctime>

namespace kova {

/// A clock that the test sets, in the time zone of the environment.
class FakeClock : public Clock {
public:
    Instant time = 0;
    bool isReadable = true;

    /// Sets the local time.
    void set(const QDate &date, const QTime &timeOfDay) {
        time = static_cast<double>(QDateTime(date, timeOfDay).toSecsSinceEpoch()) - instantEpoch;
    }

    Instant now() const override { return time; }

    std::optional<LocalTime> localTime(Instant moment) const override {
        const auto second = static_cast<time_t>(std::floor(moment + instantEpoch));
        tm local{};
        if (!isReadable || localtime_r(&second, &local) == nullptr) {
            return std::nullopt;
        }
        return LocalTime{local.tm_hour, local.tm_min, local.tm_sec, local.tm_wday + 1};
    }
};

} // namespace kova

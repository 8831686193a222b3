#include "Instant.h"

#include <ctime>

namespace kova {

Instant currentInstant() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return (static_cast<double>(now.tv_sec) - instantEpoch) + static_cast<double>(now.tv_nsec) * 1e-9;
}

} // namespace kova

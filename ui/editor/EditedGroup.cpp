#include "EditedGroup.h"

#include <cmath>
#include <limits>

namespace kova {

int EditedGroup::indexBelow(int count, qint64 value) {
    return value >= 0 && value < count ? static_cast<int>(value) : -1;
}

int EditedGroup::nearestInt(qint64 value) {
    return static_cast<int>(
        std::clamp<qint64>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

float EditedGroup::nearestStep(float level) {
    constexpr float steps = volumeSteps;
    return std::round(std::clamp(level, 0.0F, 1.0F) * steps) / steps;
}

// Multiplies as a 32-bit float, so that 0.7 gives 70, not 69.
QString EditedGroup::percentText(float level) {
    return QString::number(std::trunc(static_cast<double>(level * 100.0F)), 'f', 0) + u'%';
}

} // namespace kova

#include "builtInSounds.h"

namespace kova {

const QList<SoundEntry> &builtInSounds() {
    static const QList<SoundEntry> sounds{
        {QStringLiteral("morning_glass"), QStringLiteral("Morning Glass")},
        {QStringLiteral("sunrise_quilt"), QStringLiteral("Sunrise Quilt")},
        {QStringLiteral("porchlight_morning"), QStringLiteral("Porchlight Morning")},
        {QStringLiteral("dawn_bird_drift"), QStringLiteral("Dawn Bird Drift")},
        {QStringLiteral("zen_garden_awake"), QStringLiteral("Zen Garden Awake")},
        {QStringLiteral("hazy_morning_pulse"), QStringLiteral("Hazy Morning Pulse")},
        {QStringLiteral("wakeup_pulse"), QStringLiteral("Wake-up Pulse")},
        {QStringLiteral("cosmic_alarm_run"), QStringLiteral("Cosmic Alarm Run")},
        {QStringLiteral("event_horizon"), QStringLiteral("Event Horizon")},
        {QStringLiteral("mouse_chase_jive"), QStringLiteral("Mouse Chase Jive")},
        {QStringLiteral("sashi_nomi"), QStringLiteral("差し飲み")},
    };
    return sounds;
}

} // namespace kova

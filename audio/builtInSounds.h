#pragma once

#include "AlarmGroup.h"

#include <QList>

namespace kova {

/// Returns the built-in sounds in display order.
const QList<SoundEntry> &builtInSounds();

} // namespace kova

#pragma once

#include "AlarmGroup.h"

#include <QList>

namespace kova {

/// The catalogue of built-in sounds, in the order in which it is shown.
const QList<SoundEntry> &builtInSounds();

} // namespace kova

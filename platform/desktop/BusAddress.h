#pragma once

#include <QString>
#include <chrono>

namespace kova {

enum class Bus { System, Session };

/// Where a bus listens, as the environment says, or else where it usually does. Any thread.
QString busAddress(Bus bus);

/// Whether a bus answers at its address. Connecting to one that hangs would wait for it without end, so this
/// is asked first. Any thread; takes as long as the patience at the very most.
bool busAnswers(const QString &address, std::chrono::milliseconds patience = std::chrono::milliseconds(300));

} // namespace kova

#pragma once

#include "AlarmGroup.h"
#include "Result.h"

#include <QByteArray>

namespace kova {

/// False if a group holds a number that is not finite.
bool canEncode(const QList<AlarmGroup> &groups);

/// Returns the list, for which canEncode() is true, as a compact JSON array in UTF-8.
QByteArray encodeGroups(const QList<AlarmGroup> &groups);

/// Decodes the whole list or fails with the group, the key and the reason: no required value may be missing,
/// null or of another type; unknown keys are ignored. Accepts arbitrary input.
Result<QList<AlarmGroup>> decodeGroups(const QByteArray &json);

} // namespace kova
